// Feeds arbitrary bytes to the curve-file reader. Besides what the sanitizers catch, a reader
// that succeeds must hand back curves whose points are sorted by x and that evaluate.
#include <varnellib/io/memorystream.h>
#include <varnellibwx/widgets/acvfile.h>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Varnel::Io::MemoryInputStream stream(data, static_cast<Varnel::int64>(size));
    const auto curves = Varnel::Wx::Detail::readAcvCurves(stream);
    if (!curves.hasValue())
        return 0;
    for (const Varnel::Curve& curve : curves.value()) {
        const auto& points = curve.points();
        for (int i = 1; i < points.size(); ++i)
            if (points[i].x < points[i - 1].x)
                __builtin_trap();
        volatile float sample = curve(0.5f);
        (void)sample;
    }
    return 0;
}
