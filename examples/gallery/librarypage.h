#pragma once

class wxWindow;

namespace Varnel::Gallery {

/// What the library knows of the machine it runs on: version, scales, decimal separator, screen.
wxWindow* createLibraryPage(wxWindow* parent);

} // namespace Varnel::Gallery
