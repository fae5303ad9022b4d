#pragma once

#include <varnellib/base/function.h>
#include <varnellib/base/pointers.h>
#include <varnellib/base/string.h>
#include <varnellib/color/color.h>
#include <varnellibwx/export.h>
#include <varnellibwx/widgets/colormodel.h>
#include <varnellibwx/widgets/colorpickertypes.h>

#include <wx/dialog.h>

#include <array>

class wxRadioButton;

namespace Varnel::Wx {

class Button;
class CheckBox;
class ColorDisplay;
class ColorSlider;
class ColorSliderWithSpinner;
class ComboBox;
class EyeDropperButton;
class HexColorEdit;
class HwbSlice;

/// The dialog in which the user edits one colour: rows of sliders with spinners for red, green,
/// blue (and alpha when the colour format is 1), hue, saturation, value and a black body's
/// temperature, the hex field, the HWB slice with its whiteness slider, two eyedroppers sharing
/// an averaging list, the range and space choices, the current and reference patches, and
/// "Reset", "Add color", "OK" and "Cancel".
///
/// The colour is held in three forms kept in step (Detail::PickerColor). Every edit by the user
/// enters through one of three paths (from RGB, HSV or HWB), brings every control in line, then
/// reports the colour through the live-change callback. An edit from any row but the
/// temperature's clears the temperature row. The range and the space (linear or gamma-encoded
/// numbers on red, green and blue) change only the numbers shown, never the colour; they persist
/// from one dialog to the next through the process-wide global state accessor.
///
/// Closing, by "OK", "Add color", "Cancel", Escape or the frame: when the result marker is 16
/// ("OK", or a close with no other button) the live-change callback gets the current patch's
/// colour and the confirm callback runs; the closed callback always runs; then the space and
/// the range are stored through the accessor in force. A dialog shown modally ends its loop with
/// the marker as its code; one shown modeless is hidden. Its creator destroys it.
///
/// "Reset" returns to the reference colour and stays open; "Cancel" returns to the reference
/// colour, reports it through the live-change callback (so a preview reverts) and closes without
/// confirming. Callbacks run on the interface thread, in the order above. Owned by its creator.
class VARNEL_LIBWX_EXPORT ColorPicker : public wxDialog {
public:
    using Space = ColorPickerTypes::Space;
    using Range = ColorPickerTypes::Range;
    using ColorFormat = ColorPickerTypes::ColorFormat;
    using DialogType = ColorPickerTypes::DialogType;

    /// Where the space and range of the pickers live between dialogs: in slot order, a virtual
    /// destructor, setSpace, getSpace, setRange, getRange. A host replaces it to keep them in its
    /// own settings. Values outside the enums are programming errors (the stop exception).
    class VARNEL_LIBWX_EXPORT IGlobalStateAccessor {
    public:
        virtual ~IGlobalStateAccessor();
        virtual void setSpace(Space space) = 0;
        virtual Space getSpace() const = 0;
        virtual void setRange(Range range) = 0;
        virtual Range getRange() const = 0;
    };

    /// The accessor in force until a host installs its own: two stored 32-bit values, both 0
    /// (linear, 0-255) at first.
    class VARNEL_LIBWX_EXPORT DefaultGlobalStateAccessor : public IGlobalStateAccessor {
    public:
        void setSpace(Space space) override { m_space = static_cast<int32>(space); }
        Space getSpace() const override { return static_cast<Space>(m_space); }
        void setRange(Range range) override { m_range = static_cast<int32>(range); }
        Range getRange() const override { return static_cast<Range>(m_range); }

    private:
        int32 m_space = 0;
        int32 m_range = 0;
    };

    /// The installed accessor, else the default one (made on first use).
    static IGlobalStateAccessor& getAccessor();
    /// Replaces the process-wide accessor; the library owns it from then on.
    static void setGlobalStateAccessor(AutoPtr<IGlobalStateAccessor>&& accessor);

    /// The rows of the dialog, in their order.
    enum class Row : int { Red, Green, Blue, Alpha, Hue, Sat, Value, Temperature };

    /// Builds the dialog at `position` with the foreground (218, 218, 193), applies the space and
    /// then the range from the accessor, shows `color` as the reference colour and sets it.
    /// DialogType 1 keeps the dialog above its parent. Without the last two: a normal dialog of
    /// an opaque colour (format 0).
    ColorPicker(wxWindow* parent, const String& title, wxPoint position, const Rgb& color,
                DialogType type = DialogType::Normal, ColorFormat format = ColorFormat::Rgb);
    ~ColorPicker() override;

    /// Sets the colour (alpha 1 unless the format is 1) and brings every control in line; reports
    /// nothing.
    void setColor(const Rgb& color);
    const Rgb& getColor() const { return m_color.rgb; }
    const Detail::PickerColor& pickerColor() const { return m_color; }
    void setReferenceColor(const Rgb& color);

    Space getSpace() const { return m_space; }
    void setSpace(Space space);
    Range getRange() const { return m_range; }
    void setRange(Range range);

    /// The "Pick Color" eyedropper's radius.
    int getEyeDropperAveragingRadius() const;
    /// The last averaging row whose radius is not above `radius` (negative counts as 0), for both
    /// eyedroppers and the list.
    void setEyeDropperAveragingRadius(int radius);

    void callOnLiveChange(Function<void(const Rgb&)> onChange) { m_onLiveChange = onChange; }
    void callOnAddColor(Function<void(const Rgb&)> onAdd) { m_onAddColor = onAdd; }
    void callOnConfirm(Function<void()> onConfirm) { m_onConfirm = onConfirm; }
    void callOnClosed(Function<void()> onClosed) { m_onClosed = onClosed; }

    /// 16 from construction and after "OK", 4 after "Add color", 0 after "Cancel".
    int resultMarker() const { return m_resultMarker; }

    /// The controls, for hosts that lay out help around them and for tests.
    ColorSliderWithSpinner* row(Row row) const { return m_rows[static_cast<int>(row)]; }
    HexColorEdit* hexField() const { return m_hex; }
    HwbSlice* hwbSlice() const { return m_slice; }
    ColorSlider* whitenessSlider() const { return m_whiteness; }
    EyeDropperButton* eyeDropper(bool inverse) const { return m_droppers[inverse ? 1 : 0]; }
    ComboBox* averagingList() const { return m_averaging; }
    wxRadioButton* rangeButton(Range range) const;
    CheckBox* srgbBox() const { return m_srgb; }
    ColorDisplay* currentPatch() const { return m_current; }
    ColorDisplay* referencePatch() const { return m_reference; }
    Button* button(const wxString& label) const;

    /// The tooltips, as the dialog shows them.
    static const wchar_t* const kSrgbHelp;
    static const wchar_t* const kRangeHelp;
    /// The averaging list's tooltip where the desktop portal picks (and the list is unavailable).
    static constexpr const wchar_t* kAveragingPortalHelp =
        L"The desktop picks single pixels: averaging needs a screen that the program can read, "
        L"and this desktop lets no program read the screen.";

private:
    enum class Source { Code, Row, Temperature };

    void build(const Rgb& color);
    void buildRows(wxSizer* column);
    wxSizer* buildSlice();
    wxSizer* buildSettings();
    wxSizer* buildButtons();
    void enterRgb(Rgb color, Source source);
    void enterHwb(const Detail::Hwb& hwb);
    void onRowEdit(Row row, float value);
    void refresh(Source source);
    float rowValue(Row row) const;
    void report();
    void cancel();
    void onClose(wxCloseEvent& event);

    Detail::PickerColor m_color;
    Range m_range = Range::ZeroTo255;
    Space m_space = Space::Linear;
    ColorFormat m_format;
    std::array<ColorSliderWithSpinner*, 8> m_rows{};
    std::array<wxRadioButton*, 3> m_rangeButtons{};
    CheckBox* m_srgb = nullptr;
    HexColorEdit* m_hex = nullptr;
    HwbSlice* m_slice = nullptr;
    ColorSlider* m_whiteness = nullptr;
    std::array<EyeDropperButton*, 2> m_droppers{};
    ComboBox* m_averaging = nullptr;
    ColorDisplay* m_current = nullptr;
    ColorDisplay* m_reference = nullptr;
    Rgb m_referenceColor;
    Function<void(const Rgb&)> m_onLiveChange;
    Function<void(const Rgb&)> m_onAddColor;
    Function<void()> m_onConfirm;
    Function<void()> m_onClosed;
    int m_resultMarker = 0;
    bool m_placed = false;
};

namespace Detail {

/// The picker's rows in the order of ColorPicker::Row: each label and the track it shows.
struct PickerRow {
    const wchar_t* label;
    SliderTrack track;
};
inline constexpr PickerRow kPickerRows[] = {
    {L"Red:", SliderTrack::Red},     {L"Green:", SliderTrack::Green},
    {L"Blue:", SliderTrack::Blue},   {L"Alpha:", SliderTrack::Alpha},
    {L"Hue:", SliderTrack::Hue},     {L"Sat:", SliderTrack::Sat},
    {L"Value:", SliderTrack::Value}, {L"Temp. [K]:", SliderTrack::Temperature},
};

/// `space` when it is one of the enum's values; otherwise the stop exception (widgets/colorpicker,
/// line 841).
VARNEL_LIBWX_EXPORT ColorPickerTypes::Space checkedSpace(ColorPickerTypes::Space space);

} // namespace Detail
} // namespace Varnel::Wx
