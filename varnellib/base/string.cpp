#include <varnellib/base/stopexception.h>
#include <varnellib/base/string.h>

#include <clocale>
#include <cstring>
#include <cwchar>
#include <ostream>

namespace Varnel {

namespace {

constexpr const char* kSource = "base/string";
constexpr wchar_t kReplacement = 0xFFFD;

// Decodes one UTF-8 sequence starting at text[0] (at least one byte is available, `available`
// in all). Returns the bytes consumed; an invalid sequence consumes its longest valid prefix (at
// least one byte) and yields U+FFFD, so one bad byte never swallows the good text after it.
int decodeOne(const unsigned char* text, std::size_t available, wchar_t& out) {
    const unsigned char lead = text[0];
    if (lead < 0x80) {
        out = lead;
        return 1;
    }
    int length;
    unsigned char low = 0x80, high = 0xBF; // allowed range of the second byte
    uint32 code;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        code = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        code = lead & 0x0F;
        if (lead == 0xE0)
            low = 0xA0; // overlong
        else if (lead == 0xED)
            high = 0x9F; // surrogates
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        code = lead & 0x07;
        if (lead == 0xF0)
            low = 0x90; // overlong
        else if (lead == 0xF4)
            high = 0x8F; // past U+10FFFF
    } else {
        out = kReplacement;
        return 1;
    }
    for (int i = 1; i < length; ++i) {
        if (static_cast<std::size_t>(i) >= available) {
            out = kReplacement;
            return i;
        }
        const unsigned char next = text[i];
        const unsigned char lo = i == 1 ? low : 0x80;
        const unsigned char hi = i == 1 ? high : 0xBF;
        if (next < lo || next > hi) {
            out = kReplacement;
            return i;
        }
        code = (code << 6) | (next & 0x3F);
    }
    out = static_cast<wchar_t>(code);
    return length;
}

template <class Storage>
void appendUtf8(Storage& out, uint32 code) {
    if (code >= 0xD800 && code <= 0xDFFF)
        code = kReplacement;
    if (code < 0x80) {
        out.push_back(static_cast<char>(code));
    } else if (code < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (code >> 6)));
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    } else if (code < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (code >> 12)));
        out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    } else if (code <= 0x10FFFF) {
        out.push_back(static_cast<char>(0xF0 | (code >> 18)));
        out.push_back(static_cast<char>(0x80 | ((code >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (code & 0x3F)));
    } else {
        appendUtf8(out, kReplacement);
    }
}

} // namespace

String::String(const wchar_t* text) : m_text(text ? text : L"") {}

String::String(const wchar_t* text, int length) {
    VARNEL_REQUIRE(length >= 0 && (text || length == 0), kSource);
    m_text.assign(text ? text : L"", static_cast<std::size_t>(length));
}

String::String(std::wstring_view text) : m_text(text.data(), text.size()) {}

String String::fromUtf8(const char* text) {
    return text ? fromUtf8(text, static_cast<int>(std::strlen(text))) : String();
}

String String::fromUtf8(const char* text, int length) {
    VARNEL_REQUIRE(length >= 0 && (text || length == 0), kSource);
    String result;
    result.m_text.reserve(static_cast<std::size_t>(length));
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    std::size_t at = 0;
    const auto end = static_cast<std::size_t>(length);
    while (at < end) {
        if (bytes[at] < 0x80) {
            result.m_text.push_back(static_cast<wchar_t>(bytes[at++]));
            continue;
        }
        wchar_t character;
        at += static_cast<std::size_t>(decodeOne(bytes + at, end - at, character));
        result.m_text.push_back(character);
    }
    return result;
}

String String::fromAscii(const char* text, int length) {
    VARNEL_REQUIRE(length >= 0 && (text || length == 0), kSource);
    String result;
    result.m_text.resize(static_cast<std::size_t>(length));
    for (int i = 0; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        result.m_text[static_cast<std::size_t>(i)] = byte < 0x80 ? byte : kReplacement;
    }
    return result;
}

String::CharBuffer<char> String::toUtf8() const {
    std::basic_string<char, std::char_traits<char>, HeapAllocator<char>> out;
    out.reserve(m_text.size());
    for (wchar_t character : m_text) {
        const auto code = static_cast<uint32>(character);
        if (code < 0x80)
            out.push_back(static_cast<char>(code));
        else
            appendUtf8(out, code);
    }
    return CharBuffer<char>(std::move(out));
}

wchar_t String::operator[](int index) const {
    VARNEL_REQUIRE(index >= 0 && index < length(), kSource);
    return m_text[static_cast<std::size_t>(index)];
}

void String::checkRange(int start, int count) const {
    VARNEL_REQUIRE(start >= 0 && start <= length() && count >= 0, kSource);
}

int String::replaceAll(const String& what, const String& with) {
    if (what.isEmpty())
        return 0;
    int replaced = 0;
    Storage result;
    std::size_t from = 0;
    for (std::size_t at = m_text.find(what.m_text); at != Storage::npos;
         at = m_text.find(what.m_text, from)) {
        result.append(m_text, from, at - from);
        result.append(with.m_text);
        from = at + what.m_text.size();
        ++replaced;
    }
    if (replaced > 0) {
        result.append(m_text, from);
        m_text = std::move(result);
    }
    return replaced;
}

void String::erase(int start, int count) {
    checkRange(start, count);
    m_text.erase(static_cast<std::size_t>(start), static_cast<std::size_t>(count));
}

String String::getSubstr(int start, int count) const {
    checkRange(start, count);
    String result;
    result.m_text = m_text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(count));
    return result;
}

int String::find(const String& what, int from) const {
    VARNEL_REQUIRE(from >= 0, kSource);
    const auto at = m_text.find(what.m_text, static_cast<std::size_t>(from));
    return at == Storage::npos ? -1 : static_cast<int>(at);
}

String& String::operator+=(const String& other) {
    m_text += other.m_text;
    return *this;
}

String& String::operator<<(wchar_t character) {
    m_text.push_back(character);
    return *this;
}

String operator+(const String& a, const String& b) {
    String result;
    result.m_text.reserve(a.m_text.size() + b.m_text.size());
    result.m_text.append(a.m_text).append(b.m_text);
    return result;
}

void String::afterUpdate() {
    const auto end = m_text.find(L'\0');
    if (end != Storage::npos)
        m_text.resize(end);
}

std::wostream& operator<<(std::wostream& stream, const String& text) {
    return stream.write(text.asWchar(), text.length());
}

wchar_t decimalPointCharacter() {
    const char* point = std::localeconv()->decimal_point;
    if (!point || !*point)
        return L'.';
    std::mbstate_t state{};
    wchar_t character = L'.';
    const std::size_t used = std::mbrtowc(&character, point, std::strlen(point), &state);
    return used == 0 || used > std::strlen(point) ? L'.' : character;
}

} // namespace Varnel
