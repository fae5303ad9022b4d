// The viewer's display pipeline on a 2048 x 2048 float image against a plain copy of the bytes
// it writes, its histogram, and opening an OpenEXR file against the OpenEXR library's own read.
#include "imagefiles.h"
#include "pipeline.h"

#include <benchmark/benchmark.h>

#include <ImfFrameBuffer.h>
#include <ImfHeader.h>
#include <ImfInputFile.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <vector>

namespace {

using namespace Viewer;

constexpr int kSide = 2048;

const Image& bigImage() {
    static const Image image = [] {
        Image made({kSide, kSide, 1.f, ImageFormat::RgbaFloat32});
        auto* floats = reinterpret_cast<float*>(made.data());
        for (std::size_t i = 0; i < std::size_t(kSide) * kSide; ++i) {
            const float x = float(i % kSide) / kSide, y = float(i / kSide) / kSide;
            floats[4 * i + 0] = 4.f * x * x;
            floats[4 * i + 1] = 2.f * y + 0.1f * std::sin(40.f * x);
            floats[4 * i + 2] = 0.5f + 3.f * x * y;
            floats[4 * i + 3] = 1.f;
        }
        return made;
    }();
    return image;
}

DisplaySettings curvesAndExposure(int step) {
    DisplaySettings settings;
    settings.exposureStops = -1.f + 0.01f * float(step % 100);
    settings.curves[CurveChannel::Master].points() =
        Stack<CurvePoint>{{0.f, 0.f}, {0.3f, 0.4f + 0.001f * float(step % 100)}, {1.f, 1.f}};
    settings.curves[CurveChannel::Red].points() = Stack<CurvePoint>{{0.f, 0.1f}, {1.f, 0.9f}};
    return settings;
}

// A change of curve or exposure: the tables built again, then the whole image encoded.
void Reencode2048_DisplayPipeline(benchmark::State& state) {
    const Image& image = bigImage();
    std::vector<uint8> out(std::size_t(kSide) * kSide * 3);
    int step = 0;
    for (auto _ : state) {
        encodeImage(image, DisplayTables(curvesAndExposure(++step)), out.data());
        benchmark::DoNotOptimize(out.data());
    }
}
BENCHMARK(Reencode2048_DisplayPipeline)->Unit(benchmark::kMillisecond)->UseRealTime();

void Reencode2048_PlainCopyOfTheBytes(benchmark::State& state) {
    std::vector<uint8> in(std::size_t(kSide) * kSide * 3, 7), out(in.size());
    for (auto _ : state) {
        std::memcpy(out.data(), in.data(), in.size());
        benchmark::DoNotOptimize(out.data());
    }
}
BENCHMARK(Reencode2048_PlainCopyOfTheBytes)->Unit(benchmark::kMillisecond)->UseRealTime();

void Histogram2048_256Bins(benchmark::State& state) {
    const Image& image = bigImage();
    for (auto _ : state)
        benchmark::DoNotOptimize(
            imageHistogram(image, 0.f, CurveChannel::Master, {0.f, 1.f}, 256).maxCount());
}
BENCHMARK(Histogram2048_256Bins)->Unit(benchmark::kMillisecond)->UseRealTime();

const std::string& exrFile() {
    static const std::string path = [] {
        const std::string made =
            (std::filesystem::temp_directory_path() / "varnel-bench-2048.exr").string();
        writeImage(made, FileType::Exr, {Wx::ImageColorFormat::LinearHalf, true}, bigImage(),
                   [](const Rgb& p) { return p; });
        return made;
    }();
    return path;
}

void OpenExr2048_Viewer(benchmark::State& state) {
    const std::string& path = exrFile();
    for (auto _ : state)
        benchmark::DoNotOptimize(readImage(path).hasValue());
}
BENCHMARK(OpenExr2048_Viewer)->Unit(benchmark::kMillisecond)->UseRealTime();

// The library's own read of the same file into a float RGBA buffer.
void OpenExr2048_OpenExrLibrary(benchmark::State& state) {
    const std::string& path = exrFile();
    for (auto _ : state) {
        Imf::InputFile file(path.c_str());
        const Imath::Box2i window = file.header().dataWindow();
        const std::size_t width = std::size_t(window.max.x - window.min.x + 1);
        std::vector<float> pixels(width * std::size_t(window.max.y - window.min.y + 1) * 4);
        Imf::FrameBuffer frame;
        const char* names[] = {"R", "G", "B", "A"};
        for (int lane = 0; lane < 4; ++lane)
            frame.insert(names[lane],
                         Imf::Slice(Imf::FLOAT, reinterpret_cast<char*>(pixels.data() + lane),
                                    4 * sizeof(float), 4 * sizeof(float) * width));
        file.setFrameBuffer(frame);
        file.readPixels(window.min.y, window.max.y);
        benchmark::DoNotOptimize(pixels.data());
    }
}
BENCHMARK(OpenExr2048_OpenExrLibrary)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
