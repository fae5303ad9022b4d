#pragma once

#include <varnellibwx/export.h>

#include <wx/textctrl.h>

namespace Varnel::Wx {

/// A plain text entry (rich styles are dropped) with its own drag selection: the selection runs
/// from where the left button went down to the character under the pointer, the pointer clamped
/// into the client area, so a drag that leaves the control selects up to its edge. Log views feed
/// it through appendText, which follows new text only when the caret was already at the end.
///
/// The drag takes no explicit mouse capture: on GTK the pointer grab that the press itself gives
/// already delivers the motion and the release wherever the pointer goes, while a capture taken
/// on a text view is lost at once (and the release with it). GTK may merge or drop motion events
/// under load, so the release sets the selection once more from its own (clamped) position: the
/// selection a drag leaves never depends on which motions arrived. It writes in the library's
/// standard font, scaled with the display. Owned by its parent.
class VARNEL_LIBWX_EXPORT TextCtrl : public wxTextCtrl {
public:
    TextCtrl(wxWindow* parent, int id, const wxString& value = wxEmptyString,
             const wxPoint& position = wxDefaultPosition, const wxSize& size = wxDefaultSize,
             long style = 0);
    ~TextCtrl() override;

    /// Appends text; scrolls to it only when the caret was at the end (or a selection ended
    /// there), and otherwise keeps the user's selection.
    void appendText(const wxString& text);

    bool isDragging() const { return m_dragging; }

private:
    void onLeftDown(wxMouseEvent& event);
    void onMotion(wxMouseEvent& event);
    void onLeftUp(wxMouseEvent& event);
    void onCaptureLost(wxMouseCaptureLostEvent& event);
    long characterAt(wxPoint point) const;
    /// Selects from the anchor to the character under `point`, clamped into the client area.
    void selectTo(wxPoint point);

    bool m_dragging = false;
    long m_anchor = 0;
};

} // namespace Varnel::Wx
