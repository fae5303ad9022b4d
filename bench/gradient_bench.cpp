// The gradient control and the preview strip against a plain fill of the same size, and the grid
// mapping dialog's opening against a frame of the toolkit's own controls in the same number.
#include "startedlibrary.h"

#include <varnellibwx/widgets/gradientcontrol.h>
#include <varnellibwx/widgets/gridmappingdialog.h>

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>

#include <cmath>

namespace {

using namespace Varnel;

const wxSize kStrip(512, 24);

ColorGradient sixteenPoints() {
    ColorGradient gradient;
    for (int i = 0; i < 16; ++i)
        gradient.addPoint(Rgb(0.5f + 0.5f * std::sin(i * 0.7f), (i % 4) / 3.f, 1.f - i / 15.f, 1.f),
                          i / 15.f);
    return gradient;
}

// What a host's preview does per column: its curve, then its gradient.
class Host16 : public Wx::GridMappingDialogCallbacks {
public:
    Host16() {
        m_curve.points() = Stack<CurvePoint>{{0.f, 0.f}, {0.3f, 0.45f}, {0.7f, 0.6f}, {1.f, 1.f}};
    }
    void onMappingChanged(const Wx::GridMapping&) override {}
    float computeAutoScale() override { return 1.f; }
    Rgb getPreviewColor(float value, float inputScale) override {
        return m_gradient.getColorAt(m_curve(value * inputScale));
    }

private:
    ColorGradient m_gradient = sixteenPoints();
    Curve m_curve;
};

void GradientRepaint512x24_GradientControl(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    ::Host host;
    auto* control = new Wx::GradientControl(host.frame, kStrip, 0.f, 1.f);
    control->setGradient(sixteenPoints());
    timeRepaints(state, control);
}
BENCHMARK(GradientRepaint512x24_GradientControl)->Unit(benchmark::kMicrosecond);

// A repaint after every change, as during a drag: the ramp is built again each time.
void GradientRepaintAfterChange512x24_GradientControl(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    ::Host host;
    auto* control = new Wx::GradientControl(host.frame, kStrip, 0.f, 1.f);
    ColorGradient gradients[2] = {sixteenPoints(), sixteenPoints()};
    gradients[1].setPosition(7, 0.45f);
    control->setGradient(gradients[0]);
    PaintCount paints(control);
    paints.waitForFirst();
    int next = 1;
    for (auto _ : state) {
        control->setGradient(gradients[next]);
        control->Update();
        next ^= 1;
    }
    paints.report(state);
}
BENCHMARK(GradientRepaintAfterChange512x24_GradientControl)->Unit(benchmark::kMicrosecond);

void GradientRepaint512x24_PlainFill(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    ::Host host;
    auto* fill = new PlainFill(host.frame);
    fill->SetSize(kStrip);
    timeRepaints(state, fill);
}
BENCHMARK(GradientRepaint512x24_PlainFill)->Unit(benchmark::kMicrosecond);

void PreviewRepaint512x24_CustomGradient(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    ::Host host;
    Host16 colors;
    auto* strip = new Wx::CustomGradient(
        host.frame, kStrip, [&colors](float v) { return colors.getPreviewColor(v, 1.f); });
    timeRepaints(state, strip);
}
BENCHMARK(PreviewRepaint512x24_CustomGradient)->Unit(benchmark::kMicrosecond);

void OpenGridMappingDialog_GridMappingDialog(benchmark::State& state) {
    const auto callbacks = makeShared<Host16>();
    Wx::GridMapping mapping;
    mapping.gradient = sixteenPoints();
    openPaintDestroy(state, [&](wxWindow* parent) {
        return new Wx::GridMappingDialog(parent, String(L"Mapping"), mapping, mapping, callbacks,
                                         wxPoint(0, 0));
    });
}
BENCHMARK(OpenGridMappingDialog_GridMappingDialog)->Unit(benchmark::kMillisecond);

// The same count of controls from the toolkit: three panels, a choice, a number field, two
// labels and four buttons.
void OpenGridMappingDialog_wxFrameOfToolkitControls(benchmark::State& state) {
    openPaintDestroy(state, [](wxWindow* parent) {
        auto* frame = new wxFrame(parent, wxID_ANY, "Mapping");
        auto* column = new wxBoxSizer(wxVERTICAL);
        column->Add(new wxPanel(frame, wxID_ANY, wxDefaultPosition, wxSize(320, 26)));
        column->Add(new wxPanel(frame, wxID_ANY, wxDefaultPosition, wxSize(308, 14)));
        column->Add(new wxPanel(frame, wxID_ANY, wxDefaultPosition, wxSize(320, 220)));
        auto* grid = new wxFlexGridSizer(3, 2, 2);
        const wxString modes[] = {"Cubic splines", "Linear splines"};
        grid->Add(new wxStaticText(frame, wxID_ANY, "Interpolation:"));
        grid->Add(new wxChoice(frame, wxID_ANY, wxDefaultPosition, wxDefaultSize, 2, modes));
        grid->AddSpacer(0);
        grid->Add(new wxStaticText(frame, wxID_ANY, "Input scaling:"));
        grid->Add(new wxSpinCtrlDouble(frame, wxID_ANY));
        grid->Add(new wxButton(frame, wxID_ANY, "Auto-scale"));
        column->Add(grid);
        auto* buttons = new wxBoxSizer(wxHORIZONTAL);
        for (const char* label : {"Reset", "OK", "Cancel"})
            buttons->Add(new wxButton(frame, wxID_ANY, label));
        column->Add(buttons);
        frame->SetSizerAndFit(column);
        frame->Show();
        return frame;
    });
}
BENCHMARK(OpenGridMappingDialog_wxFrameOfToolkitControls)->Unit(benchmark::kMillisecond);

} // namespace
