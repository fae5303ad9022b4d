#include <varnellibwx/widgets/colorpicker.h>

#include <varnellib/base/stopexception.h>
#include <varnellib/native/colorportal.h>
#include <varnellibwx/dpi.h>
#include <varnellibwx/fonts.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/stringconversion.h>
#include <varnellibwx/widgets/autosizedbutton.h>
#include <varnellibwx/widgets/checkbox.h>
#include <varnellibwx/widgets/colordisplay.h>
#include <varnellibwx/widgets/colorsliderwithspinner.h>
#include <varnellibwx/widgets/combobox.h>
#include <varnellibwx/widgets/eyedropperbutton.h>
#include <varnellibwx/widgets/hexcoloredit.h>
#include <varnellibwx/widgets/hwbslice.h>
#include <varnellibwx/widgets/radiobutton.h>
#include <varnellibwx/widgets/spinner.h>
#include <varnellibwx/widgets/statictext.h>
#include <varnellibwx/widgets/textcontrol.h>
#include <varnellibwx/widgets/tooltip.h>

#include <wx/radiobut.h>
#include <wx/sizer.h>

#include <algorithm>
#include <iterator>

namespace Varnel::Wx {

using Detail::PositionValueMap;
using Detail::SliderTrack;

namespace Detail {

ColorPickerTypes::Space checkedSpace(ColorPickerTypes::Space space) {
    if (space != ColorPickerTypes::Space::Linear && space != ColorPickerTypes::Space::Srgb)
        Varnel::Detail::throwStopException("widgets/colorpicker", 841);
    return space;
}

} // namespace Detail

namespace {

const wxColour kForeground(218, 218, 193);
constexpr int kMarkerConfirm = 16;
constexpr int kMarkerAddColor = 4;
constexpr int kMarkerCancel = 0;
constexpr int kLabelWidth = 70;
constexpr int kButtonWidth = 80;
constexpr int kButtonHeight = 24;
constexpr int kGap = 6;
const wxSize kRowSlider(200, 14);
const wxSize kSliceSize(200, 150);

constexpr const wchar_t* kRangeLabels[] = {L"0-255", L"0-1", L"0-100%"};

AutoPtr<ColorPicker::IGlobalStateAccessor>& installedAccessor() {
    static AutoPtr<ColorPicker::IGlobalStateAccessor> accessor;
    return accessor;
}

bool isRgbRow(ColorPicker::Row row) {
    return row == ColorPicker::Row::Red || row == ColorPicker::Row::Green ||
           row == ColorPicker::Row::Blue;
}

} // namespace

const wchar_t* const ColorPicker::kSrgbHelp =
    L"Selects whether the color values will be displayed/entered in sRGB (checked) or linear "
    L"(unchecked) color space.\n\nThis option modifies only the actual numbers displayed in the "
    L"spinners, it does not in any way influence internal color representation or renderer "
    L"behavior.\n\nWith linear color space, the color picker dialog behaves the same way as the "
    L"default 3ds Max color picker.\n\nWith sRGB color space you can transfer numerical color "
    L"values directly from 2D image editing software.";
const wchar_t* const ColorPicker::kRangeHelp =
    L"Sets the range of the color spinner values to the specified value.\n\nModifies just the "
    L"value display/input. Does not in any way influence internal color representation or "
    L"renderer behavior.";

ColorPicker::IGlobalStateAccessor::~IGlobalStateAccessor() = default;

ColorPicker::IGlobalStateAccessor& ColorPicker::getAccessor() {
    if (const auto& installed = installedAccessor())
        return *installed;
    static DefaultGlobalStateAccessor defaultAccessor; // made once, thread-safely, on first use
    return defaultAccessor;
}

void ColorPicker::setGlobalStateAccessor(AutoPtr<IGlobalStateAccessor>&& accessor) {
    installedAccessor() = std::move(accessor);
}

ColorPicker::ColorPicker(wxWindow* parent, const String& title, wxPoint position, const Rgb& color,
                         DialogType type, ColorFormat format)
    : wxDialog(parent, wxID_ANY, toWxString(title), position, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE |
                   (type == DialogType::Floating ? wxFRAME_FLOAT_ON_PARENT : 0)),
      m_format(format) {
    SetForegroundColour(kForeground);
    SetOwnFont(GetFont()); // paint contexts copy it: no style lookup on every paint
    build(color);
    // Each showing starts as the constructor leaves it: a close without a button confirms.
    Bind(wxEVT_SHOW, [this](wxShowEvent& event) {
        if (event.IsShown())
            m_resultMarker = kMarkerConfirm;
        event.Skip();
    });
    // GTK centres a dialog on its parent when it first maps it, whatever position it was given:
    // the first move it reports puts the dialog back where its creator asked.
    if (position != wxDefaultPosition)
        Bind(wxEVT_MOVE, [this, position](wxMoveEvent& event) {
            event.Skip();
            if (m_placed || !IsShownOnScreen())
                return;
            m_placed = true;
            if (GetPosition() != position)
                CallAfter([this, position] {
                    SetPosition(wxPoint(position.x + 1, position.y)); // past wx's cached place
                    SetPosition(position);
                });
        });
    setSpace(getAccessor().getSpace());
    setRange(getAccessor().getRange());
    setReferenceColor(color);
    setColor(color);
    m_resultMarker = kMarkerConfirm;
}

ColorPicker::~ColorPicker() = default;

void ColorPicker::build(const Rgb& color) {
    SetBackgroundColour(toWxColour(GuiSkin().background));
    auto* rows = new wxBoxSizer(wxVERTICAL);
    buildRows(rows);
    auto* right = new wxBoxSizer(wxVERTICAL);
    right->Add(buildSlice(), 0, wxBOTTOM, scaleByDpi(kGap));

    auto* droppers = new wxBoxSizer(wxHORIZONTAL);
    for (const bool inverse : {false, true}) {
        auto* dropper = new EyeDropperButton(
            this, wxID_ANY,
            EyeDropperButton::icon(inverse ? EyeDropperButton::Icon::PickInverse
                                           : EyeDropperButton::Icon::PickColor),
            String(inverse ? EyeDropperButton::kPickInverseHelp
                           : EyeDropperButton::kPickColorHelp));
        dropper->callOnPicked([this, inverse](const Rgb& sampled) {
            Rgb picked = inverse ? Detail::inverseColor(sampled) : sampled;
            picked.a = m_color.rgb.a; // the screen has no alpha to give
            enterRgb(picked, Source::Row);
        });
        droppers->Add(dropper, 0, wxRIGHT, scaleByDpi(kGap / 2));
        m_droppers[inverse ? 1 : 0] = dropper;
    }
    m_averaging =
        new ComboBox(this, wxID_ANY, 120,
                     [this](int row) {
                         for (EyeDropperButton* dropper : m_droppers)
                             dropper->setAveragingRadius(Detail::kAveragingChoices[row].radius);
                     },
                     {});
    Stack<ComboBox::Item> choices;
    for (int row = 0; row < static_cast<int>(std::size(Detail::kAveragingChoices)); ++row)
        choices.push({String(Detail::kAveragingChoices[row].label), row});
    m_averaging->setData(choices.view());
    m_averaging->selectIndex(0, false);
    if (screenAccess() == ScreenAccess::Portal) { // the desktop picks single pixels
        m_averaging->setAvailable(false);
        new Tooltip(m_averaging, String(kAveragingPortalHelp));
    }
    droppers->Add(m_averaging, 0, wxALIGN_CENTER_VERTICAL);
    right->Add(droppers, 0, wxBOTTOM, scaleByDpi(kGap));
    right->Add(buildSettings());

    auto* top = new wxBoxSizer(wxHORIZONTAL);
    top->Add(rows, 0, wxRIGHT, scaleByDpi(2 * kGap));
    top->Add(right);
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(top, 0, wxALL, scaleByDpi(2 * kGap));
    column->Add(buildButtons(), 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, scaleByDpi(2 * kGap));
    m_current->setColor(color);
    m_reference->setColor(color);

    for (wxWindow* child : GetChildren())
        applySkinRecursive(child, GuiSkin());
    SetSizerAndFit(column);

    Bind(wxEVT_CLOSE_WINDOW, &ColorPicker::onClose, this);
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        if (event.GetKeyCode() == WXK_ESCAPE)
            cancel();
        else
            event.Skip();
    });
}

void ColorPicker::buildRows(wxSizer* column) {
    for (int i = 0; i < static_cast<int>(std::size(Detail::kPickerRows)); ++i) {
        const auto row = static_cast<Row>(i);
        const SliderTrack track = Detail::kPickerRows[i].track;
        if (row == Row::Alpha && m_format != ColorFormat::Rgba)
            continue;
        auto gradient = makeShared<ColorSlider::Gradient>([this, track](float p, float value) {
            return track == SliderTrack::Temperature
                       ? Detail::temperatureToRgb(value)
                       : Detail::sliderTrackColor(track, p, m_color.rgb, m_color.hsv);
        });
        const Detail::SpinnerScale scale =
            row == Row::Temperature ? Detail::kTemperatureScale : Detail::rangeScale(m_range);
        auto* control = new ColorSliderWithSpinner(
            this, wxID_ANY, String(Detail::kPickerRows[i].label), kLabelWidth, kRowSlider, gradient,
            static_cast<int>(scale.minimum), static_cast<int>(scale.maximum), scale.decimals,
            scale.step);
        if (row == Row::Temperature)
            control->setPositionValueMap(
                [](float x, PositionValueMap d) { return Detail::squareMap(x, d); });
        control->callOnValueChange([this, row](float value) { onRowEdit(row, value); });
        column->Add(control, 0, wxBOTTOM, scaleByDpi(kGap / 2));
        m_rows[i] = control;
    }
    m_hex = new HexColorEdit(this, wxID_ANY, String(L"Hex color:"), kLabelWidth, 70);
    m_hex->callOnCommit([this](const Rgb& parsed) {
        enterRgb(Rgb(parsed.r, parsed.g, parsed.b, m_color.rgb.a), Source::Row);
    });
    column->Add(m_hex, 0, wxTOP, scaleByDpi(kGap));
}

wxSizer* ColorPicker::buildSlice() {
    m_slice = new HwbSlice(this, wxID_ANY, kSliceSize);
    m_slice->callOnChange([this](float hue, float blackness) {
        enterHwb({hue, m_color.hwb.w, blackness, 0.f});
    });
    m_whiteness =
        new ColorSlider(this, wxID_ANY, wxSize(kSliceSize.x, kRowSlider.y),
                        makeShared<ColorSlider::Gradient>([this](float p, float) {
                            return Detail::hwbToRgb({m_color.hwb.h, p, m_color.hwb.b, 0.f});
                        }));
    m_whiteness->callOnChange([this](float whiteness) {
        enterHwb({m_color.hwb.h, whiteness, m_color.hwb.b, 0.f});
    });
    auto* grid = new wxFlexGridSizer(2, scaleByDpi(2), scaleByDpi(kGap / 2));
    grid->AddSpacer(0);
    grid->Add(new StaticText(this, wxID_ANY, String(L"Hue")), 0, wxALIGN_CENTER_HORIZONTAL);
    grid->Add(new StaticText(this, wxID_ANY, String(L"B\nl\na\nc\nk\nn\ne\ns\ns")), 0,
              wxALIGN_CENTER_VERTICAL);
    grid->Add(m_slice);
    grid->AddSpacer(0);
    grid->Add(m_whiteness);
    grid->AddSpacer(0);
    grid->Add(new StaticText(this, wxID_ANY, String(L"Whiteness")), 0, wxALIGN_CENTER_HORIZONTAL);
    return grid;
}

wxSizer* ColorPicker::buildSettings() {
    auto* settings = new wxBoxSizer(wxHORIZONTAL);
    for (int i = 0; i < 3; ++i) {
        wxRadioButton* radio = makeRadioButton(this, kRangeLabels[i], i == 0);
        radio->Bind(wxEVT_RADIOBUTTON, [this, i](wxCommandEvent&) { setRange(Range(i)); });
        new Tooltip(radio, String(kRangeHelp));
        settings->Add(radio, 0, wxRIGHT | wxALIGN_CENTER_VERTICAL, scaleByDpi(kGap));
        m_rangeButtons[i] = radio;
    }
    m_srgb = new CheckBox(this, wxID_ANY, String(L"sRGB"));
    m_srgb->onChange = [this](bool srgb) {
        setSpace(srgb ? Space::Srgb : Space::Linear);
    };
    new Tooltip(m_srgb, String(kSrgbHelp));
    settings->Add(m_srgb, 0, wxLEFT | wxALIGN_CENTER_VERTICAL, scaleByDpi(kGap));
    return settings;
}

wxSizer* ColorPicker::buildButtons() {
    m_current = new ColorDisplay(this, wxID_ANY, wxSize(50, 30));
    m_reference = new ColorDisplay(this, wxID_ANY, wxSize(50, 30));
    const auto add = [this](const wchar_t* label, Function<void()> onClick) {
        return new AutoSizedButton(this, wxID_ANY, label, kButtonWidth, kButtonHeight,
                                   std::move(onClick));
    };
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(m_current);
    row->Add(m_reference, 0, wxRIGHT, scaleByDpi(2 * kGap));
    row->Add(add(L"Reset", [this] { enterRgb(m_referenceColor, Source::Row); }), 0,
             wxALIGN_CENTER_VERTICAL | wxRIGHT, scaleByDpi(kGap));
    row->Add(add(L"Add color",
                 [this] {
                     m_hex->field()->SetFocus();
                     m_onAddColor(m_color.rgb);
                     m_resultMarker = kMarkerAddColor;
                     Close();
                 }),
             0, wxALIGN_CENTER_VERTICAL);
    row->AddStretchSpacer();
    row->Add(add(L"OK",
                 [this] {
                     m_resultMarker = kMarkerConfirm;
                     Close();
                 }),
             0, wxALIGN_CENTER_VERTICAL | wxRIGHT, scaleByDpi(kGap));
    row->Add(add(L"Cancel", [this] { cancel(); }), 0, wxALIGN_CENTER_VERTICAL);
    return row;
}

void ColorPicker::setColor(const Rgb& color) {
    Rgb entered = color;
    if (m_format != ColorFormat::Rgba)
        entered.a = 1.f;
    m_color.fromRgb(entered);
    refresh(Source::Code);
}

void ColorPicker::setReferenceColor(const Rgb& color) {
    m_referenceColor = color;
    if (m_format != ColorFormat::Rgba)
        m_referenceColor.a = 1.f;
    m_reference->setColor(m_referenceColor);
}

void ColorPicker::setSpace(Space space) {
    m_space = Detail::checkedSpace(space);
    m_srgb->SetValue(space == Space::Srgb);
    for (const Row row : {Row::Red, Row::Green, Row::Blue})
        m_rows[static_cast<int>(row)]->setPositionValueMap(
            space == Space::Linear ? ColorSliderWithSpinner::Map(&Detail::gammaMap)
                                   : ColorSliderWithSpinner::Map());
}

void ColorPicker::setRange(Range range) {
    const Detail::SpinnerScale scale = Detail::rangeScale(range);
    m_range = range;
    m_rangeButtons[static_cast<int>(range)]->SetValue(true);
    for (int i = 0; i < static_cast<int>(Row::Temperature); ++i)
        if (m_rows[i])
            m_rows[i]->setRange(static_cast<int>(scale.minimum), static_cast<int>(scale.maximum),
                                scale.decimals, scale.step);
}

int ColorPicker::getEyeDropperAveragingRadius() const {
    return m_droppers[0]->getAveragingRadius();
}

void ColorPicker::setEyeDropperAveragingRadius(int radius) {
    const int row = Detail::averagingChoiceFor(radius);
    for (EyeDropperButton* dropper : m_droppers)
        dropper->setAveragingRadius(Detail::kAveragingChoices[row].radius);
    m_averaging->selectIndex(row, false);
}

wxRadioButton* ColorPicker::rangeButton(Range range) const {
    Detail::rangeScale(range); // the stop exception for a range outside the enum
    return m_rangeButtons[static_cast<int>(range)];
}

Button* ColorPicker::button(const wxString& label) const {
    for (wxWindow* child : GetChildren())
        if (auto* found = dynamic_cast<Button*>(child); found && found->GetLabel() == label)
            return found;
    return nullptr;
}

float ColorPicker::rowValue(Row row) const {
    return m_color.rowUnit(Detail::kPickerRows[static_cast<int>(row)].track,
                           m_space == Space::Srgb) *
           Detail::rangeScale(m_range).maximum;
}

void ColorPicker::onRowEdit(Row row, float value) {
    if (row == Row::Temperature) {
        Rgb warm = Detail::temperatureToRgb(value);
        warm.a = m_color.rgb.a; // the temperature has no alpha: the colour keeps its own
        return enterRgb(warm, Source::Temperature);
    }
    // Hue, saturation and value take the slider's position as it stands.
    const bool fromHsv = row == Row::Hue || row == Row::Sat || row == Row::Value;
    const float unit = fromHsv ? m_rows[static_cast<int>(row)]->slider()->getPosition()
                               : value / Detail::rangeScale(m_range).maximum;
    m_color.editRow(Detail::kPickerRows[static_cast<int>(row)].track, unit, m_space == Space::Srgb);
    refresh(Source::Row);
    report();
}

void ColorPicker::enterRgb(Rgb color, Source source) {
    if (m_format != ColorFormat::Rgba)
        color.a = 1.f;
    m_color.fromRgb(color);
    refresh(source);
    report();
}

void ColorPicker::enterHwb(const Detail::Hwb& hwb) {
    m_color.fromHwb(hwb);
    refresh(Source::Row);
    report();
}

void ColorPicker::refresh(Source source) {
    for (int i = 0; i < static_cast<int>(std::size(m_rows)); ++i) {
        ColorSliderWithSpinner* control = m_rows[i];
        if (!control)
            continue;
        const auto row = static_cast<Row>(i);
        if (row == Row::Temperature) {
            if (source != Source::Temperature && control->slider()->isMarkerVisible())
                control->clear();
            continue;
        }
        control->setValue(rowValue(row));
        // Tracks drawn around the colour; the alpha and hue tracks never change.
        if (isRgbRow(row) || row == Row::Sat || row == Row::Value)
            control->slider()->refreshTrack();
    }
    m_slice->setMarker(m_color.hwb.h, m_color.hwb.b);
    m_whiteness->setPosition(m_color.hwb.w);
    m_whiteness->refreshTrack();
    m_hex->setColor(m_color.rgb);
    m_current->setColor(m_color.rgb);
}

void ColorPicker::report() {
    m_onLiveChange(m_color.rgb);
}

void ColorPicker::cancel() {
    m_color.fromRgb(m_referenceColor);
    refresh(Source::Code);
    report();
    m_resultMarker = kMarkerCancel;
    Close();
}

void ColorPicker::onClose(wxCloseEvent&) {
    if (m_resultMarker == kMarkerConfirm) {
        m_onLiveChange(m_current->getColor());
        m_onConfirm();
    }
    m_onClosed();
    IGlobalStateAccessor& accessor = getAccessor();
    accessor.setSpace(m_space);
    accessor.setRange(m_range);
    if (IsModal())
        EndModal(m_resultMarker);
    else
        Hide();
}

} // namespace Varnel::Wx
