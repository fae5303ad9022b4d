#pragma once

#include <chrono>
#include <functional>

namespace Varnel::Test {

using namespace std::chrono_literals;

/// Handles wxWidgets' queued events, idle processing and native events until `condition` holds
/// or `timeout` has passed; returns whether it holds. Waiting is bounded to short slices, so
/// timers fire on time and the deadline is kept.
bool pumpUntil(const std::function<bool()>& condition, std::chrono::milliseconds timeout = 5s);

/// Makes a round trip to the X server (so that input sent a moment ago has come back as events)
/// and handles everything that is ready, until nothing more is.
void pumpPending();

} // namespace Varnel::Test
