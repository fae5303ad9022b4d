#pragma once

#include <varnellib/base/function.h>
#include <varnellib/base/optional.h>
#include <varnellib/color/color.h>
#include <varnellib/utility/colorgradient.h>
#include <varnellibwx/export.h>

#include <wx/bitmap.h>
#include <wx/image.h>
#include <wx/panel.h>

namespace Varnel::Wx {

class ColorPicker;

namespace Detail {

/// Where a gradient control draws its ramp and markers, and which position a client x stands
/// for. `step` is the control's unit (scaleByDpi(10)); client coordinates start at 0.
struct GradientGeometry {
    wxSize size;
    float minPosition = 0.f;
    float maxPosition = 1.f;
    int step = 10;

    bool operator==(const GradientGeometry&) const = default;
    int radius() const { return step / 2; }
    int margin() const { return step / 2 + 1; }
    /// The client rectangle less the margin at the left, the right and the bottom.
    wxRect ramp() const;
    /// A point's marker centre on the ramp's lower edge. Positions past maxPosition stay at the
    /// right end; those below minPosition are not held back (they go off the left edge). A NaN
    /// position sits at the right end.
    wxPoint markerCentre(float position) const;
    /// The position under client x: the ramp's first column is minPosition, its last one
    /// maxPosition, and the result is clamped to [0, 1] whatever the two ends are (a NaN result,
    /// from ends that are equal or not finite, gives 0).
    float positionAt(int x) const;
};

/// The first point, in list order, whose marker centre is within the radius of `pointer`
/// (inclusive).
VARNEL_LIBWX_EXPORT Optional<int>
gradientHitTest(const ColorGradient& gradient, const GradientGeometry& geometry, wxPoint pointer);

/// The index of the first point with `point`'s red, green and blue (NaN lanes match NaN) and
/// position. Not finding one is a programming error: the stop exception (utility/colorgradient,
/// line 100).
VARNEL_LIBWX_EXPORT int findGradientPoint(const ColorGradient& gradient,
                                          const ColorGradient::Point& point);

/// One byte of a drawn colour lane by the library's 8-bit rule: clamped to [0, 1] (NaN counts as
/// 0), times 255, rounded to nearest with ties to even.
VARNEL_LIBWX_EXPORT unsigned char gradientByte(float lane);

/// A strip `size` big whose column i has the colour columnColor(i), every lane through
/// gradientByte. Empty when the size is.
VARNEL_LIBWX_EXPORT wxImage columnStrip(wxSize size, const Function<Rgb(int column)>& columnColor);

} // namespace Detail

/// The gradient editor: the gradient as a ramp over [minPosition, maxPosition] with a round
/// marker per control point on its lower edge. A press on a marker grabs the point and a drag
/// moves it (past its neighbours too: the list is re-sorted and the same point stays grabbed);
/// the release reports. A right-click on a marker erases the point and reports. A double click on
/// a marker opens the picker on its colour; one between markers first adds a point there with
/// the colour the gradient already has, so the ramp does not change.
///
/// The picker ("Set gradient control point color") is modal. While it is open its live changes
/// recolour the point and repaint, without a report. "OK" (or "Add color", or closing its
/// frame) recolours, repaints and reports once. "Cancel" gives an existing point its colour back
/// and erases a point the double click has just added, reporting nothing: the gradient is then
/// what it was before the double click.
///
/// Reports go to the change callback with the whole gradient, on the interface thread. Owned by
/// its parent.
class VARNEL_LIBWX_EXPORT GradientControl : public wxPanel {
public:
    /// `size` is in unscaled pixels.
    GradientControl(wxWindow* parent, wxSize size, float minPosition, float maxPosition);
    ~GradientControl() override;

    void setGradient(const ColorGradient& gradient);
    const ColorGradient& getGradient() const { return m_gradient; }
    void setMinMaxPosition(float minPosition, float maxPosition);
    void setOnChangeCallback(Function<void(const ColorGradient&)> onChange);

    const Optional<int>& grabbedPoint() const { return m_grabbed; }
    Detail::GradientGeometry geometry() const;
    /// The picker that recolours points, made on first use (a picker costs as much to build as
    /// the rest of a dialog around this control).
    ColorPicker& picker();
    /// Draws the control into `dc` as it looks now.
    void paint(wxDC& dc) const;

private:
    void recolor(int index, bool added);
    void report();

    void onPaint(wxPaintEvent& event);
    void onLeftDown(wxMouseEvent& event);
    void onMotion(wxMouseEvent& event);
    void moveGrabbedTo(int x);
    void onLeftUp(wxMouseEvent& event);
    void onCaptureLost(wxMouseCaptureLostEvent& event);
    void onRightUp(wxMouseEvent& event);
    void onDoubleClick(wxMouseEvent& event);

    ColorGradient m_gradient;
    float m_minPosition;
    float m_maxPosition;
    Optional<int> m_grabbed;
    bool m_moved = false;            // the grabbed point has followed the pointer since the press
    ColorPicker* m_picker = nullptr; // a child, destroyed with the control
    Function<void(const ColorGradient&)> m_onChange;
    // The ramp as last drawn and what it was drawn from: repaints that change nothing (exposes,
    // a window moving over the control) draw it again without a lookup per column.
    mutable wxBitmap m_ramp;
    mutable ColorGradient m_rampGradient;
    mutable Detail::GradientGeometry m_rampGeometry;
};

} // namespace Varnel::Wx
