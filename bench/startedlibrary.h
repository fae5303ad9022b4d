#pragma once

#include <varnellibwx/varnellibwx.h>

#include <benchmark/benchmark.h>
#include <wx/app.h>
#include <wx/frame.h>

/// Keeps the library started for one benchmark run, outside the timed loop; skips the benchmark
/// without an X display.
class StartedLibrary {
public:
    explicit StartedLibrary(benchmark::State& state) {
        Varnel::LibWx::startup(Varnel::LibWx::ApplicationType::Default);
        if (!wxTheApp)
            state.SkipWithError("no X display");
    }
    ~StartedLibrary() { Varnel::LibWx::shutdown(); }
    bool ok() const { return wxTheApp != nullptr; }
};

/// A shown frame to put the controls in, for one benchmark run.
class Host {
public:
    Host() : frame(new wxFrame(nullptr, wxID_ANY, "bench", wxPoint(0, 0), wxSize(400, 300))) {
        frame->Show();
        settle();
    }
    ~Host() {
        frame->Destroy();
        settle();
    }
    static void settle() {
        Varnel::LibWx::processAllPendingEvents();
        wxTheApp->ProcessIdle();
        Varnel::LibWx::processAllPendingEvents();
    }
    wxFrame* frame;
};
