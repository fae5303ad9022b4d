#pragma once

#include <varnellib/base/expected.h>
#include <varnellib/io/path.h>
#include <varnellib/utility/colorcurve.h>

#include <array>

namespace Varnel::Io {
class BinaryInputStream;
}

// Photoshop curve files (".acv"): big-endian 16-bit values, version 4, a curve count, then one
// record per curve (a point count, then each point as output, input). Records 0 to 3 are the
// master, red, green and blue curves. File values v read as v * 0.003921569 and coordinates c
// write as trunc(c * 255) (low 16 bits), so a save and a load lose a little, as they always have.
namespace Varnel::Wx::Detail {

using AcvCurves = std::array<Curve, kCurveChannelCount>;

inline constexpr const wchar_t* kAcvWildcard = L"Photoshop curve files (*.acv)|*.acv";

/// Reads the four curves from any byte source. A record of zero points reads as an empty curve.
/// Fails with "Version 1 of acv file is not supported." for any version but 4, and with "Could
/// not load object from the stream." when the data ends inside a value, and with the stream's
/// own message when reading fails. Only these failures are caught: the stop exception and
/// std::bad_alloc pass through.
Expected<AcvCurves, String> readAcvCurves(Io::BinaryInputStream& stream);

/// Reads the four curves from a file; a file that cannot be opened fails with the stream's own
/// message. Catches what readAcvCurves catches and nothing more.
Expected<AcvCurves, String> readAcvFile(const Io::Path& path);

/// Writes the four curves as stored (no sorting, clamping or end points). Returns false on any
/// failure to open, write or close the file, leaving whatever was written on disk; the stop
/// exception passes through.
bool writeAcvFile(const ColorCurve& curves, const Io::Path& path);

} // namespace Varnel::Wx::Detail
