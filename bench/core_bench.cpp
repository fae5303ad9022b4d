#include <varnellib/base/function.h>
#include <varnellib/base/stack.h>
#include <varnellib/base/string.h>

#include <benchmark/benchmark.h>
#include <wx/string.h>

#include <functional>
#include <string>
#include <vector>

namespace {

// 1 KiB of mixed text: ASCII words with accented Latin, Greek, CJK and an emoji.
std::string mixedText() {
    const std::string piece =
        "Tone curve \xC3\xA9t\xC3\xA9 \xCE\xBB=550nm \xE6\x9B\xB2\xE7\xB7\x9A "
        "\xF0\x9F\x8E\xA8 ";
    std::string text;
    while (text.size() + piece.size() <= 1024)
        text += piece;
    while (static_cast<unsigned char>(text.back()) >= 0x80) // end on a whole character
        text.pop_back();
    return text;
}

void StringUtf8RoundTrip_Varnel(benchmark::State& state) {
    const std::string text = mixedText();
    for (auto _ : state) {
        const Varnel::String wide = Varnel::String::fromUtf8(text.c_str());
        const auto narrow = wide.toUtf8();
        benchmark::DoNotOptimize(narrow.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * text.size());
}
BENCHMARK(StringUtf8RoundTrip_Varnel);

void StringUtf8RoundTrip_wxString(benchmark::State& state) {
    const std::string text = mixedText();
    for (auto _ : state) {
        const wxString wide = wxString::FromUTF8(text.c_str());
        const wxScopedCharBuffer narrow = wide.utf8_str();
        benchmark::DoNotOptimize(narrow.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * text.size());
}
BENCHMARK(StringUtf8RoundTrip_wxString);

constexpr int kPushes = 1'000'000;

void StackPush_Varnel(benchmark::State& state) {
    for (auto _ : state) {
        Varnel::Stack<int> stack;
        for (int i = 0; i < kPushes; ++i)
            stack.push(i);
        benchmark::DoNotOptimize(stack.data());
    }
}
BENCHMARK(StackPush_Varnel)->Unit(benchmark::kMicrosecond);

void StackPush_stdVector(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<int> vector;
        for (int i = 0; i < kPushes; ++i)
            vector.push_back(i);
        benchmark::DoNotOptimize(vector.data());
    }
}
BENCHMARK(StackPush_stdVector)->Unit(benchmark::kMicrosecond);

void FunctionCall_Varnel(benchmark::State& state) {
    int total = 0;
    Varnel::Function<void(int)> add = [&total](int x) {
        total += x;
    };
    benchmark::DoNotOptimize(add);
    for (auto _ : state)
        add(1);
    benchmark::DoNotOptimize(total);
}
BENCHMARK(FunctionCall_Varnel);

void FunctionCall_stdFunction(benchmark::State& state) {
    int total = 0;
    std::function<void(int)> add = [&total](int x) {
        total += x;
    };
    benchmark::DoNotOptimize(add);
    for (auto _ : state)
        add(1);
    benchmark::DoNotOptimize(total);
}
BENCHMARK(FunctionCall_stdFunction);

} // namespace
