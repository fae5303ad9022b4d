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

void setInputTransparent(WindowHandle window) {
    auto* widget = static_cast<GtkWidget*>(window.native());
    if (!widget || !GTK_IS_WIDGET(widget))
        return;
    cairo_region_t* nothing = cairo_region_create();
    gtk_widget_input_shape_combine_region(widget, nothing);
    cairo_region_destroy(nothing);
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

WindowDestroyWatch::WindowDestroyWatch(WindowHandle window, Function<void()> onDestroyed)
    : m_onDestroyed(std::move(onDestroyed)) {
    GtkWindow* top = toplevelOf(window);
    if (!top || !m_onDestroyed)
        return;
    m_toplevel = top;
    g_object_add_weak_pointer(G_OBJECT(top), &m_toplevel);
    m_handler = g_signal_connect(top, "destroy", G_CALLBACK(&WindowDestroyWatch::onDestroy), this);
}

WindowDestroyWatch::~WindowDestroyWatch() {
    if (!m_toplevel)
        return;
    g_signal_handler_disconnect(m_toplevel, m_handler);
    g_object_remove_weak_pointer(G_OBJECT(m_toplevel), &m_toplevel);
}

void WindowDestroyWatch::onDestroy(void* window, void* self) {
    auto& watch = *static_cast<WindowDestroyWatch*>(self);
    // Once only: the handler goes before the callback, which may well delete this watch.
    g_signal_handler_disconnect(window, watch.m_handler);
    g_object_remove_weak_pointer(G_OBJECT(window), &watch.m_toplevel);
    watch.m_toplevel = nullptr;
    const Function<void()> onDestroyed = watch.m_onDestroyed;
    onDestroyed();
}

} // namespace Varnel
