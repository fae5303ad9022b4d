// A full repaint of the curve panel (histogram, grid, diagonal, four curves of 16 points, the
// selected curve's points) against the floor: a plain fill of a buffer of the same size.
#include "startedlibrary.h"

#include <varnellibwx/widgets/curvepanel.h>

#include <wx/bitmap.h>
#include <wx/dcmemory.h>

#include <random>

namespace {

using namespace Varnel;

class SteadyOwner : public Wx::ICurvePanelCallbacks {
public:
    Histogram getHistogram(std::pair<float, float>, CurveChannel, int binCount) override {
        std::mt19937 random(3);
        std::uniform_int_distribution<uint64> counts(0, 5000);
        Stack<uint64> bins;
        for (int i = 0; i < binCount; ++i)
            bins.push(counts(random));
        return Histogram(bins);
    }
    Optional<int> getHistogramRefreshInterval() override { return std::nullopt; }
    Optional<Rgb> getColorAt(Pixel) override { return std::nullopt; }
    void onCurveChanged(CurveChannel, const Curve&) override {}
    int getChangeNotificationDelay() override { return 0; }
};

ColorCurve sixteenPointCurves() {
    std::mt19937 random(5);
    std::uniform_real_distribution<float> unit(0.f, 1.f);
    ColorCurve curves;
    for (int channel = 0; channel < kCurveChannelCount; ++channel) {
        Stack<CurvePoint>& points = curves[static_cast<CurveChannel>(channel)].points();
        points.clear();
        for (int i = 0; i < 16; ++i)
            points.push({i / 15.f, unit(random)});
    }
    return curves;
}

// Repaints the panel, or one of its layers (range 1: 0 all, 1 histogram, 2 grid, 3 curves and
// points; 4 all after moving a point of the selected curve, as each step of a drag does) into a
// memory buffer of the panel's size (range 0). The whole panel after an unchanged repaint, or a
// drag step, draws the selected curve and its points over the backdrop kept from before; a
// change to anything else (the histogram, another curve, the zoom) draws the layers anew.
void repaintCurvePanel(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    const wxSize size(static_cast<int>(state.range(0)), static_cast<int>(state.range(0)));
    auto* panel = new Wx::CurvePanel(host.frame, Wx::GuiSkin(), size, sixteenPointCurves(),
                                     makeShared<SteadyOwner>());
    wxBitmap buffer(size);
    wxMemoryDC dc(buffer);
    void (Wx::CurvePanel::*const layers[])(wxDC&)
        const = {&Wx::CurvePanel::paint, &Wx::CurvePanel::paintHistogram,
                 &Wx::CurvePanel::paintGrid, &Wx::CurvePanel::paintCurves};
    const bool drag = state.range(1) == 4;
    const auto layer = layers[drag ? 0 : state.range(1)];
    float y = 0.25f;
    for (auto _ : state) {
        if (drag) {
            Curve moved = panel->getCurrentCurves()[CurveChannel::Master];
            moved.points()[7].y = y = 1.f - y;
            panel->setCurve(moved, CurveChannel::Master, false);
        }
        (panel->*layer)(dc);
    }
    dc.SelectObject(wxNullBitmap);
    delete panel;
}
BENCHMARK(repaintCurvePanel)
    ->Name("Repaint_CurvePanel")
    ->ArgNames({"side", "layer"})
    ->ArgsProduct({{256, 1024}, {0, 1, 2, 3, 4}})
    ->Unit(benchmark::kMillisecond);

void repaintPlainFill(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    const wxSize size(static_cast<int>(state.range(0)), static_cast<int>(state.range(0)));
    wxBitmap buffer(size);
    wxMemoryDC dc(buffer);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(wxColour(68, 68, 68)));
    for (auto _ : state)
        dc.DrawRectangle(wxPoint(0, 0), size);
    dc.SelectObject(wxNullBitmap);
}
BENCHMARK(repaintPlainFill)
    ->Name("Repaint_PlainFill")
    ->Arg(256)
    ->Arg(1024)
    ->Unit(benchmark::kMillisecond);

} // namespace
