#pragma once

class wxWindow;

namespace Varnel::Gallery {

/// Two collapsible panels holding controls of other pages, a generated high-dynamic-range image
/// that shows the pixel probe while the pointer moves over it, and a button that opens the save
/// settings dialog and shows its answer.
wxWindow* createImageToolsPage(wxWindow* parent);

/// Shows the page's probe at a fixed pixel of its image, as if the pointer rested there (for the
/// screenshots, where no pointer moves).
void showProbeAtFixedPixel(wxWindow* page);

} // namespace Varnel::Gallery
