#pragma once

#include <varnellib/base/function.h>
#include <varnellib/export.h>

namespace Varnel {

/// Tells its owner each time the Escape key goes down anywhere in the application while the
/// watch lives, read from the X server's events before the toolkit translates them. A window
/// that holds the mouse capture does not get its key events through the toolkit on GTK, yet a
/// gesture in progress (an eyedropper pick) must stay cancellable from the keyboard. The key
/// still goes on as usual. Main thread only.
class VARNEL_LIB_EXPORT EscapeKeyWatch {
public:
    explicit EscapeKeyWatch(Function<void()> onEscape);
    ~EscapeKeyWatch();
    EscapeKeyWatch(const EscapeKeyWatch&) = delete;
    EscapeKeyWatch& operator=(const EscapeKeyWatch&) = delete;

    /// The watch's data, defined next to the code that reads the events.
    struct State;

private:
    State* m_state = nullptr;
};

} // namespace Varnel
