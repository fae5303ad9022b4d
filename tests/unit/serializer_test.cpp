#include <varnellib/base/serializer.h>

#include "prelude.h"

#include <clocale>

TEST(SimpleTextSerializer, PlainValuesAreSeparatedAndUnnamed) {
    SimpleTextSerializer plain(L" ", SimpleTextSerializer::VariableNames::Plain);
    plain.serialize("label");
    plain.serialize("count", 42);
    plain.serialize("big", std::numeric_limits<Varnel::int64>::min());
    plain.serialize("gamma", 0.45454544f);
    plain.serialize("ratio", 0.1);
    plain.serialize("on", true);
    plain.serialize("name", String(L"\u00E9t\u00E9"));
    EXPECT_EQ(plain.getResult(),
              String(L"label 42 -9223372036854775808 0.45454544 0.1 true \u00E9t\u00E9"));
}

TEST(SimpleTextSerializer, NamedValuesAndASingleValueHaveNoSeparator) {
    SimpleTextSerializer named(L", ", SimpleTextSerializer::VariableNames::Named);
    named.serialize("x", -7);
    named.serialize("literal");
    named.serialize(nullptr, 1.5f);
    EXPECT_EQ(named.getResult(), String(L"x=-7, literal, 1.5"));

    SimpleTextSerializer single(L" ", SimpleTextSerializer::VariableNames::Plain);
    single.serialize(nullptr, 121);
    EXPECT_EQ(single.getResult(), String(L"121"));
}

TEST(SimpleTextSerializer, NumbersIgnoreTheHostLocale) {
    // A host in a comma locale must not change what is written: the numbers are read back.
    const char* previous = std::setlocale(LC_NUMERIC, nullptr);
    const std::string saved = previous ? previous : "C";
    if (!std::setlocale(LC_NUMERIC, "de_DE.UTF-8") && !std::setlocale(LC_NUMERIC, "fr_FR.UTF-8"))
        GTEST_SKIP() << "no comma locale installed";
    SimpleTextSerializer serializer(L" ", SimpleTextSerializer::VariableNames::Plain);
    serializer.serialize(nullptr, 2.5);
    std::setlocale(LC_NUMERIC, saved.c_str());
    EXPECT_EQ(serializer.getResult(), String(L"2.5"));
}
