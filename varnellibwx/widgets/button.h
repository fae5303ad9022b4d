#pragma once

#include <varnellib/base/function.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/widgets/rawaborder.h>
#include <varnellibwx/widgets/tooltip.h>

#include <wx/bitmap.h>

namespace Varnel::Wx {

/// A push or toggle button in the bordered look, with an optional bitmap at its left and a
/// centred label, skinned from a GuiSkin. Pressing shows the skin's pressedBackground; a toggled
/// button shows toggledBackground and toggledText. A release inside the button clicks it; a
/// release outside, or a lost mouse capture, cancels. Each click is reported twice, in this
/// order: a wxEVT_BUTTON event handed to the parent's event handler, then the onClick callback.
/// The event is a wxMouseEvent (so that receivers can read the click position): bind it with a
/// handler taking wxMouseEvent& (or wxEvent&). The Tab key never stops on a button. At least 24
/// scaled pixels high. Owned by its parent.
class VARNEL_LIBWX_EXPORT Button : public RawaBorder, public TooltipWindow {
public:
    enum class Behavior : int { Normal = 0, Toggle = 1 };

    Button(wxWindow* parent, const GuiSkin& skin, int id, const wxString& label,
           const wxBitmap& bitmap = wxNullBitmap, const wxBitmap& disabledBitmap = wxNullBitmap,
           Function<void()> onClick = {}, Behavior behavior = Behavior::Normal, bool enabled = true,
           Flags<RawaBorderState> state = {});
    ~Button() override;

    void SetLabel(const wxString& label) override;
    wxString GetLabel() const override;
    bool Enable(bool enable = true) override;
    bool AcceptsFocusFromKeyboard() const override { return false; }

    void setToggled(bool toggled);
    bool isToggled() const { return m_toggled; }
    bool isPressed() const { return m_pressed; }
    bool isToggleable() const { return m_toggleable; }
    const Function<void()>& clickCallback() const { return m_onClick; }
    void setClickCallback(Function<void()> onClick) { m_onClick = std::move(onClick); }
    /// Clicks as if the mouse had been released at `point`.
    void doClick(wxPoint point);

    /// Draws the whole button into `dc` for a client area of `size`.
    void paint(wxDC& dc, wxSize size) const;

protected:
    /// The skin given to the constructor, for subclasses that paint more of it.
    const GuiSkin& skin() const { return m_skin; }

    virtual void onMouseDown(wxMouseEvent& event);
    virtual void onMouseUp(wxMouseEvent& event);
    virtual void onCaptureLost(wxMouseCaptureLostEvent& event);
    virtual void onButtonPaint(wxPaintEvent& event);

private:
    wxString m_label;
    wxBitmap m_disabledBitmap;
    wxBitmap m_bitmap;
    bool m_pressed = false;
    bool m_toggleable;
    bool m_toggled = false;
    GuiSkin m_skin;
    Function<void()> m_onClick;
};

namespace Detail {

/// Where a button draws its label: centred in the room right of the bitmap, and 2 pixels higher
/// when the display scale is 2 or more.
VARNEL_LIBWX_EXPORT wxPoint buttonLabelOrigin(wxSize client, wxSize text, int bitmapWidth);

} // namespace Detail
} // namespace Varnel::Wx
