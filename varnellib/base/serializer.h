#pragma once

#include <varnellib/base/string.h>
#include <varnellib/base/types.h>
#include <varnellib/export.h>

#include <type_traits>

namespace Varnel {

/// An abstract writer of values. Each value may carry a name (null for none); serializeNarrowString
/// writes a literal without a name.
class VARNEL_LIB_EXPORT ISerializer {
public:
    virtual ~ISerializer();

    virtual void serializeNarrowString(const char* text) = 0;
    virtual void serializeString(const char* name, const String& value) = 0;
    virtual void serializeInt32(const char* name, int32 value) = 0;
    virtual void serializeInt64(const char* name, int64 value) = 0;
    virtual void serializeFloat(const char* name, float value) = 0;
    virtual void serializeDouble(const char* name, double value) = 0;
    virtual void serializeBool(const char* name, bool value) = 0;

    /// Writes a literal (const char*) or a named value of a supported type.
    void serialize(const char* literal) { serializeNarrowString(literal); }
    template <class T>
    void serialize(const char* name, const T& value) {
        if constexpr (std::is_same_v<T, bool>)
            serializeBool(name, value);
        else if constexpr (std::is_integral_v<T> && sizeof(T) <= 4)
            serializeInt32(name, static_cast<int32>(value));
        else if constexpr (std::is_integral_v<T>)
            serializeInt64(name, static_cast<int64>(value));
        else if constexpr (std::is_same_v<T, float>)
            serializeFloat(name, value);
        else if constexpr (std::is_same_v<T, double>)
            serializeDouble(name, value);
        else
            serializeString(name, value);
    }
};

/// Renders values as text, one after another with a separator between them. Numbers are written
/// in the C locale's form (decimal integers, shortest round-trip floats), whatever the host's
/// locale, so the text reads back the same everywhere.
class VARNEL_LIB_EXPORT SimpleTextSerializer : public ISerializer {
public:
    enum class VariableNames : int {
        /// "name=value"; values without a name are written plain.
        Named = 0,
        /// Plain values; names are ignored.
        Plain = 1,
    };

    SimpleTextSerializer(const wchar_t* separator, VariableNames names);
    ~SimpleTextSerializer() override;

    /// The text written so far.
    String getResult() const { return m_result; }

    void serializeNarrowString(const char* text) override;
    void serializeString(const char* name, const String& value) override;
    void serializeInt32(const char* name, int32 value) override;
    void serializeInt64(const char* name, int64 value) override;
    void serializeFloat(const char* name, float value) override;
    void serializeDouble(const char* name, double value) override;
    void serializeBool(const char* name, bool value) override;

private:
    void begin(const char* name);
    void appendAscii(const char* text, int length);

    String m_separator;
    VariableNames m_names;
    String m_result;
    bool m_first = true;
};

} // namespace Varnel
