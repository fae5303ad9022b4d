#include <varnellib/native/escapekey.h>

#include <X11/Xlib.h>
#include <X11/extensions/XInput2.h>
#include <X11/keysym.h>
#include <gdk/gdkx.h>

namespace Varnel {

struct EscapeKeyWatch::State {
    Function<void()> onEscape;
    int inputOpcode = -1;
    unsigned int escapeKeycode = 0;
};

namespace {

// GTK reads the keyboard through XInput 2, so its presses come as generic events; core presses
// (from clients that send them) are read as well.
GdkFilterReturn onXEvent(GdkXEvent* native, GdkEvent*, gpointer data) {
    const auto& state = *static_cast<const EscapeKeyWatch::State*>(data);
    const auto* xevent = static_cast<XEvent*>(native);
    unsigned int keycode = 0;
    if (xevent->type == KeyPress) {
        keycode = xevent->xkey.keycode;
    } else if (xevent->type == GenericEvent && xevent->xcookie.extension == state.inputOpcode &&
               xevent->xcookie.evtype == XI_KeyPress && xevent->xcookie.data) {
        const auto* press = static_cast<const XIDeviceEvent*>(xevent->xcookie.data);
        if (press->flags & XIKeyRepeat)
            return GDK_FILTER_CONTINUE;
        keycode = static_cast<unsigned int>(press->detail);
    }
    if (keycode != 0 && keycode == state.escapeKeycode)
        state.onEscape();
    return GDK_FILTER_CONTINUE;
}

} // namespace

EscapeKeyWatch::EscapeKeyWatch(Function<void()> onEscape) {
    GdkDisplay* display = gdk_display_get_default();
    if (!display || !GDK_IS_X11_DISPLAY(display))
        return;
    Display* x = gdk_x11_display_get_xdisplay(display);
    m_state = new State{std::move(onEscape)};
    int event = 0, error = 0;
    if (!XQueryExtension(x, "XInputExtension", &m_state->inputOpcode, &event, &error))
        m_state->inputOpcode = -1;
    m_state->escapeKeycode = XKeysymToKeycode(x, XK_Escape);
    gdk_window_add_filter(nullptr, onXEvent, m_state);
}

EscapeKeyWatch::~EscapeKeyWatch() {
    if (!m_state)
        return;
    gdk_window_remove_filter(nullptr, onXEvent, m_state);
    delete m_state;
}

} // namespace Varnel
