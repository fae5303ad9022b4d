#include <varnellibwx/widgets/colormodel.h>

#include "prelude.h"

#include <bit>
#include <random>

using namespace Varnel::Wx::Detail;

namespace {

// Within a few units in the last place: the model is exact float arithmetic, and the examples it
// is checked against are written as decimals.
::testing::AssertionResult nearUlps(float actual, float expected, int ulps = 4) {
    const float tolerance =
        ulps * std::max(std::fabs(expected), 1e-30f) * std::numeric_limits<float>::epsilon();
    if (std::fabs(actual - expected) <= tolerance)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << actual << " is not within " << ulps << " ulps of " << expected;
}

} // namespace

TEST(ColorModel, HuesOfPrimariesSecondariesGreysAndBlack) {
    const struct {
        Rgb rgb;
        Hsv hsv;
    } cases[] = {
        {{1, 0, 0}, {0, 1, 1}},
        {{1, 1, 0}, {60, 1, 1}},
        {{0, 1, 0}, {120, 1, 1}},
        {{0, 1, 1}, {180, 1, 1}},
        {{0, 0, 1}, {240, 1, 1}},
        {{1, 0, 1}, {300, 1, 1}},
        {{0, 0, 0}, {0, 0, 0}},
        {{0.5f, 0.5f, 0.5f}, {0, 0, 0.5f}},
        {{0.2f, 0.1f, 0.1f}, {0, 0.5f, 0.2f}},
    };
    for (const auto& c : cases) {
        const Hsv hsv = rgbToHsv(c.rgb);
        EXPECT_TRUE(nearUlps(hsv.h, c.hsv.h)) << c.hsv.h;
        EXPECT_TRUE(nearUlps(hsv.s, c.hsv.s)) << c.hsv.h;
        EXPECT_EQ(hsv.v, c.hsv.v);
        EXPECT_EQ(hsv.a, 0.f);
    }
    // Blue goes through both swaps and lands one float short of 240, as the arithmetic says.
    EXPECT_EQ(rgbToHsv({0, 0, 1}).h, 239.99998f);
}

// Hue wrapping and the round trip back to RGB are properties of the formulas as written, which
// the branch-free forms are compared with bit for bit below.
namespace {

// The conversions as first written, with branches and the library's floor: the fast forms must
// give the same bits for every input.
Hsv plainRgbToHsv(Rgb c) {
    float r = c.r, g = c.g, b = c.b, k = 0.f;
    if (!(g >= b)) {
        std::swap(g, b);
        k = -1.f;
    }
    if (!(r >= g)) {
        std::swap(r, g);
        k = -1.f / 3.f - k;
    }
    const float chroma = r - std::min(g, b);
    return {chroma != 0.f ? std::fabs(k + (g - b) * (1.f / 6.f / chroma)) * 360.f : 0.f,
            r != 0.f ? chroma / r : 0.f, r, 0.f};
}

Rgb plainHsvToRgb(Hsv hsv) {
    const float offsets[3] = {1.f, 2.f / 3.f, 1.f / 3.f};
    float lanes[3];
    for (int i = 0; i < 3; ++i) {
        const float x = hsv.h * (1.f / 360.f) + offsets[i];
        const float p =
            std::max(0.f, std::min(1.f, std::fabs((x - std::floor(x)) * 6.f - 3.f) - 1.f));
        lanes[i] = hsv.v * ((p - 1.f) * hsv.s + 1.f);
    }
    return {lanes[0], lanes[1], lanes[2], 0.f};
}

bool sameBits(float a, float b) {
    return std::bit_cast<uint32_t>(a) == std::bit_cast<uint32_t>(b) || (a != a && b != b);
}

} // namespace

TEST(ColorModel, BranchFreeAndBatchConversionsGiveThePlainFormulasBits) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> wide(-2.f, 3.f);
    std::uniform_int_distribution<uint32_t> anyBits;
    const float specials[] = {0.f, -0.f, 1.f, 0.5f, kNaN, kInf, -kInf, 1e-40f};
    std::vector<Rgb> colours;
    std::vector<Hsv> hsvs;
    for (int i = 0; i < 300001; ++i) { // an odd count: the batches end one at a time
        float lanes[3];
        for (float& lane : lanes)
            lane = i % 3 == 0   ? wide(random)
                   : i % 3 == 1 ? specials[anyBits(random) % 8]
                                : std::bit_cast<float>(anyBits(random));
        if (i % 7 == 0)
            lanes[1] = lanes[0]; // equal channels
        colours.emplace_back(lanes[0], lanes[1], lanes[2]);
        hsvs.push_back({lanes[0] * 400.f, lanes[1], lanes[2], 0.f});
    }
    std::vector<Hsv> batchHsv(colours.size());
    std::vector<Rgb> batchRgb(hsvs.size());
    rgbToHsv(ArrayView<const Rgb>(colours.data(), int(colours.size())),
             ArrayView<Hsv>(batchHsv.data(), int(batchHsv.size())));
    hsvToRgb(ArrayView<const Hsv>(hsvs.data(), int(hsvs.size())),
             ArrayView<Rgb>(batchRgb.data(), int(batchRgb.size())));
    const auto same = [](auto a, auto b) {
        return sameBits(a[0], b[0]) && sameBits(a[1], b[1]) && sameBits(a[2], b[2]);
    };
    for (std::size_t i = 0; i < colours.size(); ++i) {
        const Hsv plain = plainRgbToHsv(colours[i]), fast = rgbToHsv(colours[i]);
        const float p[] = {plain.h, plain.s, plain.v}, f[] = {fast.h, fast.s, fast.v},
                    b[] = {batchHsv[i].h, batchHsv[i].s, batchHsv[i].v};
        ASSERT_TRUE(same(f, p) && same(b, p))
            << colours[i].r << " " << colours[i].g << " " << colours[i].b;
        const Rgb plainBack = plainHsvToRgb(hsvs[i]), back = hsvToRgb(hsvs[i]);
        const float q[] = {plainBack.r, plainBack.g, plainBack.b}, g[] = {back.r, back.g, back.b},
                    c[] = {batchRgb[i].r, batchRgb[i].g, batchRgb[i].b};
        ASSERT_TRUE(same(g, q) && same(c, q)) << hsvs[i].h << " " << hsvs[i].s << " " << hsvs[i].v;
    }
}

TEST(ColorModel, HwbScalingAndThePureBlackRule) {
    EXPECT_EQ(hsvToHwb({30, 0.25f, 0.8f}), (Hwb{30, 0.75f * 0.8f, 1.f - 0.8f, 0}));
    // Whiteness and blackness summing past 1 are scaled down first.
    const Hsv scaled = hwbToHsv({10, 0.8f, 0.8f});
    EXPECT_EQ(scaled.v, 0.5f);
    EXPECT_EQ(scaled.s, 0.f);
    // Pure black keeps full saturation, so its hue survives the round trip.
    const Hsv black = hwbToHsv({200, 0.f, 1.f});
    EXPECT_EQ(black.v, 0.f);
    EXPECT_EQ(black.s, 1.f);
    EXPECT_EQ(black.h, 200.f);
    // Just outside the 0.0001 band the formula applies.
    EXPECT_NEAR(hwbToHsv({0, 0.f, 0.999f}).s, 1.f, 1e-6f);
    EXPECT_EQ(hwbToHsv({0, 0.5f, 0.f}).s, 0.5f);
    const Rgb viaHwb = hwbToRgb(hsvToHwb({90, 0.6f, 0.7f}));
    const Rgb direct = hsvToRgb({90, 0.6f, 0.7f});
    EXPECT_NEAR(viaHwb.g, direct.g, 1e-6f);
    EXPECT_NEAR(viaHwb.b, direct.b, 1e-6f);
}

TEST(ColorModel, HexTextReadsLikeAStreamAndWritesSixDigitsRoundedToEven) {
    const Rgb orange(1.f, 128 * kOne255th, 0.f, 1.f);
    for (const wchar_t* text : {L"FF8000", L"  \tff8000zz", L"0xff8000", L"1ff8000"}) {
        const auto color = parseHexColor(String(text));
        ASSERT_TRUE(color.has_value()) << String(text).toUtf8().data();
        EXPECT_EQ(*color, orange) << String(text).toUtf8().data();
    }
    EXPECT_FALSE(parseHexColor(String(L"")).has_value());
    EXPECT_FALSE(parseHexColor(String(L"   zz")).has_value());
    EXPECT_EQ(parseHexColor(String(L"0")), Rgb(0, 0, 0, 1));
    EXPECT_FALSE(parseHexColor(String(L"0x")).has_value()); // a prefix, no digit
    // Too large for the stream: it keeps its largest value, whose low 24 bits are white.
    EXPECT_EQ(parseHexColor(String(L"123456789abcdef0123")), Rgb(1, 1, 1, 1));

    EXPECT_EQ(formatHexColor({1.f, 0.5f, 0.f, 1.f}), String(L"FF8000")); // 127.5 -> 128
    EXPECT_EQ(formatHexColor({1.7f, -0.2f, 0.5f, 0.f}), String(L"FF0080"));
    EXPECT_EQ(formatHexColor({2.5f / 255.f, 1.5f / 255.f, 0.f}), String(L"020200"));
    for (int value : {0, 1, 127, 128, 200, 255}) {
        const Rgb grey(value / 255.f, value / 255.f, value / 255.f);
        EXPECT_EQ(parseHexColor(formatHexColor(grey))->r, value * kOne255th);
    }
    EXPECT_EQ(toRgbBytes({0.5f, 1.2f, kNaN}), (RgbBytes{128, 255, 0}));
}

TEST(ColorModel, PastedTextIsAColourOnlyAsPeopleCopyOne) {
    const Rgb orange(1.f, 128 * kOne255th, 0.f, 1.f);
    for (const wchar_t* text : {L"#FF8000", L"FF8000", L"0xff8000", L"  #ff8000\n", L"0XFf8000"})
        EXPECT_EQ(parsePastedColor(String(text)), orange) << String(text).toUtf8().data();
    const Rgb short_(1.f, 136 * kOne255th, 0.f, 1.f);
    for (const wchar_t* text : {L"#F80", L"f80", L" 0xF80 "})
        EXPECT_EQ(parsePastedColor(String(text)), short_) << String(text).toUtf8().data();
    for (const wchar_t* text : {L"Dead end", L"", L"#", L"0x", L"#FF80", L"FF8000 px", L"##FF8000",
                                L"#FF80001", L"FF 80 00", L"#GG8000", L"0x#FF8000"})
        EXPECT_EQ(parsePastedColor(String(text)), std::nullopt) << String(text).toUtf8().data();
}

TEST(ColorModel, SliderTracksAndPositionMaps) {
    const Rgb color(0.1f, 0.2f, 0.3f, 0.4f);
    const Hsv hsv = rgbToHsv(color);
    EXPECT_EQ(sliderTrackColor(SliderTrack::Green, 0.7f, color, hsv), Rgb(0.1f, 0.7f, 0.3f, 0.4f));
    // The alpha track truncates to 8 bits: 0.999 shows 254, not 255.
    EXPECT_EQ(sliderTrackColor(SliderTrack::Alpha, 0.999f, color, hsv),
              Rgb(254 / 255.f, 254 / 255.f, 254 / 255.f, 1.f));
    EXPECT_EQ(sliderTrackColor(SliderTrack::Alpha, 1.f, color, hsv).r, 1.f);
    EXPECT_EQ(sliderTrackColor(SliderTrack::Hue, 0.f, color, hsv), hsvToRgb({0, 1, 1}));
    EXPECT_EQ(sliderTrackColor(SliderTrack::Value, 0.f, color, hsv), Rgb(0, 0, 0, 0));

    EXPECT_EQ(gammaMap(0.5f, PositionValueMap::PositionToValue), std::pow(0.5f, 2.2f));
    EXPECT_EQ(gammaMap(0.25f, PositionValueMap::ValueToPosition), std::pow(0.25f, 0.45454544f));
    const float whitePosition = squareMap(6500.f, PositionValueMap::ValueToPosition, 1700, 15000);
    EXPECT_NEAR(whitePosition, 0.6007f, 1e-4f);
    EXPECT_NEAR(squareMap(whitePosition, PositionValueMap::PositionToValue, 1700, 15000), 6500.f,
                0.01f);
    EXPECT_EQ(squareMap(0.25f, PositionValueMap::ValueToPosition), 0.5f); // the row's own form
    EXPECT_EQ(squareMap(0.5f, PositionValueMap::PositionToValue), 0.25f);
    for (const auto map : {+[](float x, PositionValueMap d) { return gammaMap(x, d); },
                           +[](float x, PositionValueMap d) {
                               return squareMap(x, d);
                           }})
        EXPECT_THROW(map(1.f, static_cast<PositionValueMap>(2)), StopException);
}

TEST(ColorModel, TemperatureColoursAreRelativeToTheWhitePoint) {
    const Rgb white = temperatureToRgb(6500.f);
    EXPECT_TRUE(nearUlps(white.r, 1.f));
    EXPECT_TRUE(nearUlps(white.g, 1.f));
    EXPECT_TRUE(nearUlps(white.b, 1.f));
    const Rgb warm = temperatureToRgb(1700.f);
    EXPECT_EQ(warm.r, 1.f);
    EXPECT_LT(warm.b, warm.g);
    const Rgb cool = temperatureToRgb(15000.f);
    EXPECT_EQ(cool.b, 1.f);
    EXPECT_LT(cool.r, cool.g);
    EXPECT_EQ(sliderTrackColor(SliderTrack::Temperature, 0.f, {}, {}), warm);
}

TEST(ColorModel, RangeScalesAndTheirStopPosition) {
    using Varnel::Wx::ColorPickerTypes::Range;
    EXPECT_EQ(rangeScale(Range::ZeroTo255).maximum, 255.f);
    EXPECT_EQ(rangeScale(Range::ZeroToOne).decimals, 3);
    EXPECT_EQ(rangeScale(Range::Percent).step, 0.1f);
    expectStop([] { rangeScale(static_cast<Range>(3)); }, "widgets/colorpicker", 798);
}

TEST(ColorModel, EyedropperAveragingIgnoresTransparentSamples) {
    BitmapImpl<Rgb> one(1, 1, Rgb(0.2f, 0.4f, 0.6f, 1.f)); // radius 0: a single pixel
    EXPECT_EQ(averageSamples(one), Rgb(0.2f, 0.4f, 0.6f, 1.f));

    BitmapImpl<Rgb> edge(3, 1, Rgb(0, 0, 0, 0)); // two pixels off the screen
    edge(2, 0) = Rgb(0.9f, 0.3f, 0.6f, 1.f);
    EXPECT_EQ(averageSamples(edge), Rgb(0.9f, 0.3f, 0.6f, 1.f));

    BitmapImpl<Rgb> opaque(2, 1, Rgb(0, 0, 0, 1));
    opaque(1, 0) = Rgb(1, 0.5f, 0, 1);
    EXPECT_EQ(averageSamples(opaque), Rgb(0.5f, 0.25f, 0, 1));
    // Nothing on screen at all: the divisor stays 1, nothing divides by zero.
    EXPECT_EQ(averageSamples(BitmapImpl<Rgb>(4, 4, Rgb(0, 0, 0, 0))), Rgb(0, 0, 0, 0));
}

TEST(ColorModel, InverseColourScalesReciprocalsOrMarksZeroLanes) {
    const Rgb inverse = inverseColor({0.5f, 0.25f, 1.f, 1.f});
    EXPECT_EQ(inverse, Rgb(0.5f, 1.f, 0.25f, 0.25f)); // reciprocals 2, 4, 1, 1 over 4
    // Any zero channel: 1 exactly where the input was 0, alpha included, 0 elsewhere.
    EXPECT_EQ(inverseColor({0.f, 0.3f, 0.7f, 1.f}), Rgb(1, 0, 0, 0));
    EXPECT_EQ(inverseColor({0.f, 0.f, 0.2f, 0.f}), Rgb(1, 1, 0, 1));
}
