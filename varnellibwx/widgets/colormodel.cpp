#include <varnellibwx/widgets/colormodel.h>

#include <varnellib/base/stopexception.h>
#include <varnellib/color/blackbody.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <sstream>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

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

namespace {

// Chooses without a branch: a slider drag converts colours whose channel order changes from one
// call to the next, and branches on it are mispredicted half the time. The values pass through
// untouched, so the results are those of the branching form.
float select(bool condition, float ifTrue, float ifFalse) {
    const uint32 mask = 0u - static_cast<uint32>(condition);
    return std::bit_cast<float>((std::bit_cast<uint32>(ifTrue) & mask) |
                                (std::bit_cast<uint32>(ifFalse) & ~mask));
}

} // namespace

#if defined(__SSE2__)
namespace {

__m128 selectLanes(__m128 mask, __m128 ifTrue, __m128 ifFalse) {
    return _mm_or_ps(_mm_and_ps(mask, ifTrue), _mm_andnot_ps(mask, ifFalse));
}

// floor, lane by lane, for every float: whole from 2^23 up, infinities and NaN as they are,
// signed zeros kept.
__m128 floorLanes(__m128 x) {
    const __m128 sign = _mm_set1_ps(-0.f);
    const __m128 whole = _mm_cmpnlt_ps(_mm_andnot_ps(sign, x), _mm_set1_ps(kByteRoundingBias));
    __m128 floor = _mm_cvtepi32_ps(_mm_cvttps_epi32(x));
    floor = _mm_sub_ps(floor, _mm_and_ps(_mm_cmpgt_ps(floor, x), _mm_set1_ps(1.f)));
    floor = _mm_or_ps(_mm_andnot_ps(sign, floor), _mm_and_ps(sign, x));
    return selectLanes(whole, x, floor);
}

// Four colours (Rgb or Hsv: four floats, the first at the start) as four vectors of one channel
// each, and back.
struct Channels {
    __m128 x, y, z, w;
};
static_assert(sizeof(Rgb) == 16 && sizeof(Hsv) == 16, "four floats, nothing between colours");
template <class Colour>
Channels loadChannels(const Colour* first) {
    const auto lanes = [first](int k) {
        return _mm_loadu_ps(reinterpret_cast<const float*>(first + k));
    };
    Channels c{lanes(0), lanes(1), lanes(2), lanes(3)};
    _MM_TRANSPOSE4_PS(c.x, c.y, c.z, c.w);
    return c;
}
template <class Colour>
void storeChannels(Channels c, Colour* first) {
    _MM_TRANSPOSE4_PS(c.x, c.y, c.z, c.w);
    _mm_storeu_ps(reinterpret_cast<float*>(first), c.x);
    _mm_storeu_ps(reinterpret_cast<float*>(first + 1), c.y);
    _mm_storeu_ps(reinterpret_cast<float*>(first + 2), c.z);
    _mm_storeu_ps(reinterpret_cast<float*>(first + 3), c.w);
}

// hsvToRgb's channel formula on four lanes: `x` is the hue as a fraction plus the channel's
// offset, `s` and `v` saturation and value.
__m128 hueLanes(__m128 x, __m128 s, __m128 v) {
    const __m128 sign = _mm_set1_ps(-0.f), one = _mm_set1_ps(1.f);
    const __m128 f = _mm_sub_ps(x, floorLanes(x));
    const __m128 distance = _mm_sub_ps(
        _mm_andnot_ps(sign, _mm_sub_ps(_mm_mul_ps(f, _mm_set1_ps(6.f)), _mm_set1_ps(3.f))), one);
    const __m128 p = _mm_max_ps(_mm_min_ps(distance, one), _mm_setzero_ps());
    return _mm_mul_ps(v, _mm_add_ps(_mm_mul_ps(_mm_sub_ps(p, one), s), one));
}

} // namespace
#endif

Hsv rgbToHsv(const Rgb& color) {
    // Sorts the channels so that r is the largest, noting in k where the hue's sector starts.
    const bool swapGreenBlue = !(color.g >= color.b);
    float g = select(swapGreenBlue, color.b, color.g);
    const float b = select(swapGreenBlue, color.g, color.b);
    float k = select(swapGreenBlue, -1.f, 0.f);
    const bool swapRedGreen = !(color.r >= g);
    const float r = select(swapRedGreen, g, color.r);
    g = select(swapRedGreen, color.r, g);
    k = select(swapRedGreen, -kOneThird - k, k);
    const float chroma = r - std::min(g, b);
    const float h =
        select(chroma != 0.f, std::fabs(k + (g - b) * (kOneSixth / chroma)) * kFullCircle, 0.f);
    const float s = select(r != 0.f, chroma / r, 0.f);
    return {h, s, r, 0.f};
}

Rgb hsvToRgb(const Hsv& hsv) {
    const float t = hsv.h * kOne360th;
#if defined(__SSE2__)
    // The three channels side by side.
    alignas(16) float channels[4];
    _mm_store_ps(channels,
                 hueLanes(_mm_add_ps(_mm_set1_ps(t), _mm_setr_ps(kHueOffsets[0], kHueOffsets[1],
                                                                 kHueOffsets[2], 0.f)),
                          _mm_set1_ps(hsv.s), _mm_set1_ps(hsv.v)));
#else
    float channels[3];
    for (int i = 0; i < 3; ++i) {
        const float x = t + kHueOffsets[i];
        const float f = x - std::floor(x);
        const float p = std::max(0.f, std::min(1.f, std::fabs(f * 6.f - 3.f) - 1.f));
        channels[i] = hsv.v * ((p - 1.f) * hsv.s + 1.f);
    }
#endif
    return {channels[0], channels[1], channels[2], 0.f};
}

void rgbToHsv(ArrayView<const Rgb> colors, ArrayView<Hsv> out) {
    const int count = std::min(colors.size(), out.size());
    int i = 0;
#if defined(__SSE2__)
    // Four colours side by side, each operation the scalar form's: !(a >= b) is "not greater or
    // equal" (true for NaN), and std::min(g, b), (b < g) ? b : g, is minps(b, g).
    const __m128 zero = _mm_setzero_ps();
    for (; i + 4 <= count; i += 4) {
        const auto [r, g, b, a] = loadChannels(&colors[i]);
        const __m128 swapGreenBlue = _mm_cmpnge_ps(g, b);
        const __m128 g1 = selectLanes(swapGreenBlue, b, g);
        const __m128 b1 = selectLanes(swapGreenBlue, g, b);
        const __m128 k1 = _mm_and_ps(swapGreenBlue, _mm_set1_ps(-1.f));
        const __m128 swapRedGreen = _mm_cmpnge_ps(r, g1);
        const __m128 r2 = selectLanes(swapRedGreen, g1, r);
        const __m128 g2 = selectLanes(swapRedGreen, r, g1);
        const __m128 k2 = selectLanes(swapRedGreen, _mm_sub_ps(_mm_set1_ps(-kOneThird), k1), k1);
        const __m128 chroma = _mm_sub_ps(r2, _mm_min_ps(b1, g2));
        const __m128 hue = _mm_mul_ps(
            _mm_andnot_ps(_mm_set1_ps(-0.f),
                          _mm_add_ps(k2, _mm_mul_ps(_mm_sub_ps(g2, b1),
                                                    _mm_div_ps(_mm_set1_ps(kOneSixth), chroma)))),
            _mm_set1_ps(kFullCircle));
        storeChannels({selectLanes(_mm_cmpneq_ps(chroma, zero), hue, zero),
                       selectLanes(_mm_cmpneq_ps(r2, zero), _mm_div_ps(chroma, r2), zero), r2,
                       zero},
                      &out[i]);
    }
#endif
    for (; i < count; ++i)
        out[i] = rgbToHsv(colors[i]);
}

void hsvToRgb(ArrayView<const Hsv> colors, ArrayView<Rgb> out) {
    const int count = std::min(colors.size(), out.size());
    int i = 0;
#if defined(__SSE2__)
    for (; i + 4 <= count; i += 4) {
        const auto [h, s, v, a] = loadChannels(&colors[i]);
        const __m128 t = _mm_mul_ps(h, _mm_set1_ps(kOne360th));
        storeChannels({hueLanes(_mm_add_ps(t, _mm_set1_ps(kHueOffsets[0])), s, v),
                       hueLanes(_mm_add_ps(t, _mm_set1_ps(kHueOffsets[1])), s, v),
                       hueLanes(_mm_add_ps(t, _mm_set1_ps(kHueOffsets[2])), s, v),
                       _mm_setzero_ps()},
                      &out[i]);
    }
#endif
    for (; i < count; ++i)
        out[i] = hsvToRgb(colors[i]);
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

Optional<Rgb> parsePastedColor(const String& text) {
    std::wstring_view digits = text.view();
    const auto blank = [](wchar_t c) {
        return std::iswspace(static_cast<wint_t>(c)) != 0;
    };
    while (!digits.empty() && blank(digits.front()))
        digits.remove_prefix(1);
    while (!digits.empty() && blank(digits.back()))
        digits.remove_suffix(1);
    if (digits.starts_with(L'#'))
        digits.remove_prefix(1);
    else if (digits.starts_with(L"0x") || digits.starts_with(L"0X"))
        digits.remove_prefix(2);
    if (digits.size() != 6 && digits.size() != 3)
        return {};
    uint32 number = 0;
    for (const wchar_t c : digits) {
        const int value = c >= L'0' && c <= L'9'   ? c - L'0'
                          : c >= L'a' && c <= L'f' ? c - L'a' + 10
                          : c >= L'A' && c <= L'F' ? c - L'A' + 10
                                                   : -1;
        if (value < 0)
            return {};
        number = number * 16 + static_cast<uint32>(value);
        if (digits.size() == 3)
            number = number * 16 + static_cast<uint32>(value);
    }
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

Rgb sliderTrackColor(SliderTrack track, float position, const Rgb& color, const Hsv& hsv) {
    switch (track) {
    case SliderTrack::Red:
        return {position, color.g, color.b, color.a};
    case SliderTrack::Green:
        return {color.r, position, color.b, color.a};
    case SliderTrack::Blue:
        return {color.r, color.g, position, color.a};
    case SliderTrack::Alpha: {
        // Truncated, not rounded: the track is deliberately quantised to 8 bits.
        const int q = static_cast<int>(position * 255.f) & 255;
        const float grey = static_cast<float>(q) / 255.f;
        return {grey, grey, grey, 1.f};
    }
    case SliderTrack::Hue:
        return hsvToRgb({position * kFullCircle, 1.f, 1.f, 0.f});
    case SliderTrack::Sat:
        return hsvToRgb({hsv.h, position, hsv.v, 0.f});
    case SliderTrack::Value:
        return hsvToRgb({hsv.h, hsv.s, position, 0.f});
    case SliderTrack::Temperature:
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

float squareMap(float x, PositionValueMap direction) {
    switch (direction) {
    case PositionValueMap::PositionToValue:
        return x * x;
    case PositionValueMap::ValueToPosition:
        return std::sqrt(x);
    }
    VARNEL_STOP(kModelSource);
}

float squareMap(float x, PositionValueMap direction, float minimum, float maximum) {
    if (direction == PositionValueMap::PositionToValue)
        return minimum + (maximum - minimum) * squareMap(x, direction);
    return squareMap((x - minimum) / (maximum - minimum), direction);
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

void PickerColor::fromRgb(const Rgb& color) {
    rgb = color;
    hsv = rgbToHsv(color);
    hsv.a = color.a;
    hwb = hsvToHwb(hsv);
    hwb.a = color.a;
}

void PickerColor::fromHsv(const Hsv& given) {
    const float alpha = rgb.a;
    rgb = hsvToRgb(given);
    rgb.a = alpha;
    hsv = given;
    hsv.a = alpha;
    hwb = hsvToHwb(hsv);
    hwb.a = alpha;
}

void PickerColor::fromHwb(const Hwb& given) {
    const float alpha = rgb.a;
    rgb = hwbToRgb(given);
    rgb.a = alpha;
    hsv = hwbToHsv(given);
    hsv.a = alpha;
    hwb = given;
    hwb.a = alpha;
}

float PickerColor::rowUnit(SliderTrack track, bool gammaEncoded) const {
    const auto shown = [gammaEncoded](float lane) {
        return gammaEncoded ? gammaMap(lane, PositionValueMap::ValueToPosition) : lane;
    };
    switch (track) {
    case SliderTrack::Red:
        return shown(rgb.r);
    case SliderTrack::Green:
        return shown(rgb.g);
    case SliderTrack::Blue:
        return shown(rgb.b);
    case SliderTrack::Alpha:
        return rgb.a;
    case SliderTrack::Hue:
        return hsv.h / kFullCircle;
    case SliderTrack::Sat:
        return hsv.s;
    case SliderTrack::Value:
        return hsv.v;
    case SliderTrack::Temperature:
        break;
    }
    return 0.f;
}

void PickerColor::editRow(SliderTrack track, float unit, bool gammaEncoded) {
    const float lane = gammaEncoded ? gammaMap(unit, PositionValueMap::PositionToValue) : unit;
    Rgb edited = rgb;
    Hsv given = hsv;
    switch (track) {
    case SliderTrack::Red:
        edited.r = lane;
        return fromRgb(edited);
    case SliderTrack::Green:
        edited.g = lane;
        return fromRgb(edited);
    case SliderTrack::Blue:
        edited.b = lane;
        return fromRgb(edited);
    case SliderTrack::Alpha:
        edited.a = unit;
        return fromRgb(edited);
    case SliderTrack::Hue:
        given.h = unit * kFullCircle;
        return fromHsv(given);
    case SliderTrack::Sat:
        given.s = unit;
        return fromHsv(given);
    case SliderTrack::Value:
        given.v = unit;
        return fromHsv(given);
    case SliderTrack::Temperature:
        break;
    }
    VARNEL_STOP(kModelSource);
}

} // namespace Varnel::Wx::Detail
