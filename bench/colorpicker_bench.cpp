// The colour picker against the toolkit's own colour dialog (on GTK the native colour chooser:
// the generic one's header is not installed by this platform's wxWidgets), and one motion of a hue
// drag until every control of the picker has repainted.
#include "startedlibrary.h"

#include <varnellibwx/widgets/colorpicker.h>
#include <varnellibwx/widgets/colorslider.h>
#include <varnellibwx/widgets/colorsliderwithspinner.h>

#include <wx/colordlg.h>

namespace {

using namespace Varnel;

// Construct, show, close and destroy, waiting each time until the toolkit has handled it all.
template <class Make>
void openAndClose(benchmark::State& state, Make make) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    for (auto _ : state) {
        wxDialog* dialog = make(host.frame);
        dialog->Show();
        Host::settle();
        dialog->Hide();
        dialog->Destroy();
        Host::settle();
    }
}

void OpenPicker_ColorPicker(benchmark::State& state) {
    openAndClose(state, [](wxWindow* parent) {
        return new Wx::ColorPicker(parent, String(L"Color Selector: bench"), wxDefaultPosition,
                                   Rgb(0.8f, 0.35f, 0.1f, 1.f), Wx::ColorPicker::DialogType::Normal,
                                   Wx::ColorPicker::ColorFormat::Rgba);
    });
}
BENCHMARK(OpenPicker_ColorPicker)->Unit(benchmark::kMillisecond);

void OpenPicker_wxColourDialog(benchmark::State& state) {
    openAndClose(state, [](wxWindow* parent) {
        wxColourData data;
        data.SetChooseFull(true);
        data.SetColour(wxColour(204, 89, 26));
        return new wxColourDialog(parent, &data);
    });
}
BENCHMARK(OpenPicker_wxColourDialog)->Unit(benchmark::kMillisecond);

// From the hue slider's motion event until the whole dialog has repainted.
void HueDragMotion_ColorPicker(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    auto* picker = new Wx::ColorPicker(
        host.frame, String(L"bench"), wxPoint(0, 0), Rgb(0.8f, 0.35f, 0.1f, 1.f),
        Wx::ColorPicker::DialogType::Normal, Wx::ColorPicker::ColorFormat::Rgba);
    picker->Show();
    Host::settle();
    Wx::ColorSlider* hue = picker->row(Wx::ColorPicker::Row::Hue)->slider();
    wxMouseEvent press(wxEVT_LEFT_DOWN);
    press.SetPosition(wxPoint(10, 5));
    hue->GetEventHandler()->ProcessEvent(press);
    Host::settle();
    {
        PaintCount paints(hue);
        int step = 0;
        for (auto _ : state) {
            wxMouseEvent motion(wxEVT_MOTION);
            motion.SetPosition(wxPoint(10 + step++ % 180, 5));
            motion.SetLeftDown(true);
            hue->GetEventHandler()->ProcessEvent(motion);
            picker->Update();
        }
        paints.report(state);
    }
    wxMouseEvent release(wxEVT_LEFT_UP);
    hue->GetEventHandler()->ProcessEvent(release);
    picker->Destroy();
    Host::settle();
}
BENCHMARK(HueDragMotion_ColorPicker)->Unit(benchmark::kMicrosecond);

} // namespace
