#include <varnellib/native/windowowner.h>

#include <gtk/gtk.h>

namespace Varnel {

namespace {

GtkWindow* toplevelOf(WindowHandle handle) {
    auto* widget = static_cast<GtkWidget*>(handle.native());
    if (!widget || !GTK_IS_WIDGET(widget))
        return nullptr;
    GtkWidget* top = gtk_widget_get_toplevel(widget);
    return top && GTK_IS_WINDOW(top) ? GTK_WINDOW(top) : nullptr;
}

} // namespace

WindowHandle getTopLevelHandle(WindowHandle window) {
    return WindowHandle(toplevelOf(window));
}

WindowHandle getOwnerAsNativeHandle(WindowHandle window) {
    GtkWindow* top = toplevelOf(window);
    return WindowHandle(top ? gtk_window_get_transient_for(top) : nullptr);
}

WindowHandle setOwnerFromNativeHandle(WindowHandle window, WindowHandle owner) {
    GtkWindow* top = toplevelOf(window);
    if (!top)
        return {};
    const WindowHandle previous(gtk_window_get_transient_for(top));
    GtkWindow* ownerTop = toplevelOf(owner);
    gtk_window_set_transient_for(top, ownerTop != top ? ownerTop : nullptr);
    return previous;
}

WindowDisabler::WindowDisabler(WindowHandle window) {
    GtkWindow* top = toplevelOf(window);
    if (!top)
        return;
    // Held so that a window destroyed while disabled cannot leave us a dangling pointer.
    m_toplevel = g_object_ref(top);
    m_wasSensitive = gtk_widget_get_sensitive(GTK_WIDGET(top));
    gtk_widget_set_sensitive(GTK_WIDGET(top), FALSE);
}

WindowDisabler::~WindowDisabler() {
    if (!m_toplevel)
        return;
    gtk_widget_set_sensitive(GTK_WIDGET(m_toplevel), m_wasSensitive);
    g_object_unref(m_toplevel);
}

} // namespace Varnel
