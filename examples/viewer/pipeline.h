#pragma once

// The viewer's display pipeline, without a window: how a linear, high-dynamic-range pixel
// becomes what the screen shows, exactly (displayPixel) and fast for whole images (DisplayTables
// and encodeImage, on every core).

#include <varnellib/color/color.h>
#include <varnellib/image/image.h>
#include <varnellib/utility/colorcurve.h>
#include <varnellib/utility/histogram.h>
#include <varnellibwx/widgets/gridmappingdialog.h>

#include <array>
#include <cstdint>
#include <vector>

namespace Viewer {

using namespace Varnel;

/// The channel that false colour maps.
enum class Channel : int { Luminance = 0, Red = 1, Green = 2, Blue = 3, Alpha = 4 };

/// The false-colour mapping the viewer starts with: black through blue, red and yellow to white,
/// the identity curve, scale 1.
Wx::GridMapping defaultMapping();

/// What the user set: exposure in stops, the four curves (master, then each channel's), a tint,
/// and, instead of all that, false colour through a grid mapping.
struct DisplaySettings {
    float exposureStops = 0.f;
    ColorCurve curves;
    Rgb tint{1.f, 1.f, 1.f, 1.f};
    bool falseColor = false;
    Channel channel = Channel::Luminance;
    Wx::GridMapping mapping = defaultMapping();
};

/// sRGB's encoding of a linear value in [0, 1] (values outside are clamped; NaN gives 0).
float encodeSrgb(float linear);

/// The value false colour maps: a channel of the pixel, or its luminance (Rec. 709 weights).
float channelValue(const Rgb& pixel, Channel channel);

/// A value through the mapping: times the input scale, through its curve, into its gradient.
Rgb mapValue(float value, const Wx::GridMapping& mapping);

/// The colour false colour shows for a value: mapValue's, each lane clamped to [0, 1].
Rgb falseColor(float value, const Wx::GridMapping& mapping);

/// What the curves see of a pixel: the pixel times 2^exposure (red, green and blue).
Rgb exposed(const Rgb& pixel, float exposureStops);

/// The exact display value of one pixel, sRGB-encoded floats in [0, 1] (alpha kept): exposure,
/// master curve, each channel's curve, tint, clamp and encoding; or in false colour, the
/// mapping's colour (the gradient's colour as the gradient control shows it: not encoded).
Rgb displayPixel(const Rgb& pixel, const DisplaySettings& settings);

/// The bytes of a display value: each lane clamped, times 255, to the nearest.
std::array<uint8, 3> displayBytes(const Rgb& display);

/// Lookup tables that turn a linear lane (or a false-colour value) straight into display bytes,
/// built once per change of the settings. Each table samples its function at kSize points over
/// the range in which it changes; between samples the nearest is taken, so a byte is within one
/// of displayBytes(displayPixel(...)).
class DisplayTables {
public:
    static constexpr int kSize = 1 << 14;

    explicit DisplayTables(const DisplaySettings& settings);

    /// The display bytes of a pixel.
    std::array<uint8, 3> bytes(const Rgb& pixel) const;
    /// The display bytes (RGB, rows from the top) of a core float image, the rows shared among
    /// `threads` threads (0: one per core).
    void encode(const Image& image, uint8* out, int threads = 0) const;

private:
    struct Table {
        float start = 0.f;
        float scale = 0.f; // samples per unit of input
        float width = 0.f; // the input range sampled
        float bias = 0.f;  // 0.5 - start x scale: value x scale + bias rounds to the nearest
        std::vector<uint8> bytes;
        int zero = 0; // the index of the value 0, where NaN goes
        /// Samples the inputs over `range`, where the function changes, given in the units after
        /// multiplying by `inputScale` (1 when that is not a finite number above 0).
        void cover(std::pair<float, float> range, float inputScale);
        /// The input of sample i.
        float input(int i) const;
        int index(float value) const;
    };

    void encodeRow(const float* source, uint8* target, int width) const;

    bool m_falseColor;
    Channel m_channel;
    std::array<Table, 3> m_lanes;               // red, green, blue: a lane in, a byte out
    Table m_mapped;                             // false colour: a value in, an index out
    std::vector<std::array<uint8, 3>> m_colors; // false colour: the colour of each index
};

/// tables.encode(image, out, threads).
void encodeImage(const Image& image, const DisplayTables& tables, uint8* out, int threads = 0);

/// The histogram of the curves' input for `channel` (the master: the mean of red, green and
/// blue) over `range`, in `bins` bins, counted on every core.
Histogram imageHistogram(const Image& image, float exposureStops, CurveChannel channel,
                         std::pair<float, float> range, int bins);

/// The largest finite value of a channel over the image (0 for an empty image).
float largestValue(const Image& image, Channel channel);

/// A pixel of a core float image by its position from the top (core images keep rows from the
/// bottom up).
Rgb pixelFromTop(const Image& image, int x, int y);

} // namespace Viewer
