#pragma once

#include <varnellib/export.h>

#include <exception>
#include <string>

namespace Varnel {

/// The one failure channel for broken programming contracts (an enum out of range, an index past
/// the end). It names the source path and line that detected the fault; the library never catches
/// it, so a host sees exactly where its call went wrong.
class VARNEL_LIB_EXPORT StopException : public std::exception {
public:
    StopException(const char* file, int line);

    const char* file() const noexcept { return m_file.c_str(); }
    int line() const noexcept { return m_line; }
    const char* what() const noexcept override { return m_what.c_str(); }

private:
    std::string m_file;
    int m_line;
    std::string m_what;
};

namespace Detail {

/// Raises StopException; `file` is the source path without extension, for example
/// "widgets/colorpicker".
[[noreturn]] VARNEL_LIB_EXPORT void throwStopException(const char* file, int line);

} // namespace Detail
} // namespace Varnel

/// Raises the stop exception at the current line of `file`.
#define VARNEL_STOP(file) ::Varnel::Detail::throwStopException(file, __LINE__)

/// Raises the stop exception at the current line of `file` unless `condition` holds.
#define VARNEL_REQUIRE(condition, file)                                                            \
    do {                                                                                           \
        if (!(condition))                                                                          \
            VARNEL_STOP(file);                                                                     \
    } while (false)
