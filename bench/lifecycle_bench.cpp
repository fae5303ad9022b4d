#include <varnellibwx/varnellibwx.h>

#include <benchmark/benchmark.h>
#include <wx/app.h>
#include <wx/init.h>

namespace {

// A full start and stop of the library against the toolkit's own initialise and uninitialise.
// Both need an X display (run under xvfb-run).
void StartupShutdown_Varnel(benchmark::State& state) {
    for (auto _ : state) {
        Varnel::LibWx::startup(Varnel::LibWx::ApplicationType::Default);
        if (!wxTheApp) {
            Varnel::LibWx::shutdown();
            state.SkipWithError("no X display");
            break;
        }
        Varnel::LibWx::shutdown();
    }
}
BENCHMARK(StartupShutdown_Varnel)->Unit(benchmark::kMicrosecond);

void StartupShutdown_wxInitialize(benchmark::State& state) {
    for (auto _ : state) {
        wxApp::SetInstance(new wxApp);
        if (!wxInitialize()) {
            state.SkipWithError("no X display");
            break;
        }
        wxTheApp->CallOnInit();
        wxUninitialize();
    }
}
BENCHMARK(StartupShutdown_wxInitialize)->Unit(benchmark::kMicrosecond);

} // namespace
