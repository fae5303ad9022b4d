#include "pipeline.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <immintrin.h>
#include <thread>

namespace Viewer {

namespace {

const float* floatsOf(const Image& image) {
    return reinterpret_cast<const float*>(image.data());
}

/// Runs `work(first, end)` over [0, count) in one slice per thread.
template <class Work>
void inParallel(int count, int threads, const Work& work) {
    if (threads <= 0)
        threads = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    threads = std::clamp(threads, 1, std::max(count, 1));
    std::vector<std::thread> helpers;
    for (int t = 1; t < threads; ++t)
        helpers.emplace_back(work, count * t / threads, count * (t + 1) / threads);
    work(0, count / threads);
    for (std::thread& helper : helpers)
        helper.join();
}

/// The range of inputs over which a curve changes: outside it, it holds its end values.
std::pair<float, float> changingRange(const Curve& curve) {
    float lo = 0.f, hi = 1.f;
    for (const CurvePoint& point : curve.points())
        if (std::isfinite(point.x)) {
            lo = std::min(lo, point.x);
            hi = std::max(hi, point.x);
        }
    return {lo, hi};
}

} // namespace

Wx::GridMapping defaultMapping() {
    Wx::GridMapping mapping;
    mapping.gradient.addPoint(Rgb(0.f, 0.f, 0.f, 1.f), 0.f);
    mapping.gradient.addPoint(Rgb(0.1f, 0.1f, 0.8f, 1.f), 0.25f);
    mapping.gradient.addPoint(Rgb(0.85f, 0.1f, 0.1f, 1.f), 0.5f);
    mapping.gradient.addPoint(Rgb(1.f, 0.9f, 0.1f, 1.f), 0.75f);
    mapping.gradient.addPoint(Rgb(1.f, 1.f, 1.f, 1.f), 1.f);
    return mapping;
}

float encodeSrgb(float linear) {
    const float v = linear > 0.f ? std::min(linear, 1.f) : 0.f;
    return v <= 0.0031308f ? 12.92f * v : 1.055f * std::pow(v, 1.f / 2.4f) - 0.055f;
}

float channelValue(const Rgb& pixel, Channel channel) {
    switch (channel) {
    case Channel::Red:
        return pixel.r;
    case Channel::Green:
        return pixel.g;
    case Channel::Blue:
        return pixel.b;
    case Channel::Alpha:
        return pixel.a;
    case Channel::Luminance:
        break;
    }
    return 0.2126f * pixel.r + 0.7152f * pixel.g + 0.0722f * pixel.b;
}

Rgb mapValue(float value, const Wx::GridMapping& mapping) {
    return mapping.gradient.getColorAt(mapping.curve(value * mapping.inputScale));
}

Rgb falseColor(float value, const Wx::GridMapping& mapping) {
    const Rgb mapped = mapValue(value, mapping);
    const auto unit = [](float lane) {
        return lane > 0.f ? std::min(lane, 1.f) : 0.f;
    };
    return Rgb(unit(mapped.r), unit(mapped.g), unit(mapped.b), 1.f);
}

Rgb exposed(const Rgb& pixel, float exposureStops) {
    const float factor = std::exp2(exposureStops);
    return Rgb(pixel.r * factor, pixel.g * factor, pixel.b * factor, pixel.a);
}

Rgb displayPixel(const Rgb& pixel, const DisplaySettings& settings) {
    // NaN lanes count as 0: a broken pixel shows as the curves' black, not as their first point.
    const auto sane = [](float lane) {
        return std::isnan(lane) ? 0.f : lane;
    };
    const Rgb clean(sane(pixel.r), sane(pixel.g), sane(pixel.b), pixel.a);
    if (settings.falseColor) {
        Rgb mapped = falseColor(channelValue(clean, settings.channel), settings.mapping);
        mapped.a = pixel.a;
        return mapped;
    }
    const Rgb e = exposed(clean, settings.exposureStops);
    const Curve& master = settings.curves[CurveChannel::Master];
    const auto lane = [&](float value, CurveChannel channel, float tint) {
        return encodeSrgb(settings.curves[channel](master(value)) * tint);
    };
    return Rgb(lane(e.r, CurveChannel::Red, settings.tint.r),
               lane(e.g, CurveChannel::Green, settings.tint.g),
               lane(e.b, CurveChannel::Blue, settings.tint.b), pixel.a);
}

std::array<uint8, 3> displayBytes(const Rgb& display) {
    return {unitToByte(display.r), unitToByte(display.g), unitToByte(display.b)};
}

void DisplayTables::Table::cover(std::pair<float, float> range, float inputScale) {
    const float factor = inputScale > 0.f && std::isfinite(inputScale) ? inputScale : 1.f;
    start = range.first / factor;
    width = (range.second - range.first) / factor;
    scale = width > 0.f ? (kSize - 1) / width : 0.f;
    bias = 0.5f - start * scale;
}

float DisplayTables::Table::input(int i) const {
    return start + width * static_cast<float>(i) / (kSize - 1);
}

int DisplayTables::Table::index(float value) const {
    const float at = value * scale + bias; // as encodeRow computes it, four lanes at a time
    if (!(at > 0.f))
        return 0;
    return at >= kSize - 1 ? kSize - 1 : static_cast<int>(at);
}

DisplayTables::DisplayTables(const DisplaySettings& settings)
    : m_falseColor(settings.falseColor), m_channel(settings.channel) {
    if (m_falseColor) {
        const Wx::GridMapping& mapping = settings.mapping;
        std::pair<float, float> range = changingRange(mapping.curve);
        for (const ColorGradient::Point& point : mapping.gradient.points())
            if (std::isfinite(point.position)) {
                range.first = std::min(range.first, point.position);
                range.second = std::max(range.second, point.position);
            }
        m_mapped.cover(range, mapping.inputScale);
        m_colors.resize(kSize);
        for (int i = 0; i < kSize; ++i)
            m_colors[static_cast<std::size_t>(i)] =
                displayBytes(falseColor(m_mapped.input(i), mapping));
        return;
    }
    // Each lane's table: its samples through the master curve and the lane's own curve in two
    // batch passes (the same numbers as one at a time), then tint and encoding. The three lanes
    // are built side by side.
    const Curve& master = settings.curves[CurveChannel::Master];
    const float factor = std::exp2(settings.exposureStops);
    const CurveChannel channels[] = {CurveChannel::Red, CurveChannel::Green, CurveChannel::Blue};
    const float tints[] = {settings.tint.r, settings.tint.g, settings.tint.b};
    const auto [masterLo, masterHi] = changingRange(master);
    for (int lane = 0; lane < 3; ++lane) {
        const auto [ownLo, ownHi] = changingRange(settings.curves[channels[lane]]);
        Table& table = m_lanes[static_cast<std::size_t>(lane)];
        table.cover({std::min(masterLo, ownLo), std::max(masterHi, ownHi)}, factor);
        table.bytes.resize(kSize);
        table.zero = table.index(0.f);
    }
    // Six pieces (each lane's two halves), shared among the cores.
    constexpr int kPieces = 6, kPiece = kSize / 2;
    inParallel(kPieces, 0, [&](int first, int end) {
        std::vector<float> xs(kPiece), ys(kPiece);
        for (int piece = first; piece < end; ++piece) {
            const int lane = piece / 2, offset = (piece % 2) * kPiece;
            const Table& table = m_lanes[static_cast<std::size_t>(lane)];
            for (int i = 0; i < kPiece; ++i) // exposed, as displayPixel has it
                xs[std::size_t(i)] = table.input(offset + i) * factor;
            master.evaluate(ArrayView<const float>(xs.data(), kPiece),
                            ArrayView<float>(ys.data(), kPiece));
            settings.curves[channels[lane]].evaluate(ArrayView<const float>(ys.data(), kPiece),
                                                     ArrayView<float>(xs.data(), kPiece));
            uint8* bytes = m_lanes[static_cast<std::size_t>(lane)].bytes.data() + offset;
            for (int i = 0; i < kPiece; ++i)
                bytes[i] = unitToByte(encodeSrgb(xs[std::size_t(i)] * tints[lane]));
        }
    });
}

std::array<uint8, 3> DisplayTables::bytes(const Rgb& pixel) const {
    if (m_falseColor) {
        const float value = channelValue(pixel, m_channel);
        return m_colors[static_cast<std::size_t>(m_mapped.index(std::isnan(value) ? 0.f : value))];
    }
    const auto lane = [&](int index, float value) {
        const Table& table = m_lanes[static_cast<std::size_t>(index)];
        return table
            .bytes[static_cast<std::size_t>(std::isnan(value) ? table.zero : table.index(value))];
    };
    return {lane(0, pixel.r), lane(1, pixel.g), lane(2, pixel.b)};
}

void encodeImage(const Image& image, const DisplayTables& tables, uint8* out, int threads) {
    tables.encode(image, out, threads);
}

void DisplayTables::encode(const Image& image, uint8* out, int threads) const {
    const int width = image.descriptor().width;
    const int height = image.descriptor().height;
    const float* pixels = floatsOf(image);
    inParallel(height, threads, [&](int first, int end) {
        for (int y = first; y < end; ++y) {
            const float* source = pixels + std::size_t(height - 1 - y) * std::size_t(width) * 4;
            uint8* target = out + std::size_t(y) * std::size_t(width) * 3;
            if (m_falseColor) {
                for (int x = 0; x < width; ++x, source += 4, target += 3) {
                    const auto bytes = this->bytes(Rgb(source[0], source[1], source[2], source[3]));
                    std::memcpy(target, bytes.data(), 3);
                }
                continue;
            }
            encodeRow(source, target, width);
        }
    });
}

void DisplayTables::encodeRow(const float* source, uint8* target, int width) const {
    // Four lanes at a time: offset, scale, round, clamp, NaN to the index of 0; then three
    // lookups. Alpha rides along in the fourth lane and is not looked up.
    const Table& r = m_lanes[0];
    const Table& g = m_lanes[1];
    const Table& b = m_lanes[2];
    const __m128 scale = _mm_setr_ps(r.scale, g.scale, b.scale, 0.f);
    const __m128 bias = _mm_setr_ps(r.bias, g.bias, b.bias, 0.f);
    const __m128 last = _mm_set1_ps(float(kSize - 1));
    const __m128 zero = _mm_setzero_ps();
    const __m128 nanIndex = _mm_setr_ps(float(r.zero), float(g.zero), float(b.zero), 0.f);
    // Where the tables start at 0 (no curve reaches below it), clamping at 0 already sends NaN
    // to the index of 0: the max gives its second operand for a NaN.
    const bool nanAtStart = r.zero == 0 && g.zero == 0 && b.zero == 0;
    const uint8* tr = r.bytes.data();
    const uint8* tg = g.bytes.data();
    const uint8* tb = b.bytes.data();
    const auto indices = [&](const float* pixel, int* index) {
        const __m128 value = _mm_loadu_ps(pixel);
        __m128 at = _mm_min_ps(_mm_max_ps(_mm_add_ps(_mm_mul_ps(value, scale), bias), zero), last);
        if (!nanAtStart) {
            const __m128 broken = _mm_cmpunord_ps(value, value);
            at = _mm_or_ps(_mm_and_ps(broken, nanIndex), _mm_andnot_ps(broken, at));
        }
        _mm_store_si128(reinterpret_cast<__m128i*>(index), _mm_cvttps_epi32(at));
    };
    int x = 0;
    for (; x + 1 < width; x += 2, source += 8, target += 6) {
        alignas(16) int first[4], second[4];
        indices(source, first);
        indices(source + 4, second);
        target[0] = tr[first[0]];
        target[1] = tg[first[1]];
        target[2] = tb[first[2]];
        target[3] = tr[second[0]];
        target[4] = tg[second[1]];
        target[5] = tb[second[2]];
    }
    if (x < width) {
        alignas(16) int last4[4];
        indices(source, last4);
        target[0] = tr[last4[0]];
        target[1] = tg[last4[1]];
        target[2] = tb[last4[2]];
    }
}

Histogram imageHistogram(const Image& image, float exposureStops, CurveChannel channel,
                         std::pair<float, float> range, int bins) {
    Stack<uint64> total;
    total.resize(std::max(bins, 0));
    const float width = range.second - range.first;
    const std::size_t count =
        std::size_t(image.descriptor().width) * std::size_t(image.descriptor().height);
    if (bins <= 0 || !(width > 0.f) || count == 0)
        return Histogram(total);
    const float factor = std::exp2(exposureStops) * static_cast<float>(bins) / width;
    const float offset = range.first * static_cast<float>(bins) / width;
    const float* pixels = floatsOf(image);
    const unsigned threads = std::max(1u, std::thread::hardware_concurrency());
    std::vector<std::vector<uint64>> counts(threads, std::vector<uint64>(std::size_t(bins)));
    std::vector<std::thread> helpers;
    const auto work = [&](unsigned t) {
        std::vector<uint64>& mine = counts[t];
        const std::size_t end = count * (t + 1) / threads;
        for (std::size_t i = count * t / threads; i < end; ++i) {
            const float* p = pixels + 4 * i;
            const float value = channel == CurveChannel::Master ? (p[0] + p[1] + p[2]) * (1.f / 3.f)
                                                                : p[static_cast<int>(channel) - 1];
            const float at = value * factor - offset;
            if (at >= 0.f && at < static_cast<float>(bins))
                ++mine[static_cast<std::size_t>(at)];
        }
    };
    for (unsigned t = 1; t < threads; ++t)
        helpers.emplace_back(work, t);
    work(0);
    for (std::thread& helper : helpers)
        helper.join();
    for (const std::vector<uint64>& mine : counts)
        for (int b = 0; b < bins; ++b)
            total[b] += mine[std::size_t(b)];
    return Histogram(total);
}

float largestValue(const Image& image, Channel channel) {
    const std::size_t count =
        std::size_t(image.descriptor().width) * std::size_t(image.descriptor().height);
    const float* pixels = floatsOf(image);
    float largest = 0.f;
    for (std::size_t i = 0; i < count; ++i) {
        const float* p = pixels + 4 * i;
        const float value = channelValue(Rgb(p[0], p[1], p[2], p[3]), channel);
        if (std::isfinite(value))
            largest = std::max(largest, value);
    }
    return largest;
}

Rgb pixelFromTop(const Image& image, int x, int y) {
    return image.getRgba(x, image.descriptor().height - 1 - y);
}

} // namespace Viewer
