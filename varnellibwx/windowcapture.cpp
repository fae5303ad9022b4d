#include <varnellibwx/windowcapture.h>

#include <varnellib/native/screen.h>

#include <wx/window.h>

#include <cstring>

namespace Varnel::Wx {

wxImage captureScreenRect(const wxRect& screenRect) {
    if (screenRect.IsEmpty())
        return {};
    const int scale = screenScale();
    const Stack<RgbBytes> pixels =
        getScreenRegionBytes({screenRect.x, screenRect.y, screenRect.width, screenRect.height});
    if (pixels.isEmpty())
        return {};
    wxImage image(screenRect.width * scale, screenRect.height * scale, false);
    if (pixels.size() != image.GetWidth() * image.GetHeight())
        return {}; // the scale changed between the two questions

    static_assert(sizeof(RgbBytes) == 3);
    std::memcpy(image.GetData(), pixels.data(), pixels.size() * sizeof(RgbBytes));
    return image;
}

wxImage captureWindow(const wxWindow& window) {
    return captureScreenRect(window.GetScreenRect());
}

wxImage drawWindow(wxWindow& window) {
    int width = 0, height = 0;
    const Stack<RgbBytes> pixels = drawWidget(WindowHandle(window.GetHandle()), width, height);
    if (pixels.isEmpty())
        return {};
    wxImage image(width, height, false);
    std::memcpy(image.GetData(), pixels.data(), pixels.size() * sizeof(RgbBytes));
    return image;
}

} // namespace Varnel::Wx
