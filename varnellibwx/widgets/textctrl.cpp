#include <varnellibwx/widgets/textctrl.h>

#include <algorithm>

namespace Varnel::Wx {

namespace {
// The rich-edit styles (wxTE_RICH | wxTE_RICH2): the control is always a plain edit.
constexpr long kRichStyles = 0x8080;
} // namespace

TextCtrl::TextCtrl(wxWindow* parent, int id, const wxString& value, const wxPoint& position,
                   const wxSize& size, long style)
    : wxTextCtrl(parent, id, value, position, size, style & ~kRichStyles) {
    Bind(wxEVT_MOUSE_CAPTURE_LOST, &TextCtrl::onCaptureLost, this);
    Bind(wxEVT_LEFT_DOWN, &TextCtrl::onLeftDown, this);
    Bind(wxEVT_MOTION, &TextCtrl::onMotion, this);
    Bind(wxEVT_LEFT_UP, &TextCtrl::onLeftUp, this);
}

TextCtrl::~TextCtrl() {
    if (HasCapture())
        ReleaseMouse();
}

long TextCtrl::characterAt(wxPoint point) const {
    long position = 0;
    if (HitTest(point, &position) == wxTE_HT_UNKNOWN)
        return GetInsertionPoint();
    return position;
}

void TextCtrl::onLeftDown(wxMouseEvent& event) {
    m_anchor = characterAt(event.GetPosition());
    SetInsertionPoint(m_anchor);
    SetFocus();
    m_dragging = true;
}

void TextCtrl::onMotion(wxMouseEvent& event) {
    if (!m_dragging) {
        event.Skip();
        return;
    }
    const wxSize size = GetClientSize();
    const wxPoint clamped(std::clamp(event.GetX(), 0, std::max(size.x - 1, 0)),
                          std::clamp(event.GetY(), 0, std::max(size.y - 1, 0)));
    SetSelection(m_anchor, characterAt(clamped));
}

void TextCtrl::onLeftUp(wxMouseEvent&) {
    m_dragging = false;
    if (HasCapture())
        ReleaseMouse();
}

void TextCtrl::onCaptureLost(wxMouseCaptureLostEvent&) {
    m_dragging = false;
}

void TextCtrl::appendText(const wxString& text) {
    // The selection is read before the freeze and set after the thaw: frozen, GTK's multiline
    // control has its buffer swapped out of the view, and a selection set then is lost.
    long from = 0, to = 0;
    GetSelection(&from, &to);
    const bool follow = to == GetLastPosition();
    Freeze();
    AppendText(text);
    Thaw();
    if (follow) {
        SetInsertionPointEnd();
        ShowPosition(GetLastPosition());
    } else {
        SetSelection(from, to);
    }
}

} // namespace Varnel::Wx
