#pragma once

#include <varnellib/base/function.h>
#include <varnellib/export.h>
#include <varnellib/native/windowhandle.h>

namespace Varnel {

/// Tells its owner when a mouse button is pressed outside a top-level window: on the desktop or
/// another program's window (through a pointer grab that still lets the application's own
/// windows receive their clicks), or on another window of the application (read from the X
/// server's events before the toolkit dispatches them). Every press still goes on as usual.
/// Where there is no X server (a Wayland display), the compositor shows no program another's
/// presses: GTK's own grab reports the presses on the application's other windows, and the
/// desktop's are seen only as a loss of focus, which the dialogs and lists watch as well. Used
/// by message dialogs that close from outside. Main thread only.
class VARNEL_LIB_EXPORT OutsideClickWatch {
public:
    /// `onOutsideClick` gets the press's screen position.
    OutsideClickWatch(WindowHandle window, Function<void(Pixel)> onOutsideClick);
    ~OutsideClickWatch();
    OutsideClickWatch(const OutsideClickWatch&) = delete;
    OutsideClickWatch& operator=(const OutsideClickWatch&) = delete;

    /// Takes the pointer grab: at once when the window is on screen, else as soon as it is
    /// mapped. True once the grab is held.
    bool start();
    bool isGrabbing() const noexcept { return m_grabbing; }

private:
    void* m_toplevel = nullptr;
    void* m_watch = nullptr;
    unsigned long m_mapHandler = 0;
    bool m_grabbing = false;
    Function<void(Pixel)> m_onOutsideClick;
};

} // namespace Varnel
