#pragma once

#include <algorithm>
#include <cmath>

namespace Varnel::Wx::Detail {

/// A float pixel coordinate truncated toward zero into an int; out-of-range values saturate
/// and NaN gives 0, so that points far outside a plot or a ramp stay drawable.
inline int truncToPixel(float value) {
    if (std::isnan(value))
        return 0;
    constexpr float kLimit = 1e9f;
    return static_cast<int>(std::clamp(value, -kLimit, kLimit));
}

} // namespace Varnel::Wx::Detail
