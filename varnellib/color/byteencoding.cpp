#include <varnellib/color/byteencoding.h>

#include <cmath>
#include <cstring>
#include <limits>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace Varnel {

namespace {

float laneAt(const void* lanes, std::size_t index) {
    float lane;
    std::memcpy(&lane, static_cast<const char*>(lanes) + index * sizeof lane, sizeof lane);
    return lane;
}

} // namespace

void unitsToBytes(const void* in, uint8* out, std::size_t count) {
    const auto* bytes = static_cast<const char*>(in);
    std::size_t i = 0;
#if defined(__SSE2__)
    // The scalar rule lane by lane: minps hands back its second operand when either is NaN and
    // maxps likewise, so min(1, NaN) stays NaN and max(NaN, 0) gives 0, as unitToByte does. The
    // multiply, the bias and the truncation are the same single-precision operations.
    const __m128 zero = _mm_setzero_ps(), one = _mm_set1_ps(1.f);
    const __m128 scale = _mm_set1_ps(255.f), bias = _mm_set1_ps(kByteRoundingBias);
    for (; i + 16 <= count; i += 16) {
        __m128i lanes[4];
        for (int j = 0; j < 4; ++j) {
            __m128 v = _mm_max_ps(_mm_min_ps(one, _mm_loadu_ps(reinterpret_cast<const float*>(
                                                      bytes + 4 * (i + 4 * j)))),
                                  zero);
            v = _mm_sub_ps(_mm_add_ps(_mm_mul_ps(v, scale), bias), bias);
            lanes[j] = _mm_cvttps_epi32(v);
        }
        const __m128i words = _mm_packus_epi16(_mm_packs_epi32(lanes[0], lanes[1]),
                                               _mm_packs_epi32(lanes[2], lanes[3]));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), words);
    }
#endif
    for (; i < count; ++i)
        out[i] = unitToByte(laneAt(in, i));
}

uint8 GammaByteEncoder::formula(float value, float exponent) {
    return unitToByte(exponent != 1.f ? std::pow(value, exponent) : value);
}

GammaByteEncoder::GammaByteEncoder(float gamma) : m_gamma(gamma), m_exponent(1.f / gamma) {
    if (m_exponent == 1.f) {
        m_path = Path::Identity;
        return;
    }
    if (!(m_exponent > 0.f) || !std::isfinite(m_exponent)) {
        m_path = Path::Formula;
        return;
    }
    m_path = Path::Table;
    // Boundary k: the first bit pattern in (0, 1) whose formula reaches k.
    for (int byte = 1; byte <= 255; ++byte) {
        uint32 low = 1, high = kOneBits; // the answer lies in [low, high]; high means "none"
        while (low < high) {
            const uint32 middle = low + (high - low) / 2;
            if (formula(std::bit_cast<float>(middle), m_exponent) >= byte)
                high = middle;
            else
                low = middle + 1;
        }
        m_boundaryBits[static_cast<std::size_t>(byte)] = low;
    }
    m_boundaryBits[256] = std::numeric_limits<uint32>::max();
    m_buckets.resize((kOneBits >> kBucketShift) + 1);
    uint32 byte = 0;
    for (std::size_t bucket = 0; bucket < m_buckets.size(); ++bucket) {
        const uint32 first = static_cast<uint32>(bucket) << kBucketShift;
        const uint32 last = first + ((1u << kBucketShift) - 1);
        while (first >= m_boundaryBits[byte + 1])
            ++byte;
        const bool cut = first < kOneBits && m_boundaryBits[byte + 1] <= last;
        m_buckets[bucket] = static_cast<uint16>(byte | (cut ? kCut : 0u));
    }
}

void GammaByteEncoder::encode(const void* in, uint8* out, std::size_t count) const {
    if (m_path == Path::Identity) {
        unitsToBytes(in, out, count);
        return;
    }
    if (m_path == Path::Formula) {
        for (std::size_t i = 0; i < count; ++i)
            out[i] = formula(laneAt(in, i), m_exponent);
        return;
    }
    // The tables in locals: stores through `out` may alias anything, and would otherwise make
    // the compiler fetch them again for every lane.
    const uint16* const buckets = m_buckets.data();
    const uint32* const boundaries = m_boundaryBits.data();
    std::size_t i = 0;
#if defined(__SSE2__)
    // Four lanes at a time: their buckets found with vector instructions, then four table loads;
    // a group with a NaN, a negative lane or a cut bucket goes lane by lane below.
    const __m128i one = _mm_set1_epi32(static_cast<int>(kOneBits));
    const __m128i infinity = _mm_set1_epi32(static_cast<int>(kInfinityBits));
    for (; i + 4 <= count; i += 4) {
        const __m128i loaded =
            _mm_loadu_si128(reinterpret_cast<const __m128i*>(static_cast<const char*>(in) + 4 * i));
        // As signed integers negative floats are below 0 and NaNs above infinity; their lanes
        // look in bucket 0 (harmlessly) and the group is answered lane by lane.
        const __m128i special = _mm_or_si128(_mm_cmpgt_epi32(loaded, infinity),
                                             _mm_cmplt_epi32(loaded, _mm_setzero_si128()));
        const __m128i bits = _mm_andnot_si128(special, loaded);
        const __m128i below = _mm_cmplt_epi32(bits, one);
        const __m128i clamped =
            _mm_or_si128(_mm_and_si128(below, bits), _mm_andnot_si128(below, one));
        alignas(16) uint32 index[4];
        _mm_store_si128(reinterpret_cast<__m128i*>(index), _mm_srli_epi32(clamped, kBucketShift));
        const uint32 e0 = buckets[index[0]], e1 = buckets[index[1]], e2 = buckets[index[2]],
                     e3 = buckets[index[3]];
        if (((e0 | e1 | e2 | e3) & kCut) != 0 || _mm_movemask_epi8(special) != 0) {
            for (std::size_t j = i; j < i + 4; ++j)
                out[j] = (*this)(laneAt(in, j));
            continue;
        }
        out[i] = static_cast<uint8>(e0);
        out[i + 1] = static_cast<uint8>(e1);
        out[i + 2] = static_cast<uint8>(e2);
        out[i + 3] = static_cast<uint8>(e3);
    }
#endif
    for (; i < count; ++i) {
        const float lane = laneAt(in, i);
        const uint32 bits = std::bit_cast<uint32>(lane);
        out[i] =
            bits <= kInfinityBits ? lookUp(bits, buckets, boundaries) : formula(lane, m_exponent);
    }
}

float GammaByteEncoder::boundary(int byte) const {
    if (m_path != Path::Table || byte < 1 || byte > 255)
        return 0.f;
    return std::bit_cast<float>(m_boundaryBits[static_cast<std::size_t>(byte)]);
}

} // namespace Varnel
