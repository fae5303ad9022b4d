// The pure arithmetic behind window placement, scaling, wrapping and the button's label.
#include <varnellibwx/dpi.h>
#include <varnellibwx/guiskin.h>
#include <varnellibwx/widgets/button.h>
#include <varnellibwx/widgets/tooltip.h>
#include <varnellibwx/windowutils.h>

#include "prelude.h"

#include <cstring>

using namespace Varnel::Wx;

namespace {

// Restores the real display scale whatever a test does.
class ScaleOverride {
public:
    explicit ScaleOverride(double scale) { Wx::Detail::setDpiScaleOverride(scale); }
    ~ScaleOverride() { Wx::Detail::setDpiScaleOverride(0.0); }
};

} // namespace

TEST(Skin, DefaultsAreTheDarkThemeInOrder) {
    const GuiSkin skin;
    const unsigned char expected[24] = {200, 200, 200, 110, 110, 110, 68, 68, 68,  37, 37,  37,
                                        0,   0,   0,   39,  147, 255, 0,  73, 112, 81, 167, 241};
    EXPECT_EQ(std::memcmp(&skin, expected, sizeof expected), 0);
}

TEST(Dpi, ScalesTruncateAndKeepDefaults) {
    EXPECT_EQ(scaleByDpi(12), 12); // GTK scales logical pixels itself
    EXPECT_EQ(scaleByDpi(wxSize(-1, 20)), wxSize(-1, 20));
    {
        ScaleOverride twice(2.0);
        EXPECT_EQ(scaleByDpi(12), 24);
        EXPECT_EQ(scaleByDpi(wxSize(-1, 20)), wxSize(-1, 40));
        EXPECT_EQ(scaleByDpi(Pixel{-1, 3}), (Pixel{-2, 6})); // points have no default value
    }
    {
        ScaleOverride oneAndAHalf(1.5);
        EXPECT_EQ(scaleByDpi(1), 1); // no fractional bitmap factor
        EXPECT_EQ(scaleByDpi(250), 375);
        EXPECT_EQ(scaleByDpi(3), 4);
    }
}

TEST(Monitors, TheNearestMonitorWinsAndTiesGoToTheFirst) {
    const std::vector<wxRect> sideBySide = {{0, 0, 1920, 1080}, {1920, 0, 1280, 1024}};
    EXPECT_EQ(Wx::Detail::chooseMonitor(sideBySide, {1920, 500}), 1);
    EXPECT_EQ(Wx::Detail::chooseMonitor(sideBySide, {1919, 500}), 0);
    EXPECT_EQ(Wx::Detail::chooseMonitor(sideBySide, {2500, 1050}), 1); // below the smaller one
    EXPECT_EQ(Wx::Detail::chooseMonitor(sideBySide, {-50, 2000}), 0);
    // Halfway between two monitors: equally near, the lower index wins.
    const std::vector<wxRect> gap = {{0, 0, 100, 100}, {200, 0, 100, 100}};
    EXPECT_EQ(Wx::Detail::chooseMonitor(gap, {149, 50}), 0);
    EXPECT_EQ(Wx::Detail::chooseMonitor(gap, {150, 50}), 1);
    const std::vector<wxRect> overlapping = {{0, 0, 100, 100}, {50, 50, 100, 100}};
    EXPECT_EQ(Wx::Detail::chooseMonitor(overlapping, {75, 75}), 0);
    EXPECT_EQ(Wx::Detail::chooseMonitor({}, {0, 0}), -1);
}

TEST(Monitors, SmartPositionPullsWindowsIntoTheWorkArea) {
    const wxRect work(0, 30, 1600, 1170);
    EXPECT_EQ(Wx::Detail::smartPosition(work, {200, 100}, {1599, 1199}), wxPoint(1400, 1100));
    EXPECT_EQ(Wx::Detail::smartPosition(work, {200, 100}, {-40, 0}), wxPoint(0, 30));
    // Larger than the work area: aligned to its left and top edges.
    EXPECT_EQ(Wx::Detail::smartPosition(work, {2000, 1500}, {300, 300}), wxPoint(0, 30));
}

TEST(TooltipText, WrapsAtSpacesWithinTheWidthAndBreaksAtLineFeeds) {
    // Every character is 10 pixels wide.
    const Function<int(const String&)> width = [](const String& s) {
        return 10 * s.length();
    };
    auto wrap = [&](const wchar_t* text, int maxWidth) {
        std::vector<std::wstring> lines;
        for (const String& line : Wx::Detail::wrapText(String(text), maxWidth, width))
            lines.emplace_back(line.view());
        return lines;
    };
    using Lines = std::vector<std::wstring>;
    EXPECT_EQ(wrap(L"one two three four", 90), (Lines{L"one two", L"three", L"four"}));
    EXPECT_EQ(wrap(L"one two", 70), (Lines{L"one two"})); // exactly the width still fits
    EXPECT_EQ(wrap(L"a\n\nb", 90), (Lines{L"a", L"", L"b"}));
    EXPECT_EQ(wrap(L"unbreakableword x", 50), (Lines{L"unbreakableword", L"x"}));
    EXPECT_TRUE(wrap(L"", 90).empty());
}

TEST(ButtonLayout, LabelCentresRightOfTheBitmapAndRisesAtDoubleScale) {
    EXPECT_EQ(Wx::Detail::buttonLabelOrigin({100, 24}, {40, 14}, 0), wxPoint(30, 5));
    EXPECT_EQ(Wx::Detail::buttonLabelOrigin({100, 24}, {40, 14}, 20), wxPoint(40, 5));
    ScaleOverride twice(2.0);
    EXPECT_EQ(Wx::Detail::buttonLabelOrigin({100, 24}, {40, 14}, 0), wxPoint(30, 3));
}
