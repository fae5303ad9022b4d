#pragma once

#include <wx/colour.h>
#include <wx/image.h>

#include <functional>
#include <iosfwd>

class wxDC;
class wxWindow;

namespace Varnel::Test {

/// Runs a painting function into an offscreen bitmap of `size` (cleared to `background` first)
/// and returns the pixels, so painting can be checked without a window on screen.
wxImage renderOffscreen(wxSize size, const std::function<void(wxDC&)>& paint,
                        const wxColour& background = *wxBLACK);

/// What the user sees of a window right now (its whole rectangle): the window is repainted and
/// read back from the screen once it has drawn.
wxImage captureOnScreen(wxWindow& window);

wxColour pixelAt(const wxImage& image, int x, int y);

/// How many pixels of `image` have exactly `colour`.
int countPixels(const wxImage& image, const wxColour& colour);

} // namespace Varnel::Test

/// Lets test failures show colours as (r,g,b).
void PrintTo(const wxColour& colour, std::ostream* out);
