#pragma once

#include <wx/string.h>

namespace Varnel::Gallery {

class GalleryFrame;

/// Shows every page of `frame` in turn and writes `directory/<page>.png` of the whole frame.
/// Returns the number of pages that could not be written.
int saveScreenshots(GalleryFrame& frame, const wxString& directory);

} // namespace Varnel::Gallery
