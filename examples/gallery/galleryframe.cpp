#include "galleryframe.h"

#include <varnellibwx/dpi.h>

#include <algorithm>

#include <wx/dc.h>
#include <wx/display.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/vlbox.h>

namespace Varnel::Gallery {

namespace {

constexpr int kListWidth = 180;
constexpr int kRowHeight = 28;
constexpr int kTextIndent = 12;
const wxSize kFrameSize(900, 600);
constexpr int kScrollStep = 16;

// The frame's size at the library's scale, kept on the monitor's work area: at 2x a page is
// larger, and what still does not fit scrolls.
wxSize frameSize() {
    const wxRect work = wxDisplay(0u).GetClientArea();
    const wxSize wanted =
        wxSize(kListWidth, 0) + Wx::scaleByDpi(kFrameSize - wxSize(kListWidth, 0));
    return wxSize(std::min(wanted.x, work.width), std::min(wanted.y, work.height));
}

/// The page list, drawn in the dark look whatever the desktop theme.
class PageList : public wxVListBox {
public:
    PageList(wxWindow* parent, const std::vector<GalleryPage>& pages)
        : wxVListBox(parent, wxID_ANY, wxDefaultPosition, wxSize(kListWidth, -1), 0),
          m_pages(pages) {
        SetBackgroundColour(Colors::darkBackground);
        SetItemCount(m_pages.size());
    }

private:
    void OnDrawItem(wxDC& dc, const wxRect& rect, size_t index) const override {
        const bool selected = IsSelected(index);
        dc.SetTextForeground(selected ? Colors::selectionText : Colors::text);
        const wxSize extent = dc.GetTextExtent(m_pages[index].title);
        dc.DrawText(m_pages[index].title, rect.x + kTextIndent,
                    rect.y + (rect.height - extent.y) / 2);
    }
    void OnDrawBackground(wxDC& dc, const wxRect& rect, size_t index) const override {
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.SetBrush(wxBrush(IsSelected(index) ? Colors::selection : Colors::darkBackground));
        dc.DrawRectangle(rect);
    }
    wxCoord OnMeasureItem(size_t) const override { return FromDIP(kRowHeight); }

    const std::vector<GalleryPage>& m_pages;
};

} // namespace

GalleryFrame::GalleryFrame(std::vector<GalleryPage> pages)
    : wxFrame(nullptr, wxID_ANY, "VarnelLibWx gallery", wxDefaultPosition, frameSize()),
      m_pages(std::move(pages)) {
    SetBackgroundColour(Colors::background);
    m_list = new PageList(this, m_pages);
    auto* content = new wxScrolledWindow(this);
    content->SetScrollRate(kScrollStep, kScrollStep);
    m_content = content;
    m_content->SetBackgroundColour(Colors::background);
    m_content->SetSizer(new wxBoxSizer(wxVERTICAL));

    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(m_list, 0, wxEXPAND);
    row->Add(m_content, 1, wxEXPAND);
    SetSizer(row);

    m_list->Bind(wxEVT_LISTBOX, [this](wxCommandEvent& event) { showPage(event.GetInt()); });
    if (!m_pages.empty())
        showPage(0);
}

void GalleryFrame::showPage(int index) {
    if (index < 0 || index >= static_cast<int>(m_pages.size()))
        return;
    m_list->SetSelection(index);
    if (m_page)
        m_page->Destroy();
    m_page = m_pages[static_cast<std::size_t>(index)].create(m_content);
    m_content->GetSizer()->Add(m_page, 1, wxEXPAND);
    // The page fills the view and scrolls when its controls need more room than the view has.
    m_content->FitInside();
    m_content->Layout();
    Refresh();
}

} // namespace Varnel::Gallery
