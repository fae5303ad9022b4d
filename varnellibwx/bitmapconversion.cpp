#include <varnellibwx/bitmapconversion.h>

#include <varnellib/color/byteencoding.h>
#include <varnellib/image/image.h>

#include <wx/log.h>
#include <wx/mstream.h>
#include <wx/rawbmp.h>

#include <array>
#include <bit>
#include <cstring>
#include <optional>
#include <type_traits>
#include <vector>

namespace Varnel {
namespace {
constexpr float kByteScale = 255.f;
} // namespace
} // namespace Varnel

namespace Varnel::Wx {

namespace {

constexpr int kOpaqueDepth = 24;
constexpr int kAlphaDepth = 32;

// Writes RGBA bytes as the pixels of a bitmap row in the toolkit's layout. Where that layout is
// three bytes R, G, B, each pixel is one four-byte store whose last byte the next pixel
// overwrites; only the row's last pixel is written byte by byte, so nothing spills past it.
template <class Format>
void spreadRow(const uint8* rgba, std::size_t pixels, unsigned char* out) {
    if constexpr (Format::SizePixel == 3 && Format::RED == 0 && Format::GREEN == 1 &&
                  Format::BLUE == 2) {
        for (std::size_t i = 0; i + 1 < pixels; ++i, rgba += 4, out += 3)
            std::memcpy(out, rgba, 4);
        if (pixels > 0)
            std::memcpy(out, rgba, 3);
    } else {
        for (std::size_t i = 0; i < pixels; ++i, rgba += 4, out += Format::SizePixel) {
            out[Format::RED] = rgba[0];
            out[Format::GREEN] = rgba[1];
            out[Format::BLUE] = rgba[2];
            if constexpr (Format::HasAlpha)
                out[Format::ALPHA] = rgba[3];
        }
    }
}

// Each row is encoded four lanes at a time into RGBA bytes, then spread into the bitmap.
template <class PixelData, class Format>
void writePixels(wxBitmap& target, const BitmapImpl<Rgb>& source) {
    PixelData data(target);
    if (!data)
        return;
    typename PixelData::Iterator rowStart(data);
    std::vector<uint8> encoded(static_cast<std::size_t>(source.width()) * 4);
    for (int y = 0; y < source.height(); ++y) {
        unitsToBytes(source.row(y), encoded.data(), encoded.size());
        spreadRow<Format>(encoded.data(), static_cast<std::size_t>(source.width()),
                          reinterpret_cast<unsigned char*>(rowStart.m_ptr));
        rowStart.OffsetY(data, 1);
    }
}

template <class PixelData>
void readPixels(PixelData& data, BitmapImpl<Rgb>& target) {
    typename PixelData::Iterator rowStart(data);
    for (int y = 0; y < target.height(); ++y) {
        typename PixelData::Iterator p = rowStart;
        Rgb* row = target.row(y);
        for (int x = 0; x < target.width(); ++x, ++p) {
            float alpha = 1.f;
            if constexpr (std::is_same_v<PixelData, wxAlphaPixelData>)
                alpha = p.Alpha() / kByteScale;
            row[x] =
                Rgb(p.Red() / kByteScale, p.Green() / kByteScale, p.Blue() / kByteScale, alpha);
        }
        rowStart.OffsetY(data, 1);
    }
}

} // namespace

wxImage convertMemoryToImage(const void* data, int size, wxBitmapType type) {
    if (!data || size <= 0)
        return {};
    wxLogNull noLog;
    wxMemoryInputStream stream(data, static_cast<std::size_t>(size));
    return wxImage(stream, type, -1);
}

wxBitmap convertMemoryToBitmap(const void* data, int size, wxBitmapType type) {
    const wxImage image = convertMemoryToImage(data, size, type);
    return image.IsOk() ? wxBitmap(image, -1, 1.0) : wxBitmap();
}

Expected<BitmapImpl<Rgb>, String> toRgbBitmap(wxBitmap& bitmap) {
    const String unsupported(L"Bitmap has unsupported bit depth.");
    if (!bitmap.IsOk())
        return Unexpected{unsupported};
    BitmapImpl<Rgb> result(bitmap.GetWidth(), bitmap.GetHeight());
    if (bitmap.GetDepth() == kOpaqueDepth) {
        wxNativePixelData data(bitmap);
        if (!data)
            return Unexpected{unsupported};
        readPixels(data, result);
    } else if (bitmap.GetDepth() == kAlphaDepth) {
        wxAlphaPixelData data(bitmap);
        if (!data)
            return Unexpected{unsupported};
        readPixels(data, result);
    } else {
        return Unexpected{unsupported};
    }
    return result;
}

wxBitmap toWxBitmap(const BitmapImpl<Rgb>& bitmap, bool withAlpha) {
    if (static_cast<int64>(bitmap.width()) * bitmap.height() < 1)
        return {};
    wxBitmap result(bitmap.width(), bitmap.height(), withAlpha ? kAlphaDepth : kOpaqueDepth);
    if (withAlpha)
        writePixels<wxAlphaPixelData, wxAlphaPixelFormat>(result, bitmap);
    else
        writePixels<wxNativePixelData, wxNativePixelFormat>(result, bitmap);
    return result;
}

} // namespace Varnel::Wx

namespace Varnel::BitmapConverter {

namespace {

// The encoder of the gamma converted last on this thread: finding its boundaries costs about as
// much as converting a small image, and a viewer converts at one gamma again and again.
const GammaByteEncoder& encoderFor(float gamma) {
    thread_local std::optional<GammaByteEncoder> last;
    if (!last || std::bit_cast<uint32>(last->gamma()) != std::bit_cast<uint32>(gamma))
        last.emplace(gamma);
    return *last;
}

// One row of a float format of `Channels` lanes (1 is luminance, shown as grey) into RGB bytes,
// and alpha bytes when `alpha` is given. Linear data (the identity) goes four lanes at a time.
template <int Channels>
void encodeFloatRow(const uint8* row, int width, const GammaByteEncoder& encode,
                    std::vector<uint8>& scratch, unsigned char* rgb, unsigned char* alpha) {
    const auto pixels = static_cast<std::size_t>(width);
    scratch.resize(pixels * Channels);
    encode.encode(row, scratch.data(), scratch.size());
    const uint8* in = scratch.data();
    if constexpr (Channels == 4) {
        // Four bytes a pixel, the fourth overwritten by the next; the last pixel alone writes
        // three, since the row after it in the image is written already.
        for (std::size_t x = 0; x < pixels; ++x, in += 4, rgb += 3) {
            std::memcpy(rgb, in, x + 1 < pixels ? 4 : 3);
            alpha[x] = in[3];
        }
    } else {
        for (std::size_t x = 0; x < pixels; ++x, in += Channels, rgb += 3) {
            rgb[0] = in[0];
            rgb[1] = in[Channels > 1 ? 1 : 0];
            rgb[2] = in[Channels > 1 ? 2 : 0];
        }
    }
}

// One row of an 8-bit format: every byte value has one answer, found once per image.
void encodeByteRow(const uint8* row, int width, int channels, const std::array<uint8, 256>& table,
                   unsigned char* rgb, unsigned char* alpha) {
    for (int x = 0; x < width; ++x, row += channels, rgb += 3) {
        rgb[0] = table[row[0]];
        rgb[1] = table[row[1]];
        rgb[2] = table[row[2]];
        if (alpha)
            alpha[x] = table[row[3]];
    }
}

} // namespace

wxImage vellumImageToWxImage(const Image& image) {
    const Image::Descriptor& d = image.descriptor();
    const ImageFormatDescriptor& format = getImageFormatDescriptor(d.format);
    wxImage result(d.width, d.height, false);
    if (d.height < 1 || d.width < 1)
        return result;
    if (format.hasAlpha)
        result.SetAlpha();
    const GammaByteEncoder& encode = encoderFor(d.gamma);
    std::array<uint8, 256> byteTable{};
    if (format.channelType == ChannelType::UInt8)
        for (int value = 0; value < 256; ++value)
            byteTable[static_cast<std::size_t>(value)] =
                encode(static_cast<float>(value) / kByteScale);

    const std::size_t rowBytes = static_cast<std::size_t>(d.width) * format.bytesPerPixel;
    std::vector<uint8> scratch;
    for (int y = 0; y < d.height; ++y) {
        // The core image's row 0 is its bottom row.
        const std::size_t target = static_cast<std::size_t>(d.height - 1 - y) * d.width;
        unsigned char* rgb = result.GetData() + target * 3;
        unsigned char* alpha = result.HasAlpha() ? result.GetAlpha() + target : nullptr;
        const uint8* row = image.data() + static_cast<std::size_t>(y) * rowBytes;
        if (format.channelType == ChannelType::UInt8)
            encodeByteRow(row, d.width, format.channelCount, byteTable, rgb, alpha);
        else if (format.channelCount == 4)
            encodeFloatRow<4>(row, d.width, encode, scratch, rgb, alpha);
        else if (format.channelCount == 3)
            encodeFloatRow<3>(row, d.width, encode, scratch, rgb, alpha);
        else
            encodeFloatRow<1>(row, d.width, encode, scratch, rgb, alpha);
    }
    return result;
}

wxBitmap vellumImageToWxBitmap(const Image& image) {
    return wxBitmap(vellumImageToWxImage(image), -1, 1.0);
}

} // namespace Varnel::BitmapConverter
