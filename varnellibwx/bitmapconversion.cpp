#include <varnellibwx/bitmapconversion.h>

#include <varnellib/image/image.h>

#include <wx/log.h>
#include <wx/mstream.h>
#include <wx/rawbmp.h>

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace Varnel {
namespace {
constexpr float kByteScale = 255.f;
} // namespace
} // namespace Varnel

namespace Varnel::Wx {

namespace {

constexpr int kOpaqueDepth = 24;
constexpr int kAlphaDepth = 32;

template <class PixelData>
void writePixels(wxBitmap& target, const BitmapImpl<Rgb>& source, bool withAlpha) {
    PixelData data(target);
    typename PixelData::Iterator rowStart(data);
    for (int y = 0; y < source.height(); ++y) {
        typename PixelData::Iterator p = rowStart;
        const Rgb* row = source.row(y);
        for (int x = 0; x < source.width(); ++x, ++p) {
            p.Red() = unitToByte(row[x].r);
            p.Green() = unitToByte(row[x].g);
            p.Blue() = unitToByte(row[x].b);
            if constexpr (std::is_same_v<PixelData, wxAlphaPixelData>)
                if (withAlpha)
                    p.Alpha() = unitToByte(row[x].a);
        }
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
        writePixels<wxAlphaPixelData>(result, bitmap, true);
    else
        writePixels<wxNativePixelData>(result, bitmap, false);
    return result;
}

} // namespace Varnel::Wx

namespace Varnel::BitmapConverter {

wxImage vellumImageToWxImage(const Image& image) {
    const Image::Descriptor& d = image.descriptor();
    const float exponent = 1.f / d.gamma;
    const bool hasAlpha = getImageFormatDescriptor(d.format).hasAlpha;
    wxImage result(d.width, d.height, false);
    if (d.height < 1 || d.width < 1)
        return result;
    if (hasAlpha)
        result.SetAlpha();
    unsigned char* rgb = result.GetData();
    unsigned char* alpha = result.GetAlpha();
    auto lane = [exponent](float value) {
        return unitToByte(exponent != 1.f ? std::pow(value, exponent) : value);
    };
    for (int y = 0; y < d.height; ++y) {
        const std::size_t rowStart = static_cast<std::size_t>(d.height - 1 - y) * d.width;
        for (int x = 0; x < d.width; ++x) {
            const Rgb pixel = image.getRgba(x, y);
            unsigned char* out = rgb + (rowStart + x) * 3;
            out[0] = lane(pixel.r);
            out[1] = lane(pixel.g);
            out[2] = lane(pixel.b);
            if (alpha)
                alpha[rowStart + x] = lane(pixel.a);
        }
    }
    return result;
}

wxBitmap vellumImageToWxBitmap(const Image& image) {
    return wxBitmap(vellumImageToWxImage(image), -1, 1.0);
}

} // namespace Varnel::BitmapConverter
