#include "textpage.h"
#include "gallerypage.h"

#include <varnellibwx/dpi.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/widgets/checkbox.h>
#include <varnellibwx/widgets/statictext.h>
#include <varnellibwx/widgets/textbutton.h>
#include <varnellibwx/widgets/textcontrol.h>

#include <wx/panel.h>
#include <wx/sizer.h>

namespace Varnel::Gallery {

namespace {

constexpr int kGap = 8;
constexpr int kMargin = 16;
constexpr int kWrapWidth = 420;

} // namespace

wxWindow* createTextPage(wxWindow* parent) {
    auto* page = new wxPanel(parent);
    auto* column = new wxBoxSizer(wxVERTICAL);

    column->Add(new Wx::StaticText(page, wxID_ANY, String(L"Static text at the standard size")), 0,
                wxBOTTOM, kGap);
    column->Add(new Wx::StaticText(page, wxID_ANY, String(L"Bold and italic"), 0,
                                   {Wx::TextFlag::Bold, Wx::TextFlag::Italic}),
                0, wxBOTTOM, kGap);
    auto* wrapped = new Wx::StaticText(
        page, wxID_ANY,
        String(L"A longer label wraps to the width it is given, and wrapping again to another "
               L"width starts from the unwrapped text, never from lines wrapped before."));
    wrapped->Wrap(Wx::scaleByDpi(kWrapWidth));
    column->Add(wrapped, 0, wxBOTTOM, kGap);
    auto* link = new Wx::TextButton(page, wxID_ANY, String(L"Open the renderer's documentation"),
                                    String(L"https://example.invalid/vellum/docs"));
    link->setTooltip(String(L"A link: hover shows the hand cursor"));
    column->Add(link, 0, wxBOTTOM, 2 * kGap);

    auto* entries = new wxBoxSizer(wxHORIZONTAL);
    entries->Add(
        new Wx::TextControl(page, wxID_ANY, String(L"Editable value"), 0, {}, wxSize(180, -1)), 0,
        wxRIGHT, kGap);
    auto* disabled =
        new Wx::TextControl(page, wxID_ANY, String(L"Disabled value"), 0, {}, wxSize(180, -1));
    disabled->Disable();
    entries->Add(disabled, 0);
    column->Add(entries, 0, wxBOTTOM, 2 * kGap);

    auto* boxes = new wxBoxSizer(wxHORIZONTAL);
    auto* srgb = new Wx::CheckBox(page, wxID_ANY, String(L"sRGB"));
    srgb->SetValue(true);
    boxes->Add(srgb, 0, wxRIGHT, 3 * kGap);
    boxes->Add(new Wx::CheckBox(page, wxID_ANY, String(L"Include alpha channel")), 0, wxRIGHT,
               3 * kGap);
    auto* locked = new Wx::CheckBox(page, wxID_ANY, String(L"Locked (disabled)"), wxDefaultPosition,
                                    wxDefaultSize, false);
    locked->SetValue(true);
    boxes->Add(locked, 0);
    column->Add(boxes, 0);

    auto* outer = new wxBoxSizer(wxVERTICAL);
    outer->Add(column, 1, wxEXPAND | wxALL, kMargin);
    page->SetSizer(outer);
    Wx::applySkinRecursive(page, Wx::GuiSkin());
    return page;
}

} // namespace Varnel::Gallery
