// The spinner's arithmetic without a display: formatting and trimming, parsing typed text, the
// click step with its residual, the drag and the pointer's wrap at the monitor's edges.
#include <varnellibwx/widgets/spinner.h>

#include "prelude.h"

#include <bit>
#include <cstdio>
#include <cstring>
#include <random>

using namespace Varnel::Wx::Detail;

TEST(SpinnerModel, FormatsFixedAndTrimsButKeepsOneDecimal) {
    const std::tuple<float, int, const wchar_t*> cases[] = {
        {3.f, 0, L"3"},         {2.f, 3, L"2.0"},     {1.5f, 3, L"1.50"},
        {10.f, 3, L"10.0"},     {-0.5f, 2, L"-0.50"}, {2.25f, 1, L"2.2"},
        {0.004f, 6, L"0.0040"}, {-0.f, 2, L"-0.0"},   {1e9f, 2, L"1000000000.0"},
    };
    for (const auto& [value, digits, shown] : cases)
        EXPECT_EQ(formatSpinnerValue(value, digits, L'.').text, String(shown)) << value;
    EXPECT_EQ(formatSpinnerValue(2.f, 3, L',').text, String(L"2,0"));
    // The stored value is the number the digits stand for.
    EXPECT_EQ(formatSpinnerValue(0.15f, 1, L'.').value, 0.2f);
    EXPECT_EQ(formatSpinnerValue(1.f / 3.f, 3, L'.').value, 0.333f);
}

TEST(SpinnerModel, DigitsMatchPrintfForAnyValue) {
    std::mt19937 random(1234);
    std::uniform_real_distribution<float> values(-5000.f, 5000.f);
    for (int i = 0; i < 2000; ++i) {
        const float value = values(random);
        const int digits = i % 7;
        char expected[64];
        std::snprintf(expected, sizeof expected, "%.*f", digits, static_cast<double>(value));
        const SpinnerText formatted = formatSpinnerValue(value, digits, L'.');
        // The shown text is a prefix of printf's (only zeros are trimmed).
        const std::wstring printed(expected, expected + std::strlen(expected));
        ASSERT_EQ(printed.compare(0, formatted.text.length(), formatted.text.view()), 0)
            << expected;
        EXPECT_EQ(formatted.value, std::strtof(expected, nullptr));
    }
}

TEST(SpinnerModel, ValuesStartUnsetAndClampWithNaNGoingToMax) {
    EXPECT_EQ(std::bit_cast<uint32_t>(spinnerUnsetValue()), 0x7FC00001u);
    EXPECT_EQ(clampSpinnerValue(5.f, 0.f, 1.f), 1.f);
    EXPECT_EQ(clampSpinnerValue(-5.f, 0.f, 1.f), 0.f);
    EXPECT_EQ(clampSpinnerValue(kNaN, 0.f, 1.f), 1.f);
    EXPECT_EQ(spinnerDigits(-3), 0);
    EXPECT_EQ(spinnerDigits(40), 9);
}

TEST(SpinnerModel, ClickStepsAutomaticOverriddenAndBelowTheResolution) {
    EXPECT_EQ(spinnerClickStep(-500.f, -1.f, std::nullopt), 2.f); // max(|v|, 1) x 0.004
    EXPECT_EQ(spinnerClickStep(0.1f, 0.f, std::nullopt), 0.004f);
    EXPECT_EQ(spinnerClickStep(500.f, 0.25f, std::nullopt), 0.25f);
    // Any number the override yields is taken; only NaN falls back.
    for (float taken : {3.f, 0.f, -2.f, kInf})
        EXPECT_EQ(spinnerClickStep(500.f, 0.25f, taken), taken) << taken;
    EXPECT_EQ(spinnerClickStep(500.f, 0.25f, kNaN), 0.25f);
    EXPECT_EQ(spinnerDragSpeed(500.f, 0.f), 2.f);
    EXPECT_EQ(spinnerResolution(3), 0.001f);

    // Below the resolution a step moves by exactly one resolution and drops the residual: value
    // 1 at precision 2 with an override of 0 goes to 1.01 and 0.99.
    const SpinnerMove tiny =
        spinnerStep(1.f, 0.03f, spinnerClickStep(1.f, 5.f, 0.f), true, 2, 0.f, 10.f);
    EXPECT_EQ(tiny.target, 1.f + 0.01f);
    EXPECT_FALSE(tiny.carriesResidual);
    EXPECT_EQ(spinnerStep(1.f, 0.f, 0.f, false, 2, 0.f, 10.f).target, 1.f - 0.01f);
    // Larger steps add the residual and are clamped.
    const SpinnerMove big = spinnerStep(-9.f, 0.25f, 2.f, false, 0, -10.f, -1.f);
    EXPECT_EQ(big.target, -10.f);
    EXPECT_TRUE(big.carriesResidual);
}

TEST(SpinnerModel, ResidualCarriesRoundingLossAcrossSteps) {
    // Ten steps of 0.15 shown with one decimal: rounding each step alone would give 2.0.
    float value = 0.f, residual = 0.f;
    for (int i = 0; i < 10; ++i) {
        const SpinnerMove move = spinnerStep(value, residual, 0.15f, true, 1, 0.f, 100.f);
        value = clampSpinnerValue(formatSpinnerValue(move.target, 1, L'.').value, 0.f, 100.f);
        residual = move.carriesResidual ? move.target - value : 0.f;
    }
    EXPECT_NEAR(value, 1.5f, 1e-6f);
}

TEST(SpinnerModel, DragsMoveUpForMoreAndWrapAtTheMonitorsRows) {
    EXPECT_EQ(spinnerDragTarget(1.f, 0.f, -10, 1, 0.1f, 1, 0.f, 10.f), 2.f);
    EXPECT_EQ(spinnerDragTarget(1.f, 0.f, 10, -1, 0.1f, 1, 0.f, 10.f), 2.f); // the wrapping event
    EXPECT_EQ(spinnerDragTarget(1.f, 0.25f, -10, 1, 0.1f, 2, 0.f, 10.f), 1.75f);
    EXPECT_EQ(spinnerDragTarget(9.f, 0.f, -100, 1, 0.1f, 1, 0.f, 10.f), 10.f);

    const Bucket monitor{1600, 100, 1280, 1024};
    const std::tuple<Pixel, int, Optional<Pixel>> cases[] = {
        {{1700, 100}, -3, Pixel{1700, 1122}}, {{1700, 1123}, 4, Pixel{1700, 101}},
        {{1700, 100}, 2, std::nullopt},       {{1700, 1123}, -2, std::nullopt},
        {{1700, 101}, -1, std::nullopt},
    };
    for (const auto& [mouse, dy, target] : cases)
        EXPECT_EQ(spinnerWrapTarget(mouse, monitor, dy), target) << mouse.y << " moving " << dy;
}

TEST(SpinnerModel, TypedTextParsesWithCommasOrGivesNothing) {
    const std::pair<const wchar_t*, Optional<float>> cases[] = {
        {L"1,5", 1.5f},         {L" 2.5", 2.5f},          {L"1,2,3", 1.2f},
        {L"12abc", 12.f},       {L"1e30", 1e30f},         {L"", std::nullopt},
        {L"abc", std::nullopt}, {L"-", std::nullopt},     {L"nan", std::nullopt},
        {L"inf", std::nullopt}, {L"1e309", std::nullopt},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(parseSpinnerText(String(text)), expected) << String(text).toUtf8().data();
    EXPECT_EQ(parseSpinnerText(String(std::wstring(10000, L'9').c_str())), std::nullopt);
}
