#include <varnellibwx/widgets/dropdownbutton.h>

#include <varnellibwx/dpi.h>

#include <wx/dcbuffer.h>
#include <wx/frame.h>
#include <wx/sizer.h>

namespace Varnel::Wx {

namespace {

constexpr int kPressDelayMs = 150;
constexpr int kTriangleSide = 10;
const wxSize kItemSize(73, 24);
const wxColour kDisabledFill(135, 135, 135);

Button::Behavior mainBehavior(Button::Behavior behavior) {
    return behavior == Button::Behavior::Toggle ? Button::Behavior::Toggle
                                                : Button::Behavior::Normal;
}

} // namespace

DropdownButton::DropdownButton(wxWindow* parent, const GuiSkin& skin, const Array<int>& ids,
                               const Array<wxString>& labels, const wxBitmap& bitmap,
                               const wxBitmap& disabledBitmap,
                               const Array<Function<void()>>& actions, Button::Behavior behavior,
                               bool enabled)
    : Button(parent, skin, ids[0], labels[0], bitmap, disabledBitmap, actions[0],
             mainBehavior(behavior), enabled, RawaBorderState::Enabled),
      m_pressTimer(this, 0), m_swapOnChoose(static_cast<int>(behavior) == kSwapOnChoose) {
    m_popup = new wxFrame(this, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                          wxBORDER_NONE | wxSTAY_ON_TOP | wxFRAME_NO_TASKBAR);
    const wxSize itemSize = scaleByDpi(kItemSize);
    auto* column = new wxBoxSizer(wxVERTICAL);
    const int count = std::min({ids.size(), labels.size(), actions.size()});
    for (int k = 1; k < count; ++k) {
        auto* item =
            new Button(m_popup, skin, ids[k], labels[k], wxNullBitmap, wxNullBitmap, actions[k],
                       Button::Behavior::Normal, true, RawaBorderState::Enabled);
        item->SetMinSize(itemSize);
        item->SetSize(itemSize);
        column->Add(item, 0);
        m_items.push(item);
    }
    m_popup->SetSizerAndFit(column);
    m_popup->Hide();

    Bind(wxEVT_ERASE_BACKGROUND, [](wxEraseEvent&) {});
    Bind(wxEVT_TIMER, &DropdownButton::onPressTimer, this);
    Bind(wxEVT_MOTION, [](wxMouseEvent& event) { event.Skip(); });
    SetMinSize(itemSize);
    SetSize(itemSize);
}

DropdownButton::~DropdownButton() {
    m_pressTimer.Stop();
}

void DropdownButton::setText(int index, const String& text) {
    const wxString label(text.asWchar(), static_cast<std::size_t>(text.length()));
    if (index == 0)
        SetLabel(label);
    else if (index >= 1 && index <= m_items.size())
        m_items[index - 1]->SetLabel(label);
}

bool DropdownButton::isPopupShown() const {
    return m_popup->IsShown();
}

void DropdownButton::onMouseDown(wxMouseEvent& event) {
    if (!m_state.has(RawaBorderState::Enabled))
        return;
    // The pressed look, the pressed flag and the capture, as any button.
    Button::onMouseDown(event);
    m_pressTimer.StartOnce(kPressDelayMs);
    m_pressedBy = this;
    Refresh(true);
}

void DropdownButton::onPressTimer(wxTimerEvent&) {
    if (!isPressed())
        return;
    m_popup->Move(GetScreenPosition() + wxPoint(0, GetSize().y));
    m_popup->Show();
    Refresh(true);
}

int DropdownButton::itemAt(wxPoint pointer) const {
    const wxPoint screen = GetScreenPosition();
    for (int k = 0; k < m_items.size(); ++k) {
        const wxPoint item = m_items[k]->GetScreenPosition();
        const wxPoint at(pointer.x + screen.x - item.x, pointer.y - item.y + screen.y);
        const wxSize size = m_items[k]->GetSize();
        if (at.x >= 0 && at.y >= 0 && at.x < size.x && at.y < size.y)
            return k;
    }
    return -1;
}

void DropdownButton::onMouseUp(wxMouseEvent& event) {
    if (!isPressed())
        return;
    m_pressTimer.Stop();
    int chosen = -1;
    if (m_popup->IsShown()) {
        chosen = itemAt(event.GetPosition());
        if (chosen >= 0)
            m_items[chosen]->doClick(wxPoint(0, 0));
    }
    m_popup->Hide();
    m_state.set(RawaBorderState::Hovered, false);
    Button::onMouseUp(event);
    if (m_swapOnChoose && !isToggleable() && chosen >= 0) {
        // The alternative just chosen becomes the face and the action of the button.
        Button& item = *m_items[chosen];
        const wxString label = GetLabel();
        const Function<void()> action = clickCallback();
        SetLabel(item.GetLabel());
        setClickCallback(item.clickCallback());
        item.SetLabel(label);
        item.setClickCallback(action);
    }
}

void DropdownButton::onCaptureLost(wxMouseCaptureLostEvent& event) {
    m_pressTimer.Stop();
    m_popup->Hide();
    Button::onCaptureLost(event);
}

void DropdownButton::onButtonPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    const wxSize size = GetClientSize();
    paint(dc, size);
    const bool enabled = m_state.has(RawaBorderState::Enabled);
    const bool hovered = m_state.has(RawaBorderState::Hovered);
    dc.SetBrush(wxBrush(enabled ? toWxColour(skin().toggledBackground) : kDisabledFill));
    dc.SetPen(wxPen(toWxColour(enabled && hovered ? Varnel::Detail::kRawaHighlightFrame
                                                  : Varnel::Detail::kRawaInnerFrame)));
    const std::array<wxPoint, 3> corners = Detail::dropdownTriangle(size);
    dc.DrawPolygon(3, corners.data());
    for (Button* item : m_items)
        item->Refresh(false);
}

namespace Detail {

std::array<wxPoint, 3> dropdownTriangle(wxSize size) {
    const int w = size.x, h = size.y, side = scaleByDpi(kTriangleSide);
    return {wxPoint(w - 2, h - 2), wxPoint(w - side, h - 2), wxPoint(w - 2, h - side)};
}

} // namespace Detail
} // namespace Varnel::Wx
