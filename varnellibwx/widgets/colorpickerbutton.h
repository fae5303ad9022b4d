#pragma once

#include <varnellib/base/function.h>
#include <varnellib/base/optional.h>
#include <varnellib/base/string.h>
#include <varnellib/color/color.h>
#include <varnellibwx/export.h>

#include <wx/dataobj.h>
#include <wx/dnd.h>
#include <wx/panel.h>

namespace Varnel::Wx {

class ColorPicker;

/// The colour swatch a host puts in its forms. It paints its colour inside a black frame (with
/// diagonal stripes while disabled), opens the colour picker on a click (a press and a release
/// inside), and exchanges colours by drag-and-drop with other swatches: pressing and leaving it
/// with the button held starts a drag of its colour, and a colour dropped on it becomes its own.
/// A right click offers "Copy" and "Paste" through the clipboard, in the drag's format and as
/// hex text (text pastes when it is a colour as people copy one: see parsePastedColor; anything
/// else leaves "Paste" disabled).
///
/// The committed colour is what getColor answers; the displayed colour follows the open picker's
/// live changes. The committed-change callback hears of a colour set for good (setColor with
/// notify, "OK" or "Add color" in the picker, a drop, a paste), always before the live-change
/// callback, which also hears every edit in the picker. The picker opens where the last picker
/// of any swatch was closed. The Tab key never stops on a swatch. `size` is in unscaled pixels.
/// Owned by its parent.
class VARNEL_LIBWX_EXPORT ColorPickerButton : public wxPanel {
public:
    ColorPickerButton(wxWindow* parent, const String& title, wxSize size, bool enabled);
    ~ColorPickerButton() override;

    Rgb getColor() const { return m_committed; }
    /// Sets both colours and repaints at once; with `notify` the committed-change callback runs,
    /// then the live-change callback.
    void setColor(const Rgb& color, bool notify);
    const Rgb& displayedColor() const { return m_displayed; }

    void callOnLiveChange(Function<void(const Rgb&)> onChange) { m_onLiveChange = onChange; }
    void callOnCommittedChange(Function<void(const Rgb&)> onChange) {
        m_onCommittedChange = onChange;
    }

    bool Enable(bool enable = true) override;
    bool AcceptsFocusFromKeyboard() const override { return false; }

    /// Opens the picker as a click does, and returns once it has closed.
    void openPicker();
    /// The clipboard's colour, in the drag's format or as hex text; nothing when it holds neither.
    static Optional<Rgb> clipboardColor();
    /// Puts `color` on the clipboard in the drag's format and as hex text.
    static bool copyToClipboard(const Rgb& color);

    /// Draws the swatch into `dc` for a client area of `size`.
    void paint(wxDC& dc, wxSize size) const;

    /// Where the next picker opens: where the last one was closed (the toolkit's default place
    /// before any).
    static wxPoint lastPickerPosition();

    /// A colour arrived (a drop or a paste): both colours, a repaint, then the committed-change
    /// and live-change callbacks.
    void receive(const Rgb& color);

private:
    void onPaint(wxPaintEvent& event);
    void onLeftDown(wxMouseEvent& event);
    void onLeftUp(wxMouseEvent& event);
    void onLeave(wxMouseEvent& event);
    void onContextMenu(wxContextMenuEvent& event);

    Rgb m_committed{0.f, 0.f, 0.f, 0.f};
    Rgb m_displayed{0.f, 0.f, 0.f, 0.f};
    String m_title;
    bool m_enabled;
    Function<void(const Rgb&)> m_onLiveChange;
    Function<void(const Rgb&)> m_onCommittedChange;
    ColorPicker* m_openPicker = nullptr; // while its modal loop runs
};

namespace Detail {

/// The name of the drag-and-drop and clipboard format of one colour: exactly 16 bytes, four
/// native 32-bit floats red, green, blue and alpha, as held (not clamped).
inline constexpr const wchar_t* kRgbFormatName = L"Tamarack-Rgb";

/// One colour in that format.
class VARNEL_LIBWX_EXPORT RgbDataObject : public wxDataObjectSimple {
public:
    explicit RgbDataObject(const Rgb& color = Rgb(0.f, 0.f, 0.f, 0.f));
    static const wxDataFormat& format();

    const Rgb& color() const { return m_color; }

    size_t GetDataSize() const override;
    bool GetDataHere(void* buffer) const override;
    /// Takes the first 16 bytes and ignores any more. Another program can offer anything under
    /// the format's name, so a buffer shorter than 16 bytes is refused and leaves the colour as
    /// it was, rather than being read past its end.
    bool SetData(size_t length, const void* buffer) override;

private:
    Rgb m_color;
};

/// The swatch's drop target: takes a colour dropped on an enabled swatch and answers the proposed
/// result ("copy" unless the drag says otherwise); a disabled swatch, or data that is no colour,
/// answers "none" and changes nothing.
class VARNEL_LIBWX_EXPORT ColorPickerButtonDropTarget : public wxDropTarget {
public:
    explicit ColorPickerButtonDropTarget(ColorPickerButton& button);
    wxDragResult OnDragOver(wxCoord x, wxCoord y, wxDragResult proposed) override;
    wxDragResult OnData(wxCoord x, wxCoord y, wxDragResult proposed) override;

private:
    ColorPickerButton& m_button;
};

/// The stripes' colour over a disabled swatch of `color`: each channel c becomes c + 30 when
/// c < 31 and c - 30 otherwise.
VARNEL_LIBWX_EXPORT RgbBytes stripeColor(RgbBytes color);

} // namespace Detail
} // namespace Varnel::Wx
