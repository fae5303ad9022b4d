#include <varnellib/base/serializer.h>

#include <charconv>

namespace Varnel {

ISerializer::~ISerializer() = default;

SimpleTextSerializer::SimpleTextSerializer(const wchar_t* separator, VariableNames names)
    : m_separator(separator), m_names(names) {}

SimpleTextSerializer::~SimpleTextSerializer() = default;

void SimpleTextSerializer::begin(const char* name) {
    if (!m_first)
        m_result += m_separator;
    m_first = false;
    if (m_names == VariableNames::Named && name) {
        m_result += String::fromUtf8(name);
        m_result << L'=';
    }
}

void SimpleTextSerializer::appendAscii(const char* text, int length) {
    m_result += String::fromAscii(text, length);
}

void SimpleTextSerializer::serializeNarrowString(const char* text) {
    begin(nullptr);
    m_result += String::fromUtf8(text);
}

void SimpleTextSerializer::serializeString(const char* name, const String& value) {
    begin(name);
    m_result += value;
}

namespace {
template <class T>
int render(char (&buffer)[64], T value) {
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return static_cast<int>(result.ptr - buffer);
}
} // namespace

void SimpleTextSerializer::serializeInt32(const char* name, int32 value) {
    begin(name);
    char buffer[64];
    appendAscii(buffer, render(buffer, value));
}

void SimpleTextSerializer::serializeInt64(const char* name, int64 value) {
    begin(name);
    char buffer[64];
    appendAscii(buffer, render(buffer, value));
}

void SimpleTextSerializer::serializeFloat(const char* name, float value) {
    begin(name);
    char buffer[64];
    appendAscii(buffer, render(buffer, value));
}

void SimpleTextSerializer::serializeDouble(const char* name, double value) {
    begin(name);
    char buffer[64];
    appendAscii(buffer, render(buffer, value));
}

void SimpleTextSerializer::serializeBool(const char* name, bool value) {
    begin(name);
    m_result += value ? String(L"true") : String(L"false");
}

} // namespace Varnel
