#pragma once

#include <varnellib/base/expected.h>
#include <varnellib/base/string.h>
#include <varnellib/color/color.h>
#include <varnellib/image/bitmap.h>
#include <varnellibwx/export.h>

#include <wx/bitmap.h>
#include <wx/image.h>

namespace Varnel {
class Image;
}

namespace Varnel::Wx {

/// Decodes an image held in memory with the handlers registered at start-up. wxWidgets logging
/// is suppressed meanwhile, so corrupt data never pops up a log window; it yields an invalid
/// image instead.
VARNEL_LIBWX_EXPORT wxImage convertMemoryToImage(const void* data, int size, wxBitmapType type);
VARNEL_LIBWX_EXPORT wxBitmap convertMemoryToBitmap(const void* data, int size, wxBitmapType type);

/// The pixels of a 24-bit (alpha 1) or 32-bit bitmap as floats value / 255, not linearised, row 0
/// on top. Any other depth, or a bitmap without data: "Bitmap has unsupported bit depth.".
VARNEL_LIBWX_EXPORT Expected<BitmapImpl<Rgb>, String> toRgbBitmap(wxBitmap& bitmap);

/// A 24-bit (or, with alpha, 32-bit) bitmap of float pixels: each channel clamped to 0..1, times
/// 255, rounded to nearest with ties to even. No pixels give an invalid bitmap.
VARNEL_LIBWX_EXPORT wxBitmap toWxBitmap(const BitmapImpl<Rgb>& bitmap, bool withAlpha);

} // namespace Varnel::Wx

namespace Varnel::BitmapConverter {

/// A core image for display: every lane (alpha too) raised to 1 / gamma unless that is 1,
/// clamped, times 255, rounded to nearest with ties to even, and flipped vertically (the core
/// image's row 0 is its bottom row). Formats with alpha give an image with alpha.
VARNEL_LIBWX_EXPORT wxImage vellumImageToWxImage(const Image& image);
VARNEL_LIBWX_EXPORT wxBitmap vellumImageToWxBitmap(const Image& image);

} // namespace Varnel::BitmapConverter
