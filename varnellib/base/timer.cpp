#include <varnellib/base/timer.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string_view>

namespace Varnel {

Timer::Timer(int64 thresholdMs, Flags<Flag> flags)
    : m_start(std::chrono::steady_clock::now()), m_thresholdMs(thresholdMs), m_flags(flags) {}

double Timer::elapsedMs() const noexcept {
    const auto elapsed = std::chrono::steady_clock::now() - m_start;
    return std::chrono::duration<double, std::milli>(elapsed).count();
}

bool Timer::shouldReport() const noexcept {
    return m_flags.has(Flag::ReportAll) || elapsedMs() >= static_cast<double>(m_thresholdMs);
}

namespace Detail {

namespace {

std::mutex gSinkMutex;
Function<void(const String&)> gSink;

bool timingLogEnabled() {
    const char* value = std::getenv("VARNEL_LOG_TIMING");
    return value && *value && std::strcmp(value, "0") != 0;
}

void report(const String& line) {
    Function<void(const String&)> sink;
    {
        std::lock_guard lock(gSinkMutex);
        sink = gSink;
    }
    if (sink)
        sink(line);
    else if (timingLogEnabled())
        std::fprintf(stderr, "%s\n", line.toUtf8().data());
}

} // namespace

FunctionElapsedTime::FunctionElapsedTime(Timer timer, const char* label, const char* functionName)
    : m_timer(timer), m_label(label), m_functionName(functionName) {}

FunctionElapsedTime::~FunctionElapsedTime() {
    if (!m_timer.shouldReport())
        return;
    char milliseconds[32];
    std::snprintf(milliseconds, sizeof milliseconds, " %.3f ms", m_timer.elapsedMs());
    report(String::fromUtf8(m_label) + String(L" ") + qualifiedFunctionName(m_functionName) +
           String::fromUtf8(milliseconds));
}

void setElapsedTimeSink(Function<void(const String&)> sink) {
    std::lock_guard lock(gSinkMutex);
    gSink = std::move(sink);
}

String qualifiedFunctionName(const char* prettyFunction) {
    const std::string_view text = prettyFunction ? prettyFunction : "";
    // The parameter list opens at the first '(' outside template brackets that is not the name
    // of operator() itself; the name starts after the last space before it at the same depth.
    int depth = 0;
    std::size_t nameStart = 0;
    std::size_t nameEnd = text.size();
    for (std::size_t i = 0; i < text.size(); ++i) {
        // An operator's own symbol ("()", "<", "new") belongs to the name: skip to its '('.
        if (text.substr(i).starts_with("operator") && i + 8 < text.size() &&
            !std::isalnum(static_cast<unsigned char>(text[i + 8])) && text[i + 8] != '_') {
            std::size_t j = i + 8;
            if (text.substr(j).starts_with("()"))
                j += 2;
            while (j < text.size() && text[j] != '(')
                ++j;
            i = j - 1;
            continue;
        }
        const char c = text[i];
        if (c == '<')
            ++depth;
        else if (c == '>' && depth > 0)
            --depth;
        else if (depth == 0 && c == ' ')
            nameStart = i + 1;
        else if (depth == 0 && c == '(') {
            nameEnd = i;
            break;
        }
    }
    if (nameStart > nameEnd)
        nameStart = 0;
    const std::string_view name = text.substr(nameStart, nameEnd - nameStart);
    return String::fromUtf8(name.data(), static_cast<int>(name.size()));
}

} // namespace Detail
} // namespace Varnel
