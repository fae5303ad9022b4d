#include <varnellib/base/timer.h>

#include "prelude.h"

TEST(Timer, QualifiedNamesFromPrettyFunctions) {
    struct Case {
        const char* pretty;
        const wchar_t* name;
    };
    const Case cases[] = {
        {"Varnel::Wx::ComboBox::ComboBox(wxWindow*, int)", L"Varnel::Wx::ComboBox::ComboBox"},
        {"void Varnel::Wx::Spinner::setValue(double, bool)", L"Varnel::Wx::Spinner::setValue"},
        {"static int Varnel::A::count() const", L"Varnel::A::count"},
        {"std::vector<int, std::allocator<int> > Varnel::f(int)", L"Varnel::f"},
        {"void Varnel::g(T) [with T = std::pair<int, int>]", L"Varnel::g"},
        {"bool Varnel::Detail::Less::operator()(int, int) const",
         L"Varnel::Detail::Less::operator()"},
        {"bool Varnel::operator<(const A&, const A&)", L"Varnel::operator<"},
        {"plain", L"plain"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Varnel::Detail::qualifiedFunctionName(c.pretty), String(c.name)) << c.pretty;
}

namespace {
void timedWork() {
    VARNEL_FUNCTION_ELAPSED_TIME(0);
}
void untimedWork() {
    VARNEL_FUNCTION_ELAPSED_TIME(60000);
}
} // namespace

TEST(Timer, ScopeGuardReportsThroughTheSinkOnlyPastTheThreshold) {
    std::vector<String> reports;
    Varnel::Detail::setElapsedTimeSink([&](const String& line) { reports.push_back(line); });
    timedWork();
    untimedWork();
    {
        Varnel::Detail::FunctionElapsedTime always(Timer(60000, Timer::Flag::ReportAll),
                                                   "Function call:", "void Varnel::traced()");
    }
    Varnel::Detail::setElapsedTimeSink({});

    ASSERT_EQ(reports.size(), 2u);
    const std::wstring first(reports[0].view());
    EXPECT_EQ(first.rfind(L"Function call: ", 0), 0u) << first;
    EXPECT_NE(first.find(L"timedWork "), std::wstring::npos) << first;
    EXPECT_EQ(first.substr(first.size() - 3), L" ms");
    EXPECT_EQ(std::wstring(reports[1].view()).rfind(L"Function call: Varnel::traced ", 0), 0u);
}
