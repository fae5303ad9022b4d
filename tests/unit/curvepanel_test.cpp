// The curve panel's editing rules without a display: coordinates, clamping, the strict hit test,
// presses near and far from the curve, drags through and out of the band, removal, zoom, and
// the histogram's columns; the dialog's history of edits.
#include <varnellibwx/widgets/curvedialog.h>
#include <varnellibwx/widgets/curvepanel.h>

#include "prelude.h"

#include <bit>

using namespace Varnel::Wx;

namespace {

// A 266 x 266 panel: a 256 x 256 plot from (5, 5) to (260, 260).
CurvePanelModel model(std::initializer_list<CurvePoint> points = {{0.f, 0.f}, {1.f, 1.f}}) {
    CurvePanelModel m;
    m.setSize(wxSize(266, 266));
    m.selectedCurve().points() = Stack<CurvePoint>(points);
    return m;
}

// Where the identity curve passes at plot column `x`.
wxPoint onDiagonal(int x) {
    return {x, 266 - (x - 5) - 5};
}

} // namespace

TEST(CurvePanelModel, CoordinatesMarginsAndZoomAnchoredLowerLeft) {
    CurvePanelModel m = model();
    EXPECT_EQ(m.plotWidth(), 256);
    EXPECT_EQ(m.toPixel({0.f, 0.f}), wxPoint(5, 261));
    EXPECT_EQ(m.toPixel({0.5f, 0.25f}), wxPoint(133, 197));
    EXPECT_EQ(m.toPixel({-0.01f, 0.f}).x, 3); // truncated toward zero: -2.56 -> -2
    const CurvePoint back = m.toCurve(wxPoint(133, 197));
    EXPECT_EQ(back.x, 0.5f);
    EXPECT_EQ(back.y, 0.25f);
    EXPECT_LT(m.toCurve(wxPoint(0, 300)).y, 0.f); // not clamped
    m.zoom = 2.f;
    EXPECT_EQ(m.toPixel({0.5f, 0.5f}), wxPoint(261, 5));
    EXPECT_EQ(m.toCurve(wxPoint(261, 5)).x, 0.5f);
    // Far points saturate instead of overflowing.
    EXPECT_EQ(m.toPixel({kNaN, 1e30f}).x, 5);
}

TEST(CurvePanelModel, MousePositionsClampIntoThePlot) {
    const CurvePanelModel m = model();
    const std::pair<wxPoint, wxPoint> cases[] = {
        {{-20, 500}, {5, 261}}, {{3, 3}, {5, 5}}, {{300, 100}, {261, 100}}, {{6, 6}, {6, 6}}};
    for (const auto& [in, out] : cases)
        EXPECT_EQ(m.clampToPlot(in), out) << in.x << "," << in.y;
    CurvePanelModel flat;
    flat.setSize(wxSize(100, 8));
    EXPECT_EQ(flat.clampToPlot(wxPoint(50, 0)), wxPoint(50, 3));
}

TEST(CurvePanelModel, HitTestIsStrictAndTheFirstOfEquallyNearWins) {
    CurvePanelModel m = model({{0.f, 0.f}, {0.5f, 0.5f}, {1.f, 1.f}}); // the middle at (133, 133)
    EXPECT_EQ(m.hitTest(wxPoint(144, 133)), 1);                        // 11 pixels
    EXPECT_EQ(m.hitTest(wxPoint(145, 133)), std::nullopt);             // exactly 12
    EXPECT_EQ(m.hitTest(wxPoint(141, 141)), 1);                        // 8, 8: 128 < 144
    EXPECT_EQ(m.hitTest(wxPoint(142, 142)), std::nullopt);             // 9, 9: 162
    // Two points at the same place: the first in the list.
    m.selectedCurve().points() = Stack<CurvePoint>{{0.5f, 0.5f}, {0.5f, 0.5f}};
    EXPECT_EQ(m.hitTest(wxPoint(135, 133)), 0);
    // A nearer later point beats an earlier one.
    m.selectedCurve().points() = Stack<CurvePoint>{{0.5f, 0.5f}, {0.52f, 0.5f}};
    EXPECT_EQ(m.hitTest(wxPoint(138, 133)), 1);
}

TEST(CurvePanelModel, PressAddsOnTheCurveWithin12PixelsAndGrabsStrictly) {
    CurvePanelModel m = model();
    // 5 pixels above the diagonal: a point on the curve (not at the mouse's height), grabbed.
    EXPECT_TRUE(m.press(onDiagonal(100) + wxPoint(0, -5)));
    ASSERT_EQ(m.selectedCurve().points().size(), 3);
    EXPECT_EQ(m.grabbedPoint, 1);
    const CurvePoint added = m.selectedCurve().points()[1];
    EXPECT_NEAR(added.y, added.x, 1e-6f);
    EXPECT_EQ(m.dragMinX, 0.f + 0.01f);
    EXPECT_EQ(m.dragMaxX, 1.f - 0.01f);
    EXPECT_EQ(std::bit_cast<uint32_t>(CurvePanelModel::kMinGap), 0x3C23D70Au);

    // Exactly 12 pixels: added, but the strict hit test does not grab it.
    m = model();
    EXPECT_TRUE(m.press(onDiagonal(100) + wxPoint(0, -12)));
    EXPECT_EQ(m.selectedCurve().points().size(), 3);
    EXPECT_EQ(m.grabbedPoint, std::nullopt);
    EXPECT_TRUE(m.dragging);

    // 13 pixels: nothing is added, yet the press is under way.
    m = model();
    EXPECT_FALSE(m.press(onDiagonal(100) + wxPoint(0, -13)));
    EXPECT_EQ(m.selectedCurve().points().size(), 2);
    EXPECT_TRUE(m.dragging);
}

TEST(CurvePanelModel, DragsKeepTheBandAndEndPointsApart) {
    CurvePanelModel m = model({{0.f, 0.f}, {0.5f, 0.5f}, {1.f, 1.f}});
    ASSERT_FALSE(m.press(wxPoint(133, 133)));
    EXPECT_EQ(m.grabbedPoint, 1); // on an existing point: grabbed, nothing added
    // Past the right neighbour's x - 0.01: erased; back inside the band: re-inserted.
    m.drag(wxPoint(259, 100));
    EXPECT_EQ(m.selectedCurve().points().size(), 2);
    EXPECT_EQ(m.grabbedPoint, std::nullopt);
    m.drag(wxPoint(200, 120));
    ASSERT_EQ(m.selectedCurve().points().size(), 3);
    EXPECT_EQ(m.grabbedPoint, 1);
    EXPECT_EQ(m.selectedCurve().points()[1], m.toCurve(wxPoint(200, 120)));
    m.release();
    EXPECT_FALSE(m.dragging);

    // The first point stops 0.01 short of the second; the last likewise.
    ASSERT_FALSE(m.press(m.toPixel({0.f, 0.f})));
    m.drag(wxPoint(250, 261));
    EXPECT_EQ(m.selectedCurve().points()[0].x, m.selectedCurve().points()[1].x - 0.01f);
    m.release();
    ASSERT_FALSE(m.press(wxPoint(261, 5)));
    m.drag(wxPoint(5, 5));
    EXPECT_EQ(m.selectedCurve().points()[2].x, m.selectedCurve().points()[1].x + 0.01f);

    // A lone point moves freely; no point at all stays empty.
    CurvePanelModel lone = model({{0.5f, 0.5f}});
    ASSERT_FALSE(lone.press(wxPoint(133, 133)));
    lone.drag(wxPoint(200, 60));
    EXPECT_EQ(lone.selectedCurve().points()[0], lone.toCurve(wxPoint(200, 60)));
    CurvePanelModel none = model({});
    none.press(wxPoint(100, 100));
    none.drag(wxPoint(120, 90));
    EXPECT_LE(none.selectedCurve().points().size(), 1);
}

TEST(CurvePanelModel, RightClicksRemoveOnlyInteriorPoints) {
    CurvePanelModel m = model({{0.f, 0.f}, {0.5f, 0.5f}, {1.f, 1.f}});
    EXPECT_FALSE(m.removeAt(wxPoint(5, 261)));
    EXPECT_FALSE(m.removeAt(wxPoint(180, 180)));
    EXPECT_TRUE(m.removeAt(wxPoint(134, 132)));
    EXPECT_EQ(m.selectedCurve().points().size(), 2);
    EXPECT_FALSE(model({}).removeAt(wxPoint(5, 261)));
}

TEST(CurvePanelModel, ZoomStopsFiveStepsEitherWay) {
    CurvePanelModel m = model();
    for (int i = 0; i < 6; ++i)
        m.zoomBy(120);
    EXPECT_EQ(m.zoom, 7.59375f);
    for (int i = 0; i < 20; ++i)
        m.zoomBy(-120);
    EXPECT_EQ(m.zoom, 0.13168724f);
    m.zoom = 1.f;
    m.zoomBy(0);
    EXPECT_EQ(m.zoom, 0.6666667f);
}

TEST(CurvePanelModel, HistogramColumnsStayDefinedForShortAndEmptyData) {
    const Histogram histogram(Stack<uint64>{0, 5, 10});
    const Stack<float> cumulative = histogram.getCumulativeHistogram();
    using Wx::Detail::histogramColumn;
    EXPECT_EQ(histogramColumn(histogram, cumulative, HistogramType::Linear, 1), 0.5f);
    EXPECT_EQ(histogramColumn(histogram, cumulative, HistogramType::Linear, 2), 1.f);
    EXPECT_EQ(histogramColumn(histogram, cumulative, HistogramType::Linear, 40), 0.f);
    EXPECT_FLOAT_EQ(histogramColumn(histogram, cumulative, HistogramType::Logarithmic, 1),
                    std::log(6.f) / std::log(11.f));
    EXPECT_FLOAT_EQ(histogramColumn(histogram, cumulative, HistogramType::Cumulative, 1),
                    5.f / 15.f);
    EXPECT_EQ(histogramColumn(histogram, cumulative, HistogramType::Cumulative, 40), 0.f);

    const Histogram zeros(Stack<uint64>{0, 0, 0});
    for (HistogramType type :
         {HistogramType::Linear, HistogramType::Logarithmic, HistogramType::Cumulative})
        EXPECT_EQ(histogramColumn(zeros, zeros.getCumulativeHistogram(), type, 1), 0.f);

    expectStop([&] { histogramColumn(histogram, cumulative, HistogramType(7), 0); },
               "widgets/curvepanel", 135);
    EXPECT_STREQ(curveChannelName(CurveChannel::Green), L"Green");
}

TEST(CurvePanelModel, KeysChooseMoveWithinTheBandAndRemoveInteriorPoints) {
    CurvePanelModel m = model({{0.f, 0.f}, {0.5f, 0.5f}, {0.52f, 0.6f}, {1.f, 1.f}});
    const std::pair<int, int> tabs[] = {{1, 0}, {1, 1}, {-1, 0}, {-1, 3}, {1, 0}};
    for (const auto& [direction, chosen] : tabs) {
        m.selectKeyPoint(direction);
        EXPECT_EQ(m.keyPoint, chosen) << direction;
    }
    m.selectKeyPoint(1); // point 1, between 0 and 0.52
    ASSERT_TRUE(m.moveKeyPoint(0, -10));
    EXPECT_EQ(m.selectedCurve().points()[1].x, 0.5f); // the untouched coordinate stays exact
    ASSERT_TRUE(m.moveKeyPoint(50, 0));               // stops 0.01 short of its neighbour
    EXPECT_EQ(m.selectedCurve().points()[1].x, 0.52f - 0.01f);
    EXPECT_FALSE(m.moveKeyPoint(50, 0));
    m.keyPoint = 3;
    ASSERT_TRUE(m.moveKeyPoint(0, 500)); // inside the plot
    EXPECT_EQ(m.selectedCurve().points()[3].y, 0.f);
    EXPECT_FALSE(m.removeKeyPoint()); // an end point stays
    m.keyPoint = 2;
    EXPECT_TRUE(m.removeKeyPoint());
    EXPECT_EQ(m.keyPoint, 1);
    EXPECT_EQ(m.selectedCurve().points().size(), 3);
    m.keyPoint = 9; // out of date after an outside change: nothing moves
    EXPECT_FALSE(m.moveKeyPoint(1, 1));
}

TEST(CurvePanelModel, CrowdedNeighboursLeaveAKeyPointNoRoomToPassThem) {
    // Curve files put points 1/255 apart, closer than two gaps.
    const float step = 1.f / 255.f;
    CurvePanelModel m = model({{0.f, 0.f}, {step, step}, {2 * step, 2 * step}, {1.f, 1.f}});
    m.keyPoint = 1;
    for (const auto& [dx, dy] : {std::pair{-10, 0}, {10, 0}, {1, 0}, {0, -10}}) {
        m.moveKeyPoint(dx, dy);
        const Stack<CurvePoint>& points = m.selectedCurve().points();
        EXPECT_EQ(points[1].x, step) << dx << "," << dy;
        EXPECT_TRUE(points[0].x < points[1].x && points[1].x < points[2].x);
    }
    EXPECT_NE(m.selectedCurve().points()[1].y, step); // the vertical move still happens
}

TEST(CurvePanelModel, ADragWhoseCurveWasReplacedLetsGoInsteadOfReachingPastTheEnd) {
    CurvePanelModel m = model({{0.f, 0.f}, {0.25f, 0.25f}, {0.5f, 0.5f}, {1.f, 1.f}});
    m.press(m.toPixel({0.5f, 0.5f}));
    ASSERT_EQ(m.grabbedPoint, 2);
    m.selectedCurve().points() = {{0.f, 0.f}, {1.f, 1.f}}; // an undo under the pointer
    m.drag(wxPoint(140, 100));
    EXPECT_EQ(m.selectedCurve().points().size(), 2);
    EXPECT_FALSE(m.dragging);
}

TEST(CurveHistory, StepsAreBoundedByCountAndByMemoryAndRedoIsForgottenByAnEdit) {
    const auto curvesOf = [](int points) {
        ColorCurve curves;
        for (const CurveChannel channel :
             {CurveChannel::Master, CurveChannel::Red, CurveChannel::Green, CurveChannel::Blue}) {
            Stack<CurvePoint>& stack = curves[channel].points();
            stack = {};
            for (int i = 0; i < points; ++i)
                stack.push({static_cast<float>(i) / static_cast<float>(points), 0.5f});
        }
        return curves;
    };
    using Varnel::Wx::Detail::CurveHistory;
    CurveHistory byCount(3, std::size_t(1) << 30);
    for (int i = 1; i <= 5; ++i)
        byCount.edited(curvesOf(i), curvesOf(i + 1));
    EXPECT_EQ(byCount.undoSteps(), 3);
    EXPECT_EQ(byCount.undo(curvesOf(6)), curvesOf(5));
    EXPECT_TRUE(byCount.canRedo());
    byCount.edited(curvesOf(5), curvesOf(5)); // no change: no step, the redo stays
    EXPECT_TRUE(byCount.canRedo());
    byCount.edited(curvesOf(5), curvesOf(7));
    EXPECT_FALSE(byCount.canRedo());

    // Steps of 65,535 points (about 2 MB each) within a 5 MB budget: two are kept, never none.
    const ColorCurve big = curvesOf(65535);
    CurveHistory byMemory(100, 5u << 20);
    for (int i = 0; i < 4; ++i)
        byMemory.edited(big, curvesOf(i + 1));
    EXPECT_EQ(byMemory.undoSteps(), 2);
    EXPECT_LE(byMemory.bytes(), 5u << 20);
    CurveHistory tiny(100, 1);
    tiny.edited(big, curvesOf(1));
    EXPECT_EQ(tiny.undo(curvesOf(1)), big);
    EXPECT_EQ(tiny.redo(big), curvesOf(1));
}
