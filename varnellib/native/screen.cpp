#include <varnellib/native/screen.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <gdk/gdkx.h>
#include <gtk/gtk.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

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

// The part of `region` that some monitor shows, as rectangles (one a monitor); the rest of the
// root window (between monitors of different sizes) shows nothing.
Stack<Bucket> shownParts(GdkDisplay* display, const Bucket& region) {
    Stack<Bucket> parts;
    for (int m = 0; m < gdk_display_get_n_monitors(display); ++m) {
        GdkRectangle g;
        gdk_monitor_get_geometry(gdk_display_get_monitor(display, m), &g);
        const Bucket shown = region.intersect({g.x, g.y, g.width, g.height});
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

// Reads the screen with XGetImage: one request for the whole captured rectangle. Reading through
// a cairo surface of the root window instead returns stale pixels after the first read, because
// cairo keeps a copy of a surface it believes nobody else draws on.
template <class Store>
bool readScreen(const Bucket& region, Store&& store) {
    GdkDisplay* display = gdk_display_get_default();
    if (!display || !GDK_IS_X11_DISPLAY(display))
        return false;
    Display* x = gdk_x11_display_get_xdisplay(display);
    const ::Window root = DefaultRootWindow(x);
    // The root window's size as GDK keeps it (it follows the root's configure events): asking the
    // server would cost a second round trip on every read, and an eyedropper reads on every motion.
    GdkWindow* rootWindow = gdk_screen_get_root_window(gdk_display_get_default_screen(display));
    const Bucket captured = region.intersect(
        {0, 0, gdk_window_get_width(rootWindow), gdk_window_get_height(rootWindow)});
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
    for (const Bucket& shown : shownParts(display, captured)) {
        for (int y = shown.y; y < shown.y + shown.height; ++y) {
            for (int xx = shown.x; xx < shown.x + shown.width; ++xx) {
                const unsigned long p = XGetPixel(image, xx - captured.x, y - captured.y);
                store(xx - region.x, y - region.y,
                      RgbBytes{static_cast<uint8>((p & image->red_mask) >> redShift),
                               static_cast<uint8>((p & image->green_mask) >> greenShift),
                               static_cast<uint8>((p & image->blue_mask) >> blueShift)});
            }
        }
    }
    XDestroyImage(image);
    return true;
}

} // namespace

bool isScreenReadable() {
    GdkDisplay* display = gdk_display_get_default();
    return display && GDK_IS_X11_DISPLAY(display);
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

Stack<RgbBytes> getScreenRegionBytes(const Bucket& region) {
    Stack<RgbBytes> bytes;
    if (region.isEmpty() || !isScreenReadable())
        return bytes;
    bytes.resize(region.width * region.height);
    if (!readScreen(region,
                    [&](int x, int y, RgbBytes colour) { bytes[y * region.width + x] = colour; }))
        return {}; // not available, as where no screen can be read
    return bytes;
}

BitmapImpl<Rgb> getScreenRegionColors(const Bucket& region) {
    if (!isScreenReadable())
        return {};
    BitmapImpl<Rgb> result(std::max(region.width, 0), std::max(region.height, 0));
    if (result.isEmpty())
        return result;
    const auto& decode = srgbTable();
    if (!readScreen(region, [&](int x, int y, RgbBytes c) {
            result(x, y) = Rgb(decode[c.r], decode[c.g], decode[c.b], 1.f);
        }))
        return {};
    return result;
}

} // namespace Varnel
