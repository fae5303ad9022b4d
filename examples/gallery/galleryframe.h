#pragma once

#include "gallerypage.h"

#include <wx/frame.h>

#include <vector>

class wxBoxSizer;
class wxVListBox;

namespace Varnel::Gallery {

/// The gallery's window: the list of pages on the left, the chosen page on the right.
class GalleryFrame : public wxFrame {
public:
    explicit GalleryFrame(std::vector<GalleryPage> pages);

    const std::vector<GalleryPage>& pages() const { return m_pages; }
    /// Shows page `index`, building it afresh.
    void showPage(int index);
    /// The page shown now (null before the first).
    wxWindow* page() const { return m_page; }

private:
    std::vector<GalleryPage> m_pages;
    wxVListBox* m_list = nullptr;
    wxWindow* m_content = nullptr;
    wxWindow* m_page = nullptr;
};

} // namespace Varnel::Gallery
