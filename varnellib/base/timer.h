#pragma once

#include <varnellib/base/flags.h>
#include <varnellib/base/function.h>
#include <varnellib/base/string.h>
#include <varnellib/base/types.h>
#include <varnellib/export.h>

#include <chrono>

namespace Varnel {

/// A stopwatch that starts when it is made. Its first argument is a reporting threshold in
/// milliseconds: scope guards built on it report only scopes that took at least that long.
class VARNEL_LIB_EXPORT Timer {
public:
    enum class Flag : uint32 {
        /// Report every scope, whatever its length (for tracing a sequence of calls).
        ReportAll = 1,
    };

    explicit Timer(int64 thresholdMs, Flags<Flag> flags = {});

    int64 thresholdMs() const noexcept { return m_thresholdMs; }
    Flags<Flag> flags() const noexcept { return m_flags; }
    double elapsedMs() const noexcept;
    /// True when the time so far deserves a report.
    bool shouldReport() const noexcept;

private:
    std::chrono::steady_clock::time_point m_start;
    int64 m_thresholdMs;
    Flags<Flag> m_flags;
};

namespace Detail {

/// A scope guard that reports, when it is destroyed, how long the scope took: one line
/// "<label> <qualified function name> <milliseconds> ms" sent to the elapsed-time sink.
class VARNEL_LIB_EXPORT FunctionElapsedTime {
public:
    FunctionElapsedTime(Timer timer, const char* label, const char* functionName);
    ~FunctionElapsedTime();

    FunctionElapsedTime(const FunctionElapsedTime&) = delete;
    FunctionElapsedTime& operator=(const FunctionElapsedTime&) = delete;

private:
    Timer m_timer;
    const char* m_label;
    const char* m_functionName;
};

/// Where the reports go. The default sink writes to standard error when the environment variable
/// VARNEL_LOG_TIMING is set to anything but "" or "0", and is silent otherwise; an empty Function
/// restores it.
VARNEL_LIB_EXPORT void setElapsedTimeSink(Function<void(const String&)> sink);

/// Cuts a compiler's pretty function name ("void Varnel::A::f(int) const") down to the qualified
/// name ("Varnel::A::f").
VARNEL_LIB_EXPORT String qualifiedFunctionName(const char* prettyFunction);

} // namespace Detail
} // namespace Varnel

/// Reports the time of the enclosing function if it took at least `thresholdMs` milliseconds.
#define VARNEL_FUNCTION_ELAPSED_TIME(thresholdMs)                                                  \
    ::Varnel::Detail::FunctionElapsedTime varnelFunctionElapsedTime(                               \
        ::Varnel::Timer(thresholdMs), "Function call:", __PRETTY_FUNCTION__)
