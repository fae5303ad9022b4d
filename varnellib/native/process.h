#pragma once

#include <varnellib/export.h>

namespace Varnel {

/// True on the thread that runs the user interface (the process's first thread). Widgets do
/// immediate window work only there and leave the rest to queued events.
VARNEL_LIB_EXPORT bool isMainThread();

/// The desktop's text scale factor, read from GTK's Xft DPI setting: 1.0 at the standard 96 DPI,
/// and 1.0 as well before GTK has a display to read it from.
VARNEL_LIB_EXPORT double getFontScale();

namespace Lib {

/// Runs one iteration of the GLib main context, which is the native event loop under wxGTK.
/// With `noWait` true it only handles what is ready; otherwise it blocks until something is.
/// Returns true if an event source was dispatched.
VARNEL_LIB_EXPORT bool runSingleEventLoopIteration(bool noWait);

} // namespace Lib
} // namespace Varnel
