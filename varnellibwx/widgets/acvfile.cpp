#include <varnellibwx/widgets/acvfile.h>

#include <varnellib/io/bigendian.h>
#include <varnellib/io/filestream.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <system_error>

namespace Varnel::Wx::Detail {

namespace {

constexpr uint16 kVersion = 4;
constexpr uint16 kWrittenCurveCount = 4;
// 1/255 rounded to single precision (bits 0x3B808081).
constexpr float kFileToUnit = 0.003921569f;
constexpr double kUnitToFile = 255.0;
// End points are added unless the file's own points reach these (bits 0x3F7FFFEF, 0x358637BD).
constexpr float kLastXLimit = 0.999999f;
constexpr float kFirstXLimit = 0.000001f;
static_assert(std::bit_cast<uint32>(kFileToUnit) == 0x3B808081u);
static_assert(std::bit_cast<uint32>(kLastXLimit) == 0x3F7FFFEFu);
static_assert(std::bit_cast<uint32>(kFirstXLimit) == 0x358637BDu);

void readRecord(Io::BinaryInputStream& stream, uint16 count, Curve& curve) {
    Stack<CurvePoint>& points = curve.points();
    points.resize(count);
    for (int i = 0; i < count; ++i) {
        const uint16 output = Io::readUint16BigEndian(stream);
        const uint16 input = Io::readUint16BigEndian(stream);
        points[i] = {static_cast<float>(input) * kFileToUnit,
                     static_cast<float>(output) * kFileToUnit};
    }
    if (count == 0)
        return;
    const CurvePoint first = points[0];
    const CurvePoint last = points[count - 1];
    if (last.x < kLastXLimit)
        points.push({1.f, last.y});
    // The point that came first in the file, not whatever the append above left at the front.
    if (first.x > kFirstXLimit)
        points.push({0.f, first.y});
    std::sort(points.begin(), points.end(),
              [](const CurvePoint& a, const CurvePoint& b) { return a.x < b.x; });
}

// trunc(c * 255), of which the file keeps the low 16 bits. Values no integer can hold (NaN,
// huge) are written as 0 rather than left to undefined conversion.
uint16 toFileValue(float coordinate) {
    const double scaled = std::trunc(static_cast<double>(coordinate) * kUnitToFile);
    if (!(std::fabs(scaled) < 9.2e18))
        return 0;
    return static_cast<uint16>(static_cast<int64>(scaled) & 0xFFFF);
}

} // namespace

Expected<AcvCurves, String> readAcvCurves(Io::BinaryInputStream& stream) {
    try {
        AcvCurves curves;
        if (Io::readUint16BigEndian(stream) != kVersion)
            return Unexpected{String(L"Version 1 of acv file is not supported.")};
        const uint16 count = Io::readUint16BigEndian(stream);
        for (int i = 0; i < count; ++i) {
            const uint16 points = Io::readUint16BigEndian(stream);
            // The fifth record's count is consumed; nothing after it is looked at.
            if (i >= kCurveChannelCount)
                break;
            readRecord(stream, points, curves[static_cast<std::size_t>(i)]);
        }
        return curves;
    } catch (const Io::StreamError& error) {
        return Unexpected{String::fromUtf8(error.what())};
    } catch (const std::system_error& error) {
        return Unexpected{String::fromUtf8(error.what())};
    }
}

Expected<AcvCurves, String> readAcvFile(const Io::Path& path) {
    try {
        Io::FileInputStream file(path);
        return readAcvCurves(file);
    } catch (const std::system_error& error) {
        return Unexpected{String::fromUtf8(error.what())};
    }
}

bool writeAcvFile(const ColorCurve& curves, const Io::Path& path) {
    try {
        Io::FileOutputStream file(path, Io::FileOutputStream::Open::CreateOrTruncate);
        Io::writeUint16BigEndian(file, kVersion);
        Io::writeUint16BigEndian(file, kWrittenCurveCount);
        for (int channel = 0; channel < kCurveChannelCount; ++channel) {
            const Stack<CurvePoint>& points = curves[static_cast<CurveChannel>(channel)].points();
            Io::writeUint16BigEndian(file, static_cast<uint16>(points.size() & 0xFFFF));
            for (const CurvePoint& point : points) {
                Io::writeUint16BigEndian(file, toFileValue(point.y));
                Io::writeUint16BigEndian(file, toFileValue(point.x));
            }
        }
        file.close();
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

} // namespace Varnel::Wx::Detail
