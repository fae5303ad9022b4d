#include "pixels.h"
#include "pump.h"

#include <varnellibwx/windowcapture.h>

#include <wx/dcmemory.h>
#include <wx/window.h>

namespace Varnel::Test {

wxImage renderOffscreen(wxSize size, const std::function<void(wxDC&)>& paint,
                        const wxColour& background) {
    wxBitmap bitmap(size, 24);
    {
        wxMemoryDC dc(bitmap);
        dc.SetBackground(wxBrush(background));
        dc.Clear();
        paint(dc);
    }
    return bitmap.ConvertToImage();
}

wxImage captureOnScreen(wxWindow& window) {
    window.Raise();
    window.Refresh();
    window.Update();
    pumpPending();
    return Wx::captureClientArea(window);
}

wxColour pixelAt(const wxImage& image, int x, int y) {
    return wxColour(image.GetRed(x, y), image.GetGreen(x, y), image.GetBlue(x, y));
}

int countPixels(const wxImage& image, const wxColour& colour) {
    int count = 0;
    for (int y = 0; y < image.GetHeight(); ++y)
        for (int x = 0; x < image.GetWidth(); ++x)
            count += pixelAt(image, x, y) == colour ? 1 : 0;
    return count;
}

} // namespace Varnel::Test
