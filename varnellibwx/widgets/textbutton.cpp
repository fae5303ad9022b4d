#include <varnellibwx/widgets/textbutton.h>

#include <varnellibwx/stringconversion.h>

#include <wx/utils.h>

namespace Varnel::Wx {

namespace {

Function<void()> opener(const String& url) {
    return [url] {
        wxLaunchDefaultBrowser(toWxString(url));
    };
}

} // namespace

wxBEGIN_EVENT_TABLE(TextButton, StaticText) EVT_LEFT_UP(TextButton::onLeftUp)
    EVT_ENTER_WINDOW(TextButton::onEnter) EVT_LEAVE_WINDOW(TextButton::onLeave) wxEND_EVENT_TABLE()

        TextButton::TextButton(wxWindow* parent, int id, const String& label, const String& url)
    : TextButton(parent, id, label, opener(url)) {}

TextButton::TextButton(wxWindow* parent, int id, const String& label,
                       const Function<void()>& onClick, const wxPoint& position, const wxSize& size)
    : StaticText(parent, id, label, 0, {}, size), m_onClick(onClick),
      m_normalColour(GetForegroundColour()), m_hoverColour(GetForegroundColour()),
      m_visitedColour(GetForegroundColour()) {
    if (position != wxDefaultPosition)
        Move(position);
}

TextButton::~TextButton() = default;

void TextButton::setHyperlink(const String& url) {
    m_onClick = opener(url);
}

void TextButton::show(const wxColour& colour) {
    SetForegroundColour(colour);
    Refresh(true);
}

void TextButton::setSkin(const GuiSkin& skin) {
    setNormalColour(toWxColour(skin.link));
    setHoverColour(toWxColour(skin.link));
}

void TextButton::setNormalColour(const wxColour& colour) {
    m_normalColour = colour;
    if (!m_visited && !m_hovered)
        show(colour);
}

void TextButton::setHoverColour(const wxColour& colour) {
    m_hoverColour = colour;
    if (m_hovered)
        show(colour);
}

void TextButton::setVisitedColour(const wxColour& colour) {
    m_visitedColour = colour;
    if (m_visited && !m_hovered)
        show(colour);
}

void TextButton::setVisited(bool visited) {
    m_visited = visited;
    if (!m_hovered)
        show(visited ? m_visitedColour : m_normalColour);
}

void TextButton::onLeftUp(wxMouseEvent&) {
    m_onClick();
}

void TextButton::onEnter(wxMouseEvent&) {
    m_hovered = true;
    SetForegroundColour(m_hoverColour);
    SetCursor(wxCursor(wxCURSOR_HAND));
    Refresh(true);
}

void TextButton::onLeave(wxMouseEvent&) {
    m_hovered = false;
    show(m_visited ? m_visitedColour : m_normalColour);
}

} // namespace Varnel::Wx
