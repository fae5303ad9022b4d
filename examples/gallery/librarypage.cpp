#include "librarypage.h"
#include "gallerypage.h"

#include <varnellib/base/string.h>
#include <varnellib/native/process.h>
#include <varnellibwx/varnellibwx.h>

#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

namespace Varnel::Gallery {

namespace {

constexpr int kRowGap = 8;

void addRow(wxWindow* page, wxFlexGridSizer* grid, const wxString& label, const wxString& value) {
    for (const wxString& text : {label, value}) {
        auto* cell = new wxStaticText(page, wxID_ANY, text);
        cell->SetForegroundColour(Colors::text);
        grid->Add(cell);
    }
}

} // namespace

wxWindow* createLibraryPage(wxWindow* parent) {
    auto* page = new wxPanel(parent);
    page->SetBackgroundColour(Colors::background);

    auto* title = new wxStaticText(page, wxID_ANY, "VarnelLibWx");
    title->SetForegroundColour(Colors::text);
    title->SetFont(title->GetFont().Scaled(1.6f).Bold());

    auto* grid = new wxFlexGridSizer(2, kRowGap, 3 * kRowGap);
    const double dpiScale = wxWindow::FromDIP(wxSize(1000, 1000), nullptr).x / 1000.0;
    const wxSize screen = wxGetDisplaySize();
    addRow(page, grid, "Version", LibWx::version());
    addRow(page, grid, "DPI scale", wxString::Format("%.2f", dpiScale));
    addRow(page, grid, "Font scale", wxString::Format("%.2f", getFontScale()));
    addRow(page, grid, "Decimal separator", "\"" + wxString(decimalPointCharacter()) + "\"");
    addRow(page, grid, "Screen size", wxString::Format("%d x %d", screen.x, screen.y));
    addRow(page, grid, "Interface thread", isMainThread() ? "main thread" : "another thread");

    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(title, 0, wxALL, kMargin);
    column->Add(grid, 0, wxLEFT | wxRIGHT | wxBOTTOM, kMargin);
    page->SetSizer(column);
    return page;
}

} // namespace Varnel::Gallery
