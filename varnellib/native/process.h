#pragma once

#include <varnellib/export.h>
#include <varnellib/native/windowhandle.h>

namespace Varnel {

/// True on the thread that runs the user interface (the process's first thread). Widgets do
/// immediate window work only there and leave the rest to queued events.
VARNEL_LIB_EXPORT bool isMainThread();

/// The desktop's text scale factor, read from GTK's Xft DPI setting: 1.0 at the standard 96 DPI,
/// and 1.0 as well before GTK has a display to read it from.
VARNEL_LIB_EXPORT double getFontScale();

/// The resolution GTK draws text at, in dots per inch: 96 on a plain desktop, more with the
/// desktop's text scale (its Xft DPI times GDK_DPI_SCALE). A point is this divided by 72 pixels.
VARNEL_LIB_EXPORT double getFontResolution();

namespace Lib {

/// Runs one iteration of the GLib main context, which is the native event loop under wxGTK.
/// With `noWait` true it only handles what is ready; otherwise it blocks until something is.
/// Returns true if an event source was dispatched.
VARNEL_LIB_EXPORT bool runSingleEventLoopIteration(bool noWait);

/// Turns the toolkit's animations (CSS transitions of colours, for one) on or off for the whole
/// application: off, a redrawn widget shows its final look at once, which screenshots and
/// pixel tests rely on.
VARNEL_LIB_EXPORT void setNativeAnimations(bool enabled);

/// Redraws `window`'s top-level window and runs the native loop until the toolkit has drawn it
/// `frames` times (GTK draws native widgets such as text entries on its frame clock, after the
/// paint events wx sends), or until `timeoutMs` have passed. Returns whether it drew them; for
/// what a screenshot of the window must wait for.
VARNEL_LIB_EXPORT bool waitForDrawnFrames(WindowHandle window, int frames, int timeoutMs);

} // namespace Lib
} // namespace Varnel
