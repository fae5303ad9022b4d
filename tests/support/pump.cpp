#include "pump.h"

#include <varnellib/native/process.h>

#include <gdk/gdk.h>
#include <wx/app.h>

namespace Varnel::Test {

namespace {

constexpr guint kWaitSliceMs = 10;

void handleWxQueues() {
    if (wxAppConsole* app = wxAppConsole::GetInstance()) {
        app->ProcessPendingEvents();
        app->ProcessIdle();
    }
}

// Blocks in the native loop until something happens or a short slice passes.
void waitSlice() {
    const guint source = g_timeout_add(
        kWaitSliceMs, [](gpointer) { return G_SOURCE_REMOVE; }, nullptr);
    Lib::runSingleEventLoopIteration(false);
    if (GSource* pending = g_main_context_find_source_by_id(nullptr, source))
        g_source_destroy(pending);
}

} // namespace

bool pumpUntil(const std::function<bool()>& condition, std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    for (;;) {
        handleWxQueues();
        if (condition())
            return true;
        if (std::chrono::steady_clock::now() >= deadline)
            return false;
        waitSlice();
    }
}

void pumpPending() {
    if (GdkDisplay* display = gdk_display_get_default())
        gdk_display_sync(display);
    // Two quiet rounds: handling one batch of events often queues the next (a size event
    // queuing a paint, say).
    for (int quietRounds = 0; quietRounds < 2;) {
        handleWxQueues();
        bool dispatched = false;
        while (Lib::runSingleEventLoopIteration(true))
            dispatched = true;
        quietRounds = dispatched ? 0 : quietRounds + 1;
    }
}

} // namespace Varnel::Test
