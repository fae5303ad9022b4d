#include <varnellibwx/widgets/spinner.h>

#include <varnellib/base/stopexception.h>
#include <varnellib/native/drawhook.h>

#include <varnellibwx/bitmapconversion.h>
#include <varnellibwx/dpi.h>
#include <varnellibwx/resources/resources.h>
#include <varnellibwx/stringconversion.h>
#include <varnellibwx/widgets/rawaborder.h>
#include <varnellibwx/widgets/textcontrol.h>
#include <varnellibwx/windowutils.h>

#include <wx/generic/statbmpg.h>
#include <wx/log.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <sstream>

namespace Varnel::Wx {

wxDEFINE_EVENT(CUSTSPINNER_START_EDITING, wxActivateEvent);
wxDEFINE_EVENT(CUSTSPINNER_END_EDITING, wxActivateEvent);
wxDEFINE_EVENT(CUSTSPINNER_TEXT_FOCUS_GET, wxFocusEvent);
wxDEFINE_EVENT(CUSTSPINNER_TEXT_FOCUS_LOST, wxFocusEvent);

namespace {

constexpr int kFieldHeight = 14;
constexpr int kHiDpiFieldHeight = 16;
constexpr int kFieldBorder = 2;
constexpr int kFirstRepeatMs = 200;
constexpr int kRepeatMs = 50;
constexpr float kAutomaticStepFactor = 0.004f;
constexpr int kMaxDigits = 9;
constexpr int kArrowImageBytes = 378;

// The arrow images, indexed [up or down][look], shared by every spinner of the process. They are
// loaded on the first construction (again after they were never valid) and live as long as the
// process, so no wx object outlives wx's own teardown in a static destructor.
using ArrowImages = std::array<std::array<wxBitmap, 3>, 2>;

const ArrowImages& arrowImages() {
    static ArrowImages* const images = new ArrowImages;
    if ((*images)[0][0].IsOk())
        return *images;
    const unsigned char* data[2][3] = {
        {Resources::kSpinnerUpNormalBmp, Resources::kSpinnerUpHoverBmp,
         Resources::kSpinnerUpPressedBmp},
        {Resources::kSpinnerDownNormalBmp, Resources::kSpinnerDownHoverBmp,
         Resources::kSpinnerDownPressedBmp}};
    wxLogNull quiet;
    for (int direction = 0; direction < 2; ++direction)
        for (int look = 0; look < 3; ++look)
            (*images)[direction][look] = scaleByDpi(
                convertMemoryToBitmap(data[direction][look], kArrowImageBytes, wxBITMAP_TYPE_ANY));
    return *images;
}

void requireRange(float min, float max) {
    VARNEL_REQUIRE(std::isfinite(min) && std::isfinite(max) && min <= max, "widgets/spinner");
}

} // namespace

Spinner::Spinner(wxWindow* parent, int id, int width, float min, float max, float defaultValue,
                 int precision, float clickSpeed)
    : wxPanel(parent, id, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL | wxBORDER_NONE),
      m_value(Detail::spinnerUnsetValue()), m_repeatTimer(this) {
    requireRange(min, max);
    build(width);
    // The value is still unset here, so configuring re-formats and notifies nothing.
    configure(min, max, defaultValue, precision, clickSpeed, true);
    setValue(defaultValue, false);
}

Spinner::~Spinner() {
    m_repeatTimer.Stop();
    for (wxWindow* arrow : {upArrow(), downArrow()})
        if (arrow->HasCapture())
            arrow->ReleaseMouse();
}

wxWindow* Spinner::upArrow() const {
    return m_upArrow;
}

wxWindow* Spinner::downArrow() const {
    return m_downArrow;
}

void Spinner::build(int width) {
    const ArrowImages& images = arrowImages();
    m_frame = new RawaBorder(this, wxID_ANY, wxPanelNameStr, {});
    const int height = scaleByDpi(1) <= 1 ? kFieldHeight : kHiDpiFieldHeight;
    m_textField = new TextControl(m_frame, wxID_ANY, String(),
                                  wxTE_NO_VSCROLL | wxTE_RIGHT | wxTE_PROCESS_ENTER | wxBORDER_NONE,
                                  {}, wxSize(width, height));
    // GTK's entry would otherwise insist on its theme's height, far above the field's.
    relaxNativeMinimumSize(WindowHandle(m_textField->GetHandle()));
    auto* frameSizer = new wxBoxSizer(wxHORIZONTAL);
    frameSizer->Add(m_textField, 1, wxEXPAND | wxALL, scaleByDpi(kFieldBorder));
    m_frame->SetSizerAndFit(frameSizer);

    // The generic bitmap is a window of its own; GTK's native image has none and gets no mouse
    // events.
    m_upArrow = new wxGenericStaticBitmap(this, wxID_ANY, images[0][0]);
    m_downArrow = new wxGenericStaticBitmap(this, wxID_ANY, images[1][0]);
    auto* arrows = new wxBoxSizer(wxVERTICAL);
    arrows->Add(m_upArrow, 0);
    arrows->Add(m_downArrow, 0);

    // Centred vertically; a horizontal sizer has no horizontal alignment (wx rejects the flag).
    m_mainSizer = new wxBoxSizer(wxHORIZONTAL);
    m_mainSizer->Add(m_frame, 0, wxALIGN_CENTER_VERTICAL);
    m_mainSizer->Add(arrows, 0);
    SetSizerAndFit(m_mainSizer);

    m_textField->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) {
        commitText();
        m_textField->SelectAll();
    });
    m_textField->Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
        event.Skip();
        sendFocus(CUSTSPINNER_TEXT_FOCUS_GET);
    });
    m_textField->Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
        commitText();
        event.Skip();
        sendFocus(CUSTSPINNER_TEXT_FOCUS_LOST);
    });
    Bind(wxEVT_TIMER, &Spinner::onRepeat, this);
    Bind(wxEVT_SPINCTRLDOUBLE, [this](wxSpinDoubleEvent& event) {
        if (m_onValueChange)
            m_onValueChange(static_cast<float>(event.GetValue()));
        event.Skip();
    });
    bindArrow(m_upArrow);
    bindArrow(m_downArrow);
}

void Spinner::bindArrow(wxGenericStaticBitmap* arrow) {
    arrow->Bind(wxEVT_LEFT_DOWN, &Spinner::onArrowDown, this);
    // A quick second click arrives as a double click: it presses like the first.
    arrow->Bind(wxEVT_LEFT_DCLICK, &Spinner::onArrowDown, this);
    arrow->Bind(wxEVT_LEFT_UP, &Spinner::onArrowUp, this);
    arrow->Bind(wxEVT_MOTION, &Spinner::onArrowMotion, this);
    arrow->Bind(wxEVT_RIGHT_UP, &Spinner::onArrowRightUp, this);
    arrow->Bind(wxEVT_MOUSE_CAPTURE_LOST, &Spinner::onArrowCaptureLost, this);
    arrow->Bind(wxEVT_ENTER_WINDOW, &Spinner::onArrowHover, this);
    arrow->Bind(wxEVT_LEAVE_WINDOW, &Spinner::onArrowHover, this);
}

void Spinner::showArrow(wxGenericStaticBitmap* arrow, ArrowLook look) {
    arrow->SetBitmap(arrowImages()[arrow == m_upArrow ? 0 : 1][static_cast<int>(look)]);
}

void Spinner::configure(float min, float max, float defaultValue, int precision, float clickSpeed,
                        bool notify) {
    requireRange(min, max);
    m_minValue = min;
    m_maxValue = max;
    m_defaultValue = defaultValue;
    setPrecision(precision, notify);
    m_clickSpeed = clickSpeed;
    Refresh();
}

void Spinner::setValue(float value, bool notify) {
    m_value = Detail::clampSpinnerValue(value, m_minValue, m_maxValue);
    m_residual = 0.f;
    m_digits = Detail::spinnerDigits(m_precision(m_value));
    const Detail::SpinnerText shown =
        Detail::formatSpinnerValue(m_value, m_digits, decimalPointCharacter());
    m_value = Detail::clampSpinnerValue(shown.value, m_minValue, m_maxValue);
    // The same text again changes nothing a user can see: a picker refreshing all its rows on
    // every motion of a drag would otherwise redraw every field. A new text redraws the field
    // alone; the arrows and the panel around it show nothing that depends on the value.
    const wxString text = toWxString(shown.text);
    if (m_placeholder || m_textField->GetValue() != text) {
        m_placeholder.reset();
        m_textField->ChangeValue(text);
    }
    if (!notify)
        return;
    wxSpinDoubleEvent event(wxEVT_SPINCTRLDOUBLE, GetId(), m_value);
    event.SetEventObject(this);
    ProcessEvent(event);
}

void Spinner::setPrecision(int digits, bool notify) {
    setPrecision([digits] { return digits; }, notify);
}

void Spinner::setPrecision(Function<int()> digits, bool notify) {
    setPrecisionByValue([digits = std::move(digits)](float) { return digits(); }, notify);
}

void Spinner::setPrecisionByValue(Function<int(float)> digits, bool notify) {
    m_precision = std::move(digits);
    // The value before construction sets one is NaN: nothing to re-format yet.
    if (std::isfinite(m_value))
        setValue(Detail::clampSpinnerValue(m_value + m_residual, m_minValue, m_maxValue), notify);
}

void Spinner::setClickSpeedOverride(Function<Optional<float>()> clickSpeedOverride) {
    m_clickSpeedOverride = std::move(clickSpeedOverride);
}

void Spinner::callOnValueChange(Function<void(float)> onValueChange) {
    m_onValueChange = std::move(onValueChange);
}

void Spinner::setText(const String& text) {
    m_placeholder = text;
    m_textField->ChangeValue(toWxString(text));
}

void Spinner::SetFocus() {
    m_textField->SetFocus();
    m_textField->SelectAll();
}

void Spinner::step() {
    const float size = Detail::spinnerClickStep(m_value, m_clickSpeed, m_clickSpeedOverride());
    const int digits = Detail::spinnerDigits(m_precision(m_value));
    const Detail::SpinnerMove move = Detail::spinnerStep(m_value, m_residual, size, m_incrementing,
                                                         digits, m_minValue, m_maxValue);
    setValue(move.target, true);
    if (move.carriesResidual)
        m_residual = move.target - m_value;
}

void Spinner::commitText() {
    // A placeholder nobody typed over stays: leaving the field is no edit.
    if (m_placeholder && toVarnelString(m_textField->GetValue()) == *m_placeholder)
        return;
    const Optional<float> typed = Detail::parseSpinnerText(toVarnelString(m_textField->GetValue()));
    if (!typed) {
        const float restored =
            Detail::clampSpinnerValue(m_value + m_residual, m_minValue, m_maxValue);
        setValue(restored, false);
        m_residual = restored - m_value;
    } else if (*typed != m_value || m_placeholder) {
        // A number typed over a placeholder (a cleared row) is always an edit, even the number
        // the spinner held behind it.
        sendActivate(CUSTSPINNER_START_EDITING, true);
        setValue(*typed, true);
        sendActivate(CUSTSPINNER_END_EDITING, false);
    } else {
        setValue(*typed, false);
    }
}

void Spinner::sendActivate(const wxEventTypeTag<wxActivateEvent>& type, bool active) {
    wxActivateEvent event(type, active, GetId(), wxActivateEvent::Reason_Unknown);
    event.SetEventObject(this);
    event.ResumePropagation(wxEVENT_PROPAGATE_MAX);
    ProcessEvent(event);
}

void Spinner::sendFocus(const wxEventTypeTag<wxFocusEvent>& type) {
    wxFocusEvent event(type, GetId());
    event.SetEventObject(this);
    event.ResumePropagation(wxEVENT_PROPAGATE_MAX);
    ProcessEvent(event);
}

void Spinner::onArrowDown(wxMouseEvent& event) {
    auto* arrow = static_cast<wxGenericStaticBitmap*>(event.GetEventObject());
    if (arrow->HasCapture())
        return;
    arrow->CaptureMouse();
    m_pressedArrow = arrow;
    m_dragStartValue = m_value;
    showArrow(arrow, ArrowLook::Pressed);
    m_incrementing = arrow == m_upArrow;
    // A drag measures from the press even when no motion over the arrow came before it.
    m_lastMouseY = event.GetY();
    m_repeatTimer.Start(kFirstRepeatMs, wxTIMER_CONTINUOUS);
    sendActivate(CUSTSPINNER_START_EDITING, true);
}

void Spinner::onRepeat(wxTimerEvent&) {
    if (m_repeatTimer.GetInterval() == kFirstRepeatMs) {
        m_repeatTimer.Stop();
        m_repeatTimer.Start(kRepeatMs, wxTIMER_CONTINUOUS);
    }
    step();
}

void Spinner::onArrowUp(wxMouseEvent& event) {
    // A click steps on its release; a hold gets this one step more after its repeats.
    if (!m_dragging)
        step();
    release(static_cast<wxWindow*>(event.GetEventObject()));
}

void Spinner::onArrowMotion(wxMouseEvent& event) {
    m_repeatTimer.Stop();
    auto* arrow = static_cast<wxWindow*>(event.GetEventObject());
    if (!arrow->HasCapture()) {
        m_lastMouseY = event.GetY();
        return;
    }
    int y = event.GetY();
    const int dy = y - m_lastMouseY;
    int sign = 1;
    const wxPoint mouse = wxGetMousePosition();
    const Bucket monitor =
        getMonitorRegionByPoint({mouse.x, mouse.y}, MonitorRegionType::WholeMonitor);
    if (const Optional<Pixel> wrap = Detail::spinnerWrapTarget({mouse.x, mouse.y}, monitor, dy)) {
        const wxPoint client = ScreenToClient(wxPoint(wrap->x, wrap->y));
        WarpPointer(client.x, client.y);
        y = client.y;
        // As built: the wrapping event moves the value the other way, by the same small amount.
        sign = -1;
    }
    const float speed = Detail::spinnerDragSpeed(m_value, m_clickSpeed);
    const float target = Detail::spinnerDragTarget(m_value, m_residual, dy, sign, speed,
                                                   scaleByDpi(1), m_minValue, m_maxValue);
    setValue(target, true);
    m_residual = target - m_value;
    if (!m_dragging) {
        m_dragging = true;
        showArrow(m_upArrow, ArrowLook::Pressed);
        showArrow(m_downArrow, ArrowLook::Pressed);
    }
    m_lastMouseY = y;
}

void Spinner::onArrowRightUp(wxMouseEvent& event) {
    setValue(m_dragging ? m_dragStartValue : m_defaultValue, true);
    release(static_cast<wxWindow*>(event.GetEventObject()));
    Refresh(true);
}

void Spinner::onArrowCaptureLost(wxMouseCaptureLostEvent& event) {
    // The capture is gone already: the press ends without releasing it again.
    if (event.GetEventObject() == m_pressedArrow)
        endPress();
}

void Spinner::onArrowHover(wxMouseEvent& event) {
    event.Skip();
    if (m_upArrow->HasCapture() || m_downArrow->HasCapture())
        return;
    showArrow(static_cast<wxGenericStaticBitmap*>(event.GetEventObject()),
              event.Entering() ? ArrowLook::Hover : ArrowLook::Normal);
}

void Spinner::release(wxWindow* arrow) {
    if (!arrow->HasCapture())
        return;
    arrow->ReleaseMouse();
    endPress();
}

void Spinner::endPress() {
    m_pressedArrow = nullptr;
    m_repeatTimer.Stop();
    m_dragging = false;
    showArrow(m_upArrow, ArrowLook::Normal);
    showArrow(m_downArrow, ArrowLook::Normal);
    sendActivate(CUSTSPINNER_END_EDITING, false);
}

namespace Detail {

float spinnerUnsetValue() {
    return std::bit_cast<float>(0x7FC00001u);
}

int spinnerDigits(int precision) {
    return std::clamp(precision, 0, kMaxDigits);
}

SpinnerText formatSpinnerValue(float value, int digits, wchar_t decimalPoint) {
    // The digits of printf's "%.*f" for the value widened to double, and the float they read
    // back as (to_chars and from_chars are exact and correctly rounded, like the C library).
    char buffer[64];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, static_cast<double>(value),
                                       std::chars_format::fixed, digits);
    if (written.ec != std::errc())
        return {String(), value};
    float readBack = value;
    std::from_chars(buffer, written.ptr, readBack);

    const int length = static_cast<int>(written.ptr - buffer);
    String text;
    text.update(length, [&](wchar_t* out, int) {
        for (int i = 0; i < length; ++i)
            out[i] = buffer[i] == '.' ? decimalPoint : static_cast<wchar_t>(buffer[i]);
    });
    int shown = length;
    // Always one decimal left: 2.000 becomes 2.0, 1.500 becomes 1.50.
    while (digits > 0 && shown > 3 && text[shown - 1] == L'0' && text[shown - 2] == L'0')
        --shown;
    if (shown < length)
        text.erase(shown, length - shown);
    return {text, readBack};
}

float clampSpinnerValue(float value, float min, float max) {
    return std::max(min, std::min(max, value));
}

float spinnerDragSpeed(float value, float clickSpeed) {
    if (clickSpeed > 0.f)
        return clickSpeed;
    return std::max(std::fabs(value), 1.0f) * kAutomaticStepFactor;
}

float spinnerClickStep(float value, float clickSpeed, Optional<float> clickSpeedOverride) {
    // Any number the override yields is taken, zero and negative ones too (they step by one
    // resolution); only NaN, which names no step at all, falls back.
    if (clickSpeedOverride && !std::isnan(*clickSpeedOverride))
        return *clickSpeedOverride;
    return spinnerDragSpeed(value, clickSpeed);
}

float spinnerResolution(int digits) {
    int power = 1;
    for (int i = 0; i < digits; ++i)
        power *= 10;
    return 1.f / static_cast<float>(power);
}

SpinnerMove spinnerStep(float value, float residual, float step, bool incrementing, int digits,
                        float min, float max) {
    const float direction = incrementing ? 1.f : -1.f;
    const float resolution = spinnerResolution(digits);
    if (step < resolution)
        return {value + direction * resolution, false};
    return {clampSpinnerValue(value + direction * step + residual, min, max), true};
}

float spinnerDragTarget(float value, float residual, int dy, int sign, float speed, int scale,
                        float min, float max) {
    const float delta = static_cast<float>(sign * dy) * speed / static_cast<float>(scale);
    return clampSpinnerValue(value - delta + residual, min, max);
}

Optional<Pixel> spinnerWrapTarget(Pixel mouse, const Bucket& monitor, int dy) {
    const int top = monitor.y, bottom = monitor.y + monitor.height;
    if (mouse.y == top && dy < 0)
        return Pixel{mouse.x, bottom - 2};
    if (mouse.y == bottom - 1 && dy > 0)
        return Pixel{mouse.x, top + 1};
    return std::nullopt;
}

Optional<float> parseSpinnerText(const String& text) {
    String dotted = text;
    dotted.replaceAll(String(L","), String(L"."));
    std::wistringstream stream{std::wstring(dotted.view())};
    stream.imbue(std::locale::classic());
    float value = 0.f;
    if (!(stream >> value))
        return std::nullopt;
    return value;
}

} // namespace Detail
} // namespace Varnel::Wx
