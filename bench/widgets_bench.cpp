#include "startedlibrary.h"

#include <varnellib/native/process.h>
#include <varnellibwx/fonts.h>
#include <varnellibwx/messagedialog.h>
#include <varnellibwx/widgets/button.h>
#include <varnellibwx/widgets/combobox.h>
#include <varnellibwx/widgets/spinner.h>
#include <varnellibwx/widgets/statictext.h>
#include <varnellibwx/widgets/textctrl.h>
#include <varnellibwx/widgets/tooltip.h>
#include <varnellibwx/windowutils.h>

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/msgdlg.h>

#include <wx/frame.h>
#include <wx/generic/msgdlgg.h>
#include <wx/modalhook.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>

#include <charconv>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using namespace Varnel;

constexpr int kButtons = 1000;

/// Creates `count` controls with `make` and destroys them again, per iteration.
template <class Make>
void createDestroy(benchmark::State& state, Make make, int count = kButtons) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    for (auto _ : state) {
        std::vector<wxWindow*> controls;
        for (int i = 0; i < count; ++i)
            controls.push_back(make(host.frame));
        for (wxWindow* control : controls)
            delete control;
    }
}

wxWindow* makeButton(wxWindow* parent) {
    return new Wx::Button(parent, Wx::GuiSkin(), wxID_ANY, "Apply");
}
wxWindow* makeWxButton(wxWindow* parent) {
    return new wxButton(parent, wxID_ANY, "Apply");
}

void CreateDestroy1000_Button(benchmark::State& state) {
    createDestroy(state, makeButton);
}
BENCHMARK(CreateDestroy1000_Button)->Unit(benchmark::kMillisecond);

void CreateDestroy1000_wxButton(benchmark::State& state) {
    createDestroy(state, makeWxButton);
}
BENCHMARK(CreateDestroy1000_wxButton)->Unit(benchmark::kMillisecond);

template <class Make>
void paintOne(benchmark::State& state, Make make) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    wxWindow* button = make(host.frame);
    button->SetSize(10, 10, 120, 30);
    // The toolkit's button draws through GTK, with no paint event to count or wait for.
    Optional<PaintCount> paints;
    if (dynamic_cast<Wx::Button*>(button)) {
        paints.emplace(button);
        paints->waitForFirst();
    } else {
        Host::settle();
    }
    for (auto _ : state) {
        button->Refresh();
        button->Update();
    }
    if (paints)
        paints->report(state);
}

void Paint_Button(benchmark::State& state) {
    paintOne(state, makeButton);
}
BENCHMARK(Paint_Button)->Unit(benchmark::kMicrosecond);

void Paint_wxButton(benchmark::State& state) {
    paintOne(state, makeWxButton);
}
BENCHMARK(Paint_wxButton)->Unit(benchmark::kMicrosecond);

void WrapTooltip2000Words(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    std::wstring text;
    const wchar_t* words[] = {L"tone", L"curve", L"histogram", L"exposure", L"white", L"balance"};
    for (int i = 0; i < 2000; ++i) {
        text += words[i % 6];
        text += i % 97 == 96 ? L'\n' : L' ';
    }
    auto* tooltip = new Wx::Tooltip(host.frame, String());
    const String content(text.c_str());
    for (auto _ : state) {
        tooltip->setText(content);
        benchmark::DoNotOptimize(tooltip->lines().size());
    }
}
BENCHMARK(WrapTooltip2000Words)->Unit(benchmark::kMicrosecond);

std::wstring text5000() {
    std::wstring text;
    while (text.size() < 5000)
        text += L"Tone curves remap the brightness of every pixel. ";
    text.resize(5000);
    return text;
}

template <class Make>
void wrapLabel(benchmark::State& state, Make make) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    auto* label = make(host.frame); // the concrete type: StaticText::Wrap is its own
    for (auto _ : state) {
        label->Wrap(400);
        benchmark::DoNotOptimize(label->GetLabel().length());
    }
}

void Wrap5000Characters_StaticText(benchmark::State& state) {
    wrapLabel(state, [](wxWindow* parent) {
        return new Wx::StaticText(parent, wxID_ANY, String(text5000().c_str()));
    });
}
BENCHMARK(Wrap5000Characters_StaticText)->Unit(benchmark::kMicrosecond);

// wxStaticText's own Wrap on the native label; it wraps the already wrapped text on a second
// call, which is why StaticText restores the unwrapped text first.
void Wrap5000Characters_wxStaticText(benchmark::State& state) {
    wrapLabel(state, [](wxWindow* parent) {
        return new wxStaticText(parent, wxID_ANY, wxString(text5000()));
    });
}
BENCHMARK(Wrap5000Characters_wxStaticText)->Unit(benchmark::kMicrosecond);

template <class Control, class Append>
void appendLines(benchmark::State& state, Append append) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    for (auto _ : state) {
        auto* log = new Control(host.frame, wxID_ANY, wxEmptyString, wxDefaultPosition,
                                wxSize(400, 200), wxTE_MULTILINE | wxTE_READONLY);
        // Both in the library's standard font: the comparison is of the appending.
        log->SetFont(Wx::setupStaticTextFont(log->GetFont(), {}));
        for (int i = 0; i < 10000; ++i)
            append(*log, wxString::Format("Pass %d of 10000: 4.1 s\n", i));
        delete log;
    }
}

void Append10000Lines_TextCtrl(benchmark::State& state) {
    appendLines<Wx::TextCtrl>(
        state, [](Wx::TextCtrl& log, const wxString& line) { log.appendText(line); });
}
BENCHMARK(Append10000Lines_TextCtrl)->Unit(benchmark::kMillisecond)->Iterations(1);

// The toolkit's own append, which neither keeps a selection nor scrolls to the end.
void Append10000Lines_wxTextCtrl(benchmark::State& state) {
    appendLines<wxTextCtrl>(state,
                            [](wxTextCtrl& log, const wxString& line) { log.AppendText(line); });
}
BENCHMARK(Append10000Lines_wxTextCtrl)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

namespace {

/// Ends every modal dialog at the first idle moment of its loop, so that a benchmark times
/// building, showing and closing it.
class EndAtOnce : public wxModalDialogHook {
public:
    EndAtOnce() { Register(); }
    ~EndAtOnce() override { Unregister(); }

private:
    int Enter(wxDialog* dialog) override {
        dialog->Bind(wxEVT_IDLE, [dialog](wxIdleEvent&) {
            if (dialog->IsModal())
                dialog->EndModal(wxID_CANCEL);
        });
        return wxID_NONE;
    }
    void Exit(wxDialog*) override {}
};

const wchar_t* const kDialogText = L"The scene has unsaved changes. Discard them?";

void ShowAndCloseDialog_MessageDialog(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    EndAtOnce hook;
    for (auto _ : state)
        benchmark::DoNotOptimize(Wx::showOkCancelDialog(Wx::getWindowNativeHandle(host.frame),
                                                        String(L"Vellum"), String(kDialogText),
                                                        Wx::MessageDialogIcon::Warning));
}
BENCHMARK(ShowAndCloseDialog_MessageDialog)->Unit(benchmark::kMillisecond);

void ShowAndCloseDialog_wxGenericMessageDialog(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    EndAtOnce hook;
    for (auto _ : state) {
        wxGenericMessageDialog dialog(host.frame, kDialogText, "Vellum",
                                      wxOK | wxCANCEL | wxICON_WARNING);
        benchmark::DoNotOptimize(dialog.ShowModal());
    }
}
BENCHMARK(ShowAndCloseDialog_wxGenericMessageDialog)->Unit(benchmark::kMillisecond);

} // namespace

namespace {

constexpr int kSpinners = 200;

void CreateDestroy200_Spinner(benchmark::State& state) {
    createDestroy(
        state,
        [](wxWindow* parent) -> wxWindow* {
            return new Wx::Spinner(parent, wxID_ANY, 60, 0.f, 100.f, 12.5f, 2, 0.f);
        },
        kSpinners);
}
BENCHMARK(CreateDestroy200_Spinner)->Unit(benchmark::kMillisecond);

void CreateDestroy200_wxSpinCtrlDouble(benchmark::State& state) {
    createDestroy(
        state,
        [](wxWindow* parent) -> wxWindow* {
            return new wxSpinCtrlDouble(parent, wxID_ANY, "12.5", wxDefaultPosition, wxDefaultSize,
                                        wxSP_ARROW_KEYS, 0., 100., 12.5, 0.01);
        },
        kSpinners);
}
BENCHMARK(CreateDestroy200_wxSpinCtrlDouble)->Unit(benchmark::kMillisecond);

// setValue with its formatting, its read-back and the field's new text, against formatting the
// same numbers alone (the floor).
const float kSpinnerValues[] = {0.5f, 12.345f, 1500.f, -2.25f, 99.99f, 3.f, 0.004f, 42.f};

void SetValue_Spinner(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    auto* spinner = new Wx::Spinner(host.frame, wxID_ANY, 60, -1e6f, 1e6f, 0.f, 3, 0.f);
    std::size_t i = 0;
    for (auto _ : state)
        spinner->setValue(kSpinnerValues[i++ % std::size(kSpinnerValues)], false);
    delete spinner;
}
BENCHMARK(SetValue_Spinner);

void SetValue_wxSpinCtrlDouble(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    auto* spinner = new wxSpinCtrlDouble(host.frame, wxID_ANY, "0", wxDefaultPosition,
                                         wxDefaultSize, wxSP_ARROW_KEYS, -1e6, 1e6, 0., 0.001);
    spinner->SetDigits(3);
    std::size_t i = 0;
    for (auto _ : state)
        spinner->SetValue(kSpinnerValues[i++ % std::size(kSpinnerValues)]);
    delete spinner;
}
BENCHMARK(SetValue_wxSpinCtrlDouble);

void SetValue_FormatSpinnerValue(benchmark::State& state) {
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(Wx::Detail::formatSpinnerValue(
            kSpinnerValues[i++ % std::size(kSpinnerValues)], 3, L'.'));
}
BENCHMARK(SetValue_FormatSpinnerValue);

void SetValue_ToChars(benchmark::State& state) {
    std::size_t i = 0;
    char buffer[64];
    for (auto _ : state) {
        const auto written =
            std::to_chars(buffer, buffer + sizeof buffer,
                          static_cast<double>(kSpinnerValues[i++ % std::size(kSpinnerValues)]),
                          std::chars_format::fixed, 3);
        benchmark::DoNotOptimize(written.ptr);
    }
}
BENCHMARK(SetValue_ToChars);

void SetValue_Snprintf(benchmark::State& state) {
    std::size_t i = 0;
    char buffer[64];
    for (auto _ : state)
        benchmark::DoNotOptimize(
            std::snprintf(buffer, sizeof buffer, "%.3f",
                          static_cast<double>(kSpinnerValues[i++ % std::size(kSpinnerValues)])));
}
BENCHMARK(SetValue_Snprintf);

} // namespace

namespace {

Varnel::Stack<Wx::ComboBox::Item> comboItems(int count) {
    Varnel::Stack<Wx::ComboBox::Item> items;
    items.reserve(count);
    for (int i = 0; i < count; ++i)
        items.push({Varnel::String(L"Material ") + Varnel::String(std::to_wstring(i).c_str()), i});
    return items;
}

void SetData10000_ComboBox(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    auto* combo = new Wx::ComboBox(host.frame, wxID_ANY, 150, {}, {});
    const auto items = comboItems(10000);
    for (auto _ : state)
        combo->setData(items.view());
    delete combo;
}
BENCHMARK(SetData10000_ComboBox)->Unit(benchmark::kMillisecond);

void SetData10000_wxChoice(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    auto* choice = new wxChoice(host.frame, wxID_ANY);
    wxArrayString labels;
    for (int i = 0; i < 10000; ++i)
        labels.Add(wxString::Format("Material %d", i));
    for (auto _ : state)
        choice->Set(labels);
    delete choice;
}
BENCHMARK(SetData10000_wxChoice)->Unit(benchmark::kMillisecond);

// Opening the list and painting it, then closing it: the cost must follow the visible rows.
void OpenAndPaintList(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    Host host;
    auto* combo = new Wx::ComboBox(host.frame, wxID_ANY, 150, {}, {});
    const auto items = comboItems(static_cast<int>(state.range(0)));
    combo->setData(items.view());
    combo->selectIndex(static_cast<int>(state.range(0)) / 2, false);
    Host::settle();
    wxMouseEvent first(wxEVT_LEFT_DOWN); // the list is made on its first opening
    combo->GetEventHandler()->ProcessEvent(first);
    combo->GetEventHandler()->ProcessEvent(first);
    {
        PaintCount paints(combo->dropdown()->canvas());
        for (auto _ : state) {
            wxMouseEvent click(wxEVT_LEFT_DOWN);
            combo->GetEventHandler()->ProcessEvent(click);
            paints.waitForNext();
            combo->GetEventHandler()->ProcessEvent(click);
        }
        paints.report(state);
    }
    delete combo;
}
BENCHMARK(OpenAndPaintList)
    ->Name("OpenAndPaintList_ComboBox")
    ->Arg(10)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMicrosecond);

} // namespace
