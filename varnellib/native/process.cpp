#include <varnellib/native/process.h>

#include <gtk/gtk.h>
#include <unistd.h>

namespace Varnel {

namespace {
// GTK keeps the Xft DPI in 1024ths of a dot per inch; -1 means "not set".
constexpr int kXftDpiUnit = 1024;
constexpr double kStandardDpi = 96.0;
} // namespace

bool isMainThread() {
    return gettid() == getpid();
}

double getFontScale() {
    GtkSettings* settings = gtk_settings_get_default();
    if (!settings)
        return 1.0;
    gint xftDpi = -1;
    g_object_get(settings, "gtk-xft-dpi", &xftDpi, nullptr);
    if (xftDpi <= 0)
        return 1.0;
    return xftDpi / static_cast<double>(kXftDpiUnit) / kStandardDpi;
}

double getFontResolution() {
    GdkScreen* screen = gdk_screen_get_default();
    const double resolution = screen ? gdk_screen_get_resolution(screen) : -1.0;
    return resolution > 0.0 ? resolution : static_cast<double>(kStandardDpi);
}

namespace Lib {

bool runSingleEventLoopIteration(bool noWait) {
    return g_main_context_iteration(nullptr, noWait ? FALSE : TRUE) == TRUE;
}

void setNativeAnimations(bool enabled) {
    if (GtkSettings* settings = gtk_settings_get_default())
        g_object_set(settings, "gtk-enable-animations", enabled ? TRUE : FALSE, nullptr);
}

bool waitForDrawnFrames(WindowHandle window, int frames, int timeoutMs) {
    auto* widget = static_cast<GtkWidget*>(window.native());
    if (!widget || !GTK_IS_WIDGET(widget))
        return false;
    GtkWidget* toplevel = gtk_widget_get_toplevel(widget);
    GdkFrameClock* clock = gtk_widget_get_frame_clock(toplevel);
    if (!clock)
        return false;
    int drawn = 0;
    const gulong handler = g_signal_connect_swapped(
        clock, "after-paint", G_CALLBACK(+[](int* count) { ++*count; }), &drawn);
    gtk_widget_queue_draw(toplevel);
    const gint64 deadline = g_get_monotonic_time() + gint64{timeoutMs} * 1000;
    while (drawn < frames && g_get_monotonic_time() < deadline) {
        // Each frame is asked for; a short timeout keeps a blocking iteration from outliving
        // the deadline.
        gdk_frame_clock_request_phase(clock, GDK_FRAME_CLOCK_PHASE_PAINT);
        const guint wake = g_timeout_add(
            10, [](gpointer) { return G_SOURCE_REMOVE; }, nullptr);
        g_main_context_iteration(nullptr, TRUE);
        if (GSource* pending = g_main_context_find_source_by_id(nullptr, wake))
            g_source_destroy(pending);
    }
    g_signal_handler_disconnect(clock, handler);
    return drawn >= frames;
}

} // namespace Lib
} // namespace Varnel
