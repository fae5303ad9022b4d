#pragma once

#include <varnellib/base/arrayview.h>
#include <varnellib/base/stack.h>
#include <varnellib/color/color.h>
#include <varnellibwx/export.h>

#include <wx/panel.h>

namespace Varnel::Wx {

/// A separator drawn as a band of one-pixel lines, one per colour (top to bottom, or left to
/// right), exactly as thick as there are colours at any DPI. Drawn only partly along its length
/// (a length scale below 1) it doubles as a thin progress bar, and then its colours are
/// brightened (each channel doubled, capped at 255). Owned by its parent.
class VARNEL_LIBWX_EXPORT StaticLine : public wxPanel {
public:
    /// The standard etched separator: (37, 37, 37) above or left of (100, 100, 100).
    StaticLine(wxWindow* parent, wxOrientation orientation);
    /// An orientation other than wxHORIZONTAL or wxVERTICAL raises the stop exception.
    StaticLine(wxWindow* parent, wxOrientation orientation, ArrayView<const RgbBytes> colors,
               float lengthScale);
    ~StaticLine() override;

    /// Clamps to 0..1 (NaN counts as 0) and repaints at once, so that a running operation can
    /// show progress without returning to the event loop.
    void setLengthScale(float lengthScale);
    float lengthScale() const { return m_lengthScale; }

    /// Draws the lines into `dc` for a client area of `size`.
    void paint(wxDC& dc, wxSize size) const;

private:
    void onPaint(wxPaintEvent& event);

    wxOrientation m_orientation;
    Stack<wxColour> m_colors;
    float m_lengthScale = 1.f;
};

} // namespace Varnel::Wx
