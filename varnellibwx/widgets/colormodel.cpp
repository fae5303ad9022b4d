#include <varnellibwx/widgets/colormodel.h>

#include <varnellib/base/stopexception.h>
#include <varnellib/color/blackbody.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <utility>

namespace Varnel::Wx::Detail {

namespace {

constexpr const char* kModelSource = "widgets/colormodel";
constexpr const char* kPickerSource = "widgets/colorpicker";
constexpr int kBadRangeLine = 798;
constexpr float kFullCircle = 360.f;
constexpr float kHueOffsets[3] = {1.f, kTwoThirds, kOneThird};
constexpr float kBlackTolerance = 0.0001f;

// The 6500 K colour after normalising by its largest channel; the temperature colours are
// relative to it, so 6500 K itself comes out white.
const Rgb& normalisedWhite() {
    static const Rgb white = [] {
        Rgb c = TM_XYZ_TO_LIN_RGB * blackbodyColor(6500.f);
        const float largest = std::max({c.r, c.g, c.b});
        return Rgb(c.r / largest, c.g / largest, c.b / largest, 0.f);
    }();
    return white;
}

float encodeLane(float lane) {
    return std::clamp(std::pow(std::max(lane, 0.f), kInverseGamma), 0.f, 1.f);
}

} // namespace

Hsv rgbToHsv(const Rgb& color) {
    float r = color.r, g = color.g, b = color.b;
    float k = 0.f;
    if (!(g >= b)) {
        std::swap(g, b);
        k = -1.f;
    }
    if (!(r >= g)) {
        std::swap(r, g);
        k = -kOneThird - k;
    }
    const float chroma = r - std::min(g, b);
    const float h =
        chroma != 0.f ? std::fabs(k + (g - b) * (kOneSixth / chroma)) * kFullCircle : 0.f;
    const float s = r != 0.f ? chroma / r : 0.f;
    return {h, s, r, 0.f};
}

Rgb hsvToRgb(const Hsv& hsv) {
    const float t = hsv.h * kOne360th;
    float channels[3];
    for (int i = 0; i < 3; ++i) {
        const float x = t + kHueOffsets[i];
        const float f = x - std::floor(x);
        const float p = std::max(0.f, std::min(1.f, std::fabs(f * 6.f - 3.f) - 1.f));
        channels[i] = hsv.v * ((p - 1.f) * hsv.s + 1.f);
    }
    return {channels[0], channels[1], channels[2], 0.f};
}

Hwb hsvToHwb(const Hsv& hsv) {
    return {hsv.h, (1.f - hsv.s) * hsv.v, 1.f - hsv.v, 0.f};
}

Hsv hwbToHsv(const Hwb& hwb) {
    float w = hwb.w, b = hwb.b;
    if (w + b > 1.f) {
        const float sum = w + b;
        w /= sum;
        b /= sum;
    }
    const float v = 1.f - b;
    const float s = std::fabs(b - 1.f) > kBlackTolerance ? std::max(0.f, 1.f - w / (1.f - b)) : 1.f;
    return {hwb.h, s, v, 0.f};
}

Rgb hwbToRgb(const Hwb& hwb) {
    return hsvToRgb(hwbToHsv(hwb));
}

Rgb temperatureToRgb(float kelvin) {
    const Rgb c = TM_XYZ_TO_LIN_RGB * blackbodyColor(kelvin);
    const float largest = std::max({c.r, c.g, c.b});
    const Rgb& white = normalisedWhite();
    return {encodeLane(c.r / largest / white.r), encodeLane(c.g / largest / white.g),
            encodeLane(c.b / largest / white.b), 1.f};
}

Optional<Rgb> parseHexColor(const String& text) {
    std::wistringstream stream{std::wstring(text.view())};
    unsigned long number = 0;
    stream >> std::hex >> number;
    // A failed extraction stores 0 when nothing was read and the largest value on overflow.
    if (stream.fail() && number == 0)
        return {};
    return Rgb(static_cast<float>((number >> 16) & 255) * kOne255th,
               static_cast<float>((number >> 8) & 255) * kOne255th,
               static_cast<float>(number & 255) * kOne255th, 1.f);
}

String formatHexColor(const Rgb& color) {
    static constexpr wchar_t kDigits[] = L"0123456789ABCDEF";
    String text;
    for (const uint8 lane : {unitToByte(color.r), unitToByte(color.g), unitToByte(color.b)})
        text << kDigits[lane >> 4] << kDigits[lane & 15];
    return text;
}

RgbBytes toRgbBytes(const Rgb& color) {
    return {unitToByte(color.r), unitToByte(color.g), unitToByte(color.b)};
}

Rgb sliderTrackColor(ColorSlider slider, float position, const Rgb& color, const Hsv& hsv) {
    switch (slider) {
    case ColorSlider::Red:
        return {position, color.g, color.b, color.a};
    case ColorSlider::Green:
        return {color.r, position, color.b, color.a};
    case ColorSlider::Blue:
        return {color.r, color.g, position, color.a};
    case ColorSlider::Alpha: {
        // Truncated, not rounded: the track is deliberately quantised to 8 bits.
        const int q = static_cast<int>(position * 255.f) & 255;
        const float grey = static_cast<float>(q) / 255.f;
        return {grey, grey, grey, 1.f};
    }
    case ColorSlider::Hue:
        return hsvToRgb({position * kFullCircle, 1.f, 1.f, 0.f});
    case ColorSlider::Sat:
        return hsvToRgb({hsv.h, position, hsv.v, 0.f});
    case ColorSlider::Value:
        return hsvToRgb({hsv.h, hsv.s, position, 0.f});
    case ColorSlider::Temperature:
        return temperatureToRgb(squareMap(position, PositionValueMap::PositionToValue,
                                          kTemperatureScale.minimum, kTemperatureScale.maximum));
    }
    VARNEL_STOP(kModelSource);
}

float gammaMap(float x, PositionValueMap direction) {
    switch (direction) {
    case PositionValueMap::PositionToValue:
        return std::pow(x, kGamma);
    case PositionValueMap::ValueToPosition:
        return std::pow(x, kInverseGamma);
    }
    VARNEL_STOP(kModelSource);
}

float squareMap(float x, PositionValueMap direction, float minimum, float maximum) {
    switch (direction) {
    case PositionValueMap::PositionToValue:
        return minimum + (maximum - minimum) * (x * x);
    case PositionValueMap::ValueToPosition:
        return std::sqrt((x - minimum) / (maximum - minimum));
    }
    VARNEL_STOP(kModelSource);
}

SpinnerScale rangeScale(ColorPickerTypes::Range range) {
    switch (range) {
    case ColorPickerTypes::Range::ZeroTo255:
        return {0.f, 255.f, 0, 1.f};
    case ColorPickerTypes::Range::ZeroToOne:
        return {0.f, 1.f, 3, 0.001f};
    case ColorPickerTypes::Range::Percent:
        return {0.f, 100.f, 1, 0.1f};
    }
    Varnel::Detail::throwStopException(kPickerSource, kBadRangeLine);
}

Rgb averageSamples(const BitmapImpl<Rgb>& samples) {
    Rgb sum(0.f, 0.f, 0.f, 0.f);
    const Rgb* pixel = samples.data();
    const std::size_t count =
        static_cast<std::size_t>(samples.width()) * static_cast<std::size_t>(samples.height());
    for (std::size_t i = 0; i < count; ++i)
        sum = sum + pixel[i];
    const float divisor = std::max(sum.a, 1.f);
    return {sum.r / divisor, sum.g / divisor, sum.b / divisor, sum.a / divisor};
}

Rgb inverseColor(const Rgb& color) {
    if (color.r == 0.f || color.g == 0.f || color.b == 0.f) {
        auto zeroToOne = [](float lane) {
            return lane == 0.f ? 1.f : 0.f;
        };
        return {zeroToOne(color.r), zeroToOne(color.g), zeroToOne(color.b), zeroToOne(color.a)};
    }
    const Rgb reciprocal(1.f / color.r, 1.f / color.g, 1.f / color.b, 1.f / color.a);
    const float largest = std::max({reciprocal.r, reciprocal.g, reciprocal.b});
    return {reciprocal.r / largest, reciprocal.g / largest, reciprocal.b / largest,
            reciprocal.a / largest};
}

} // namespace Varnel::Wx::Detail
