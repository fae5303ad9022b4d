#include <varnellibwx/windowcapture.h>

#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/dcscreen.h>
#include <wx/window.h>

namespace Varnel::Wx {

wxImage captureScreenRect(const wxRect& screenRect) {
    if (screenRect.IsEmpty())
        return {};
    wxBitmap bitmap(screenRect.GetSize(), 24);
    {
        wxMemoryDC memory(bitmap);
        memory.SetBackground(*wxBLACK_BRUSH);
        memory.Clear();
        wxScreenDC screen;
        memory.Blit(0, 0, screenRect.width, screenRect.height, &screen, screenRect.x, screenRect.y);
    }
    return bitmap.ConvertToImage();
}

wxImage captureWindow(const wxWindow& window) {
    return captureScreenRect(window.GetScreenRect());
}

wxImage captureClientArea(const wxWindow& window) {
    return captureScreenRect(wxRect(window.ClientToScreen(wxPoint(0, 0)), window.GetClientSize()));
}

} // namespace Varnel::Wx
