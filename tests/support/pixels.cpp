#include "pixels.h"
#include "pump.h"

#include <varnellib/native/process.h>
#include <varnellibwx/windowcapture.h>

#include <wx/dcmemory.h>
#include <wx/window.h>

#include <ostream>

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
    // Once GTK has drawn the window on its frame clock, whoever drew it: windows that wxWidgets
    // paints and native controls alike.
    pumpUntil([&] { return window.IsShownOnScreen(); });
    window.Refresh();
    Lib::waitForDrawnFrames(WindowHandle(window.GetHandle()), 1, 2000);
    pumpPending();
    return Wx::captureWindow(window);
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

void PrintTo(const wxColour& colour, std::ostream* out) {
    *out << "(" << int(colour.Red()) << "," << int(colour.Green()) << "," << int(colour.Blue())
         << ")";
}
