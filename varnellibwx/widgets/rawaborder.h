#pragma once

#include <varnellib/base/flags.h>
#include <varnellib/base/types.h>
#include <varnellib/color/color.h>
#include <varnellibwx/export.h>

#include <wx/panel.h>

namespace Varnel {

/// The state bits of the bordered look.
enum class RawaBorderState : uint32 {
    /// Carried for the widgets that pass it; the painting never reads it.
    Reserved = 1,
    /// The pointer is over the window: with Enabled the inner frame turns blue.
    Hovered = 2,
    Enabled = 4,
    /// No outer frame and no bottom shading.
    Flat = 8,
};

/// The library's owner-drawn panel with a bevelled border: an outer frame (54, 54, 54), an inner
/// outline (37, 37, 37) that turns (0, 114, 188) while hovered and enabled, and a bottom row
/// lighter in the middle (85, 85, 85) than at its ends (70, 70, 70). The face is the window's
/// background colour. Buttons, the spinner's field, the combo box and the eyedropper share it.
class VARNEL_LIBWX_EXPORT RawaBorder : public wxPanel {
public:
    RawaBorder(wxWindow* parent, int id, const wxString& name, Flags<RawaBorderState> state);
    ~RawaBorder() override;

    bool Enable(bool enable = true) override;

    Flags<RawaBorderState> state() const { return m_state; }

protected:
    Flags<RawaBorderState> m_state;

private:
    void onPaint(wxPaintEvent& event);
    void onEnter(wxMouseEvent& event);
    void onLeave(wxMouseEvent& event);
};

namespace Detail {

/// The frame colours of the bordered look, for controls that draw or style a frame of their own.
inline constexpr RgbBytes kRawaOuterFrame{54, 54, 54};
inline constexpr RgbBytes kRawaInnerFrame{37, 37, 37};
inline constexpr RgbBytes kRawaHighlightFrame{0, 114, 188};

/// Gives a native text entry (or a multi-line control's frame) the bordered look's square frame
/// in place of GTK's light rounded one, the inner ring in the highlight colour while focused;
/// nothing for one made with `wxBORDER_NONE`, which sits in a frame of its owner's.
void wearBorderedEntryFrame(wxWindow& entry);

/// Draws the border of a client area of `size` in the look that `state` asks for.
VARNEL_LIBWX_EXPORT void paintRawaBorder(wxDC& dc, wxSize size, Flags<RawaBorderState> state);
/// The same look around any rectangle of the DC.
VARNEL_LIBWX_EXPORT void paintRawaBorder(wxDC& dc, const wxRect& rect,
                                         Flags<RawaBorderState> state);

} // namespace Detail
} // namespace Varnel
