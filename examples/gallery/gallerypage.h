#pragma once

#include <wx/colour.h>
#include <wx/string.h>

#include <functional>
#include <vector>

class wxSizer;
class wxWindow;

namespace Varnel::Gallery {

/// One page of the gallery: a title for the list, the name of its screenshot file, and a
/// function that builds the page's content as a child of `parent`.
struct GalleryPage {
    wxString title;
    wxString fileName;
    std::function<wxWindow*(wxWindow* parent)> create;
};

/// Lays `content` into `page` with the page margin on every side and gives the page and all its
/// children the library's default skin; returns the page.
wxWindow* finishPage(wxWindow* page, wxSizer* content);

/// Every page, in the order of the list. Each widget adds its page here.
std::vector<GalleryPage> galleryPages();

/// The spacing every page uses between controls and around its content (scaled pixels).
inline constexpr int kGap = 8;
inline constexpr int kMargin = 16;

/// The gallery's colours: the library's dark look.
namespace Colors {
inline const wxColour text(200, 200, 200);
inline const wxColour background(68, 68, 68);
inline const wxColour darkBackground(37, 37, 37);
inline const wxColour selection(39, 147, 255);
inline const wxColour selectionText(0, 0, 0);
} // namespace Colors

} // namespace Varnel::Gallery
