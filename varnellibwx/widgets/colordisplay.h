#pragma once

#include <varnellib/color/color.h>
#include <varnellibwx/export.h>

#include <wx/panel.h>

namespace Varnel::Wx {

/// A colour patch: the client rectangle filled with one colour, drawn in 8 bits (each lane
/// clamped and rounded to even; alpha is not drawn) and outlined by a 1-pixel (105, 105, 105)
/// frame. The picker shows its current and reference colours in two of them. `size` is in
/// unscaled pixels. Owned by its parent.
class VARNEL_LIBWX_EXPORT ColorDisplay : public wxPanel {
public:
    ColorDisplay(wxWindow* parent, int id, wxSize size, const Rgb& color = Rgb(0, 0, 0, 1));
    ~ColorDisplay() override;

    /// Stores the colour and repaints.
    void setColor(const Rgb& color);
    const Rgb& getColor() const { return m_color; }

    /// Draws the patch into `dc` for a client area of `size`.
    void paint(wxDC& dc, wxSize size) const;

private:
    void onPaint(wxPaintEvent& event);

    Rgb m_color;
};

} // namespace Varnel::Wx
