#pragma once

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

} // namespace Varnel
