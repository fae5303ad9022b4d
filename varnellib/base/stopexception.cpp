#include <varnellib/base/stopexception.h>

namespace Varnel {

StopException::StopException(const char* file, int line)
    : m_file(file ? file : ""), m_line(line),
      m_what("Varnel stop: " + m_file + ":" + std::to_string(line)) {}

namespace Detail {

void throwStopException(const char* file, int line) {
    throw StopException(file, line);
}

} // namespace Detail
} // namespace Varnel
