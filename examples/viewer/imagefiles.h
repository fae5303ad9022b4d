#pragma once

// Image files for the viewer, through the field's own libraries: OpenEXR for the floating-point
// formats, libpng and libtiff for 8 and 16 bits, stb_image for Radiance HDR and JPEG.

#include <varnellib/base/expected.h>
#include <varnellib/base/optional.h>
#include <varnellib/image/image.h>
#include <varnellibwx/widgets/imagesavesettingsdialog.h>

#include <functional>
#include <string>

namespace Viewer {

using namespace Varnel;

/// The largest image the viewer opens, in pixels (2 GiB of float RGBA).
inline constexpr std::size_t kMaxPixels = std::size_t(1) << 27;

/// Reads an image (OpenEXR, PNG, TIFF, JPEG or Radiance HDR, told apart by their first bytes,
/// not by the name) into linear RGBA floats: integer data is sRGB and is decoded, one or two
/// channels are grey (and alpha), a missing alpha is 1. The path is UTF-8. The error is a
/// sentence for the user.
Expected<Image, std::string> readImage(const std::string& path);

/// The file types the viewer writes, by the name's extension (.png, .tif/.tiff, .exr).
enum class FileType { Png, Tiff, Exr };
Optional<FileType> fileTypeOf(const std::string& path);
/// What each type holds: 8 and 16-bit sRGB for PNG and TIFF, half and float linear for OpenEXR;
/// alpha in all three.
Wx::ImageSaveCapabilities capabilitiesOf(FileType type);

/// Writes `linear` (a core float image) as `settings` say: the 8 and 16-bit formats store
/// display(pixel) (sRGB-encoded floats in [0, 1]), the floating-point ones the linear pixels.
/// Nothing on success, else a sentence for the user (a partial file may remain).
Optional<std::string> writeImage(const std::string& path, FileType type,
                                 const Wx::ImageSaveSettings& settings, const Image& linear,
                                 const std::function<Rgb(const Rgb&)>& display);

/// sRGB's decoding of an encoded value in [0, 1].
float decodeSrgb(float encoded);

} // namespace Viewer
