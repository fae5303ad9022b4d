// The curve panel wired up: real mouse input, the reports its owner receives (merged when a
// delay is asked for), picking through the controller, and the pixels a user sees.
#include "guitest.h"

#include <varnellibwx/widgets/curvepanel.h>

namespace {

/// An owner that records what the panel tells it and answers with set values.
class RecordingCallbacks : public ICurvePanelCallbacks {
public:
    Histogram getHistogram(std::pair<float, float> range, CurveChannel channel,
                           int binCount) override {
        lastRange = range;
        lastBinCount = binCount;
        ++histogramRequests;
        (void)channel;
        return histogram;
    }
    Optional<int> getHistogramRefreshInterval() override { return refreshInterval; }
    Optional<Rgb> getColorAt(Pixel) override { return colour; }
    void onCurveChanged(CurveChannel channel, const Curve& curve) override {
        reports.emplace_back(curveChannelName(channel));
        lastCurve = curve;
    }
    int getChangeNotificationDelay() override { return delay; }

    Histogram histogram;
    Optional<Rgb> colour;
    int delay = 0;
    Optional<int> refreshInterval;
    int histogramRequests = 0;
    std::vector<std::wstring> reports;
    Curve lastCurve;
    std::pair<float, float> lastRange;
    int lastBinCount = 0;
};

using Reports = std::vector<std::wstring>;

// A histogram rising from nothing at the left to its maximum at the right.
Histogram ramp(int bins) {
    Stack<uint64> counts;
    for (int i = 0; i < bins; ++i)
        counts.push(static_cast<uint64>(i));
    return Histogram(counts);
}

class CurvePanels : public GuiTest {
protected:
    CurvePanel& make(wxSize size = wxSize(266, 266)) {
        auto* panel = new CurvePanel(&parent(), GuiSkin(), size, ColorCurve(), callbacks);
        panel->SetPosition(wxPoint(10, 10));
        pumpPending();
        return *panel;
    }
    static wxPoint onDiagonal(int x) { return {x, 266 - (x - 5) - 5}; }

    SharedPtr<RecordingCallbacks> callbacks = makeShared<RecordingCallbacks>();
    Input input;
};

} // namespace

TEST_F(CurvePanels, MouseAddsDragsAndRemovesPoints) {
    CurvePanel& panel = make();
    const auto points = [&] {
        return panel.getCurrentCurves()[CurveChannel::Master].points();
    };

    // A press 5 pixels off the curve adds a point on it and reports at once.
    input.press(panel, onDiagonal(100) + wxPoint(0, -5));
    EXPECT_EQ(callbacks->reports, Reports{L"Master"});
    ASSERT_EQ(points().size(), 3);
    // Dragged past its right neighbour it is gone; back inside its band it returns.
    // (Motion reaches the panel with GTK's next frame: pump until it has.)
    input.moveTo(panel, wxPoint(262, 40));
    EXPECT_TRUE(pumpUntil([&] { return points().size() == 2; }));
    input.moveTo(panel, wxPoint(150, 60));
    EXPECT_TRUE(pumpUntil([&] { return points().size() == 3; }));
    input.release();
    EXPECT_TRUE(pumpUntil([&] { return !panel.model().dragging; }));
    EXPECT_EQ(points()[1], panel.model().toCurve(wxPoint(150, 60)));
    EXPECT_EQ(callbacks->lastCurve, panel.getCurrentCurves()[CurveChannel::Master]);

    // A right-click on the interior point removes it and reports.
    callbacks->reports.clear();
    input.click(panel, wxPoint(150, 60), wxMOUSE_BTN_RIGHT);
    EXPECT_TRUE(pumpUntil([&] { return points().size() == 2; }));
    EXPECT_EQ(callbacks->reports, Reports{L"Master"});
}

TEST_F(CurvePanels, TheHistogramIsAskedForAgainAtTheOwnersInterval) {
    callbacks->refreshInterval = 20;
    // Counted before any event is handled: on a busy machine the 20 ms pass before a pump ends.
    new CurvePanel(&parent(), GuiSkin(), wxSize(266, 266), ColorCurve(), callbacks);
    EXPECT_EQ(callbacks->histogramRequests, 1) << "the constructor's own request";
    EXPECT_TRUE(pumpUntil([&] { return callbacks->histogramRequests >= 4; }));
}

TEST_F(CurvePanels, WheelZoomsAndAsksForTheShownRange) {
    CurvePanel& panel = make();
    EXPECT_EQ(callbacks->lastBinCount, 256);
    sendWheel(panel, 120);
    EXPECT_EQ(panel.zoom(), 1.5f);
    EXPECT_EQ(callbacks->lastRange.second, 1.f / 1.5f);
}

TEST_F(CurvePanels, DelayedReportsMergeIntoOnePerChannelInAscendingOrder) {
    callbacks->delay = 200;
    CurvePanel& panel = make();
    Curve lifted;
    lifted.points()[1].y = 0.8f;
    for (int i = 0; i < 10; ++i)
        panel.setCurve(lifted, i % 2 ? CurveChannel::Red : CurveChannel::Blue, true);
    panel.setCurve(lifted, CurveChannel::Master, true);
    EXPECT_TRUE(callbacks->reports.empty());
    ASSERT_TRUE(pumpUntil([&] { return !callbacks->reports.empty(); }));
    pumpPending();
    EXPECT_EQ(callbacks->reports, (Reports{L"Master", L"Red", L"Blue"}));

    callbacks->delay = 0;
    callbacks->reports.clear();
    panel.setCurves(ColorCurve());
    EXPECT_EQ(callbacks->reports, (Reports{L"Master", L"Red", L"Green", L"Blue"}));
    panel.setCurve(lifted, CurveChannel::Green, false);
    EXPECT_EQ(callbacks->reports.size(), 4u);
}

TEST_F(CurvePanels, ThePickingControllerMovesPointsVertically) {
    CurvePanel& panel = make();
    AutoPtr<ICurvePanelController> controller = panel.getController();
    callbacks->colour = Rgb{0.25f, 0.25f, 0.25f, 1.f};
    controller->startPicking({400, 300});
    const auto& points = panel.model().selectedCurve().points();
    ASSERT_EQ(points.size(), 3);
    EXPECT_NEAR(points[1].x, 0.25f, 1e-6f);
    const float before = points[1].y;
    controller->movePicking({450, 280}); // 20 up, and sideways, which is ignored
    EXPECT_NEAR(points[1].x, 0.25f, 0.005f);
    EXPECT_GT(points[1].y, before + 0.07f);
    controller->stopPicking();
    EXPECT_FALSE(panel.model().dragging);

    // A colour that is no number picks nothing.
    callbacks->colour = Rgb{kNaN, 0.f, 0.f, 1.f};
    controller->startPicking({1, 1});
    controller->movePicking({1, 50});
    EXPECT_EQ(panel.model().selectedCurve().points().size(), 3);
}

TEST_F(CurvePanels, UsersSeeTheSkinThePlotTheGridAndTheChannelsHistogram) {
    callbacks->histogram = ramp(256);
    CurvePanel& panel = make();
    panel.setSelectedCurve(CurveChannel::Red);
    const wxImage seen = captureOnScreen(panel);
    EXPECT_EQ(pixelAt(seen, 1, 1), wxColour(68, 68, 68));
    EXPECT_EQ(pixelAt(seen, 40, 20), wxColour(60, 60, 60));         // above the ramp, off the grid
    EXPECT_EQ(pixelAt(seen, 5 + 128, 30), wxColour(120, 120, 120)); // the middle grid line
    EXPECT_EQ(pixelAt(seen, 200, 250), wxColour(220, 100, 100));    // under the ramp
    EXPECT_EQ(pixelAt(seen, 6, 100), wxColour(120, 120, 120));      // the unit square's thick edge

    // Other modes and channels take their own colours; bad data still gives a picture.
    panel.setHistogramType(HistogramType::Logarithmic);
    panel.setSelectedCurve(CurveChannel::Green);
    const wxImage log = renderOffscreen(panel.GetSize(), [&](wxDC& dc) { panel.paint(dc); });
    EXPECT_EQ(pixelAt(log, 200, 250), wxColour(100, 220, 100));
    callbacks->histogram = ramp(4000); // longer than the plot
    panel.setHistogramType(HistogramType::Cumulative);
    ColorCurve odd;
    odd[CurveChannel::Master].points().clear();
    odd[CurveChannel::Red].points() = Stack<CurvePoint>{{0.5f, 0.2f}};
    odd[CurveChannel::Blue].points() = Stack<CurvePoint>{{-3.f, 7.f}, {9.f, -2.f}};
    panel.setCurves(odd);
    panel.resize(wxSize(8, 8));
    const wxImage tiny = renderOffscreen(wxSize(8, 8), [&](wxDC& dc) { panel.paint(dc); });
    EXPECT_EQ(pixelAt(tiny, 0, 0), wxColour(68, 68, 68));
}

TEST_F(CurvePanels, RepaintsAfterEveryKindOfChangeShowWhatAFreshPanelShows) {
    callbacks->histogram = ramp(256);
    CurvePanel& panel = make();
    Curve lifted;
    lifted.points()[1].y = 0.8f;
    const auto same = [&](const char* change) {
        const wxImage seen = renderOffscreen(panel.GetSize(), [&](wxDC& dc) { panel.paint(dc); });
        CurvePanel& fresh = make();
        fresh.setCurves(panel.getCurrentCurves());
        fresh.setSelectedCurve(panel.model().selectedChannel);
        fresh.setHistogramType(panel.histogramType());
        while (fresh.zoom() < panel.zoom())
            sendWheel(fresh, 120);
        const wxImage expected =
            renderOffscreen(fresh.GetSize(), [&](wxDC& dc) { fresh.paint(dc); });
        EXPECT_TRUE(seen.IsOk() &&
                    std::equal(seen.GetData(), seen.GetData() + 266 * 266 * 3, expected.GetData()))
            << change;
        fresh.Destroy();
    };
    same("first paint");
    panel.setCurve(lifted, CurveChannel::Red, false);
    same("another channel's curve");
    panel.setCurve(lifted, CurveChannel::Master, false);
    same("the selected curve");
    panel.setSelectedCurve(CurveChannel::Red);
    same("the selected channel");
    panel.setHistogramType(HistogramType::Cumulative);
    same("the histogram type");
    sendWheel(panel, 120);
    same("the zoom");
}
