#pragma once

#include <varnellib/base/stopexception.h>
#include <varnellib/utility/curve.h>

#include <array>

namespace Varnel {

/// Which of the four curves of a ColorCurve: the master curve applies to all three colours.
enum class CurveChannel : int { Master = 0, Red = 1, Green = 2, Blue = 3 };

inline constexpr int kCurveChannelCount = 4;

/// The four tone curves of an image: master, red, green and blue. A channel outside the
/// enumeration raises the stop exception.
class ColorCurve {
public:
    Curve& operator[](CurveChannel channel) { return m_curves[index(channel)]; }
    const Curve& operator[](CurveChannel channel) const { return m_curves[index(channel)]; }

    /// True when no curve changes anything.
    bool isIdentity() const {
        for (const Curve& curve : m_curves)
            if (!curve.isIdentity())
                return false;
        return true;
    }

    friend bool operator==(const ColorCurve&, const ColorCurve&) = default;

private:
    static std::size_t index(CurveChannel channel) {
        const int value = static_cast<int>(channel);
        VARNEL_REQUIRE(value >= 0 && value < kCurveChannelCount, "utility/colorcurve");
        return static_cast<std::size_t>(value);
    }

    std::array<Curve, kCurveChannelCount> m_curves;
};

} // namespace Varnel
