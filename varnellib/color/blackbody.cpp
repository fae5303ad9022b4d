#include <varnellib/color/blackbody.h>

#include <algorithm>
#include <cmath>

namespace Varnel {

// Planck's law summed against the CIE 1931 2-degree colour matching functions, tabulated in
// 5 nm steps from 360 to 830 nm (the CIE table as Debian's colord-data ships it, turned into
// kCie1931 at build time). Planck's second radiation constant is c2 = hc/k = 1.4387769e-2 m K;
// the first constant cancels in the Y = 1 scaling.
namespace {

#include <varnellib/cie1931.inc>

constexpr double kSecondRadiationConstant = 1.4387769e-2; // m K
constexpr double kFirstWavelengthNm = 360.0;
constexpr double kStepNm = 5.0;
constexpr int kSamples = 95;

// Spectral radiance up to the constant 2hc^2.
double planck(double lambdaNm, double kelvin) {
    const double lambda = lambdaNm * 1e-9;
    const double l5 = lambda * lambda * lambda * lambda * lambda;
    return 1.0 / (l5 * std::expm1(kSecondRadiationConstant / (lambda * kelvin)));
}

} // namespace

XYZ blackbodyColor(float kelvin) {
    const double t = std::max(1.0, static_cast<double>(kelvin));
    double x = 0, y = 0, z = 0;
    for (int i = 0; i < kSamples; ++i) {
        const double radiance = planck(kFirstWavelengthNm + kStepNm * i, t);
        x += radiance * kCie1931[0][i];
        y += radiance * kCie1931[1][i];
        z += radiance * kCie1931[2][i];
    }
    // Far below 500 K the radiance of the visible band underflows: the colour tends to that of
    // the red end of the spectrum.
    if (!(y > 0))
        return {kCie1931[0][kSamples - 1] / kCie1931[1][kSamples - 1], 1.f,
                kCie1931[2][kSamples - 1] / kCie1931[1][kSamples - 1]};
    return {static_cast<float>(x / y), 1.f, static_cast<float>(z / y)};
}

} // namespace Varnel
