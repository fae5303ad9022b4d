// The image tools' rules without a display: the pixel probe's texts and placement, and the
// settings a save dialog starts from, and where the collapsible tick's corners fall.
#include <varnellibwx/widgets/collapsiblepanel.h>
#include <varnellibwx/widgets/imagesavesettingsdialog.h>
#include <varnellibwx/widgets/pixelprobe.h>

#include "prelude.h"

#include <climits>
#include <clocale>
#include <cmath>

using namespace Varnel::Wx;
using namespace Varnel::Wx::Detail;

TEST(PixelProbeTexts, PrintAsTheCLibraryDoesWithAPointInAnyLocale) {
    // A host whose locale writes a comma must still get points.
    const char* hostLocale = std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    const auto texts = pixelProbeTexts(
        {{INT_MIN, INT_MAX}, Rgb(0.25f, -0.f, 1.5f, 1.f), Rgb(kNaN, -kNaN, kInf, -kInf)});
    std::setlocale(LC_NUMERIC, "C");
    EXPECT_NE(hostLocale, nullptr) << "the comma locale is not installed";
    EXPECT_EQ(texts[0], "Position:\n-2147483648\n2147483647");
    EXPECT_EQ(texts[1], "Original\nLinear RGB:\nR: 0.25000\nG: -0.00000\nB: 1.50000\nA: 1.00000");
    EXPECT_EQ(texts[2], "Tonemapped\nsRGB:\nR: nan\nG: -nan\nB: inf\nA: -inf");
    EXPECT_EQ(texts[3], "Tonemapped\nsRGB 8-bit:\nR: 0\nG: 0\nB: 255\nA: 0");

    // The 8-bit rule: clamped, times 255, to the nearest (127.5 gives 128, not 127).
    const auto bytes = pixelProbeTexts({{0, 0}, Rgb(), Rgb(0.5f, 0.2f, 7.f, -1.f)});
    EXPECT_EQ(bytes[3], "Tonemapped\nsRGB 8-bit:\nR: 128\nG: 51\nB: 255\nA: 0");
}

TEST(PixelProbePlacement, BelowRightOfThePointerFlippedAtEdgesAndAlwaysOnTheMonitor) {
    const wxRect monitor(1920, 0, 1280, 1024); // a second monitor right of a first
    const wxSize probe(300, 120);
    struct Row {
        wxPoint pointer, expected;
    };
    const Row rows[] = {
        {{2000, 100}, {2016, 116}},      // room right and below
        {{3100, 100}, {2784, 116}},      // flipped left at the right edge
        {{2000, 1000}, {2016, 864}},     // flipped up at the bottom edge
        {{3199, 1023}, {2883, 887}},     // the corner: both
        {{1930, 5}, {1946, 21}},         // near the left edge: no flip needed
        {{INT_MAX, INT_MIN}, {2900, 0}}, // far off: pulled inside
    };
    for (const Row& row : rows)
        EXPECT_EQ(pixelProbePosition(monitor, probe, row.pointer, 16), row.expected)
            << row.pointer.x << "," << row.pointer.y;
    // Larger than the monitor: its top-left corner.
    EXPECT_EQ(pixelProbePosition({0, 0, 200, 100}, probe, {150, 50}, 16), wxPoint(0, 0));
}

TEST(ImageSaveSettings, StartFromASupportedFormatOrTheFirstOne) {
    using F = ImageColorFormat;
    const ImageSaveCapabilities halfAndFloat{{false, false, true, true}, false};
    EXPECT_EQ(startingSettings({F::LinearFloat, true}, halfAndFloat),
              (ImageSaveSettings{F::LinearFloat, false}));
    EXPECT_EQ(startingSettings({F::Srgb16, true}, halfAndFloat),
              (ImageSaveSettings{F::LinearHalf, false}));
    EXPECT_EQ(startingSettings({F::Srgb16, true}, {}), (ImageSaveSettings{F::Srgb16, true}));
    for (const auto& [start, capabilities] :
         {std::pair{ImageSaveSettings{F::Srgb8, false}, ImageSaveCapabilities{{}, true}},
          {ImageSaveSettings{static_cast<F>(4), false}, ImageSaveCapabilities{}}})
        EXPECT_THROW(startingSettings(start, capabilities), StopException);
}

TEST(CollapsibleTick, TheBaseAndTheHeightLandOnWholeDevicePixelsAndTheTipIsCentred) {
    for (const int side : {11, 12, 22})
        for (const double scale : {1.0, 2.0})
            for (const bool expanded : {false, true}) {
                const auto corners = tickTriangle(side, expanded, scale);
                // Along the base (x when expanded) and across it.
                const auto along = [&](int i) {
                    return expanded ? corners[i].m_x : corners[i].m_y;
                };
                const auto across = [&](int i) {
                    return expanded ? corners[i].m_y : corners[i].m_x;
                };
                for (const double device : {along(0) * scale, along(1) * scale, across(0) * scale,
                                            across(1) * scale, across(2) * scale})
                    EXPECT_EQ(device, std::round(device)) << side << " at " << scale;
                EXPECT_EQ(along(2), (along(0) + along(1)) / 2);
                EXPECT_EQ(across(0), across(1));
                EXPECT_NEAR(along(1) - along(0), 0.6 * side, 1.0);
            }
}
