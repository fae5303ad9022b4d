#pragma once

#include <varnellib/base/types.h>

namespace Varnel {

/// The colour currency of the library: linear red, green, blue and alpha as 32-bit floats, never
/// clamped when stored (a light can be brighter than 1). Aligned to 16 bytes so that a pixel
/// loads as one vector. A default Rgb is all zeros.
struct alignas(16) Rgb {
    float r = 0.f;
    float g = 0.f;
    float b = 0.f;
    float a = 0.f;

    constexpr Rgb() = default;
    constexpr Rgb(float red, float green, float blue, float alpha = 1.f)
        : r(red), g(green), b(blue), a(alpha) {}

    constexpr Rgb operator+(const Rgb& o) const { return {r + o.r, g + o.g, b + o.b, a + o.a}; }
    constexpr Rgb operator-(const Rgb& o) const { return {r - o.r, g - o.g, b - o.b, a - o.a}; }
    constexpr Rgb operator*(float f) const { return {r * f, g * f, b * f, a * f}; }
    constexpr bool operator==(const Rgb&) const = default;
};
static_assert(sizeof(Rgb) == 16 && alignof(Rgb) == 16);

/// 2^23: adding it to a float in 0..255 leaves no fraction bits, so the addition itself rounds to
/// the nearest integer, ties to even (the default rounding mode), without a library call.
inline constexpr float kByteRoundingBias = 8388608.f;

/// A colour lane as an 8-bit value: clamped to 0..1, times 255, rounded to nearest with ties to
/// even. NaN gives 0.
inline uint8 unitToByte(float value) {
    const float scaled = (value > 0.f ? (value < 1.f ? value : 1.f) : 0.f) * 255.f;
    // Without fast-math the compiler may not fold (x + c) - c back into x.
    return static_cast<uint8>((scaled + kByteRoundingBias) - kByteRoundingBias);
}

/// Three 8-bit channels, 0 to 255: skin colours and 8-bit pixels.
struct RgbBytes {
    uint8 r = 0;
    uint8 g = 0;
    uint8 b = 0;
    constexpr bool operator==(const RgbBytes&) const = default;
};

/// Hue (degrees), saturation and value as floats, and a fourth lane that a holder of the colour
/// may use for its alpha (conversions leave it 0).
struct Hsv {
    float h = 0.f;
    float s = 0.f;
    float v = 0.f;
    float a = 0.f;
    constexpr bool operator==(const Hsv&) const = default;
};

/// CIE 1931 XYZ tristimulus values.
struct XYZ {
    float x = 0.f;
    float y = 0.f;
    float z = 0.f;
    constexpr bool operator==(const XYZ&) const = default;
};

/// An affine map of 3-vectors: a 3 x 3 matrix and a translation, row by row.
struct AffineTm {
    float m[3][4];

    /// The map applied to the column (x, y, z), as a colour with alpha 1.
    constexpr Rgb operator*(const XYZ& v) const {
        return {m[0][0] * v.x + m[0][1] * v.y + m[0][2] * v.z + m[0][3],
                m[1][0] * v.x + m[1][1] * v.y + m[1][2] * v.z + m[1][3],
                m[2][0] * v.x + m[2][1] * v.y + m[2][2] * v.z + m[2][3], 1.f};
    }
};

/// CIE XYZ to linear sRGB (D65 white), the matrix of IEC 61966-2-1.
inline constexpr AffineTm TM_XYZ_TO_LIN_RGB = {{{3.2406f, -1.5372f, -0.4986f, 0.f},
                                                {-0.9689f, 1.8758f, 0.0415f, 0.f},
                                                {0.0557f, -0.2040f, 1.0570f, 0.f}}};

} // namespace Varnel
