#include <varnellib/base/string.h>

#include "prelude.h"

#include <clocale>

namespace {

std::string utf8(const String& text) {
    return std::string(text.toUtf8().view());
}

} // namespace

TEST(String, Utf8RoundTripsEveryPlane) {
    // ASCII, Latin-1, a three-byte CJK character, the euro sign, and an emoji beyond the BMP.
    const char* samples[] = {"",
                             "plain",
                             "Gr\xC3\xBC\xC3\x9F"
                             "e",
                             "\xE6\x9B\xB2\xE7\xB7\x9A",
                             "\xE2\x82\xAC 5",
                             "\xF0\x9F\x8E\xA8 paint"};
    for (const char* sample : samples) {
        const String text = String::fromUtf8(sample);
        EXPECT_EQ(utf8(text), sample);
    }
    EXPECT_EQ(String::fromUtf8("\xF0\x9F\x8E\xA8").length(), 1); // one wchar_t per code point
    EXPECT_EQ(String::fromUtf8("\xC3\xBC")[0], L'\u00FC');
}

TEST(String, InvalidUtf8BecomesOneReplacementPerBadSequence) {
    struct Case {
        const char* input;
        const wchar_t* expected;
    };
    const Case cases[] = {
        {"a\x80"
         "b",
         L"a\uFFFDb"},                                     // stray continuation byte
        {"\xC0\xAF", L"\uFFFD\uFFFD"},                     // overlong lead bytes are never valid
        {"\xE0\x80\xAF", L"\uFFFD\uFFFD\uFFFD"},           // overlong three-byte form
        {"\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},           // a UTF-16 surrogate
        {"\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"}, // past U+10FFFF
        {"\xE6\x9B"
         "x",
         L"\uFFFDx"},                // truncated, then good text
        {"\xF0\x9F\x8E", L"\uFFFD"}, // truncated at the end of input
        {"\xFF\xFE", L"\uFFFD\uFFFD"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(String::fromUtf8(c.input), String(c.expected)) << c.input;
    }
    // A length cuts a sequence short without reading on.
    EXPECT_EQ(String::fromUtf8("\xC3\xBC", 1), String(L"\uFFFD"));
}

TEST(String, CharactersThatAreNotScalarValuesEncodeAsReplacement) {
    const wchar_t bad[] = {L'a', static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x110000), 0};
    EXPECT_EQ(utf8(String(bad)), "a\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(String::fromAscii("x\xE9y", 3), String(L"x\uFFFDy"));
}

TEST(String, EditingOperations) {
    String text(L"one two one two one");
    EXPECT_EQ(text.replaceAll(String(L"one"), String(L"1")), 3);
    EXPECT_EQ(text, String(L"1 two 1 two 1"));
    EXPECT_EQ(text.replaceAll(String(L""), String(L"x")), 0);
    // Replacements are not scanned again, so a replacement containing the pattern terminates.
    String grow(L"aa");
    EXPECT_EQ(grow.replaceAll(String(L"a"), String(L"aa")), 2);
    EXPECT_EQ(grow, String(L"aaaa"));

    String word(L"spinner");
    word.erase(4, 100); // a count past the end stops at the end
    EXPECT_EQ(word, String(L"spin"));
    EXPECT_EQ(String(L"gradient").getSubstr(2, 3), String(L"adi"));
    EXPECT_EQ(String(L"gradient").getSubstr(8, 5), String());
    EXPECT_EQ(String(L"abcabc").find(String(L"ca")), 2);
    EXPECT_EQ(String(L"abcabc").find(String(L"x")), -1);
}

TEST(String, OutOfRangeArgumentsRaiseTheStopException) {
    String text(L"abc");
    EXPECT_THROW(text.erase(4, 1), Varnel::StopException);
    EXPECT_THROW(text.erase(-1, 1), Varnel::StopException);
    EXPECT_THROW((void)text.getSubstr(1, -1), Varnel::StopException);
    EXPECT_THROW((void)text[3], Varnel::StopException);
    EXPECT_EQ(text, String(L"abc"));
}

TEST(String, UpdateEndsAtTheFirstZeroWritten) {
    String text;
    text.update(16, [](wchar_t* buffer, int) {
        buffer[0] = L'4';
        buffer[1] = L'2';
        buffer[2] = 0;
    });
    EXPECT_EQ(text, String(L"42"));
    text.update(3, [](wchar_t* buffer, int capacity) {
        for (int i = 0; i < capacity; ++i)
            buffer[i] = L'x';
    });
    EXPECT_EQ(text, String(L"xxx"));
}

TEST(String, DecimalPointFollowsTheCLocale) {
    const std::string saved = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "C");
    EXPECT_EQ(Varnel::decimalPointCharacter(), L'.');
    std::setlocale(LC_NUMERIC, saved.c_str());
}
