#pragma once

class wxWindow;

namespace Varnel::Gallery {

/// Push, toggle, flat and disabled buttons with and without bitmaps, each with a tooltip, and a
/// row of static lines, one of them a progress bar driven by a button.
wxWindow* createButtonsPage(wxWindow* parent);

} // namespace Varnel::Gallery
