// The spinner's arithmetic without a display: formatting and trimming, parsing typed text, the
// click step with its residual, the drag and the pointer's wrap at the monitor's edges.
#include <varnellibwx/widgets/spinner.h>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>

using namespace Varnel;
using namespace Varnel::Wx::Detail;

namespace {

// What a spinner stores after setValue(value): clamped, rounded through its text, clamped again.
float settle(float value, int digits, float min, float max) {
    return clampSpinnerValue(
        formatSpinnerValue(clampSpinnerValue(value, min, max), digits, L'.').value, min, max);
}

} // namespace

TEST(SpinnerModel, FormatsFixedAndTrimsButKeepsOneDecimal) {
    struct Case {
        float value;
        int digits;
        const wchar_t* shown;
    };
    const Case cases[] = {
        {3.f, 0, L"3"},           {2.f, 3, L"2.0"},     {1.5f, 3, L"1.50"},
        {10.f, 3, L"10.0"},       {0.f, 2, L"0.0"},     {0.f, 1, L"0.0"},
        {-2.f, 3, L"-2.0"},       {-0.5f, 2, L"-0.50"}, {100.f, 1, L"100.0"},
        {2.25f, 1, L"2.2"},       {0.125f, 2, L"0.12"}, {1.f / 3.f, 6, L"0.333333"},
        {123456.f, 0, L"123456"}, {1200.f, 0, L"1200"}, {0.004f, 6, L"0.0040"},
        {5.0001f, 3, L"5.0"},     {-0.f, 2, L"-0.0"},   {1e9f, 2, L"1000000000.0"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(formatSpinnerValue(c.value, c.digits, L'.').text, String(c.shown))
            << c.value << " with " << c.digits;
    EXPECT_EQ(formatSpinnerValue(1.5f, 2, L',').text, String(L"1,50"));
    EXPECT_EQ(formatSpinnerValue(2.f, 3, L',').text, String(L"2,0"));

    // The stored value is the number the digits stand for.
    EXPECT_EQ(formatSpinnerValue(0.15f, 1, L'.').value, 0.2f);
    EXPECT_EQ(formatSpinnerValue(2.25f, 1, L'.').value, 2.2f);
    EXPECT_EQ(formatSpinnerValue(1.f / 3.f, 3, L'.').value, 0.333f);
    EXPECT_EQ(formatSpinnerValue(7.f, 0, L'.').value, 7.f);
}

TEST(SpinnerModel, DigitsMatchPrintfForAnyValue) {
    std::mt19937 random(1234);
    std::uniform_real_distribution<float> values(-5000.f, 5000.f);
    for (int i = 0; i < 2000; ++i) {
        const float value = values(random);
        const int digits = i % 7;
        char expected[64];
        std::snprintf(expected, sizeof expected, "%.*f", digits, static_cast<double>(value));
        const String full = formatSpinnerValue(value, digits, L'.').text;
        // The shown text is a prefix of printf's (only zeros are trimmed).
        const std::wstring printed(expected, expected + std::strlen(expected));
        ASSERT_EQ(printed.compare(0, full.length(), full.view()), 0) << expected;
        EXPECT_EQ(formatSpinnerValue(value, digits, L'.').value, std::strtof(expected, nullptr));
    }
}

TEST(SpinnerModel, ValuesStartUnsetAndClampWithNaNGoingToMax) {
    EXPECT_EQ(std::bit_cast<uint32_t>(spinnerUnsetValue()), 0x7FC00001u);
    EXPECT_EQ(clampSpinnerValue(5.f, 0.f, 1.f), 1.f);
    EXPECT_EQ(clampSpinnerValue(-5.f, 0.f, 1.f), 0.f);
    EXPECT_EQ(clampSpinnerValue(std::numeric_limits<float>::quiet_NaN(), 0.f, 1.f), 1.f);
    EXPECT_EQ(spinnerDigits(-3), 0);
    EXPECT_EQ(spinnerDigits(4), 4);
    EXPECT_EQ(spinnerDigits(40), 9);
}

TEST(SpinnerModel, ClickStepsAutomaticOverriddenAndBelowTheResolution) {
    EXPECT_EQ(spinnerClickStep(500.f, 0.f, std::nullopt), 2.f);
    EXPECT_EQ(spinnerClickStep(0.1f, 0.f, std::nullopt), 0.004f);
    EXPECT_EQ(spinnerClickStep(-500.f, -1.f, std::nullopt), 2.f);
    EXPECT_EQ(spinnerClickStep(500.f, 0.25f, std::nullopt), 0.25f);
    EXPECT_EQ(spinnerClickStep(500.f, 0.25f, 3.f), 3.f);
    // Only a NaN override falls back; zero and negative ones are steps below the resolution.
    EXPECT_EQ(spinnerClickStep(500.f, 0.25f, std::numeric_limits<float>::quiet_NaN()), 0.25f);
    for (float taken : {0.f, -2.f, std::numeric_limits<float>::infinity()})
        EXPECT_EQ(spinnerClickStep(500.f, 0.25f, taken), taken) << taken;
    // Value 1 at precision 2 with an override of 0: up gives 1.01, down 0.99.
    EXPECT_EQ(spinnerStep(1.f, 0.f, spinnerClickStep(1.f, 5.f, 0.f), true, 2, 0.f, 10.f).target,
              1.f + 0.01f);
    EXPECT_EQ(spinnerStep(1.f, 0.f, spinnerClickStep(1.f, 5.f, 0.f), false, 2, 0.f, 10.f).target,
              1.f - 0.01f);
    EXPECT_EQ(spinnerDragSpeed(500.f, 0.f), 2.f);
    EXPECT_EQ(spinnerDragSpeed(500.f, 0.5f), 0.5f);

    for (int digits = 0; digits <= 6; ++digits)
        EXPECT_EQ(spinnerResolution(digits), 1.f / static_cast<float>(std::pow(10, digits)));

    // With precision 1 a step of 0.004 moves by exactly the resolution and drops the residual.
    const SpinnerMove tiny = spinnerStep(0.5f, 0.03f, 0.004f, true, 1, 0.f, 1.f);
    EXPECT_EQ(tiny.target, 0.5f + 0.1f);
    EXPECT_FALSE(tiny.carriesResidual);
    EXPECT_EQ(spinnerStep(0.5f, 0.f, 0.004f, false, 1, 0.f, 1.f).target, 0.5f - 0.1f);
    // Larger steps add the residual and are clamped; negative ranges work the same way.
    const SpinnerMove big = spinnerStep(-9.f, 0.25f, 2.f, false, 0, -10.f, -1.f);
    EXPECT_EQ(big.target, -10.f);
    EXPECT_TRUE(big.carriesResidual);
    EXPECT_EQ(spinnerStep(-2.f, 0.f, 2.f, true, 0, -10.f, -1.f).target, -1.f);
}

TEST(SpinnerModel, ResidualCarriesRoundingLossAcrossSteps) {
    // Ten steps of 0.15 shown with one decimal: rounding each step alone would give 2.0.
    float value = 0.f, residual = 0.f;
    for (int i = 0; i < 10; ++i) {
        const SpinnerMove move = spinnerStep(value, residual, 0.15f, true, 1, 0.f, 100.f);
        value = settle(move.target, 1, 0.f, 100.f);
        residual = move.carriesResidual ? move.target - value : 0.f;
    }
    EXPECT_NEAR(value, 1.5f, 1e-6f);
}

TEST(SpinnerModel, DragsMoveUpForMoreAndWrapAtTheMonitorsRows) {
    EXPECT_EQ(spinnerDragTarget(1.f, 0.f, -10, 1, 0.1f, 1, 0.f, 10.f), 2.f);
    EXPECT_EQ(spinnerDragTarget(1.f, 0.f, 10, 1, 0.1f, 1, -10.f, 10.f), 0.f);
    EXPECT_EQ(spinnerDragTarget(1.f, 0.f, 10, -1, 0.1f, 1, 0.f, 10.f), 2.f);
    EXPECT_EQ(spinnerDragTarget(1.f, 0.f, -10, 1, 0.1f, 2, 0.f, 10.f), 1.5f);
    EXPECT_EQ(spinnerDragTarget(1.f, 0.25f, -10, 1, 0.1f, 1, 0.f, 10.f), 2.25f);
    EXPECT_EQ(spinnerDragTarget(9.f, 0.f, -100, 1, 0.1f, 1, 0.f, 10.f), 10.f);

    const Bucket monitor{1600, 100, 1280, 1024};
    struct Case {
        Pixel mouse;
        int dy;
        Optional<Pixel> target;
    };
    const Case cases[] = {
        {{1700, 100}, -3, Pixel{1700, 1122}}, {{1700, 1123}, 4, Pixel{1700, 101}},
        {{1700, 100}, 2, std::nullopt},       {{1700, 1123}, -2, std::nullopt},
        {{1700, 500}, -9, std::nullopt},      {{1700, 101}, -1, std::nullopt},
        {{1700, 100}, 0, std::nullopt},
    };
    for (const Case& c : cases)
        EXPECT_EQ(spinnerWrapTarget(c.mouse, monitor, c.dy), c.target)
            << c.mouse.y << " moving " << c.dy;
}

TEST(SpinnerModel, TypedTextParsesWithCommasOrGivesNothing) {
    const std::pair<const wchar_t*, Optional<float>> cases[] = {
        {L"1,5", 1.5f},
        {L" 2.5", 2.5f},
        {L"1,2,3", 1.2f},
        {L"-0.5", -0.5f},
        {L"12abc", 12.f},
        {L"1e30", 1e30f},
        {L"3", 3.f},
        {L"", std::nullopt},
        {L"abc", std::nullopt},
        {L"-", std::nullopt},
        {L"nan", std::nullopt},
        {L"inf", std::nullopt},
        {L"1e309", std::nullopt},
        {L",", std::nullopt},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(parseSpinnerText(String(text)), expected) << String(text).toUtf8().data();
    EXPECT_EQ(parseSpinnerText(String(std::wstring(10000, L'9').c_str())), std::nullopt);
    EXPECT_EQ(parseSpinnerText(String(std::wstring(10000, L'x').c_str())), std::nullopt);
}
