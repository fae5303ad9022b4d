#include <varnellibwx/dpi.h>
#include <varnellibwx/fonts.h>

#include <varnellib/native/process.h>

#include <wx/dcscreen.h>

#include <cmath>
#include <vector>

namespace Varnel::Wx {

namespace {

constexpr double kStandardResolution = 96.0;
constexpr int kMeasureSteps = 12;
constexpr double kPointStep = 0.1;

double gFontFactor = 1.0;

// wx turns a pixel size into points through its own measure of the screen, which does not follow
// the desktop's text scale: at a text scale of 1.5 a 12-pixel font came out 10 pixels high. At
// the standard resolution wx's own answer stands; elsewhere the point size is found by measuring
// the text as GTK draws it (a screen context, which draws at the desktop's resolution), once for
// each face, height and resolution.
struct MeasuredSize {
    wxString face;
    int pixels = 0;
    double resolution = 0.0;
    double points = 0.0;
};

int measuredHeight(const wxFont& font) {
    wxScreenDC dc;
    dc.SetFont(font);
    return dc.GetTextExtent("Hxgj").y;
}

void setPixelHeight(wxFont& font, int pixels) {
    font.SetPixelSize(wxSize(0, pixels));
    const double resolution = getFontResolution();
    if (resolution == kStandardResolution || pixels <= 0)
        return;
    static std::vector<MeasuredSize> known;
    const wxString face = font.GetFaceName();
    for (const MeasuredSize& size : known)
        if (size.pixels == pixels && size.resolution == resolution && size.face == face) {
            font.SetFractionalPointSize(size.points);
            return;
        }
    // A step in proportion to the error, then tenths of a point, until the text is as high.
    double points = font.GetFractionalPointSize();
    for (int step = 0; step < kMeasureSteps; ++step) {
        font.SetFractionalPointSize(points);
        const int height = measuredHeight(font);
        if (height == pixels || height <= 0)
            break;
        const double proportional = points * pixels / height;
        points = std::abs(proportional - points) > kPointStep
                     ? proportional
                     : points + (height < pixels ? kPointStep : -kPointStep);
    }
    known.push_back({face, pixels, resolution, font.GetFractionalPointSize()});
}

int standardHeight(float factor) {
    return static_cast<int>(
        static_cast<float>(std::lround(scaleByDpi(kStandardTextHeight) * gFontFactor)) * factor);
}

} // namespace

void setFontFactor(double factor) {
    if (std::isfinite(factor) && factor > 0.0)
        gFontFactor = factor;
}

double fontFactor() {
    return gFontFactor;
}

wxFont setDefaultFontSize(wxFont font, float factor) {
    setPixelHeight(font, standardHeight(factor));
    return font;
}

wxFont setupStaticTextFont(wxFont font, Flags<TextFlag> flags) {
    setPixelHeight(font, standardHeight(1.f));
    font = font.GetBaseFont();
    if (flags.has(TextFlag::Bold))
        font.MakeBold();
    if (flags.has(TextFlag::Italic))
        font.MakeItalic();
    return font;
}

} // namespace Varnel::Wx
