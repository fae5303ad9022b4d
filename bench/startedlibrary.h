#pragma once

#include <varnellibwx/varnellibwx.h>

#include <benchmark/benchmark.h>
#include <wx/app.h>

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
