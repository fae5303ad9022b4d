// The colour controls' geometry without a display: slider positions and markers, the HWB field
// and its pointer, the averaging rows and the sampled square, and the picker colour's entry paths.
#include <varnellibwx/widgets/colormodel.h>
#include <varnellibwx/widgets/colorpickerbutton.h>
#include <varnellibwx/widgets/colorslider.h>
#include <varnellibwx/widgets/eyedropperbutton.h>
#include <varnellibwx/widgets/hwbslice.h>

#include "prelude.h"

using namespace Varnel::Wx::Detail;

TEST(ColorSliderModel, PositionsClampToTheTrackAndMarkersStayOnIt) {
    // A 105-pixel track with a 5-pixel marker is 100 pixels long.
    const std::pair<int, float> pointer[] = {{50, 0.5f}, {100, 1.f}, {140, 1.f},
                                             {0, 0.f},   {-9, 0.f},  {25, 0.25f}};
    for (const auto& [coordinate, position] : pointer)
        EXPECT_EQ(sliderPositionAt(coordinate, 105, 5), position) << coordinate;
    for (int extent : {0, 1, 5}) // no room to move: always the start
        EXPECT_EQ(sliderPositionAt(3, extent, 5), 0.f) << extent;

    EXPECT_EQ(sliderMarkerRect(1.f, {14, 105}, true, 5), wxRect(0, 100, 14, 5)); // bottom edge
    EXPECT_EQ(sliderMarkerRect(0.5f, {105, 14}, false, 5), wxRect(50, 0, 5, 14));
    EXPECT_EQ(sliderMarkerRect(0.999f, {105, 14}, false, 5).x, 99); // truncated

    // The track's pixel under the marker's centre shows the marker's position.
    EXPECT_EQ(sliderTrackPosition(52, 105, 5), 0.5f);
    EXPECT_EQ(sliderTrackPosition(0, 105, 5), 0.f);
    EXPECT_EQ(sliderTrackPosition(104, 105, 5), 1.f);
    EXPECT_EQ(sliderTrackPosition(0, 1, 5), 0.f);
}

TEST(HwbSliceModel, FieldRunsThroughPureHuesDownToBlack) {
    const wxSize size(64, 32);
    std::vector<unsigned char> field(3 * 64 * 32);
    renderHwbField(size, field.data());
    for (int y = 0; y < size.y; ++y)
        for (int x = 0; x < size.x; ++x) {
            const RgbBytes expected = toRgbBytes(hwbFieldColor(x, y, size));
            const unsigned char* seen = &field[3 * (y * size.x + x)];
            ASSERT_EQ((RgbBytes{seen[0], seen[1], seen[2]}), expected) << x << "," << y;
        }
    for (int x = 0; x < size.x; ++x) {
        const Rgb top = hwbFieldColor(x, 0, size);
        EXPECT_EQ(top, hsvToRgb({x / 64.f * 360.f, 1, 1})); // the pure hue
        EXPECT_EQ(std::max({top.r, top.g, top.b}), 1.f);
        const RgbBytes bottom = toRgbBytes(hwbFieldColor(x, 31, size)); // blackness 31/32
        EXPECT_LE(std::max({bottom.r, bottom.g, bottom.b}), 8);
    }

    // The pointer is clamped to the field: the hue stays below 360, the blackness reaches 1.
    const std::pair<wxPoint, HueBlackness> pointers[] = {
        {{-5, -5}, {0.f, 0.f}},
        {{32, 16}, {180.f, 0.5f}},
        {{500, 500}, {63 / 64.f * 360.f, 1.f}},
    };
    for (const auto& [pointer, expected] : pointers) {
        const HueBlackness at = hwbAtPointer(pointer, size);
        EXPECT_EQ(at.hue, expected.hue) << pointer.x;
        EXPECT_EQ(at.blackness, expected.blackness) << pointer.y;
    }
    EXPECT_EQ(hwbMarkerCentre(180.f, 0.5f, size), wxPoint(32, 16));
    EXPECT_EQ(hwbMarkerCentre(359.f, 1.f, size), wxPoint(63, 32));
    EXPECT_EQ(hwbMarkerColor(0.f), (RgbBytes{0, 255, 255}));   // red's opposite: cyan
    EXPECT_EQ(hwbMarkerColor(240.f), (RgbBytes{255, 255, 0})); // blue's: yellow
}

TEST(EyeDropperModel, RadiusRowsAndTheSampledSquare) {
    const std::pair<int, int> rows[] = {{-3, 0}, {0, 0},  {1, 1},  {2, 2},  {3, 2},  {4, 2},
                                        {5, 3},  {10, 3}, {14, 3}, {15, 4}, {100, 4}};
    for (const auto& [radius, row] : rows)
        EXPECT_EQ(averagingChoiceFor(radius), row) << radius;
    EXPECT_EQ(samplingRegion({100, 50}, 15), (Bucket{85, 35, 31, 31}));
    EXPECT_EQ(samplingRegion({-1, 7}, 0), (Bucket{-1, 7, 1, 1}));
}

TEST(PickerColorModel, EachEntryPathKeepsItsOwnFormAndTheAlpha) {
    PickerColor color;
    color.fromRgb({0.6f, 0.3f, 0.15f, 0.5f});
    EXPECT_EQ(color.hsv.a, 0.5f);
    EXPECT_EQ(color.hwb.a, 0.5f);
    const float hue = color.hsv.h;

    // Saturation to 0 and back, value to 0 and back: the HSV form is kept as given.
    for (const auto change : {&Hsv::s, &Hsv::v}) {
        Hsv edited = color.hsv;
        edited.*change = 0.f;
        color.fromHsv(edited);
        EXPECT_EQ(color.hsv.h, hue);
        EXPECT_EQ(color.rgb.a, 0.5f);
        edited.*change = 0.5f;
        color.fromHsv(edited);
        EXPECT_EQ(color.hsv.h, hue);
        EXPECT_EQ(color.hwb, (Hwb{hue, color.hwb.w, color.hwb.b, 0.5f}));
    }

    // From the slice: the HWB form as given, the HSV through the scaling.
    color.fromHwb({200.f, 0.8f, 0.8f, 0.f});
    EXPECT_EQ(color.hwb, (Hwb{200.f, 0.8f, 0.8f, 0.5f}));
    EXPECT_EQ(color.hsv, (Hsv{200.f, 0.f, 0.5f, 0.5f}));
    EXPECT_EQ(color.rgb, (Rgb{0.5f, 0.5f, 0.5f, 0.5f}));
}

TEST(ColorSwatchModel, StripesShiftEachChannelByThirtyAwayFromItsEnd) {
    const std::pair<RgbBytes, RgbBytes> cases[] = {
        {{0, 0, 0}, {30, 30, 30}},
        {{255, 255, 255}, {225, 225, 225}},
        {{30, 31, 100}, {60, 1, 70}},
    };
    for (const auto& [color, stripe] : cases)
        EXPECT_EQ(stripeColor(color), stripe);
}
