#pragma once

#include <wx/string.h>

namespace Varnel::Gallery {

class GalleryFrame;

/// Shows every page of `frame` in turn and writes `directory/<page>.png` of the whole frame.
/// Returns the number of pages that could not be written.
int saveScreenshots(GalleryFrame& frame, const wxString& directory);

/// Shows every page and every dialog of the library in turn and checks, through each window's own
/// drawing (no screen is read: it runs on any display), that it painted. Prints one line each;
/// returns the number that did not paint.
int checkPainting(GalleryFrame& frame);

} // namespace Varnel::Gallery
