#include <varnellib/color/blackbody.h>
#include <varnellib/color/color.h>

#include "prelude.h"

namespace {

struct Chromaticity {
    double x, y;
};

Chromaticity chromaticity(const XYZ& c) {
    const double sum = static_cast<double>(c.x) + c.y + c.z;
    return {c.x / sum, c.y / sum};
}

} // namespace

TEST(Blackbody, ChromaticitiesLieOnThePlanckianLocus) {
    // Reference points of the CIE 1931 Planckian locus.
    const struct {
        float kelvin;
        double x, y;
    } locus[] = {
        {1000.f, 0.6527, 0.3445},  {2000.f, 0.5267, 0.4133}, {2856.f, 0.4476, 0.4074},
        {4000.f, 0.3805, 0.3768},  {6500.f, 0.3135, 0.3237}, {10000.f, 0.2807, 0.2883},
        {20000.f, 0.2565, 0.2577},
    };
    for (const auto& point : locus) {
        const XYZ color = blackbodyColor(point.kelvin);
        EXPECT_FLOAT_EQ(color.y, 1.f);
        const Chromaticity c = chromaticity(color);
        EXPECT_NEAR(c.x, point.x, 0.003) << point.kelvin << " K";
        EXPECT_NEAR(c.y, point.y, 0.003) << point.kelvin << " K";
    }
}

TEST(Blackbody, ColoursRunFromRedToBlueAsTheTemperatureRises) {
    double previousX = 1.0;
    for (float kelvin = 1000.f; kelvin <= 20000.f; kelvin += 250.f) {
        const double x = chromaticity(blackbodyColor(kelvin)).x;
        EXPECT_LT(x, previousX) << kelvin << " K";
        previousX = x;
        const Rgb rgb = TM_XYZ_TO_LIN_RGB * blackbodyColor(kelvin);
        if (kelvin < 6000.f) {
            EXPECT_GT(rgb.r, rgb.b) << kelvin << " K";
        } else if (kelvin > 7000.f) {
            EXPECT_LT(rgb.r, rgb.b) << kelvin << " K";
        }
    }
    // Extreme inputs stay finite.
    for (float kelvin : {-5.f, 0.f, 1.f, 300.f, 1e6f}) {
        const XYZ c = blackbodyColor(kelvin);
        EXPECT_TRUE(std::isfinite(c.x) && std::isfinite(c.y) && std::isfinite(c.z)) << kelvin;
    }
}

TEST(ColorMatrix, MapsTheD65WhiteToEqualLinearRgb) {
    const XYZ d65{0.95047f, 1.f, 1.08883f};
    const Rgb white = TM_XYZ_TO_LIN_RGB * d65;
    EXPECT_NEAR(white.r, 1.f, 1e-3f);
    EXPECT_NEAR(white.g, 1.f, 1e-3f);
    EXPECT_NEAR(white.b, 1.f, 1e-3f);
    EXPECT_EQ(white.a, 1.f);
    // Colours are stored as given, never clamped.
    const Rgb bright(4.f, -0.5f, 1.f, 2.f);
    EXPECT_EQ((bright * 0.5f), Rgb(2.f, -0.25f, 0.5f, 1.f));
}
