#include <varnellibwx/dpi.h>

#include <wx/image.h>
#include <wx/window.h>

#include <atomic>

namespace Varnel::Wx {

namespace {

std::atomic<double> gScaleOverride{0.0};

int scaleComponent(int value) {
    const double scale = gScaleOverride.load();
    if (scale > 0.0)
        return static_cast<int>(value * scale);
    return wxWindow::FromDIP(wxSize(value, 0), nullptr).x;
}

} // namespace

int scaleByDpi(int value) {
    return scaleComponent(value);
}

wxSize scaleByDpi(wxSize size) {
    return {size.x == wxDefaultCoord ? wxDefaultCoord : scaleComponent(size.x),
            size.y == wxDefaultCoord ? wxDefaultCoord : scaleComponent(size.y)};
}

Pixel scaleByDpi(Pixel point) {
    return {scaleComponent(point.x), scaleComponent(point.y)};
}

wxBitmap scaleByDpi(const wxBitmap& bitmap) {
    const int factor = scaleByDpi(1);
    if (!bitmap.IsOk() || factor <= 1)
        return bitmap;
    const wxImage image = bitmap.ConvertToImage().Scale(
        bitmap.GetWidth() * factor, bitmap.GetHeight() * factor, wxIMAGE_QUALITY_NORMAL);
    return wxBitmap(image, -1, 1.0);
}

namespace Detail {

void setDpiScaleOverride(double scale) {
    gScaleOverride.store(scale);
}

} // namespace Detail
} // namespace Varnel::Wx
