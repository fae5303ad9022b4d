#include <varnellib/io/filestream.h>
#include <varnellibwx/widgets/acvfile.h>
#include <varnellibwx/widgets/colormodel.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <random>
#include <vector>

namespace {

using namespace Varnel;
using namespace Varnel::Wx::Detail;

constexpr int kColours = 1'000'000;

std::vector<Rgb> randomColours() {
    std::mt19937 random(5);
    std::uniform_real_distribution<float> unit(0.f, 1.f);
    std::vector<Rgb> colours(kColours);
    for (Rgb& c : colours)
        c = Rgb(unit(random), unit(random), unit(random), 1.f);
    return colours;
}

void RgbHsvRoundTrip(benchmark::State& state) {
    const std::vector<Rgb> colours = randomColours();
    std::vector<Rgb> out(kColours);
    for (auto _ : state) {
        for (int i = 0; i < kColours; ++i)
            out[i] = hsvToRgb(rgbToHsv(colours[i]));
        benchmark::DoNotOptimize(out.data());
    }
    state.SetItemsProcessed(state.iterations() * kColours);
}
BENCHMARK(RgbHsvRoundTrip)->Unit(benchmark::kMillisecond);

// The same through the run conversions, four colours at a time.
void RgbHsvRoundTrip_Batch(benchmark::State& state) {
    const std::vector<Rgb> colours = randomColours();
    std::vector<Hsv> hsv(kColours);
    std::vector<Rgb> out(kColours);
    for (auto _ : state) {
        rgbToHsv(ArrayView<const Rgb>(colours.data(), kColours),
                 ArrayView<Hsv>(hsv.data(), kColours));
        hsvToRgb(ArrayView<const Hsv>(hsv.data(), kColours), ArrayView<Rgb>(out.data(), kColours));
        benchmark::DoNotOptimize(out.data());
    }
    state.SetItemsProcessed(state.iterations() * kColours);
}
BENCHMARK(RgbHsvRoundTrip_Batch)->Unit(benchmark::kMillisecond);

// The floor: touching the same colours without converting them.
void RgbHsvRoundTrip_CopyFloor(benchmark::State& state) {
    const std::vector<Rgb> colours = randomColours();
    std::vector<Rgb> out(kColours);
    for (auto _ : state) {
        for (int i = 0; i < kColours; ++i)
            out[i] = colours[i];
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kColours);
}
BENCHMARK(RgbHsvRoundTrip_CopyFloor)->Unit(benchmark::kMillisecond);

void TemperatureScale(benchmark::State& state) {
    for (auto _ : state) {
        for (int kelvin = 1700; kelvin <= 15000; ++kelvin)
            benchmark::DoNotOptimize(temperatureToRgb(static_cast<float>(kelvin)));
    }
    state.SetItemsProcessed(state.iterations() * (15000 - 1700 + 1));
}
BENCHMARK(TemperatureScale)->Unit(benchmark::kMillisecond);

void HexFormatThenParse(benchmark::State& state) {
    const Rgb colour(0.25f, 0.5f, 0.75f, 1.f);
    for (auto _ : state) {
        const String text = formatHexColor(colour);
        benchmark::DoNotOptimize(parseHexColor(text));
    }
}
BENCHMARK(HexFormatThenParse);

Io::Path curveFile() {
    static const std::filesystem::path path =
        std::filesystem::temp_directory_path() / "varnel-bench-curves.acv";
    ColorCurve curves;
    for (int channel = 0; channel < 4; ++channel) {
        Curve& curve = curves[static_cast<CurveChannel>(channel)];
        curve.points().clear();
        for (int i = 0; i < 19; ++i)
            curve.points().push({i / 18.f, (i * i) / 324.f});
    }
    const Io::Path file(String::fromUtf8(path.c_str()));
    writeAcvFile(curves, file);
    return file;
}

void AcvRead(benchmark::State& state) {
    const Io::Path file = curveFile();
    for (auto _ : state)
        benchmark::DoNotOptimize(readAcvFile(file));
}
BENCHMARK(AcvRead)->Unit(benchmark::kMicrosecond);

void AcvWrite(benchmark::State& state) {
    const Io::Path file = curveFile();
    const auto curves = readAcvFile(file).value();
    ColorCurve colorCurve;
    for (int channel = 0; channel < 4; ++channel)
        colorCurve[static_cast<CurveChannel>(channel)] = curves[static_cast<std::size_t>(channel)];
    for (auto _ : state)
        benchmark::DoNotOptimize(writeAcvFile(colorCurve, file));
}
BENCHMARK(AcvWrite)->Unit(benchmark::kMicrosecond);

// The floor of reading: the same bytes with fopen and one fread.
void AcvRead_PlainFread(benchmark::State& state) {
    const Io::Path file = curveFile();
    unsigned char buffer[512];
    for (auto _ : state) {
        std::FILE* f = std::fopen(file.native().data(), "rb");
        benchmark::DoNotOptimize(std::fread(buffer, 1, sizeof buffer, f));
        std::fclose(f);
    }
}
BENCHMARK(AcvRead_PlainFread)->Unit(benchmark::kMicrosecond);

} // namespace
