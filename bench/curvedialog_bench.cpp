// The curve dialog against a frame of the toolkit's own controls in the same number, and
// Equalize's curve on a histogram of 1024 bins.
#include "startedlibrary.h"

#include <varnellib/utility/histogram.h>
#include <varnellibwx/widgets/curvedialog.h>

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <cmath>

namespace {

using namespace Varnel;

class Callbacks : public Wx::ICurveDialogCallbacks {
public:
    Histogram getHistogram(std::pair<float, float>, CurveChannel, int bins) override {
        Stack<uint64> counts;
        for (int i = 0; i < bins; ++i)
            counts.push(static_cast<uint64>(500 + 400 * std::sin(i * 0.05)));
        return Histogram(counts);
    }
    Optional<int> getHistogramRefreshInterval() override { return std::nullopt; }
    Optional<Rgb> getColorAt(Pixel) override { return std::nullopt; }
    void onCurveChanged(CurveChannel, const Curve&) override {}
    int getChangeNotificationDelay() override { return 0; }
    wxPoint getInitialPosition(wxWindow*) override { return {0, 0}; }
    void storePosition(wxPoint) override {}
    void onWindowOpened(wxWindow*) override {}
    void onWindowClosed(wxWindow*) override {}
};

void OpenCurveDialog_CurveDialog(benchmark::State& state) {
    const auto callbacks = makeShared<Callbacks>();
    openPaintDestroy(state, [&](wxWindow* parent) {
        return new Wx::CurveDialog(parent, Wx::GuiSkin(), String(L"Curves"), ColorCurve(),
                                   callbacks);
    });
}
BENCHMARK(OpenCurveDialog_CurveDialog)->Unit(benchmark::kMillisecond);

// The same count of controls from the toolkit: three choices, three labels, six buttons and a
// panel for the curves.
void OpenCurveDialog_wxFrameOfToolkitControls(benchmark::State& state) {
    openPaintDestroy(state, [](wxWindow* parent) {
        auto* frame = new wxFrame(parent, wxID_ANY, "Curves");
        auto* column = new wxBoxSizer(wxVERTICAL);
        column->Add(new wxButton(frame, wxID_ANY, "Pick"));
        column->Add(new wxPanel(frame, wxID_ANY, wxDefaultPosition, wxSize(256, 256)));
        auto* grid = new wxFlexGridSizer(3, 3, 2, 2);
        const wxString channels[] = {"Brightness", "Red", "Green", "Blue"};
        const wxString histograms[] = {"Linear", "Logarithmic", "Cumulative"};
        const wxString modes[] = {"Cubic splines", "Linear splines"};
        grid->Add(new wxStaticText(frame, wxID_ANY, "Channel:"));
        grid->Add(new wxChoice(frame, wxID_ANY, wxDefaultPosition, wxDefaultSize, 4, channels));
        grid->Add(new wxButton(frame, wxID_ANY, "Reset"));
        grid->Add(new wxStaticText(frame, wxID_ANY, "Interpolation:"));
        grid->Add(new wxChoice(frame, wxID_ANY, wxDefaultPosition, wxDefaultSize, 2, modes));
        auto* files = new wxBoxSizer(wxHORIZONTAL);
        files->Add(new wxButton(frame, wxID_ANY, "Load"));
        files->Add(new wxButton(frame, wxID_ANY, "Save"));
        grid->Add(files);
        grid->Add(new wxStaticText(frame, wxID_ANY, "Histogram:"));
        grid->Add(new wxChoice(frame, wxID_ANY, wxDefaultPosition, wxDefaultSize, 3, histograms));
        grid->Add(new wxButton(frame, wxID_ANY, "Equalize"));
        column->Add(grid);
        frame->SetSizerAndFit(column);
        frame->Show();
        return frame;
    });
}
BENCHMARK(OpenCurveDialog_wxFrameOfToolkitControls)->Unit(benchmark::kMillisecond);

void Equalize1024Bins(benchmark::State& state) {
    Stack<uint64> counts;
    for (int i = 0; i < 1024; ++i)
        counts.push(static_cast<uint64>(500 + 400 * std::sin(i * 0.05)));
    const Histogram histogram(counts);
    for (auto _ : state) {
        Curve curve = histogram.computeEqualizingCurve(16);
        benchmark::DoNotOptimize(curve.points().data());
    }
}
BENCHMARK(Equalize1024Bins)->Unit(benchmark::kMicrosecond);

} // namespace
