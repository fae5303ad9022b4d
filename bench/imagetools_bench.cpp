// The pixel probe following the pointer, and a collapsible panel of 50 controls toggled, against
// the toolkit's collapsible pane holding the same controls.
#include "startedlibrary.h"

#include <varnellibwx/widgets/collapsiblepanel.h>
#include <varnellibwx/widgets/pixelprobe.h>

#include <wx/collpane.h>
#include <wx/dcbuffer.h>
#include <wx/popupwin.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace {

using namespace Varnel;

// Every step a new pixel with new values: new texts, a new place, a repaint. A popup repaints
// on the toolkit's frame clock, so each step also runs the loop until it has painted.
void ProbeMove_PixelProbe(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    ::Host host;
    auto* probe = new Wx::PixelProbe(host.frame);
    PaintCount paints(probe);
    int step = 0;
    for (auto _ : state) {
        ++step;
        const float v = static_cast<float>(step % 1000) / 250.f;
        probe->show({{step % 640, step % 480},
                     Rgb(v, v * 0.5f, v * 0.25f, 1.f),
                     Rgb(v / (1 + v), 0.3f, 0.2f, 1.f)},
                    wxPoint(100 + step % 300, 100 + step % 200));
        probe->Update();
        ::Host::settle();
    }
    paints.report(state);
}
BENCHMARK(ProbeMove_PixelProbe)->Unit(benchmark::kMicrosecond);

// The toolkit's popup of the probe's size filled with one colour, moved and repainted as often.
void ProbeMove_wxPopupWindowFill(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    ::Host host;
    auto* popup = new wxPopupWindow(host.frame, wxBORDER_NONE);
    popup->SetBackgroundStyle(wxBG_STYLE_PAINT);
    popup->SetSize(wxSize(330, 60));
    unsigned char shade = 0;
    popup->Bind(wxEVT_PAINT, [&](wxPaintEvent&) {
        wxAutoBufferedPaintDC dc(popup);
        dc.SetBackground(wxBrush(wxColour(++shade, 90, 90)));
        dc.Clear();
    });
    PaintCount paints(popup);
    popup->Show();
    int step = 0;
    for (auto _ : state) {
        ++step;
        popup->Move(100 + step % 300, 100 + step % 200);
        popup->Refresh(false);
        popup->Update();
        ::Host::settle();
    }
    paints.report(state);
}
BENCHMARK(ProbeMove_wxPopupWindowFill)->Unit(benchmark::kMicrosecond);

// 50 labelled fields in the pane, collapsed and expanded in turn.
template <class Make, class Toggle>
void toggle(benchmark::State& state, Make make, Toggle toggle) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    ::Host host;
    auto* column = new wxBoxSizer(wxVERTICAL);
    auto [panel, pane] = make(host.frame);
    auto* fields = new wxFlexGridSizer(2);
    for (int i = 0; i < 25; ++i) {
        fields->Add(new wxStaticText(pane, wxID_ANY, wxString::Format("Field %d", i)));
        fields->Add(new wxTextCtrl(pane, wxID_ANY, "0.5"));
    }
    pane->SetSizer(fields);
    column->Add(panel, 0, wxEXPAND);
    host.frame->SetSizer(column);
    host.frame->Layout();
    ::Host::settle();
    bool expanded = false;
    for (auto _ : state) {
        expanded = !expanded;
        toggle(panel, expanded);
        host.frame->Update();
    }
}

void Toggle50_CollapsiblePanel(benchmark::State& state) {
    toggle(
        state,
        [](wxWindow* parent) {
            auto* panel = new Wx::CollapsiblePanel(parent, wxID_ANY, String(L"Fields"));
            return std::pair<wxWindow*, wxWindow*>{panel, panel->getPane()};
        },
        [](wxWindow* panel, bool expanded) {
            auto* collapsible = static_cast<Wx::CollapsiblePanel*>(panel);
            expanded ? collapsible->expand() : collapsible->collapse();
        });
}
BENCHMARK(Toggle50_CollapsiblePanel)->Unit(benchmark::kMillisecond);

void Toggle50_wxCollapsiblePane(benchmark::State& state) {
    toggle(
        state,
        [](wxWindow* parent) {
            auto* pane = new wxCollapsiblePane(parent, wxID_ANY, "Fields", wxDefaultPosition,
                                               wxDefaultSize, wxCP_NO_TLW_RESIZE);
            return std::pair<wxWindow*, wxWindow*>{pane, pane->GetPane()};
        },
        [](wxWindow* panel, bool expanded) {
            // With wxCP_NO_TLW_RESIZE the host lays the window out, as the library's panel does.
            static_cast<wxCollapsiblePane*>(panel)->Collapse(!expanded);
            panel->GetParent()->Layout();
        });
}
BENCHMARK(Toggle50_wxCollapsiblePane)->Unit(benchmark::kMillisecond);

} // namespace
