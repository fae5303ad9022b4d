#pragma once

#include <varnellib/base/stack.h>
#include <varnellib/color/color.h>
#include <varnellib/export.h>

namespace Varnel {

/// A colour gradient over the parameter range 0 to 1, through colour control points kept sorted
/// by position (points at equal positions keep the order in which they were added).
class VARNEL_LIB_EXPORT ColorGradient {
public:
    /// One control point: a colour at a position of the parameter range.
    struct Point {
        Rgb color;
        float position = 0.f;
        bool operator==(const Point&) const = default;
    };

    /// The colour an empty gradient answers everywhere: opaque black.
    static constexpr Rgb kEmptyColor{0.f, 0.f, 0.f, 1.f};

    const Stack<Point>& points() const noexcept { return m_points; }

    /// Adds a point and returns its index in the sorted list.
    int addPoint(const Rgb& color, float position);
    void removePoint(int index);
    void setColor(int index, const Rgb& color);
    /// Moves a point and returns its new index in the sorted list.
    int setPosition(int index, float position);

    /// The colour at `position`: the four lanes interpolated linearly between the neighbouring
    /// points, the end colours outside them. (It is a colour, not a hue-saturation-value triple:
    /// gradients blend in linear RGB.) A NaN position answers the first colour.
    Rgb getColorAt(float position) const;

    bool operator==(const ColorGradient&) const = default;

private:
    Stack<Point> m_points;
};

} // namespace Varnel
