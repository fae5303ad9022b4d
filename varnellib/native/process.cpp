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

namespace Lib {

bool runSingleEventLoopIteration(bool noWait) {
    return g_main_context_iteration(nullptr, noWait ? FALSE : TRUE) == TRUE;
}

} // namespace Lib
} // namespace Varnel
