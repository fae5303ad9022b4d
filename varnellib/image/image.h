#pragma once

#include <varnellib/base/memory.h>
#include <varnellib/color/color.h>
#include <varnellib/export.h>

#include <vector>

namespace Varnel {

/// The pixel formats of core images. The two with an alpha channel are Rgba8 (2) and
/// RgbaFloat32 (4).
enum class ImageFormat : int {
    LuminanceFloat32 = 0,
    Rgb8 = 1,
    Rgba8 = 2,
    RgbFloat32 = 3,
    RgbaFloat32 = 4,
};

enum class ChannelType : int { UInt8 = 0, Float32 = 1 };

/// How a format lays out its pixels: channels, their type, alpha, and bytes per pixel.
struct ImageFormatDescriptor {
    int channelCount;
    ChannelType channelType;
    bool hasAlpha;
    int bytesPerPixel;
};

/// What a format stores; a format outside the enumeration raises the stop exception.
VARNEL_LIB_EXPORT const ImageFormatDescriptor& getImageFormatDescriptor(ImageFormat format);

/// An image as the renderer keeps it: rows from the bottom up (row 0 is the bottom row), pixels
/// in one of the formats above, and the gamma its values are encoded with (1 for linear data).
/// 8-bit channels read as value / 255; formats without alpha read with alpha 1; luminance reads
/// as grey.
class VARNEL_LIB_EXPORT Image {
public:
    /// The size, encoding gamma and format of an image.
    struct Descriptor {
        int width = 0;
        int height = 0;
        float gamma = 1.f;
        ImageFormat format = ImageFormat::RgbaFloat32;
    };

    Image() = default;
    /// A black image (all channels 0) of the described size and format.
    explicit Image(const Descriptor& descriptor);

    const Descriptor& descriptor() const noexcept { return m_descriptor; }

    /// One pixel as RGBA floats; a position outside the image raises the stop exception.
    Rgb getRgba(int x, int y) const;
    /// Stores a pixel, rounding and clamping to 0..255 for 8-bit formats and averaging the
    /// colour channels for luminance.
    void setRgba(int x, int y, const Rgb& color);

    const uint8* data() const noexcept { return m_data.data(); }
    /// The pixels for writing, laid out as the descriptor says (rows from the bottom up).
    uint8* data() noexcept { return m_data.data(); }

private:
    std::size_t offset(int x, int y) const;

    Descriptor m_descriptor;
    std::vector<uint8, HeapAllocator<uint8>> m_data;
};

} // namespace Varnel
