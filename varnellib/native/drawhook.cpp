#include <varnellib/native/drawhook.h>

#include <gtk/gtk.h>

#include <cstdio>

namespace Varnel {

namespace {

using DrawFunction = Function<bool(void*, int, int)>;

gboolean onDraw(GtkWidget* widget, cairo_t* context, gpointer data) {
    const auto& draw = *static_cast<DrawFunction*>(data);
    return draw(context, gtk_widget_get_allocated_width(widget),
                gtk_widget_get_allocated_height(widget))
               ? TRUE
               : FALSE;
}

void deleteDrawFunction(gpointer data, GClosure*) {
    delete static_cast<DrawFunction*>(data);
}

} // namespace

void setDrawHook(WindowHandle widget, Function<bool(void* context, int width, int height)> draw) {
    auto* gtkWidget = static_cast<GtkWidget*>(widget.native());
    if (!gtkWidget || !GTK_IS_WIDGET(gtkWidget) || !draw)
        return;
    g_signal_connect_data(gtkWidget, "draw", G_CALLBACK(onDraw), new DrawFunction(std::move(draw)),
                          deleteDrawFunction, GConnectFlags(0));
}

namespace {

GtkCssProvider* relaxedSizes() {
    static GtkCssProvider* const provider = [] {
        GtkCssProvider* css = gtk_css_provider_new();
        gtk_css_provider_load_from_data(
            css, "* { min-width: 0; min-height: 0; margin: 0; padding: 0; }", -1, nullptr);
        return css;
    }();
    return provider;
}

void addRelaxedSizes(GtkWidget* node, gpointer) {
    gtk_style_context_add_provider(gtk_widget_get_style_context(node),
                                   GTK_STYLE_PROVIDER(relaxedSizes()),
                                   GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

} // namespace

void relaxNativeMinimumSize(WindowHandle widget) {
    auto* gtkWidget = static_cast<GtkWidget*>(widget.native());
    if (!gtkWidget || !GTK_IS_WIDGET(gtkWidget))
        return;
    // A provider on a widget's style context reaches only that node, so the parts (the check
    // indicator, the label) get it one by one.
    addRelaxedSizes(gtkWidget, nullptr);
    if (GTK_IS_CONTAINER(gtkWidget))
        gtk_container_forall(GTK_CONTAINER(gtkWidget), addRelaxedSizes, nullptr);
}

void setNativeEntryFrame(WindowHandle entry, RgbBytes outer, RgbBytes inner,
                         RgbBytes focusedInner) {
    auto* gtkWidget = static_cast<GtkWidget*>(entry.native());
    if (!gtkWidget || !GTK_IS_WIDGET(gtkWidget))
        return;
    // The inner ring is an inset shadow, so it sits inside the border without taking room from
    // the text; the theme's focus outline and gradients go, or they would draw over both rings.
    // The rules name the widget's own node: a multi-line control's scrolled window has nodes
    // of its own under the same style (the edges that show there is more to scroll), which a
    // rule for every node framed as a band over the top lines once the text had scrolled.
    const char* node = gtk_widget_class_get_css_name(GTK_WIDGET_GET_CLASS(gtkWidget));
    if (!node)
        node = "*";
    char css[640];
    std::snprintf(css, sizeof css,
                  "%s { border: 1px solid rgb(%d,%d,%d); border-radius: 0; outline: none;"
                  " background-image: none; box-shadow: inset 0 0 0 1px rgb(%d,%d,%d); }"
                  " %s:focus { border-color: rgb(%d,%d,%d);"
                  " box-shadow: inset 0 0 0 1px rgb(%d,%d,%d); }",
                  node, outer.r, outer.g, outer.b, inner.r, inner.g, inner.b, node, outer.r,
                  outer.g, outer.b, focusedInner.r, focusedInner.g, focusedInner.b);
    GtkCssProvider* provider = gtk_css_provider_new();
    gtk_css_provider_load_from_data(provider, css, -1, nullptr);
    gtk_style_context_add_provider(gtk_widget_get_style_context(gtkWidget),
                                   GTK_STYLE_PROVIDER(provider),
                                   GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    g_object_unref(provider);
}

} // namespace Varnel
