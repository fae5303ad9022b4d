#include <varnellib/native/screen.h>

#include <gtk/gtk.h>

#include <array>
#include <cmath>

namespace Varnel {

namespace {

std::array<float, 256> makeSrgbTable() {
    std::array<float, 256> table{};
    for (int i = 0; i < 256; ++i) {
        const double c = i / 255.0;
        table[static_cast<std::size_t>(i)] =
            static_cast<float>(c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4));
    }
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

BitmapImpl<Rgb> getScreenRegionColors(const Bucket& region) {
    BitmapImpl<Rgb> result(std::max(region.width, 0), std::max(region.height, 0));
    GdkDisplay* display = gdk_display_get_default();
    if (result.isEmpty() || !display)
        return result;
    GdkWindow* root = gdk_get_default_root_window();
    const Bucket screen{0, 0, gdk_window_get_width(root), gdk_window_get_height(root)};
    const Bucket captured = region.intersect(screen);
    if (captured.isEmpty())
        return result;
    GdkPixbuf* pixbuf =
        gdk_pixbuf_get_from_window(root, captured.x, captured.y, captured.width, captured.height);
    if (!pixbuf)
        return result;

    const guchar* pixels = gdk_pixbuf_get_pixels(pixbuf);
    const int stride = gdk_pixbuf_get_rowstride(pixbuf);
    const int channels = gdk_pixbuf_get_n_channels(pixbuf);
    const auto& decode = srgbTable();
    // Only the parts of the capture that some monitor shows are real pixels; the rest of the
    // root window (between monitors of different sizes) stays transparent.
    for (int m = 0; m < gdk_display_get_n_monitors(display); ++m) {
        GdkRectangle geometry;
        gdk_monitor_get_geometry(gdk_display_get_monitor(display, m), &geometry);
        const Bucket shown =
            captured.intersect({geometry.x, geometry.y, geometry.width, geometry.height});
        for (int y = shown.y; y < shown.y + shown.height; ++y) {
            const guchar* source = pixels + (y - captured.y) * stride;
            Rgb* target = result.row(y - region.y);
            for (int x = shown.x; x < shown.x + shown.width; ++x) {
                const guchar* p = source + (x - captured.x) * channels;
                target[x - region.x] = Rgb(decode[p[0]], decode[p[1]], decode[p[2]], 1.f);
            }
        }
    }
    g_object_unref(pixbuf);
    return result;
}

} // namespace Varnel
