#include <varnellib/utility/curve.h>

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace {

constexpr int kSamples = 1024;
constexpr int kPoints = 16;

Varnel::Curve makeCurve(int interpolation) {
    std::mt19937 random(11);
    std::uniform_real_distribution<float> unit(0.f, 1.f);
    Varnel::Curve curve;
    curve.setInterpolation(interpolation);
    curve.points().clear();
    for (int i = 0; i < kPoints; ++i)
        curve.points().push({i / float(kPoints - 1), unit(random)});
    return curve;
}

std::vector<float> increasingSamples() {
    std::vector<float> xs(kSamples);
    for (int i = 0; i < kSamples; ++i)
        xs[i] = i / float(kSamples - 1);
    return xs;
}

void CurveBatch(benchmark::State& state) {
    const Varnel::Curve curve = makeCurve(static_cast<int>(state.range(0)));
    const std::vector<float> xs = increasingSamples();
    std::vector<float> ys(kSamples);
    for (auto _ : state) {
        curve.evaluate(Varnel::ArrayView<const float>(xs), Varnel::ArrayView<float>(ys));
        benchmark::DoNotOptimize(ys.data());
    }
    state.SetItemsProcessed(state.iterations() * kSamples);
}
BENCHMARK(CurveBatch)->Arg(Varnel::Curve::Cubic)->Arg(Varnel::Curve::Linear);

void CurvePerSample(benchmark::State& state) {
    const Varnel::Curve curve = makeCurve(static_cast<int>(state.range(0)));
    const std::vector<float> xs = increasingSamples();
    std::vector<float> ys(kSamples);
    for (auto _ : state) {
        for (int i = 0; i < kSamples; ++i)
            ys[i] = curve(xs[i]);
        benchmark::DoNotOptimize(ys.data());
    }
    state.SetItemsProcessed(state.iterations() * kSamples);
}
BENCHMARK(CurvePerSample)->Arg(Varnel::Curve::Cubic)->Arg(Varnel::Curve::Linear);

// The simplest evaluator: a linear search for the segment of every sample, then a straight line.
void CurveLinearSearch_Floor(benchmark::State& state) {
    const Varnel::Curve curve = makeCurve(Varnel::Curve::Linear);
    const auto& p = curve.points();
    const std::vector<float> xs = increasingSamples();
    std::vector<float> ys(kSamples);
    for (auto _ : state) {
        for (int i = 0; i < kSamples; ++i) {
            const float x = xs[i];
            int k = 0;
            while (k < p.size() - 2 && x >= p[k + 1].x)
                ++k;
            const float t = (x - p[k].x) / (p[k + 1].x - p[k].x);
            ys[i] = p[k].y + (p[k + 1].y - p[k].y) * t;
        }
        benchmark::DoNotOptimize(ys.data());
    }
    state.SetItemsProcessed(state.iterations() * kSamples);
}
BENCHMARK(CurveLinearSearch_Floor);

} // namespace
