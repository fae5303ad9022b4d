#include "colorpickerpage.h"
#include "gallerypage.h"

#include <varnellibwx/dpi.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/widgets/autosizedbutton.h>
#include <varnellibwx/widgets/colorpicker.h>
#include <varnellibwx/widgets/colorpickerbutton.h>
#include <varnellibwx/widgets/statictext.h>
#include <varnellibwx/widgets/textctrl.h>

#include <wx/panel.h>
#include <wx/sizer.h>

namespace Varnel::Gallery {

namespace {

struct Swatch {
    const wchar_t* title;
    Rgb color;
    bool enabled;
};

const Swatch kSwatches[] = {
    {L"Diffuse", {0.8f, 0.35f, 0.1f, 1.f}, true},     {L"Sky", {0.2f, 0.45f, 0.9f, 1.f}, true},
    {L"Foliage", {0.1f, 0.5f, 0.15f, 1.f}, true},     {L"Emission", {1.f, 1.f, 1.f, 1.f}, true},
    {L"Locked tint", {0.6f, 0.6f, 0.6f, 1.f}, false},
};

wxString describe(const Rgb& c) {
    return wxString::Format("(%.4f, %.4f, %.4f, %.4f)", c.r, c.g, c.b, c.a);
}

} // namespace

wxWindow* createColorPickerPage(wxWindow* parent) {
    auto* page = new wxPanel(parent);
    auto* log = new Wx::TextCtrl(page, wxID_ANY, wxEmptyString, wxDefaultPosition,
                                 Wx::scaleByDpi(wxSize(420, 200)), wxTE_MULTILINE | wxTE_READONLY);
    const auto write = [log](const wxString& line) {
        log->appendText(line + "\n");
    };

    auto* grid = new wxFlexGridSizer(2, Wx::scaleByDpi(kGap), Wx::scaleByDpi(2 * kGap));
    for (const Swatch& swatch : kSwatches) {
        grid->Add(new Wx::StaticText(page, wxID_ANY, String(swatch.title)), 0,
                  wxALIGN_CENTER_VERTICAL);
        auto* button =
            new Wx::ColorPickerButton(page, String(swatch.title), wxSize(60, 20), swatch.enabled);
        button->setColor(swatch.color, false);
        const wxString title(swatch.title);
        button->callOnCommittedChange(
            [write, title](const Rgb& c) { write(title + ": committed " + describe(c)); });
        button->callOnLiveChange(
            [write, title](const Rgb& c) { write(title + ": live " + describe(c)); });
        grid->Add(button, 0, wxALIGN_CENTER_VERTICAL);
    }

    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    for (const bool alpha : {false, true}) {
        const auto format =
            alpha ? Wx::ColorPicker::ColorFormat::Rgba : Wx::ColorPicker::ColorFormat::Rgb;
        auto* open = new Wx::AutoSizedButton(
            page, wxID_ANY, alpha ? "Open the picker with alpha" : "Open the picker", 80, 24,
            [page, format, write] {
                Wx::ColorPicker picker(page, String(L"Color Selector: Gallery"), wxDefaultPosition,
                                       Rgb(0.25f, 0.5f, 0.75f, 0.5f),
                                       Wx::ColorPicker::DialogType::Normal, format);
                picker.callOnLiveChange([write](const Rgb& c) { write("live " + describe(c)); });
                picker.callOnAddColor([write](const Rgb& c) { write("add " + describe(c)); });
                picker.callOnConfirm([write] { write("confirmed"); });
                picker.callOnClosed([write] { write("closed"); });
                picker.ShowModal();
            });
        buttons->Add(open, 0, wxRIGHT, Wx::scaleByDpi(kGap));
    }

    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(grid, 0, wxBOTTOM, Wx::scaleByDpi(2 * kGap));
    column->Add(buttons, 0, wxBOTTOM, Wx::scaleByDpi(2 * kGap));
    column->Add(new Wx::StaticText(page, wxID_ANY,
                                   String(L"Drag a swatch onto another; right-click to copy or "
                                          L"paste. What they report:")),
                0, wxBOTTOM, Wx::scaleByDpi(kGap / 2));
    column->Add(log, 0);
    return finishPage(page, column);
}

} // namespace Varnel::Gallery
