#pragma once

#include <varnellib/base/function.h>
#include <varnellib/base/string.h>
#include <varnellibwx/export.h>
#include <varnellibwx/focusable.h>
#include <varnellibwx/guiskin.h>

#include <wx/collpane.h>
#include <wx/geometry.h>
#include <wx/panel.h>

#include <array>

namespace Varnel::Wx {

class StaticText;

/// The collapsible panel's marker: a small filled triangle in the skin's text colour, pointing
/// right while collapsed and down while expanded, drawn antialiased at any scale. Clicks pass
/// through to its parent. Owned by its parent.
class VARNEL_LIBWX_EXPORT Tick : public wxWindow {
public:
    Tick(wxWindow* parent, const GuiSkin& skin, bool expanded);
    ~Tick() override;

    void setExpanded(bool expanded);
    bool isExpanded() const { return m_expanded; }
    void paint(wxDC& dc) const;

private:
    GuiSkin m_skin;
    bool m_expanded;
};

/// A header line (the Tick and a title) over a content pane that the host fills (getPane() is
/// the parent for its controls, with a sizer of the host's). A click on the header, or Space or
/// Enter while it has the focus, toggles the pane: collapsing hides it, and the window around is
/// laid out again so that what follows moves up into the space (its best size shrinks; the
/// top-level window keeps its size, as the toolkit's pane does with wxCP_NO_TLW_RESIZE).
///
/// A toggle by the user calls the callback with the new state, then sends
/// wxEVT_COLLAPSIBLEPANE_CHANGED (a wxCollapsiblePaneEvent, as the toolkit's own collapsible pane
/// sends it) to the panel and its ancestors. expand, collapse and toggle from code report
/// nothing. Starts collapsed unless told otherwise. Owned by its parent.
class VARNEL_LIBWX_EXPORT CollapsiblePanel : public wxPanel, public Focusable {
public:
    CollapsiblePanel(wxWindow* parent, int id, const String& title, bool expanded = false,
                     const GuiSkin& skin = GuiSkin());
    ~CollapsiblePanel() override;

    wxWindow* getPane() const { return m_pane; }
    void expand() { setExpanded(true); }
    void collapse() { setExpanded(false); }
    bool isExpanded() const { return m_expanded; }
    void callOnToggle(Function<void(bool expanded)> onToggle) { m_onToggle = std::move(onToggle); }

    wxWindow* header() const { return m_header; }
    Tick* tick() const { return m_tick; }

    /// The header takes the focus.
    void SetFocus() override;

private:
    void setExpanded(bool expanded);
    /// The user's toggle: the new state, the callback, the event.
    void toggleByUser();
    void layOutAgain();

    GuiSkin m_skin;
    wxWindow* m_header = nullptr;
    Tick* m_tick = nullptr;
    StaticText* m_title = nullptr;
    wxPanel* m_pane = nullptr;
    Function<void(bool)> m_onToggle;
    bool m_expanded;
};

namespace Detail {

/// The Tick's triangle in a square of `side` logical pixels: pointing right (collapsed) or down
/// (expanded), centred, its base about 0.6 of the side and its height about half the side. The
/// base's corners and the tip's distance from the base land on whole device pixels at
/// `deviceScale` (GTK's window scale), so its straight edges are crisp; the tip sits midway
/// along the base.
VARNEL_LIBWX_EXPORT std::array<wxPoint2DDouble, 3> tickTriangle(int side, bool expanded,
                                                                double deviceScale = 1.0);

} // namespace Detail
} // namespace Varnel::Wx
