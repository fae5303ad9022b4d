#pragma once

#include <varnellib/base/function.h>
#include <varnellib/base/optional.h>
#include <varnellib/export.h>
#include <varnellib/native/windowhandle.h>

#include <array>
#include <memory>

namespace Varnel {

/// How a program gets at the colours on the screen: by reading the screen itself (an X display),
/// or only through the desktop portal's colour picker (a Wayland display, where no program may
/// read the screen: the compositor shows its own picker and answers one colour).
enum class ScreenAccess : int { Direct = 0, Portal = 1 };

/// The access of the display in use, decided at run time (the same build runs on both).
VARNEL_LIB_EXPORT ScreenAccess screenAccess();

/// Whether the session bus has a desktop portal whose Screenshot interface can pick colours
/// (version 2 or later). Asked once per process, without blocking: `onKnown` runs at once when
/// the answer is known, otherwise from the toolkit's loop when it comes (within a second: a
/// portal that does not answer by then counts as none). Main thread only.
VARNEL_LIB_EXPORT void askColorPortal(Function<void(bool available)> onKnown);

/// The answer as far as it is known: false until askColorPortal's question has been answered.
VARNEL_LIB_EXPORT bool isColorPortalAvailable();

/// One request to the portal's PickColor: made at construction, over `parent`'s window. The
/// answer comes once, on the main thread, from the toolkit's loop: the chosen colour as sRGB
/// values clamped to [0, 1], or nothing when the user cancelled, the request failed, or the answer
/// was malformed (no colour, a colour of another type, a NaN). A second answer is ignored.
/// Destroying the request closes it and ignores a late answer; no callback runs after that.
class VARNEL_LIB_EXPORT ColorPortalRequest {
public:
    using Answer = Optional<std::array<float, 3>>;

    ColorPortalRequest(WindowHandle parent, Function<void(const Answer&)> onAnswer);
    ~ColorPortalRequest();
    ColorPortalRequest(const ColorPortalRequest&) = delete;
    ColorPortalRequest& operator=(const ColorPortalRequest&) = delete;

    /// The request's state, defined next to the D-Bus code; shared with the calls in flight.
    struct State;

private:
    std::shared_ptr<State> m_state;
};

namespace Detail {

/// Makes screenAccess answer `access` whatever the display (tests reach the portal path on an X
/// display through it); nothing restores the display's own answer.
VARNEL_LIB_EXPORT void setScreenAccessOverride(Optional<ScreenAccess> access);

/// Forgets the portal's answer so that the next askColorPortal asks again (tests start and stop
/// a portal within one process); an answer still on its way is dropped.
VARNEL_LIB_EXPORT void forgetColorPortalAnswer();

/// How many exported window handles are not yet released (tests check that every request gives
/// its handle back).
VARNEL_LIB_EXPORT int exportedWindowHandles();

} // namespace Detail
} // namespace Varnel
