#pragma once

#include <varnellib/base/memory.h>
#include <varnellib/export.h>

#include <iosfwd>
#include <string>
#include <string_view>

namespace Varnel {

/// The text type of every interface of the library: wide characters (wchar_t, so that handing
/// text to and from wxString costs a copy and no decoding), owned, copied by value, with lengths
/// and indices as int. Its buffer comes from varnelMalloc.
///
/// Indices and counts outside the string are programming errors and raise the stop exception,
/// except that a count reaching past the end is cut at the end.
class VARNEL_LIB_EXPORT String {
public:
    /// An owning, zero-terminated run of narrow characters (the result of toUtf8).
    template <class Char>
    class CharBuffer {
    public:
        CharBuffer() = default;
        explicit CharBuffer(
            std::basic_string<Char, std::char_traits<Char>, HeapAllocator<Char>> text)
            : m_text(std::move(text)) {}

        const Char* data() const noexcept { return m_text.c_str(); }
        int length() const noexcept { return static_cast<int>(m_text.size()); }
        std::basic_string_view<Char> view() const noexcept { return m_text; }

    private:
        std::basic_string<Char, std::char_traits<Char>, HeapAllocator<Char>> m_text;
    };

    String() = default;
    String(const wchar_t* text);
    String(const wchar_t* text, int length);
    explicit String(std::wstring_view text);

    /// Decodes UTF-8. Invalid sequences (stray continuation bytes, overlong forms, surrogates,
    /// values past U+10FFFF, truncated sequences) each become one U+FFFD; nothing is dropped
    /// silently and nothing reads past the terminating zero.
    static String fromUtf8(const char* text);
    static String fromUtf8(const char* text, int length);
    /// Widens 7-bit text; bytes above 127 become U+FFFD.
    static String fromAscii(const char* text, int length);

    /// Encodes as UTF-8; characters that are not Unicode scalar values become U+FFFD.
    CharBuffer<char> toUtf8() const;

    int length() const noexcept { return static_cast<int>(m_text.size()); }
    bool isEmpty() const noexcept { return m_text.empty(); }
    const wchar_t* asWchar() const noexcept { return m_text.c_str(); }
    std::wstring_view view() const noexcept { return m_text; }
    wchar_t operator[](int index) const;

    /// Replaces every non-overlapping occurrence of `what`, left to right; returns how many. An
    /// empty `what` matches nothing.
    int replaceAll(const String& what, const String& with);
    void erase(int start, int count);
    String getSubstr(int start, int count) const;
    /// The index of the first occurrence of `what` at or after `from`, or -1.
    int find(const String& what, int from = 0) const;

    String& operator+=(const String& other);
    String& operator<<(wchar_t character);
    friend String operator+(const String& a, const String& b);
    friend bool operator==(const String& a, const String& b) noexcept {
        return a.m_text == b.m_text;
    }
    friend auto operator<=>(const String& a, const String& b) noexcept {
        return a.view() <=> b.view();
    }

    /// Lets code write characters straight into the buffer: `writer(buffer, capacity)` may fill
    /// up to `capacity` characters; the string then ends at the first zero character written, or
    /// at `capacity`.
    template <class Writer>
    void update(int capacity, Writer&& writer) {
        m_text.resize(static_cast<std::size_t>(capacity < 0 ? 0 : capacity));
        writer(m_text.data(), capacity);
        afterUpdate();
    }

private:
    using Storage = std::basic_string<wchar_t, std::char_traits<wchar_t>, HeapAllocator<wchar_t>>;

    void afterUpdate();
    void checkRange(int start, int count) const;

    Storage m_text;
};

// Declared again outside the class: a friend declaration alone does not export it.
VARNEL_LIB_EXPORT String operator+(const String& a, const String& b);

VARNEL_LIB_EXPORT std::wostream& operator<<(std::wostream& stream, const String& text);

/// The decimal separator of the current C locale (what setlocale chose), as a wide character.
VARNEL_LIB_EXPORT wchar_t decimalPointCharacter();

} // namespace Varnel
