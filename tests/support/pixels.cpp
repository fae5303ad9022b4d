#include "pixels.h"
#include "pump.h"

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

namespace {

// Counts paint events and lets them on to the window's own handler (handlers bound later run
// first).
struct PaintCounter {
    int paints = 0;
    void onPaint(wxPaintEvent& event) {
        ++paints;
        event.Skip();
    }
};

} // namespace

wxImage captureOnScreen(wxWindow& window) {
    PaintCounter counter;
    window.Bind(wxEVT_PAINT, &PaintCounter::onPaint, &counter);
    window.Refresh();
    // Windows drawn by the toolkit itself send no paint event; they are waited for no longer
    // than this.
    pumpUntil([&] { return window.IsShownOnScreen() && counter.paints > 0; }, 2s);
    window.Unbind(wxEVT_PAINT, &PaintCounter::onPaint, &counter);
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

void PrintTo(const wxColour& colour, std::ostream* out) {
    *out << "(" << int(colour.Red()) << "," << int(colour.Green()) << "," << int(colour.Blue())
         << ")";
}
