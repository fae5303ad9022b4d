// The gradient control's geometry and hit test without a display, the point it finds again after
// a move, the bytes it draws, and the grid mapping dialog's rules for the input scale.
#include <varnellibwx/widgets/gradientcontrol.h>
#include <varnellibwx/widgets/gridmappingdialog.h>

#include "prelude.h"

using namespace Varnel::Wx::Detail;

namespace {

// A control whose ramp divides by exactly 100 between its first and last column.
GradientGeometry geometryFor(int step, float min = 0.f, float max = 1.f) {
    const int margin = step / 2 + 1;
    return {wxSize(2 * margin + 101, 30), min, max, step};
}
} // namespace

TEST(GradientGeometry, RampMarkersAndPositionsFollowTheStep) {
    struct Row {
        int step, radius, margin;
    };
    for (const Row& row : {Row{10, 5, 6}, Row{15, 7, 8}, Row{20, 10, 11}}) {
        const GradientGeometry at = geometryFor(row.step);
        const int m = row.margin;
        EXPECT_EQ(at.radius(), row.radius);
        EXPECT_EQ(at.ramp(), wxRect(m, 0, 101, 30 - m)) << row.step;
        // The marker's x spans the ramp's width (101), truncated; the lower edge is its y.
        EXPECT_EQ(at.markerCentre(0.f), wxPoint(m, 30 - m));
        EXPECT_EQ(at.markerCentre(0.5f).x, m + 50);
        EXPECT_EQ(at.markerCentre(1.f).x, m + 101);
        EXPECT_EQ(at.markerCentre(7.f).x, m + 101) << "held at the right end";
        EXPECT_EQ(at.markerCentre(-0.5f).x, m - 50) << "not held at the left end";
        EXPECT_EQ(at.markerCentre(kNaN).x, m + 101);
        // The pointer's x over the divisor 100.
        EXPECT_EQ(at.positionAt(m), 0.f);
        EXPECT_EQ(at.positionAt(m + 25), 0.25f);
        EXPECT_EQ(at.positionAt(m + 100), 1.f);
        EXPECT_EQ(at.positionAt(m - 30), 0.f);
        EXPECT_EQ(at.positionAt(m + 300), 1.f);
    }
}

TEST(GradientGeometry, MousePositionsStayInTheUnitRangeWhateverTheEnds) {
    const GradientGeometry wide = geometryFor(10, -1.f, 3.f);
    EXPECT_EQ(wide.markerCentre(1.f).x, 6 + 50);
    EXPECT_EQ(wide.positionAt(6 + 25), 0.f);        // -1 + 0.25 x 4
    EXPECT_EQ(wide.positionAt(6 + 50), 1.f);        // held at 1 though the ramp goes on to 3
    EXPECT_EQ(wide.positionAt(6 + 100), 1.f);       // 3
    EXPECT_FLOAT_EQ(wide.positionAt(6 + 30), 0.2f); // -1 + 0.3 x 4, in float
    const GradientGeometry inverted = geometryFor(10, 1.f, 0.f);
    EXPECT_EQ(inverted.positionAt(6 + 25), 0.75f);
    EXPECT_EQ(inverted.markerCentre(0.25f).x, 6 + 75);
    // Equal ends: every pointer stands for that end; markers go to the right end unless below.
    const GradientGeometry flat = geometryFor(10, 0.5f, 0.5f);
    for (int x : {0, 6, 60, 500})
        EXPECT_EQ(flat.positionAt(x), 0.5f) << x;
    EXPECT_EQ(flat.markerCentre(0.5f).x, 6 + 101);
    EXPECT_EQ(flat.markerCentre(0.9f).x, 6 + 101);
    EXPECT_LT(flat.markerCentre(0.1f).x, -1000000);
    // Ends that are not numbers give 0, and a ramp one pixel wide divides by 0.
    EXPECT_EQ(geometryFor(10, kNaN, 1.f).positionAt(40), 0.f);
    EXPECT_EQ((GradientGeometry{wxSize(13, 30), 0.f, 1.f, 10}.positionAt(6)), 0.f);
    EXPECT_EQ((GradientGeometry{wxSize(13, 30), 0.f, 1.f, 10}.positionAt(9)), 1.f);
}

TEST(GradientGeometry, HitTestIsInclusiveAndTakesTheFirstPointInTheList) {
    ColorGradient gradient;
    EXPECT_FALSE(gradientHitTest(gradient, geometryFor(10), {6, 24}));
    gradient.addPoint(Rgb(1, 0, 0, 1), 0.f);
    gradient.addPoint(Rgb(0, 1, 0, 1), 1.f);
    gradient.addPoint(Rgb(0, 0, 1, 1), 1.f); // on top of the green one
    const GradientGeometry at = geometryFor(10);
    const std::pair<wxPoint, Optional<int>> pointers[] = {
        {{6, 24}, 0},   {{11, 24}, 0},  {{9, 28}, 0}, // distance 5: on the rim
        {{11, 25}, {}}, {{1, 23}, {}},                // just past it
        {{107, 24}, 1}, {{60, 10}, {}},
    };
    for (const auto& [pointer, expected] : pointers)
        EXPECT_EQ(gradientHitTest(gradient, at, pointer), expected)
            << pointer.x << "," << pointer.y;
}

TEST(GradientPoints, FoundAgainByColourAndPositionElseTheStopException) {
    ColorGradient gradient;
    gradient.addPoint(Rgb(0.2f, 0.4f, 0.6f, 1), 0.5f);
    gradient.addPoint(Rgb(kNaN, 0.f, 1e30f, 1), 0.5f);
    gradient.addPoint(Rgb(0.2f, 0.4f, 0.6f, 0.f), 0.5f); // alpha is not compared
    EXPECT_EQ(findGradientPoint(gradient, {Rgb(0.2f, 0.4f, 0.6f, 0.f), 0.5f}), 0);
    EXPECT_EQ(findGradientPoint(gradient, {Rgb(kNaN, 0.f, 1e30f, 1), 0.5f}), 1);
    expectStop(
        [&] {
            findGradientPoint(gradient, {Rgb(0.2f, 0.4f, 0.6f, 1), 0.25f});
        },
        "utility/colorgradient", 100);
}

TEST(GradientPainting, LanesClampAndRoundToNearestEvenAndColumnsRepeatDownTheStrip) {
    // 0.5 is 127.5 bytes: the tie goes to the even 128; 0.998 (254.49) rounds down.
    const std::pair<float, int> lanes[] = {{-1.f, 0},   {kNaN, 0},     {0.5f, 128},  {1.f, 255},
                                           {kInf, 255}, {0.999f, 255}, {0.998f, 254}};
    for (const auto& [lane, byte] : lanes)
        EXPECT_EQ(gradientByte(lane), byte) << lane;

    const wxImage strip =
        columnStrip({3, 2}, [](int column) { return Rgb(column * 0.5f, 0, 1, 1); });
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x) {
            EXPECT_EQ(strip.GetRed(x, y), gradientByte(x * 0.5f));
            EXPECT_EQ(strip.GetBlue(x, y), 255);
        }
    EXPECT_FALSE(columnStrip({0, 5}, [](int) { return Rgb(); }).IsOk());
}

TEST(GridMappingScale, TheSpinnerShowsFourSignificantDigits) {
    // Two to nine decimals; the dialog's tests cover which automatic scales are taken.
    const std::pair<float, int> digits[] = {{1.f, 3},    {0.00025f, 7}, {1000.f, 2},
                                            {1e-12f, 9}, {0.f, 2},      {kNaN, 2}};
    for (const auto& [scale, expected] : digits)
        EXPECT_EQ(inputScaleDigits(scale), expected) << scale;
}
