#include <varnellib/native/outsideclick.h>

#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>
#include <gdk/gdkx.h>
#include <gtk/gtk.h>

namespace Varnel {

namespace {

bool isInside(GtkWidget* toplevel, double rootX, double rootY) {
    GdkWindow* window = gtk_widget_get_window(toplevel);
    if (!window)
        return false;
    int x = 0, y = 0;
    gdk_window_get_origin(window, &x, &y);
    const double px = rootX - x, py = rootY - y;
    return px >= 0 && py >= 0 && px < gdk_window_get_width(window) &&
           py < gdk_window_get_height(window);
}

int inputExtensionOpcode(Display* display) {
    int opcode = -1, event = 0, error = 0;
    return XQueryExtension(display, "XInputExtension", &opcode, &event, &error) ? opcode : -1;
}

struct Watch {
    GtkWidget* toplevel;
    int inputOpcode;
    Function<void(Pixel)>* onOutsideClick;
    bool x11;                       // reading the X server's events, else GTK's own grab
    unsigned long pressHandler = 0; // GTK's grab: the toplevel's press handler
    bool seatGrabbed = false;
};

// Sees the X server's events before the toolkit translates them, whatever window they are for:
// presses on the application's other windows never reach a modal window's handlers (those
// windows are disabled), and presses elsewhere arrive through the grab. GTK reads the pointer
// through XInput 2, so its presses come as generic events; core presses are read as well.
GdkFilterReturn onXEvent(GdkXEvent* native, GdkEvent*, gpointer data) {
    const auto& watch = *static_cast<Watch*>(data);
    const auto* xevent = static_cast<XEvent*>(native);
    double x = 0, y = 0;
    if (xevent->type == ButtonPress) {
        x = xevent->xbutton.x_root;
        y = xevent->xbutton.y_root;
    } else if (xevent->type == GenericEvent && xevent->xcookie.extension == watch.inputOpcode &&
               xevent->xcookie.evtype == XI_ButtonPress && xevent->xcookie.data) {
        const auto* press = static_cast<const XIDeviceEvent*>(xevent->xcookie.data);
        x = press->root_x;
        y = press->root_y;
    } else {
        return GDK_FILTER_CONTINUE;
    }
    if (!isInside(watch.toplevel, x, y))
        (*watch.onOutsideClick)(Pixel{static_cast<int32>(x), static_cast<int32>(y)});
    return GDK_FILTER_CONTINUE;
}

// Without X (a Wayland display) no program sees presses outside its own windows: GTK's own grab
// sends the presses on the application's other windows to the watched window, where they are
// told apart by the window they were meant for. Global coordinates do not exist there; the
// position is GDK's idea of it.
gboolean onGrabbedPress(GtkWidget*, GdkEventButton* event, gpointer data) {
    const auto& watch = *static_cast<Watch*>(data);
    GdkWindow* own = gtk_widget_get_window(watch.toplevel);
    if (event->window && gdk_window_get_toplevel(event->window) != own)
        (*watch.onOutsideClick)(
            Pixel{static_cast<int32>(event->x_root), static_cast<int32>(event->y_root)});
    return FALSE;
}

gboolean onMapped(GtkWidget*, GdkEvent*, gpointer data) {
    static_cast<OutsideClickWatch*>(data)->start();
    return FALSE;
}

} // namespace

OutsideClickWatch::OutsideClickWatch(WindowHandle window, Function<void(Pixel)> onOutsideClick)
    : m_onOutsideClick(std::move(onOutsideClick)) {
    auto* widget = static_cast<GtkWidget*>(window.native());
    if (!widget || !GTK_IS_WIDGET(widget))
        return;
    GtkWidget* toplevel = gtk_widget_get_toplevel(widget);
    if (!GTK_IS_WINDOW(toplevel))
        return;
    m_toplevel = g_object_ref(toplevel);
    // The pointer can be grabbed only once the window is on screen.
    if (!start())
        m_mapHandler = g_signal_connect(toplevel, "map-event", G_CALLBACK(onMapped), this);
}

OutsideClickWatch::~OutsideClickWatch() {
    if (!m_toplevel)
        return;
    if (m_mapHandler)
        g_signal_handler_disconnect(m_toplevel, m_mapHandler);
    if (m_grabbing) {
        auto* watch = static_cast<Watch*>(m_watch);
        GdkSeat* seat = gdk_display_get_default_seat(gtk_widget_get_display(watch->toplevel));
        if (watch->x11) {
            gdk_window_remove_filter(nullptr, onXEvent, watch);
            gdk_seat_ungrab(seat);
        } else {
            g_signal_handler_disconnect(watch->toplevel, watch->pressHandler);
            gtk_grab_remove(watch->toplevel);
            if (watch->seatGrabbed && seat)
                gdk_seat_ungrab(seat);
        }
        delete watch;
    }
    g_object_unref(m_toplevel);
}

bool OutsideClickWatch::start() {
    if (m_grabbing || !m_toplevel)
        return m_grabbing;
    GtkWidget* toplevel = GTK_WIDGET(m_toplevel);
    GdkWindow* window = gtk_widget_get_window(toplevel);
    if (!window || !gdk_window_is_viewable(window))
        return false;
    // Owner events: presses over the application's own windows still go to them, and only the
    // rest of the screen reports to the grab window.
    GdkDisplay* display = gtk_widget_get_display(toplevel);
    GdkSeat* seat = gdk_display_get_default_seat(display); // none on a compositor without input
    const bool seatGrabbed =
        seat && gdk_seat_grab(seat, window, GDK_SEAT_CAPABILITY_ALL_POINTING, TRUE, nullptr,
                              nullptr, nullptr, nullptr) == GDK_GRAB_SUCCESS;
    if (GDK_IS_X11_DISPLAY(display)) {
        if (!seatGrabbed)
            return false;
        m_watch = new Watch{toplevel, inputExtensionOpcode(GDK_WINDOW_XDISPLAY(window)),
                            &m_onOutsideClick, true};
        gdk_window_add_filter(nullptr, onXEvent, m_watch);
    } else {
        auto* watch = new Watch{toplevel, -1, &m_onOutsideClick, false};
        watch->seatGrabbed = seatGrabbed;
        gtk_grab_add(toplevel);
        watch->pressHandler =
            g_signal_connect(toplevel, "button-press-event", G_CALLBACK(onGrabbedPress), watch);
        m_watch = watch;
    }
    m_grabbing = true;
    return true;
}

} // namespace Varnel
