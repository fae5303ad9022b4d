#pragma once

#include <varnellib/base/arrayview.h>
#include <varnellib/base/stack.h>
#include <varnellib/export.h>

namespace Varnel {

/// One control point of a tone curve.
struct CurvePoint {
    float x = 0.f;
    float y = 0.f;
    constexpr bool operator==(const CurvePoint&) const = default;
};

/// A one-dimensional tone curve through control points that the curve widgets read and edit
/// directly (they overwrite, append, erase and sort the points by x; evaluation reads them as
/// they are, so no cache needs invalidating).
///
/// Interpolation 0 is a monotone cubic (Steffen, 1990): between two points the curve never
/// leaves the range of their values, so a tone curve cannot ring or overshoot. Interpolation 1 is
/// linear. Below the first point and above the last the curve holds the end values.
///
/// Degenerate lists stay defined: no points is the identity, one point is a constant, points
/// that are not in increasing x order (or share an x) are evaluated segment by segment as found
/// with the value of a segment's left point where its width is not positive, and a NaN input
/// gives the value at the first point.
class VARNEL_LIB_EXPORT Curve {
public:
    static constexpr int Cubic = 0;
    static constexpr int Linear = 1;

    /// The identity: points (0, 0) and (1, 1), cubic.
    Curve();

    Stack<CurvePoint>& points() noexcept { return m_points; }
    const Stack<CurvePoint>& points() const noexcept { return m_points; }
    int interpolation() const noexcept { return m_interpolation; }
    /// 0 (cubic) or 1 (linear); anything else raises the stop exception.
    void setInterpolation(int interpolation);

    /// The curve at x, in O(log n).
    float operator()(float x) const;
    /// Evaluates many x at once: ys[i] = curve(xs[i]). A run of increasing x is evaluated in one
    /// pass over the points.
    void evaluate(ArrayView<const float> xs, ArrayView<float> ys) const;

    /// True when the curve maps every value of 0..1 to itself.
    bool isIdentity() const;

    friend bool operator==(const Curve&, const Curve&) = default;

private:
    float evaluateSegment(int segment, float x) const;
    float evaluateSegment(int segment, float x, float leftTangent, float rightTangent) const;
    float tangent(int index) const;

    Stack<CurvePoint> m_points;
    int m_interpolation = Cubic;
};

} // namespace Varnel
