#pragma once

#include <varnellib/base/optional.h>
#include <varnellib/base/string.h>
#include <varnellibwx/export.h>

#include <wx/string.h>

class wxTimer;

namespace Varnel::LibWx {

/// The library's version, "major.minor.patch".
VARNEL_LIBWX_EXPORT const char* version();

/// How startup treats the application object.
enum class ApplicationType : int {
    /// The application's CallOnInit() is called.
    Default = 0,
    /// Behaves exactly like Default inside this library.
    Secondary = 1,
    /// The host already initialised its application: CallOnInit() is not called.
    NoInit = 2,
};

/// Starts the library; call it on the main thread before creating any widget, and call shutdown
/// once for every call. Only the first call does the work: it switches wxWidgets logging off,
/// makes the library's application object if the host has none, registers the image handlers
/// (PNG, JPEG, ICO, BMP, GIF, TIFF, TGA), initialises wxWidgets and its sockets, runs the
/// application's CallOnInit() unless `type` is NoInit, and starts a timer that runs wxWidgets'
/// idle processing every 2000 ms even when the host runs its own message loop. A `type` outside
/// the enumeration raises the stop exception on the first call; nested calls do not look at it.
/// Always returns true.
VARNEL_LIBWX_EXPORT bool startup(ApplicationType type);

/// Balances one startup; the last call stops the timer, lets the application clean up
/// (ProcessIdle, OnExit, ExitMainLoop), shuts sockets down and uninitialises wxWidgets, which
/// deletes the application object. A later startup starts everything again.
VARNEL_LIBWX_EXPORT void shutdown();

/// Runs wxWidgets' main loop on the current application until stopEventLoop; returns its exit
/// code.
VARNEL_LIBWX_EXPORT int runEventLoop();

/// Ends the loop entered by runEventLoop.
VARNEL_LIBWX_EXPORT void stopEventLoop();

/// For hosts with their own loop: handles wxWidgets' queued events once, without pumping native
/// messages.
VARNEL_LIBWX_EXPORT void processWxWidgetsPendingEvents();

/// For hosts with their own loop: handles wxWidgets' queued events, then the native messages that
/// are ready, until none is left.
VARNEL_LIBWX_EXPORT void processAllPendingEvents();

namespace Detail {

/// The number of startup calls not yet balanced by shutdown.
VARNEL_LIBWX_EXPORT int startCount();

/// The idle-processing timer while the library is up, null otherwise.
VARNEL_LIBWX_EXPORT wxTimer* eventsTimer();

} // namespace Detail
} // namespace Varnel::LibWx

namespace Varnel::Wx {

/// The text a host's wxWidgets assertion handler shows or logs for a failed assertion, or nothing
/// for the one harmless assertion (wxLocale::GetInfo complaining about a non-"C" locale) that a
/// host should ignore.
VARNEL_LIBWX_EXPORT Optional<String> formatWxAssertFailure(const wxString& file, int line,
                                                           const wxString& function,
                                                           const wxString& condition,
                                                           const wxString& message);

} // namespace Varnel::Wx
