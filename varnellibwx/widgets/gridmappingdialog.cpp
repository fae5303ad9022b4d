#include <varnellibwx/widgets/gridmappingdialog.h>

#include <varnellibwx/dpi.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/stringconversion.h>
#include <varnellibwx/widgets/button.h>
#include <varnellibwx/widgets/combobox.h>
#include <varnellibwx/widgets/gradientcontrol.h>
#include <varnellibwx/widgets/spinner.h>
#include <varnellibwx/widgets/statictext.h>
#include <varnellibwx/widgets/textcontrol.h>
#include <varnellibwx/windowutils.h>

#include <wx/dcbuffer.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>

#include <cmath>

namespace Varnel::Wx {

namespace {

constexpr int kOuterSpace = 12;
constexpr int kGap = 4;
constexpr int kWidth = 320;
constexpr int kGradientHeight = 26;
constexpr int kPreviewHeight = 14;
constexpr int kPanelHeight = 220;
constexpr int kChoiceWidth = 120;
constexpr int kSpinnerWidth = 80;
constexpr int kButtonWidth = 72;
constexpr int kNotificationDelayMs = 200;
constexpr float kMaxScale = 1e6f;

} // namespace

const wchar_t* const GridMappingDialog::kInputScaleHelp =
    L"In order to properly map channel values to colors, the channel values should be in [0,1] "
    L"range. The values outside of this range will have constant value (equal to the first or the "
    L"last color in the gradient). One should therefore scale the channel values first so they "
    L"fit in [0,1]. After they are mapped to colors they are scaled back.";
const wchar_t* const GridMappingDialog::kAutoScaleHelp =
    L"Automatically computes scaling of channel values, such that all channel values fit into "
    L"[0,1] after scaling and can be properly mapped by the color gradient.";
const wchar_t* const GridMappingDialog::kResetHelp =
    L"Resets the channel mapping controls to the state in which they were when this dialog was "
    L"opened.";

GridMappingDialogCallbacks::~GridMappingDialogCallbacks() = default;

void GridMappingDialogCallbacks::onDialogClosed(int, const GridMapping&) {}

void GridMappingDialogCallbacksBase::onMappingChanged(const GridMapping&) {}

float GridMappingDialogCallbacksBase::computeAutoScale() {
    return 0.f; // not a scale: the dialog keeps its own
}

Rgb GridMappingDialogCallbacksBase::getPreviewColor(float value, float inputScale) {
    const float grey = value * inputScale;
    return Rgb(grey, grey, grey, 1.f);
}

// ---- The preview strip -------------------------------------------------------------------------

CustomGradient::CustomGradient(wxWindow* parent, wxSize size, Function<Rgb(float)> colorAt)
    : wxPanel(parent, wxID_ANY, wxDefaultPosition, scaleByDpi(size), wxBORDER_NONE),
      m_colorAt(std::move(colorAt)) {
    SetBackgroundStyle(wxBG_STYLE_PAINT); // the paint covers everything: no erasing
    SetOwnFont(GetFont());                // paint contexts copy it: no style lookup per paint
    Bind(wxEVT_PAINT, &CustomGradient::onPaint, this);
}

CustomGradient::~CustomGradient() = default;

void CustomGradient::paint(wxDC& dc) const {
    const wxSize size = GetClientSize();
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(toWxColour(GuiSkin().background)));
    dc.DrawRectangle(wxPoint(0, 0), size);
    if (!m_colorAt)
        return;
    const float last = static_cast<float>(std::max(size.x - 1, 1));
    const wxImage strip = Detail::columnStrip(
        size, [&](int column) { return m_colorAt(static_cast<float>(column) / last); });
    if (strip.IsOk())
        dc.DrawBitmap(wxBitmap(strip), 0, 0);
}

void CustomGradient::onPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    paint(dc);
}

// ---- The curve panel's callbacks ---------------------------------------------------------------

Histogram GridMappingDialog::CurveCallbacksImpl::getHistogram(std::pair<float, float>, CurveChannel,
                                                              int) {
    return Histogram();
}

Optional<int> GridMappingDialog::CurveCallbacksImpl::getHistogramRefreshInterval() {
    return {};
}

Optional<Rgb> GridMappingDialog::CurveCallbacksImpl::getColorAt(Pixel) {
    return {};
}

void GridMappingDialog::CurveCallbacksImpl::onCurveChanged(CurveChannel channel,
                                                           const Curve& curve) {
    // Only the master curve is the mapping's; a report arriving after the close (the panel's
    // delay outlived the dialog's last moment) is already part of what the close reported.
    if (channel != CurveChannel::Master || m_dialog.m_closing)
        return;
    m_dialog.onCurve(curve);
}

int GridMappingDialog::CurveCallbacksImpl::getChangeNotificationDelay() {
    return kNotificationDelayMs;
}

// ---- The dialog --------------------------------------------------------------------------------

GridMappingDialog::GridMappingDialog(wxWindow* parent, const String& title,
                                     const GridMapping& current, const GridMapping& resetState,
                                     SharedPtr<GridMappingDialogCallbacks> callbacks,
                                     wxPoint position)
    : wxFrame(parent, wxID_ANY, toWxString(title), position, wxDefaultSize,
              wxCAPTION | wxCLIP_CHILDREN | wxSYSTEM_MENU | wxCLOSE_BOX | wxFRAME_NO_TASKBAR |
                  wxFRAME_FLOAT_ON_PARENT),
      m_opening(current), m_resetState(resetState), m_mapping(current),
      m_callbacks(std::move(callbacks)) {
    const GuiSkin skin;
    SetBackgroundColour(toWxColour(skin.background));
    SetForegroundColour(toWxColour(skin.text));
    build();
    setCurrentMapping(current);
    m_opening = m_mapping;
    Bind(wxEVT_CLOSE_WINDOW, &GridMappingDialog::onClose, this);
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        if (event.GetKeyCode() == WXK_ESCAPE && event.GetModifiers() == wxMOD_NONE)
            close(wxCANCEL);
        else
            event.Skip();
    });
    setVellumIcon(this);
    if (position != wxDefaultPosition)
        Move(position);
    Show();
}

GridMappingDialog::~GridMappingDialog() = default;

void GridMappingDialog::build() {
    const GuiSkin skin;
    auto* column = new wxBoxSizer(wxVERTICAL);

    m_gradient = new GradientControl(this, wxSize(kWidth, kGradientHeight), 0.f, 1.f);
    m_gradient->setOnChangeCallback([this](const ColorGradient& gradient) {
        m_mapping.gradient = gradient;
        report();
    });
    column->Add(m_gradient, 0, wxLEFT | wxRIGHT | wxTOP, scaleByDpi(kOuterSpace));
    column->AddSpacer(scaleByDpi(kGap));

    // The preview lies under the ramp, whose ends are the gradient control's margins in.
    const int rampInset = m_gradient->geometry().margin();
    m_preview = new CustomGradient(this, wxSize(kWidth, kPreviewHeight), [this](float value) {
        return m_callbacks ? m_callbacks->getPreviewColor(value, m_mapping.inputScale)
                           : Rgb(0.f, 0.f, 0.f, 1.f);
    });
    m_preview->SetMinSize(
        wxSize(m_gradient->GetSize().x - 2 * rampInset, scaleByDpi(kPreviewHeight)));
    column->Add(m_preview, 0, wxLEFT | wxRIGHT, scaleByDpi(kOuterSpace) + rampInset);
    column->AddSpacer(scaleByDpi(kGap));

    ColorCurve curves;
    curves[CurveChannel::Master] = m_mapping.curve;
    m_panel = new CurvePanel(this, skin, scaleByDpi(wxSize(kWidth, kPanelHeight)), curves,
                             makeShared<CurveCallbacksImpl>(*this));
    column->Add(m_panel, 0, wxLEFT | wxRIGHT | wxTOP, scaleByDpi(kOuterSpace));

    const auto label = [this](const wchar_t* text) {
        return new StaticText(this, wxID_ANY, String(text));
    };
    const auto button = [this, &skin](const wchar_t* text, Function<void()> onClick) {
        auto* made =
            new Button(this, skin, wxID_ANY, text, wxNullBitmap, wxNullBitmap, std::move(onClick));
        made->SetMinSize(
            wxSize(std::max(made->GetMinSize().x, scaleByDpi(kButtonWidth)), made->GetMinSize().y));
        return made;
    };

    auto* grid = new wxFlexGridSizer(3, scaleByDpi(kGap), scaleByDpi(2 * kGap));
    grid->Add(label(L"Interpolation:"), 0, wxALIGN_CENTER_VERTICAL);
    m_interpolation =
        new ComboBox(this, wxID_ANY, kChoiceWidth, [this](int mode) { onInterpolation(mode); }, {});
    const ComboBox::Item modes[] = {{String(L"Cubic splines"), Curve::Cubic},
                                    {String(L"Linear splines"), Curve::Linear}};
    m_interpolation->setData(ArrayView<const ComboBox::Item>(modes, 2));
    grid->Add(m_interpolation, 0, wxALIGN_CENTER_VERTICAL);
    grid->AddSpacer(0);

    StaticText* scaleLabel = label(L"Input scaling:");
    scaleLabel->setTooltip(String(kInputScaleHelp));
    grid->Add(scaleLabel, 0, wxALIGN_CENTER_VERTICAL);
    m_scale = new Spinner(this, wxID_ANY, kSpinnerWidth, 0.f, kMaxScale, 1.f, 2, 0.f);
    // The digits follow the scale however it was entered, so a small scale typed or computed is
    // shown, and reported, as itself rather than rounded to 0.
    m_scale->setPrecisionByValue(&Detail::inputScaleDigits, false);
    m_scale->textField()->setTooltip(String(kInputScaleHelp));
    // One click moves the scale by a hundredth of itself, whatever its size.
    m_scale->setClickSpeedOverride(
        [this]() -> Optional<float> { return std::abs(m_mapping.inputScale) * 0.01f; });
    m_scale->Bind(wxEVT_SPINCTRLDOUBLE, [this](wxSpinDoubleEvent& event) {
        event.Skip();
        onScale(m_scale->getValue());
    });
    grid->Add(m_scale, 0, wxALIGN_CENTER_VERTICAL);
    Button* autoButton = button(L"Auto-scale", [this] { autoScale(); });
    autoButton->setTooltip(String(kAutoScaleHelp));
    grid->Add(autoButton, 0, wxALIGN_CENTER_VERTICAL);
    column->Add(grid, 0, wxLEFT | wxRIGHT | wxTOP, scaleByDpi(kOuterSpace));

    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    Button* resetButton = button(L"Reset", [this] { reset(); });
    resetButton->setTooltip(String(kResetHelp));
    buttons->Add(resetButton);
    buttons->AddStretchSpacer();
    buttons->Add(button(L"OK", [this] { close(wxOK); }), 0, wxRIGHT, scaleByDpi(kGap));
    buttons->Add(button(L"Cancel", [this] { close(wxCANCEL); }));
    column->Add(buttons, 0, wxEXPAND | wxALL, scaleByDpi(kOuterSpace));

    applySkinRecursive(this, skin);
    SetSizerAndFit(column);
}

void GridMappingDialog::setCurrentMapping(const GridMapping& mapping) {
    m_mapping = mapping;
    if (!std::isfinite(m_mapping.inputScale) || m_mapping.inputScale < 0.f)
        m_mapping.inputScale = 1.f;
    m_mapping.inputScale = shownScale(m_mapping.inputScale);
    refresh();
}

float GridMappingDialog::shownScale(float scale) {
    scale = std::clamp(scale, 0.f, kMaxScale);
    return Detail::formatSpinnerValue(scale, Detail::inputScaleDigits(scale), L'.').value;
}

void GridMappingDialog::refresh() {
    m_scale->setValue(m_mapping.inputScale, false);
    m_gradient->setGradient(m_mapping.gradient);
    m_preview->Refresh(false);
    if (!(m_panel->getCurrentCurves()[CurveChannel::Master] == m_mapping.curve))
        m_panel->setCurve(m_mapping.curve, CurveChannel::Master, false);
    m_interpolation->selectId(m_mapping.curve.interpolation(), false);
}

Button* GridMappingDialog::button(const wxString& label) const {
    for (wxWindow* child : GetChildren())
        if (auto* found = dynamic_cast<Button*>(child); found && found->GetLabel() == label)
            return found;
    return nullptr;
}

void GridMappingDialog::report() {
    if (m_callbacks)
        m_callbacks->onMappingChanged(m_mapping);
    m_preview->Refresh(false); // painted by the host, which has just heard of the change
}

void GridMappingDialog::onInterpolation(int mode) {
    // The panel's curve, with an edit it may still hold back for its delay.
    Curve curve = m_panel->getCurrentCurves()[CurveChannel::Master];
    curve.setInterpolation(mode);
    m_mapping.curve = curve;
    refresh();
    report();
}

void GridMappingDialog::onCurve(const Curve& curve) {
    // The panel reports its curve once its delay has passed, even when a reset or the
    // interpolation choice has taken that curve in already: one change, one report.
    if (curve == m_mapping.curve)
        return;
    m_mapping.curve = curve;
    refresh();
    report();
}

void GridMappingDialog::onScale(float scale) {
    m_mapping.inputScale = scale;
    refresh();
    Refresh(false);
    report();
}

void GridMappingDialog::autoScale() {
    if (!m_callbacks)
        return;
    const float scale = shownScale(
        Detail::acceptedAutoScale(m_mapping.inputScale, m_callbacks->computeAutoScale()));
    if (scale == m_mapping.inputScale)
        return;
    m_mapping.inputScale = scale;
    refresh();
    report();
}

void GridMappingDialog::reset() {
    setCurrentMapping(m_resetState);
    Refresh(false);
    report();
}

void GridMappingDialog::close(int result) {
    m_result = result;
    Close();
}

void GridMappingDialog::onClose(wxCloseEvent&) {
    if (m_closing)
        return;
    // An edit the panel is still holding back for its delay is part of what the user accepted.
    const Curve shown = m_panel->getCurrentCurves()[CurveChannel::Master];
    if (m_result == wxOK && !(shown == m_mapping.curve)) {
        m_mapping.curve = shown;
        report();
    }
    m_closing = true;
    if (m_callbacks) {
        if (m_result != wxOK)
            m_callbacks->onMappingChanged(m_opening);
        m_callbacks->onDialogClosed(m_result, m_mapping);
    }
    Hide();
    Destroy();
}

namespace Detail {

float acceptedAutoScale(float current, float proposed) {
    return std::isfinite(proposed) && proposed > 0.f ? proposed : current;
}

int inputScaleDigits(float scale) {
    if (!(scale > 0.f) || !std::isfinite(scale))
        return 2;
    const int leading = static_cast<int>(std::floor(std::log10(scale)));
    return std::clamp(3 - leading, 2, 9);
}

} // namespace Detail
} // namespace Varnel::Wx
