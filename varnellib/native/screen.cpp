#include <varnellib/native/screen.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <gdk/gdkx.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace Varnel {

namespace {

float decode(double c) {
    return static_cast<float>(c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4));
}

std::array<float, 256> makeSrgbTable() {
    std::array<float, 256> table{};
    for (int i = 0; i < 256; ++i)
        table[static_cast<std::size_t>(i)] = decode(i / 255.0);
    return table;
}

const std::array<float, 256>& srgbTable() {
    static const std::array<float, 256> table = makeSrgbTable();
    return table;
}

} // namespace

float srgbByteToLinear(uint8 value) {
    return srgbTable()[value];
}

float srgbToLinear(float encoded) {
    return decode(encoded);
}

Bucket getScreenRegion(WindowHandle window) {
    auto* widget = static_cast<GtkWidget*>(window.native());
    if (!widget || !GTK_IS_WIDGET(widget))
        return {};
    GdkWindow* gdkWindow = gtk_widget_get_window(widget);
    if (!gdkWindow)
        return {};
    GtkAllocation allocation;
    gtk_widget_get_allocation(widget, &allocation);
    int x = 0, y = 0;
    gdk_window_get_origin(gdkWindow, &x, &y);
    // A widget without a window of its own is placed inside its parent's window.
    if (!gtk_widget_get_has_window(widget)) {
        x += allocation.x;
        y += allocation.y;
    }
    return {x, y, allocation.width, allocation.height};
}

namespace {

// The part of `region` (device pixels) that some monitor shows, as rectangles (one a monitor);
// the rest of the root window (between monitors of different sizes) shows nothing. GDK gives
// the monitors in logical pixels.
Stack<Bucket> shownParts(GdkDisplay* display, const Bucket& region, int scale) {
    Stack<Bucket> parts;
    for (int m = 0; m < gdk_display_get_n_monitors(display); ++m) {
        GdkRectangle g;
        gdk_monitor_get_geometry(gdk_display_get_monitor(display, m), &g);
        const Bucket shown =
            region.intersect({g.x * scale, g.y * scale, g.width * scale, g.height * scale});
        if (!shown.isEmpty())
            parts.push(shown);
    }
    return parts;
}

int lowestBit(unsigned long mask) {
    int shift = 0;
    while (mask && !(mask & 1u)) {
        mask >>= 1;
        ++shift;
    }
    return shift;
}

int nativeByteOrder() {
    const uint32_t one = 1;
    unsigned char first = 0;
    std::memcpy(&first, &one, 1);
    return first == 1 ? LSBFirst : MSBFirst;
}

GdkWindow* rootWindowOf(GdkDisplay* display) {
    return gdk_screen_get_root_window(gdk_display_get_default_screen(display));
}

int displayScale(GdkDisplay* display) {
    return std::max(gdk_window_get_scale_factor(rootWindowOf(display)), 1);
}

// Reads the screen under `region` (logical pixels) with XGetImage: one request for the whole
// captured rectangle, in the device pixels the X server keeps (`scale` of them a logical pixel
// each way). `store` gets each device pixel that a monitor shows, at its place from the region's
// device origin. Reading through a cairo surface of the root window instead returns stale pixels
// after the first read, because cairo keeps a copy of a surface it believes nobody else draws on.
template <class Store>
bool readScreen(GdkDisplay* display, int scale, const Bucket& region, Store&& store) {
    Display* x = gdk_x11_display_get_xdisplay(display);
    const ::Window root = DefaultRootWindow(x);
    const Bucket device{region.x * scale, region.y * scale, region.width * scale,
                        region.height * scale};
    // The root window's size as GDK keeps it (it follows the root's configure events): asking the
    // server would cost a second round trip on every read, and an eyedropper reads on every motion.
    GdkWindow* rootWindow = rootWindowOf(display);
    const Bucket captured = device.intersect({0, 0, gdk_window_get_width(rootWindow) * scale,
                                              gdk_window_get_height(rootWindow) * scale});
    if (captured.isEmpty())
        return true;
    // A screen resized a moment ago may be smaller than GDK knows yet: the request then fails
    // with an X error, which untrapped ends the program. XGetImage waits for its answer, so the
    // error has arrived when it returns (no further round trip to sync), and no image is the
    // sign of it.
    gdk_x11_display_error_trap_push(display);
    XImage* image =
        XGetImage(x, root, captured.x, captured.y, static_cast<unsigned>(captured.width),
                  static_cast<unsigned>(captured.height), AllPlanes, ZPixmap);
    gdk_x11_display_error_trap_pop_ignored(display);
    if (!image)
        return false;
    const int redShift = lowestBit(image->red_mask), greenShift = lowestBit(image->green_mask),
              blueShift = lowestBit(image->blue_mask);
    // 32-bit pixels in this machine's byte order (a true-colour screen) are read in place;
    // anything else through Xlib's own accessor.
    const bool direct = image->bits_per_pixel == 32 && image->byte_order == nativeByteOrder();
    for (const Bucket& shown : shownParts(display, captured, scale)) {
        for (int y = shown.y; y < shown.y + shown.height; ++y) {
            const char* row =
                image->data + static_cast<std::ptrdiff_t>(y - captured.y) * image->bytes_per_line;
            for (int xx = shown.x; xx < shown.x + shown.width; ++xx) {
                unsigned long p = 0;
                if (direct) {
                    uint32_t word;
                    std::memcpy(&word, row + 4 * static_cast<std::ptrdiff_t>(xx - captured.x), 4);
                    p = word;
                } else {
                    p = XGetPixel(image, xx - captured.x, y - captured.y);
                }
                store(xx - device.x, y - device.y,
                      RgbBytes{static_cast<uint8>((p & image->red_mask) >> redShift),
                               static_cast<uint8>((p & image->green_mask) >> greenShift),
                               static_cast<uint8>((p & image->blue_mask) >> blueShift)});
            }
        }
    }
    XDestroyImage(image);
    return true;
}

GdkDisplay* readableDisplay() {
    GdkDisplay* display = gdk_display_get_default();
    return display && GDK_IS_X11_DISPLAY(display) && !isXWaylandSession() ? display : nullptr;
}

} // namespace

bool isXWaylandSession() {
    const char* wayland = std::getenv("WAYLAND_DISPLAY");
    GdkDisplay* display = gdk_display_get_default();
    return wayland && *wayland && display && GDK_IS_X11_DISPLAY(display);
}

bool isScreenReadable() {
    return readableDisplay() != nullptr;
}

Stack<RgbBytes> drawWidget(WindowHandle window, int& width, int& height) {
    width = height = 0;
    Stack<RgbBytes> pixels;
    auto* widget = static_cast<GtkWidget*>(window.native());
    if (!widget || !GTK_IS_WIDGET(widget) || !gtk_widget_get_realized(widget))
        return pixels;
    width = gtk_widget_get_allocated_width(widget);
    height = gtk_widget_get_allocated_height(widget);
    if (width <= 0 || height <= 0)
        return pixels;
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height);
    cairo_t* cr = cairo_create(surface);
    gtk_widget_draw(widget, cr);
    cairo_destroy(cr);
    cairo_surface_flush(surface);
    const unsigned char* data = cairo_image_surface_get_data(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    pixels.resize(width * height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            uint32_t word;
            std::memcpy(&word, data + std::size_t(y) * std::size_t(stride) + 4 * std::size_t(x), 4);
            pixels[y * width + x] =
                RgbBytes{static_cast<uint8>(word >> 16), static_cast<uint8>(word >> 8),
                         static_cast<uint8>(word)};
        }
    cairo_surface_destroy(surface);
    return pixels;
}

int screenScale() {
    GdkDisplay* display = readableDisplay();
    return display ? displayScale(display) : 1;
}

Stack<RgbBytes> getScreenRegionBytes(const Bucket& region) {
    Stack<RgbBytes> bytes;
    GdkDisplay* display = readableDisplay();
    if (region.isEmpty() || !display)
        return bytes;
    const int scale = displayScale(display);
    const int width = region.width * scale;
    bytes.resize(width * region.height * scale);
    if (!readScreen(display, scale, region,
                    [&](int x, int y, RgbBytes colour) { bytes[y * width + x] = colour; }))
        return {}; // not available, as where no screen can be read
    return bytes;
}

BitmapImpl<Rgb> getScreenRegionColors(const Bucket& region) {
    GdkDisplay* display = readableDisplay();
    if (!display)
        return {};
    BitmapImpl<Rgb> result(std::max(region.width, 0), std::max(region.height, 0));
    if (result.isEmpty())
        return result;
    const int scale = displayScale(display);
    if (scale == 1) {
        const auto& decode = srgbTable();
        if (!readScreen(display, 1, region, [&](int x, int y, RgbBytes c) {
                result(x, y) = Rgb(decode[c.r], decode[c.g], decode[c.b], 1.f);
            }))
            return {};
        return result;
    }
    // Each logical pixel is the mean of its scale x scale device pixels, summed in doubles so
    // that a flat area gives its own colour back exactly; device pixels on no monitor count as
    // (0, 0, 0, 0), so a partly shown pixel has the shown share as its alpha.
    std::vector<std::array<double, 4>> sums(static_cast<std::size_t>(region.width) *
                                            static_cast<std::size_t>(region.height));
    // Which logical column and row each device pixel falls in, looked up rather than divided
    // (an eyedropper reads thousands of device pixels on every motion).
    std::vector<std::size_t> columnOf(static_cast<std::size_t>(region.width * scale));
    std::vector<std::size_t> rowStartOf(static_cast<std::size_t>(region.height * scale));
    for (std::size_t i = 0; i < columnOf.size(); ++i)
        columnOf[i] = i / static_cast<std::size_t>(scale);
    for (std::size_t i = 0; i < rowStartOf.size(); ++i)
        rowStartOf[i] =
            i / static_cast<std::size_t>(scale) * static_cast<std::size_t>(region.width);
    const auto& decode = srgbTable();
    if (!readScreen(display, scale, region, [&](int x, int y, RgbBytes c) {
            std::array<double, 4>& sum = sums[rowStartOf[static_cast<std::size_t>(y)] +
                                              columnOf[static_cast<std::size_t>(x)]];
            sum[0] += decode[c.r];
            sum[1] += decode[c.g];
            sum[2] += decode[c.b];
            sum[3] += 1.0;
        }))
        return {};
    const double share = 1.0 / (scale * scale);
    for (int y = 0; y < region.height; ++y)
        for (int x = 0; x < region.width; ++x) {
            const std::array<double, 4>& sum =
                sums[static_cast<std::size_t>(y) * static_cast<std::size_t>(region.width) +
                     static_cast<std::size_t>(x)];
            result(x, y) =
                Rgb(static_cast<float>(sum[0] * share), static_cast<float>(sum[1] * share),
                    static_cast<float>(sum[2] * share), static_cast<float>(sum[3] * share));
        }
    return result;
}

} // namespace Varnel
