#pragma once

#include <varnellib/base/string.h>

namespace Varnel::Io {

/// A file path. An empty path is what a cancelled file dialog returns.
class Path {
public:
    Path() = default;
    explicit Path(String&& text) : m_text(std::move(text)) {}
    explicit Path(const String& text) : m_text(text) {}

    const String& string() const noexcept { return m_text; }
    bool isEmpty() const noexcept { return m_text.isEmpty(); }
    /// The path in the file system's encoding (UTF-8).
    String::CharBuffer<char> native() const { return m_text.toUtf8(); }

    bool operator==(const Path&) const = default;

private:
    String m_text;
};

} // namespace Varnel::Io
