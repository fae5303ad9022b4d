#pragma once

#include <varnellib/base/function.h>
#include <varnellib/export.h>
#include <varnellib/native/windowhandle.h>

namespace Varnel {

/// The top-level window that holds `window` (itself when it is one), or an empty handle.
VARNEL_LIB_EXPORT WindowHandle getTopLevelHandle(WindowHandle window);

/// The window that `window`'s top-level window is kept above (GTK's transient-for relation), or
/// an empty handle.
VARNEL_LIB_EXPORT WindowHandle getOwnerAsNativeHandle(WindowHandle window);

/// Keeps `window`'s top-level window above `owner`'s (an empty owner clears the relation) and
/// returns the previous owner.
VARNEL_LIB_EXPORT WindowHandle setOwnerFromNativeHandle(WindowHandle window, WindowHandle owner);

/// Makes the window let every pointer event through to what lies below it (an empty input
/// shape), as a popup that follows the pointer must. Nothing happens for an empty handle.
VARNEL_LIB_EXPORT void setInputTransparent(WindowHandle window);

/// While it lives, the given window's top-level window takes no input; its earlier state comes
/// back on destruction. Used around modal dialogs shown over a host's native window.
class VARNEL_LIB_EXPORT WindowDisabler {
public:
    explicit WindowDisabler(WindowHandle window);
    ~WindowDisabler();
    WindowDisabler(const WindowDisabler&) = delete;
    WindowDisabler& operator=(const WindowDisabler&) = delete;

private:
    void* m_toplevel = nullptr;
    bool m_wasSensitive = false;
};

/// While it lives, calls `onDestroyed` when `window`'s top-level window is destroyed (a host
/// closing its own native window, say), at most once. Safe to destroy after the window is gone.
class VARNEL_LIB_EXPORT WindowDestroyWatch {
public:
    WindowDestroyWatch(WindowHandle window, Function<void()> onDestroyed);
    ~WindowDestroyWatch();
    WindowDestroyWatch(const WindowDestroyWatch&) = delete;
    WindowDestroyWatch& operator=(const WindowDestroyWatch&) = delete;

private:
    static void onDestroy(void* window, void* self);

    /// The watched window; cleared by the toolkit when the window is finalized.
    void* m_toplevel = nullptr;
    unsigned long m_handler = 0;
    Function<void()> m_onDestroyed;
};

} // namespace Varnel
