#include "pixels.h"
#include "pump.h"

#include <varnellibwx/windowcapture.h>

#include <wx/dcmemory.h>
#include <wx/window.h>

#include <gtk/gtk.h>

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

void countFrame(GdkFrameClock*, gpointer count) {
    ++*static_cast<int*>(count);
}

} // namespace

wxImage captureOnScreen(wxWindow& window) {
    // The frame clock of the window's top level says when a frame has been drawn, whoever drew
    // it: windows that wxWidgets paints and native controls alike.
    auto* widget = static_cast<GtkWidget*>(window.GetHandle());
    pumpUntil([&] { return window.IsShownOnScreen() && gtk_widget_get_frame_clock(widget); });
    GdkFrameClock* clock = gtk_widget_get_frame_clock(widget);
    int frames = 0;
    const gulong handler =
        clock ? g_signal_connect(clock, "after-paint", G_CALLBACK(countFrame), &frames) : 0;
    window.Refresh();
    pumpUntil([&] { return frames > 0; });
    if (handler)
        g_signal_handler_disconnect(clock, handler);
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
