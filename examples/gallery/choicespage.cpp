#include "choicespage.h"
#include "gallerypage.h"

#include <varnellibwx/dpi.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/stringconversion.h>
#include <varnellibwx/widgets/combobox.h>
#include <varnellibwx/widgets/dropdownbutton.h>
#include <varnellibwx/widgets/statictext.h>
#include <varnellibwx/widgets/textctrl.h>

#include <wx/panel.h>
#include <wx/sizer.h>

#include <string>

namespace Varnel::Gallery {

namespace {

constexpr int kLabelWidth = 200;
constexpr int kComboWidth = 180;

Stack<Wx::ComboBox::Item> numbered(int count, const wchar_t* prefix) {
    Stack<Wx::ComboBox::Item> items;
    items.reserve(count);
    for (int i = 0; i < count; ++i)
        items.push({String(prefix) + String(std::to_wstring(i + 1).c_str()), i});
    return items;
}

} // namespace

wxWindow* createChoicesPage(wxWindow* parent) {
    auto* page = new wxPanel(parent);
    auto* log = new Wx::TextCtrl(page, wxID_ANY, wxEmptyString, wxDefaultPosition,
                                 Wx::scaleByDpi(wxSize(420, 150)), wxTE_MULTILINE | wxTE_READONLY);
    const auto write = [log](const wxString& line) {
        log->appendText(line + "\n");
    };

    auto* grid = new wxFlexGridSizer(2, Wx::scaleByDpi(kGap), Wx::scaleByDpi(2 * kGap));
    const auto addCombo = [&](const wchar_t* label, const Stack<Wx::ComboBox::Item>& items,
                              int selected, bool enabled) {
        grid->Add(new Wx::StaticText(page, wxID_ANY, String(label), 0, {}, wxSize(kLabelWidth, -1)),
                  0, wxALIGN_CENTER_VERTICAL);
        auto* combo = new Wx::ComboBox(
            page, wxID_ANY, kComboWidth,
            [write, label](int id) { write(wxString::Format("%s: chose id %d", label, id)); },
            [write, label](wxWindow*, Wx::ComboBox::WindowEvent event) {
                static const char* names[] = {"list shown", "list hidden", "list focused",
                                              "list unfocused"};
                write(wxString::Format("%s: %s", label, names[static_cast<int>(event)]));
            });
        combo->setData(items.view());
        combo->selectIndex(selected, false);
        combo->Enable(enabled);
        grid->Add(combo, 0, wxALIGN_CENTER_VERTICAL);
    };
    Stack<Wx::ComboBox::Item> modes;
    modes.push({String(L"Linear"), 0});
    modes.push({String(L"Logarithmic"), 1});
    modes.push({String(L"Cumulative"), 2});
    addCombo(L"Histogram (3 items)", modes, 0, true);
    addCombo(L"Samples (30 items, scrolls)", numbered(30, L"Sample "), 4, true);
    addCombo(L"Materials (10,000 items)", numbered(10000, L"Material "), 9999, true);
    addCombo(L"Locked (disabled)", modes, 2, false);

    const Array<Function<void()>> resetActions = {[write] { write("Reset"); },
                                                  [write] {
                                                      write("Reset All");
                                                  }};
    const Array<Function<void()>> saveActions = {[write] { write("Save"); },
                                                 [write] { write("Save As..."); },
                                                 [write] {
                                                     write("Save Copy...");
                                                 }};
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    buttons->Add(new Wx::DropdownButton(
                     page, Wx::GuiSkin(), Array<int>{1, 2}, Array<wxString>{"Reset", "Reset All"},
                     wxNullBitmap, wxNullBitmap, resetActions, Wx::Button::Behavior::Normal, true),
                 0, wxRIGHT, Wx::scaleByDpi(2 * kGap));
    buttons->Add(new Wx::DropdownButton(
                     page, Wx::GuiSkin(), Array<int>{3, 4, 5},
                     Array<wxString>{"Save", "Save As...", "Save Copy..."}, wxNullBitmap,
                     wxNullBitmap, saveActions,
                     static_cast<Wx::Button::Behavior>(Wx::DropdownButton::kSwapOnChoose), true),
                 0);

    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(grid, 0, wxBOTTOM, Wx::scaleByDpi(2 * kGap));
    column->Add(new Wx::StaticText(page, wxID_ANY,
                                   String(L"Dropdown buttons: hold for the menu (the second "
                                          L"swaps in the entry last chosen)")),
                0, wxBOTTOM, Wx::scaleByDpi(kGap));
    column->Add(buttons, 0, wxBOTTOM, Wx::scaleByDpi(2 * kGap));
    column->Add(log, 0);
    return finishPage(page, column);
}

} // namespace Varnel::Gallery
