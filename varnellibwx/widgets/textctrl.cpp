#include <varnellibwx/widgets/textctrl.h>

#include <varnellibwx/fonts.h>
#include <varnellibwx/widgets/rawaborder.h>

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
    // The library's standard text, scaled with the display like every other text widget.
    SetFont(setupStaticTextFont(GetFont(), {}));
    // GTK's frame is light and rounded (a multi-line control's scrolled window wears it); among
    // the skin's dark controls it takes the bordered look's, as the entries do.
    Varnel::Detail::wearBorderedEntryFrame(*this);
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

void TextCtrl::selectTo(wxPoint point) {
    const wxSize size = GetClientSize();
    const wxPoint clamped(std::clamp(point.x, 0, std::max(size.x - 1, 0)),
                          std::clamp(point.y, 0, std::max(size.y - 1, 0)));
    SetSelection(m_anchor, characterAt(clamped));
}

void TextCtrl::onMotion(wxMouseEvent& event) {
    if (!m_dragging) {
        event.Skip();
        return;
    }
    selectTo(event.GetPosition());
}

void TextCtrl::onLeftUp(wxMouseEvent& event) {
    if (m_dragging)
        selectTo(event.GetPosition());
    m_dragging = false;
    if (HasCapture())
        ReleaseMouse();
}

void TextCtrl::onCaptureLost(wxMouseCaptureLostEvent&) {
    m_dragging = false;
}

void TextCtrl::appendText(const wxString& text) {
    // No Freeze around the append: freezing GTK's multiline control swaps its buffer out of the
    // view and back (three times slower, and a selection set while frozen is lost), and the view
    // redraws at most once a frame anyway.
    long from = 0, to = 0;
    GetSelection(&from, &to);
    const bool follow = to == GetLastPosition();
    // The toolkit's append already leaves the caret at the new end and scrolls it into view;
    // placing the caret again would cost as much as the append itself.
    AppendText(text);
    if (!follow)
        SetSelection(from, to);
    else if (GetInsertionPoint() != GetLastPosition())
        SetInsertionPointEnd();
}

} // namespace Varnel::Wx
