#include <varnellibwx/varnellibwx.h>

#include "prelude.h"

using Varnel::Wx::formatWxAssertFailure;

TEST(FormatWxAssertFailure, BuildsTheReportByteForByte) {
    const auto text = formatWxAssertFailure("a.cpp", 7, "f", "x", "m");
    ASSERT_TRUE(text.has_value());
    EXPECT_EQ(std::string(text->toUtf8().view()),
              "An internal error occurred: wxWidgets assertion failure. Please, report this "
              "problem to us.\n"
              "File: a.cpp(7)\n"
              "Function: f\n"
              "Condition: x\n"
              "Message: m");

    // Negative and large lines print in plain decimal; wide text passes through unchanged.
    const auto wide = formatWxAssertFailure(L"\u00FCber.cpp", -12345678, "", "", L"\u20AC");
    ASSERT_TRUE(wide.has_value());
    const std::wstring view(wide->view());
    EXPECT_NE(view.find(L"File: \u00FCber.cpp(-12345678)\n"), std::wstring::npos);
    EXPECT_EQ(view.substr(view.size() - 10), L"Message: \u20AC");
}

TEST(FormatWxAssertFailure, IgnoresOnlyTheExactLocaleAssertion) {
    const wxString locale = "wxLocale::GetInfo";
    const wxString condition = "strcmp(setlocale(0, 0), \"C\") == 0";
    EXPECT_FALSE(formatWxAssertFailure("intl.cpp", 1, locale, condition, "").has_value());
    EXPECT_TRUE(formatWxAssertFailure("intl.cpp", 1, locale, "other", "").has_value());
    EXPECT_TRUE(
        formatWxAssertFailure("intl.cpp", 1, "wxLocale::GetInfo2", condition, "").has_value());
    EXPECT_TRUE(formatWxAssertFailure("intl.cpp", 1, locale, condition + " ", "").has_value());
}
