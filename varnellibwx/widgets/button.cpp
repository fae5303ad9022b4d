#include <varnellibwx/widgets/button.h>

#include <varnellibwx/dpi.h>
#include <varnellibwx/fonts.h>

#include <wx/dcbuffer.h>

namespace Varnel::Wx {

namespace {

constexpr int kMinimumHeight = 24;
const wxColour kDisabledText(110, 110, 110);
const wxPoint kBitmapOrigin(2, 2);
const wxPoint kFlatBitmapOrigin(1, 1);
// At integer scales of 2 and more the label sits this much above the centre.
constexpr int kHiDpiTextRise = 2;

} // namespace

Button::Button(wxWindow* parent, const GuiSkin& skin, int id, const wxString& label,
               const wxBitmap& bitmap, const wxBitmap& disabledBitmap, Function<void()> onClick,
               Behavior behavior, bool enabled, Flags<RawaBorderState> state)
    : RawaBorder(parent, id, label, state), TooltipWindow(this), m_label(label),
      m_disabledBitmap(disabledBitmap.IsOk() ? disabledBitmap : bitmap), m_bitmap(bitmap),
      m_toggleable(behavior == Behavior::Toggle), m_skin(skin), m_onClick(std::move(onClick)) {
    SetForegroundColour(toWxColour(m_skin.text));
    SetBackgroundColour(toWxColour(m_skin.background));
    // Bound after the border's own paint handler, so it runs first and replaces it.
    Bind(wxEVT_LEFT_UP, &Button::onMouseUp, this);
    Bind(wxEVT_LEFT_DOWN, &Button::onMouseDown, this);
    Bind(wxEVT_LEFT_DCLICK, &Button::onMouseDown, this);
    Bind(wxEVT_PAINT, &Button::onButtonPaint, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, &Button::onCaptureLost, this);
    SetMinSize(wxSize(-1, scaleByDpi(kMinimumHeight)));
    Enable(enabled);
}

Button::~Button() = default;

void Button::SetLabel(const wxString& label) {
    m_label = label;
    Refresh(true);
}

wxString Button::GetLabel() const {
    return m_label;
}

bool Button::Enable(bool enable) {
    return RawaBorder::Enable(enable);
}

void Button::setToggled(bool toggled) {
    m_toggled = toggled;
    SetBackgroundColour(toWxColour(toggled ? m_skin.toggledBackground : m_skin.background));
    SetForegroundColour(toWxColour(toggled ? m_skin.toggledText : m_skin.text));
    Refresh(true);
}

void Button::doClick(wxPoint point) {
    wxMouseEvent event(wxEVT_BUTTON);
    event.SetId(GetId());
    event.SetEventObject(this);
    event.SetPosition(point);
    if (m_toggleable)
        setToggled(!m_toggled);
    GetParent()->GetEventHandler()->ProcessEvent(event);
    m_onClick();
}

void Button::onMouseDown(wxMouseEvent&) {
    if (!m_state.has(RawaBorderState::Enabled))
        return;
    SetBackgroundColour(toWxColour(m_skin.pressedBackground));
    m_pressed = true;
    if (!HasCapture())
        CaptureMouse();
    Refresh(true);
}

void Button::onMouseUp(wxMouseEvent& event) {
    if (!m_pressed)
        return;
    if (HasCapture())
        ReleaseMouse();
    SetBackgroundColour(toWxColour(m_skin.background));
    Refresh(true);
    const wxPoint at = event.GetPosition();
    const wxSize size = GetClientSize();
    if (at.x >= 0 && at.y >= 0 && at.x < size.x && at.y < size.y)
        doClick(at);
    m_pressed = false;
}

void Button::onCaptureLost(wxMouseCaptureLostEvent&) {
    if (HasCapture())
        ReleaseMouse();
    m_pressed = false;
    SetBackgroundColour(toWxColour(m_skin.background));
    Refresh(true);
}

void Button::paint(wxDC& dc, wxSize size) const {
    dc.SetFont(setDefaultFontSize(GetFont(), 1.f));
    dc.SetBackground(wxBrush(GetBackgroundColour()));
    dc.Clear();
    Varnel::Detail::paintRawaBorder(dc, size, m_state);
    const bool enabled = m_state.has(RawaBorderState::Enabled);
    const wxBitmap& bitmap = enabled ? m_bitmap : m_disabledBitmap;
    int bitmapWidth = 0;
    if (bitmap.IsOk()) {
        dc.DrawBitmap(
            bitmap, m_state.has(RawaBorderState::Flat) ? kFlatBitmapOrigin : kBitmapOrigin, false);
        bitmapWidth = bitmap.GetWidth();
    }
    if (m_label.empty())
        return;
    dc.SetTextForeground(enabled ? GetForegroundColour() : kDisabledText);
    dc.DrawText(m_label, Detail::buttonLabelOrigin(size, dc.GetTextExtent(m_label), bitmapWidth));
}

void Button::onButtonPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    paint(dc, GetClientSize());
}

namespace Detail {

wxPoint buttonLabelOrigin(wxSize client, wxSize text, int bitmapWidth) {
    const int rise = scaleByDpi(1) == 1 ? 0 : kHiDpiTextRise;
    return {bitmapWidth + (client.x - text.x - bitmapWidth) / 2, (client.y - text.y) / 2 - rise};
}

} // namespace Detail
} // namespace Varnel::Wx
