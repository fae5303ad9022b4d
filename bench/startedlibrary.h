#pragma once

#include <varnellibwx/varnellibwx.h>

#include <benchmark/benchmark.h>
#include <wx/app.h>
#include <wx/dcbuffer.h>
#include <wx/frame.h>
#include <wx/panel.h>

#include <chrono>

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
        // A frame stretches a sole child over its client area; a hidden second child keeps
        // every measured control at the size it was given.
        (new wxWindow(frame, wxID_ANY, wxDefaultPosition, wxSize(0, 0)))->Hide();
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

/// Counts the paints a window receives and waits for its first: until the X server has shown the
/// window it paints nothing, and a loop timed before then would time nothing. The count is shown
/// per iteration beside the timing: "paints" of 1 means every iteration painted.
class PaintCount {
public:
    explicit PaintCount(wxWindow* window) : m_window(window) {
        m_window->Bind(wxEVT_PAINT, &PaintCount::onPaint, this);
    }
    ~PaintCount() { m_window->Unbind(wxEVT_PAINT, &PaintCount::onPaint, this); }

    /// Repaints and handles events until the window has painted once (two seconds at most).
    void waitForFirst() {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(2);
        while (m_paints == 0 && std::chrono::steady_clock::now() < deadline) {
            m_window->Refresh(false);
            m_window->Update();
            Host::settle();
        }
        m_paints = 0;
    }
    /// Handles events until the window has painted once more (a second at most): for windows
    /// that paint once the X server has shown them, or on the toolkit's frame clock.
    void waitForNext() {
        const int before = m_paints;
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(1);
        while (m_paints == before && std::chrono::steady_clock::now() < deadline)
            Host::settle();
    }
    void report(benchmark::State& state) const {
        state.counters["paints"] = benchmark::Counter(m_paints, benchmark::Counter::kAvgIterations);
    }

private:
    void onPaint(wxPaintEvent& event) {
        ++m_paints;
        event.Skip();
    }

    wxWindow* m_window;
    int m_paints = 0;
};

/// Times repaints of `window` (Refresh, then Update) once it has painted, with the paint count.
inline void timeRepaints(benchmark::State& state, wxWindow* window) {
    PaintCount paints(window);
    paints.waitForFirst();
    for (auto _ : state) {
        window->Refresh(false);
        window->Update();
    }
    paints.report(state);
}

// A panel that paints one colour over its client area, changing with every repaint.
class PlainFill : public wxPanel {
public:
    explicit PlainFill(wxWindow* parent) : wxPanel(parent) {
        SetBackgroundStyle(wxBG_STYLE_PAINT);
        Bind(wxEVT_PAINT, [this](wxPaintEvent&) {
            wxAutoBufferedPaintDC dc(this);
            ++m_shade;
            dc.SetPen(*wxTRANSPARENT_PEN);
            dc.SetBrush(wxBrush(wxColour(m_shade, 128, 255 - m_shade)));
            dc.DrawRectangle(GetClientSize());
        });
    }

private:
    unsigned char m_shade = 0;
};

// Construct (which shows), paint once, destroy.
template <class Open>
inline void openPaintDestroy(benchmark::State& state, Open open) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    for (auto _ : state) {
        wxFrame* frame = open(host.frame);
        Host::settle();
        frame->Update();
        frame->Destroy();
        Host::settle();
    }
}
