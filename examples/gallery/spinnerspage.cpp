#include "spinnerspage.h"
#include "gallerypage.h"

#include <varnellibwx/dpi.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/widgets/spinner.h>
#include <varnellibwx/widgets/statictext.h>
#include <varnellibwx/widgets/textctrl.h>

#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>

namespace Varnel::Gallery {

namespace {

constexpr int kFieldWidth = 70;
constexpr int kLabelWidth = 260;

struct SpinnerSample {
    const wchar_t* label;
    float min, max, value;
    int precision;
    float clickSpeed;
};

const SpinnerSample kSamples[] = {
    {L"Samples per pixel (integer)", 1.f, 4096.f, 256.f, 0, 1.f},
    {L"Roughness (three decimals)", 0.f, 1.f, 0.35f, 3, 0.f},
    {L"Distance in metres (huge range)", 0.f, 1e9f, 1500.f, 2, 0.f},
    {L"Exposure in stops (negative range)", -10.f, -0.5f, -2.f, 1, 0.f},
    {L"Temperature in kelvin (clicks step 100)", 1700.f, 15000.f, 6500.f, 0, 0.f},
};

} // namespace

wxWindow* createSpinnersPage(wxWindow* parent) {
    auto* page = new wxPanel(parent);
    auto* column = new wxBoxSizer(wxVERTICAL);
    auto* log = new Wx::TextCtrl(page, wxID_ANY, wxEmptyString, wxDefaultPosition,
                                 Wx::scaleByDpi(wxSize(420, 200)), wxTE_MULTILINE | wxTE_READONLY);

    auto* grid = new wxFlexGridSizer(2, Wx::scaleByDpi(kGap), Wx::scaleByDpi(2 * kGap));
    int id = wxID_HIGHEST + 1;
    for (const SpinnerSample& sample : kSamples) {
        grid->Add(new Wx::StaticText(page, wxID_ANY, String(sample.label), 0, {},
                                     wxSize(kLabelWidth, -1)),
                  0, wxALIGN_CENTER_VERTICAL);
        auto* spinner =
            new Wx::Spinner(page, id++, Wx::scaleByDpi(kFieldWidth), sample.min, sample.max,
                            sample.value, sample.precision, sample.clickSpeed);
        if (sample.min == 1700.f)
            spinner->setClickSpeedOverride([] { return Optional<float>(100.f); });
        spinner->SetName(sample.label);
        grid->Add(spinner, 0, wxALIGN_CENTER_VERTICAL);
    }
    column->Add(grid, 0, wxBOTTOM, Wx::scaleByDpi(2 * kGap));
    column->Add(new Wx::StaticText(page, wxID_ANY, String(L"Events received by the page")), 0,
                wxBOTTOM, Wx::scaleByDpi(kGap / 2));
    column->Add(log, 0);

    // The page is an ancestor of every spinner: their events reach it like command events.
    const auto write = [log](wxEvent& event, const wxString& what) {
        const auto* source = static_cast<wxWindow*>(event.GetEventObject());
        log->appendText(wxString::Format("%s: %s\n", source->GetName(), what));
        event.Skip();
    };
    page->Bind(wxEVT_SPINCTRLDOUBLE, [write](wxSpinDoubleEvent& event) {
        write(event, wxString::Format("value %g", event.GetValue()));
    });
    page->Bind(Wx::CUSTSPINNER_START_EDITING,
               [write](wxActivateEvent& event) { write(event, "start editing"); });
    page->Bind(Wx::CUSTSPINNER_END_EDITING,
               [write](wxActivateEvent& event) { write(event, "end editing"); });
    page->Bind(Wx::CUSTSPINNER_TEXT_FOCUS_GET,
               [write](wxFocusEvent& event) { write(event, "text focus"); });
    page->Bind(Wx::CUSTSPINNER_TEXT_FOCUS_LOST,
               [write](wxFocusEvent& event) { write(event, "text focus lost"); });

    return finishPage(page, column);
}

} // namespace Varnel::Gallery
