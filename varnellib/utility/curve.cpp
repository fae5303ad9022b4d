#include <varnellib/base/stopexception.h>
#include <varnellib/utility/curve.h>

#include <algorithm>
#include <cmath>

namespace Varnel {

namespace {

constexpr const char* kSource = "utility/curve";

float sign(float v) {
    return v > 0.f ? 1.f : (v < 0.f ? -1.f : 0.f);
}

} // namespace

Curve::Curve() : m_points{{0.f, 0.f}, {1.f, 1.f}} {}

void Curve::setInterpolation(int interpolation) {
    VARNEL_REQUIRE(interpolation == Cubic || interpolation == Linear, kSource);
    m_interpolation = interpolation;
}

// Steffen's tangent at point `index`: fully determined by the point's two neighbours, so one
// sample needs only its own segment and the points around it.
float Curve::tangent(int index) const {
    const int last = m_points.size() - 1;
    const CurvePoint* p = m_points.data();
    auto width = [&](int i) {
        return p[i + 1].x - p[i].x;
    };
    auto slope = [&](int i) {
        const float h = width(i);
        return h > 0.f ? (p[i + 1].y - p[i].y) / h : 0.f;
    };
    if (last < 1)
        return 0.f;
    if (last == 1)
        return slope(0);
    if (index == 0 || index == last) {
        // One-sided: the parabola through the three end points, limited to keep monotonicity.
        const int near = index == 0 ? 0 : last - 1;
        const int far = index == 0 ? 1 : last - 2;
        const float hNear = width(near), hFar = width(far);
        const float sNear = slope(near), sFar = slope(far);
        if (!(hNear + hFar > 0.f))
            return 0.f;
        const float parabola =
            sNear * (1.f + hNear / (hNear + hFar)) - sFar * hNear / (hNear + hFar);
        if (parabola * sNear <= 0.f)
            return 0.f;
        return std::fabs(parabola) > 2.f * std::fabs(sNear) ? 2.f * sNear : parabola;
    }
    const float hLeft = width(index - 1), hRight = width(index);
    const float sLeft = slope(index - 1), sRight = slope(index);
    if (!(hLeft + hRight > 0.f))
        return 0.f;
    const float parabola = (sLeft * hRight + sRight * hLeft) / (hLeft + hRight);
    return (sign(sLeft) + sign(sRight)) *
           std::min({std::fabs(sLeft), std::fabs(sRight), 0.5f * std::fabs(parabola)});
}

float Curve::evaluateSegment(int segment, float x) const {
    if (m_interpolation == Linear)
        return evaluateSegment(segment, x, 0.f, 0.f);
    return evaluateSegment(segment, x, tangent(segment), tangent(segment + 1));
}

float Curve::evaluateSegment(int segment, float x, float leftTangent, float rightTangent) const {
    const CurvePoint& a = m_points[segment];
    const CurvePoint& b = m_points[segment + 1];
    const float h = b.x - a.x;
    if (!(h > 0.f))
        return a.y;
    const float t = std::clamp((x - a.x) / h, 0.f, 1.f);
    if (m_interpolation == Linear)
        return a.y + (b.y - a.y) * t;
    // Cubic Hermite form with the two Steffen tangents.
    const float t2 = t * t, t3 = t2 * t;
    return (2.f * t3 - 3.f * t2 + 1.f) * a.y + (t3 - 2.f * t2 + t) * h * leftTangent +
           (-2.f * t3 + 3.f * t2) * b.y + (t3 - t2) * h * rightTangent;
}

float Curve::operator()(float x) const {
    const int count = m_points.size();
    if (count == 0)
        return x;
    const CurvePoint* p = m_points.data();
    if (count == 1 || std::isnan(x) || !(x > p[0].x))
        return p[0].y;
    if (!(x < p[count - 1].x))
        return p[count - 1].y;
    // The last point whose x is below x starts the segment.
    const CurvePoint* upper = std::upper_bound(
        p, p + count, x, [](float value, const CurvePoint& point) { return value < point.x; });
    const int segment = std::clamp(static_cast<int>(upper - p) - 1, 0, count - 2);
    return evaluateSegment(segment, x);
}

void Curve::evaluate(ArrayView<const float> xs, ArrayView<float> ys) const {
    VARNEL_REQUIRE(xs.size() == ys.size(), kSource);
    const int count = m_points.size();
    if (count < 2) {
        for (int i = 0; i < xs.size(); ++i)
            ys.data()[i] = (*this)(xs.data()[i]);
        return;
    }
    const CurvePoint* p = m_points.data();
    int segment = 0;
    float previous = -INFINITY;
    // The tangents of the segment last used: a run of samples inside one segment shares them.
    int tangentsOf = -1;
    float leftTangent = 0.f, rightTangent = 0.f;
    for (int i = 0; i < xs.size(); ++i) {
        const float x = xs.data()[i];
        if (std::isnan(x) || x < previous || !(x > p[0].x) || !(x < p[count - 1].x)) {
            // Out of order or outside the points: the single-sample path decides.
            ys.data()[i] = (*this)(x);
            if (!std::isnan(x) && x >= previous)
                previous = x;
            else
                segment = 0, previous = -INFINITY;
            continue;
        }
        while (segment < count - 2 && !(x < p[segment + 1].x))
            ++segment;
        if (m_interpolation == Cubic && tangentsOf != segment) {
            leftTangent = tangent(segment);
            rightTangent = tangent(segment + 1);
            tangentsOf = segment;
        }
        ys.data()[i] = evaluateSegment(segment, x, leftTangent, rightTangent);
        previous = x;
    }
}

bool Curve::isIdentity() const {
    const int count = m_points.size();
    if (count == 0)
        return true;
    if (count < 2 || !(m_points[0].x <= 0.f) || !(m_points[count - 1].x >= 1.f))
        return false;
    for (int i = 0; i < count; ++i) {
        if (m_points[i].x != m_points[i].y)
            return false;
        if (i > 0 && !(m_points[i].x > m_points[i - 1].x))
            return false;
    }
    return true;
}

} // namespace Varnel
