#include "colorcontrolspage.h"
#include "gallerypage.h"

#include <varnellibwx/dpi.h>
#include <varnellibwx/stringconversion.h>
#include <varnellibwx/widgets/colordisplay.h>
#include <varnellibwx/widgets/colormodel.h>
#include <varnellibwx/widgets/colorpicker.h>
#include <varnellibwx/widgets/colorsliderwithspinner.h>
#include <varnellibwx/widgets/combobox.h>
#include <varnellibwx/widgets/eyedropperbutton.h>
#include <varnellibwx/widgets/hexcoloredit.h>
#include <varnellibwx/widgets/hwbslice.h>
#include <varnellibwx/widgets/statictext.h>
#include <varnellibwx/widgets/textctrl.h>

#include <wx/panel.h>
#include <wx/sizer.h>

#include <iterator>
#include <vector>

namespace Varnel::Gallery {

namespace {

using Wx::Detail::PositionValueMap;
using Wx::Detail::SliderTrack;

constexpr int kLabelWidth = 70;
const wxSize kSliderSize(256, 14);
constexpr float kScale = 255.f;

const auto& kRows = Wx::Detail::kPickerRows;

// The page's state: the colour in its three forms and every control that shows it. Lives as long
// as the page (deleted with it).
struct ColorControls {
    Wx::Detail::PickerColor color;
    std::vector<Wx::ColorSliderWithSpinner*> rows;
    Wx::HwbSlice* slice = nullptr;
    Wx::HexColorEdit* hex = nullptr;
    Wx::ColorDisplay* current = nullptr;
    Wx::TextCtrl* log = nullptr;

    void write(const wxString& line) const { log->appendText(line + "\n"); }

    // Brings every control in line with the colour; `fromTemperature` keeps that row's marker.
    void refresh(bool fromTemperature) {
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (kRows[i].track == SliderTrack::Temperature) {
                if (!fromTemperature)
                    rows[i]->clear();
            } else {
                rows[i]->setValue(color.rowUnit(kRows[i].track, false) * kScale);
            }
            rows[i]->slider()->refreshTrack();
        }
        slice->setMarker(color.hwb.h, color.hwb.b);
        hex->setColor(color.rgb);
        current->setColor(color.rgb);
    }

    void edit(SliderTrack track, float value) {
        if (track == SliderTrack::Temperature) {
            const Rgb warm = Wx::Detail::temperatureToRgb(value);
            color.fromRgb(Rgb(warm.r, warm.g, warm.b, color.rgb.a));
            refresh(true);
            return;
        }
        color.editRow(track, value / kScale, false);
        refresh(false);
    }

    void enterRgb(const Rgb& rgb) {
        color.fromRgb(rgb);
        refresh(false);
    }
};

wxString describe(const Rgb& c) {
    return wxString::Format("(%.4f, %.4f, %.4f, %.4f)", c.r, c.g, c.b, c.a);
}

} // namespace

wxWindow* createColorControlsPage(wxWindow* parent) {
    auto* page = new wxPanel(parent);
    auto* state = new ColorControls;
    page->Bind(wxEVT_DESTROY, [state, page](wxWindowDestroyEvent& event) {
        if (event.GetEventObject() == page)
            delete state;
        event.Skip();
    });
    state->log = new Wx::TextCtrl(page, wxID_ANY, wxEmptyString, wxDefaultPosition,
                                  Wx::scaleByDpi(wxSize(240, 340)), wxTE_MULTILINE | wxTE_READONLY);

    auto* rows = new wxBoxSizer(wxVERTICAL);
    for (const Wx::Detail::PickerRow& entry : kRows) {
        const SliderTrack track = entry.track;
        const bool temperature = track == SliderTrack::Temperature;
        auto gradient = makeShared<Wx::ColorSlider::Gradient>([state, track](float p, float v) {
            return track == SliderTrack::Temperature
                       ? Wx::Detail::temperatureToRgb(v)
                       : Wx::Detail::sliderTrackColor(track, p, state->color.rgb, state->color.hsv);
        });
        const auto scale = temperature ? Wx::Detail::kTemperatureScale
                                       : Wx::Detail::SpinnerScale{0.f, kScale, 0, 1.f};
        auto* row = new Wx::ColorSliderWithSpinner(
            page, wxID_ANY, String(entry.label), kLabelWidth, kSliderSize, gradient,
            static_cast<int>(scale.minimum), static_cast<int>(scale.maximum), scale.decimals,
            scale.step);
        // Red, green and blue show linear numbers: the slider moves in gamma-encoded steps.
        if (track == SliderTrack::Red || track == SliderTrack::Green || track == SliderTrack::Blue)
            row->setPositionValueMap(&Wx::Detail::gammaMap);
        if (temperature)
            row->setPositionValueMap(
                [](float x, PositionValueMap d) { return Wx::Detail::squareMap(x, d); });
        row->callOnValueChange([state, track, label = entry.label](float value) {
            state->write(wxString::Format("%s %g", label, value));
            state->edit(track, value);
        });
        rows->Add(row, 0, wxBOTTOM, Wx::scaleByDpi(kGap / 2));
        state->rows.push_back(row);
    }

    state->slice = new Wx::HwbSlice(page, wxID_ANY, wxSize(256, 128));
    state->slice->callOnChange([state](float hue, float blackness) {
        state->write(wxString::Format("HWB slice: hue %.1f, blackness %.3f", hue, blackness));
        state->color.fromHwb({hue, state->color.hwb.w, blackness, 0.f});
        state->refresh(false);
    });
    state->hex = new Wx::HexColorEdit(page, wxID_ANY, String(L"Hex color:"), kLabelWidth, 80);
    state->hex->callOnCommit([state](const Rgb& rgb) {
        state->write("Hex color: " + describe(rgb));
        state->enterRgb(Rgb(rgb.r, rgb.g, rgb.b, state->color.rgb.a));
    });

    const Rgb start(0.8f, 0.35f, 0.1f, 1.f);
    state->current = new Wx::ColorDisplay(page, wxID_ANY, wxSize(60, 40), start);
    auto* reference = new Wx::ColorDisplay(page, wxID_ANY, wxSize(60, 40), start);
    auto* patches = new wxBoxSizer(wxHORIZONTAL);
    patches->Add(state->current);
    patches->Add(reference);

    auto* droppers = new wxBoxSizer(wxHORIZONTAL);
    std::vector<Wx::EyeDropperButton*> buttons;
    for (const auto& [which, help] :
         {std::pair{Wx::EyeDropperButton::Icon::PickColor, Wx::EyeDropperButton::kPickColorHelp},
          std::pair{Wx::EyeDropperButton::Icon::PickInverse,
                    Wx::EyeDropperButton::kPickInverseHelp}}) {
        auto* button = new Wx::EyeDropperButton(page, wxID_ANY, Wx::EyeDropperButton::icon(which),
                                                String(help));
        const bool inverse = which == Wx::EyeDropperButton::Icon::PickInverse;
        button->callOnPicked([state, inverse](const Rgb& sampled) {
            const Rgb rgb = inverse ? Wx::Detail::inverseColor(sampled) : sampled;
            state->write((inverse ? "Pick Inverse: " : "Pick Color: ") + describe(rgb));
            state->enterRgb(Rgb(rgb.r, rgb.g, rgb.b, state->color.rgb.a));
        });
        button->callOnPickStarted([state] { state->write("pick started"); });
        button->callOnPickEnded([state] { state->write("pick ended"); });
        droppers->Add(button, 0, wxRIGHT, Wx::scaleByDpi(kGap / 2));
        buttons.push_back(button);
    }
    auto* averaging =
        new Wx::ComboBox(page, wxID_ANY, 130,
                         [state, buttons](int row) {
                             const int radius = Wx::Detail::kAveragingChoices[row].radius;
                             for (Wx::EyeDropperButton* button : buttons)
                                 button->setAveragingRadius(radius);
                             state->write(wxString::Format("averaging radius %d", radius));
                         },
                         {});
    Stack<Wx::ComboBox::Item> choices;
    for (int row = 0; row < static_cast<int>(std::size(Wx::Detail::kAveragingChoices)); ++row)
        choices.push({String(Wx::Detail::kAveragingChoices[row].label), row});
    averaging->setData(choices.view());
    averaging->selectIndex(0, false);
    droppers->Add(averaging, 0, wxALIGN_CENTER_VERTICAL);

    auto* left = new wxBoxSizer(wxVERTICAL);
    left->Add(rows, 0, wxBOTTOM, Wx::scaleByDpi(kGap));
    left->Add(state->hex, 0, wxBOTTOM, Wx::scaleByDpi(kGap));
    left->Add(state->slice, 0, wxBOTTOM, Wx::scaleByDpi(kGap));
    auto* lower = new wxBoxSizer(wxHORIZONTAL);
    lower->Add(patches, 0, wxRIGHT, Wx::scaleByDpi(2 * kGap));
    lower->Add(droppers, 0, wxALIGN_CENTER_VERTICAL);
    left->Add(lower);

    auto* right = new wxBoxSizer(wxVERTICAL);
    right->Add(new Wx::StaticText(page, wxID_ANY, String(L"What the controls report")), 0, wxBOTTOM,
               Wx::scaleByDpi(kGap / 2));
    right->Add(state->log, 1);

    auto* columns = new wxBoxSizer(wxHORIZONTAL);
    columns->Add(left, 0, wxRIGHT, Wx::scaleByDpi(2 * kGap));
    columns->Add(right, 0, wxEXPAND);
    state->enterRgb(start);
    return finishPage(page, columns);
}

} // namespace Varnel::Gallery
