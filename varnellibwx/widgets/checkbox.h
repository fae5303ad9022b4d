#pragma once

#include <varnellib/base/function.h>
#include <varnellib/base/string.h>
#include <varnellibwx/export.h>
#include <varnellibwx/focusable.h>

#include <wx/checkbox.h>

namespace Varnel::Wx {

/// The library's two-state check box: a wxCheckBox drawn in the library's look (a box with the
/// bordered look's outline, blue when hovered, a check mark in the skin's toggledBackground, the
/// label in the text colour; everything in the disabled text colour while disabled), always at
/// the standard text size. A change calls onChange with the new value, then goes on to the
/// parents as a wxEVT_CHECKBOX event. A Tab whose key-down reached the box moves the focus among
/// Focusable siblings on its key-up (Shift+Tab backwards). Owned by its parent.
class VARNEL_LIBWX_EXPORT CheckBox : public wxCheckBox, public Focusable {
public:
    CheckBox(wxWindow* parent, int id, const String& label,
             const wxPoint& position = wxDefaultPosition, const wxSize& size = wxDefaultSize,
             bool enabled = true);
    ~CheckBox() override;

    /// Sets the value; with `notify` the change runs exactly as after a click.
    void setValue(bool value, bool notify);
    /// Keeps the standard text size whatever font is given.
    bool SetFont(const wxFont& font) override;

    /// Draws the box into `dc` for an area of `size`.
    void paint(wxDC& dc, wxSize size) const;

    Function<void(bool)> onChange;

protected:
    /// The size the library's painter needs: the box, the gap and the label at the standard size.
    wxSize DoGetBestSize() const override;

private:
    void onCheckBox(wxCommandEvent& event);
    void onKillFocus(wxFocusEvent& event);
    void onKeyDown(wxKeyEvent& event);
    void onKeyUp(wxKeyEvent& event);

    bool m_tabPressed = false;
    bool m_hovered = false;
};

namespace Detail {

/// The size a check box asks for: with a label the given width and 15 high unless a height is
/// given; without a label 15 x 15 unless a size is given; scaled by DPI.
VARNEL_LIBWX_EXPORT wxSize checkBoxSize(bool hasLabel, wxSize size);

/// The label of a check box or radio button right of its indicator of `indicatorWidth`, in the
/// window's font and text colour (the skin's disabled text colour while disabled), vertically
/// centred in `size`, with a dotted outline in the highlight colour while the window has the focus.
void paintIndicatorLabel(wxDC& dc, const wxWindow& window, int indicatorWidth, wxSize size);
/// The size that indicator and label take: the indicator, the gap, the label and its outline,
/// the standard height.
wxSize indicatorLabelSize(const wxWindow& window, int indicatorWidth);

} // namespace Detail
} // namespace Varnel::Wx
