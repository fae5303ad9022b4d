#include "startedlibrary.h"

#include <varnellib/image/image.h>
#include <varnellib/native/screen.h>
#include <varnellibwx/bitmapconversion.h>

#include <wx/dcscreen.h>

#include <cstring>
#include <vector>

namespace {

constexpr int kSide = 1024;
constexpr int kRegion = 31;

void ScreenRegionColors_Varnel(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    for (auto _ : state) {
        const auto colors = Varnel::getScreenRegionColors({100, 100, kRegion, kRegion});
        benchmark::DoNotOptimize(colors.data());
    }
}
BENCHMARK(ScreenRegionColors_Varnel)->Unit(benchmark::kMicrosecond);

void ScreenRegionColors_wxScreenDCPixels(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    wxScreenDC screen;
    for (auto _ : state) {
        wxColour colour;
        for (int y = 0; y < kRegion; ++y)
            for (int x = 0; x < kRegion; ++x)
                screen.GetPixel(100 + x, 100 + y, &colour);
        benchmark::DoNotOptimize(colour);
    }
}
BENCHMARK(ScreenRegionColors_wxScreenDCPixels)->Unit(benchmark::kMicrosecond);

Varnel::BitmapImpl<Varnel::Rgb> gradientPixels() {
    Varnel::BitmapImpl<Varnel::Rgb> pixels(kSide, kSide);
    for (int y = 0; y < kSide; ++y)
        for (int x = 0; x < kSide; ++x)
            pixels(x, y) = Varnel::Rgb(x / float(kSide), y / float(kSide), 0.5f, 1.f);
    return pixels;
}

void ToWxBitmap_Varnel(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    const auto pixels = gradientPixels();
    for (auto _ : state) {
        const wxBitmap bitmap = Varnel::Wx::toWxBitmap(pixels, false);
        benchmark::DoNotOptimize(bitmap.IsOk());
    }
}
BENCHMARK(ToWxBitmap_Varnel)->Unit(benchmark::kMillisecond);

// The floor: copying the same number of output bytes, with no conversion and no toolkit.
void ToWxBitmap_PlainCopy(benchmark::State& state) {
    std::vector<unsigned char> source(kSide * kSide * 3, 7), target(source.size());
    for (auto _ : state) {
        for (std::size_t i = 0; i < source.size(); ++i)
            target[i] = source[i];
        benchmark::DoNotOptimize(target.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(ToWxBitmap_PlainCopy)->Unit(benchmark::kMillisecond);

void VellumImageToWxImage(benchmark::State& state) {
    StartedLibrary library(state);
    if (!library.ok())
        return;
    const float gamma = static_cast<float>(state.range(0)) / 10.f;
    Varnel::Image image({kSide, kSide, gamma, Varnel::ImageFormat::RgbaFloat32});
    for (int y = 0; y < kSide; ++y)
        for (int x = 0; x < kSide; ++x)
            image.setRgba(x, y, Varnel::Rgb(x / float(kSide), y / float(kSide), 0.5f, 1.f));
    for (auto _ : state) {
        const wxImage converted = Varnel::BitmapConverter::vellumImageToWxImage(image);
        benchmark::DoNotOptimize(converted.GetData());
    }
}
// Gamma 2.2 against gamma 1, which skips the power function: the difference is its cost.
BENCHMARK(VellumImageToWxImage)->Arg(22)->Arg(10)->Unit(benchmark::kMillisecond);

// The floor of both: copying the bytes the converted image holds (RGB and alpha).
void VellumImageToWxImage_PlainCopy(benchmark::State& state) {
    std::vector<unsigned char> source(kSide * kSide * 4, 7), target(source.size());
    for (auto _ : state) {
        std::memcpy(target.data(), source.data(), source.size());
        benchmark::DoNotOptimize(target.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(VellumImageToWxImage_PlainCopy)->Unit(benchmark::kMillisecond);

} // namespace
