#pragma once

#include <varnellib/base/function.h>
#include <varnellibwx/export.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/widgets/statictext.h>

namespace Varnel::Wx {

/// A clickable label, usually a link. A left-button release on it calls the click callback (no
/// press is needed before the release). Its text shows the hover colour while the pointer is
/// over it (with the hand cursor), else the visited colour once the owner marked it visited,
/// else the normal colour; clicking never marks it visited by itself. applySkinRecursive gives
/// it the skin's link colour for normal and hover. Owned by its parent.
class VARNEL_LIBWX_EXPORT TextButton : public StaticText, public ISkinnable {
public:
    /// A link: clicking opens `url` in the default browser.
    TextButton(wxWindow* parent, int id, const String& label, const String& url);
    TextButton(wxWindow* parent, int id, const String& label, const Function<void()>& onClick,
               const wxPoint& position = wxDefaultPosition, const wxSize& size = wxDefaultSize);
    ~TextButton() override;

    void setClickCallback(const Function<void()>& onClick) { m_onClick = onClick; }
    void setHyperlink(const String& url);
    /// Each setter shows its colour at once only in the state that uses it.
    void setNormalColour(const wxColour& colour);
    void setHoverColour(const wxColour& colour);
    void setVisitedColour(const wxColour& colour);
    void setVisited(bool visited);
    /// The skin's link colour becomes the normal and the hover colour.
    void setSkin(const GuiSkin& skin) override;

    bool isHovered() const { return m_hovered; }

private:
    void onLeftUp(wxMouseEvent& event);
    void onEnter(wxMouseEvent& event);
    void onLeave(wxMouseEvent& event);
    void show(const wxColour& colour);

    Function<void()> m_onClick;
    wxColour m_normalColour;
    wxColour m_hoverColour;
    wxColour m_visitedColour;
    bool m_visited = false;
    bool m_hovered = false;

    wxDECLARE_EVENT_TABLE();
};

} // namespace Varnel::Wx
