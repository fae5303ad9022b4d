#pragma once

#include <varnellib/base/types.h>
#include <varnellib/color/color.h>
#include <varnellib/export.h>

#include <array>
#include <bit>
#include <cstddef>
#include <vector>

namespace Varnel {

/// unitToByte over a run of `count` floats, out[i] = unitToByte(lane i), four lanes at a time
/// where the processor has vector instructions; the bytes are the same as the scalar formula's.
/// The floats may sit anywhere in memory, unaligned (a core image's rows of bytes, say).
VARNEL_LIB_EXPORT void unitsToBytes(const void* in, uint8* out, std::size_t count);

/// The 8-bit encoding of linear lanes for a display of gamma g: unitToByte(pow(v, 1 / g)), or
/// unitToByte(v) where 1 / g is 1. That formula is the definition; the encoder gives its byte for
/// every float without calling the power function per lane. For a finite exponent above 0 the
/// power law is monotone on (0, 1), so each byte k is reached from one boundary on: the encoder
/// finds the 255 boundaries once (a binary search over the float bit patterns, calling the
/// formula itself) and then answers by the bit pattern, through a table of 2^12-float buckets,
/// comparing with the boundaries only in the few buckets that one cuts. Lanes the table cannot
/// speak for (negative, NaN, and every lane when the exponent is not finite or not above 0: gamma
/// 0, negative, NaN) go through the formula, so the rule for them stays whatever the formula says.
class VARNEL_LIB_EXPORT GammaByteEncoder {
public:
    explicit GammaByteEncoder(float gamma);

    uint8 operator()(float value) const {
        if (m_path == Path::Identity)
            return unitToByte(value);
        const uint32 bits = std::bit_cast<uint32>(value);
        if (m_path == Path::Table && bits <= kInfinityBits)
            return lookUp(bits, m_buckets.data(), m_boundaryBits.data());
        return formula(value, m_exponent);
    }

    /// The same for a run of `count` floats stored anywhere, out[i] = (*this)(lane i).
    void encode(const void* in, uint8* out, std::size_t count) const;

    float gamma() const { return m_gamma; }
    /// True when the encoding is unitToByte itself (gamma 1), which unitsToBytes also gives.
    bool isIdentity() const { return m_path == Path::Identity; }
    /// The smallest float in (0, 1) that encodes to at least `byte` (1 to 255), or 1 when only
    /// 1 and above do; 0 when the encoder has no table.
    float boundary(int byte) const;

    /// The definition: unitToByte(pow(value, exponent)), or unitToByte(value) at exponent 1.
    static uint8 formula(float value, float exponent);

private:
    enum class Path : uint8 { Identity, Table, Formula };
    static constexpr int kBucketShift = 12;
    /// Marks a bucket with a boundary inside it.
    static constexpr uint16 kCut = 0x100;
    static constexpr uint32 kOneBits = 0x3F800000u;
    /// Bit patterns above this are NaN or negative: the formula's to answer.
    static constexpr uint32 kInfinityBits = 0x7F800000u;

    // For the bit pattern of a float from +0 to +infinity: everything from 1 up shares the last
    // bucket, whose byte is 255. A bucket that a boundary cuts is marked, and only there is the
    // pattern compared with the boundaries that follow.
    static uint8 lookUp(uint32 bits, const uint16* buckets, const uint32* boundaries) {
        bits = bits < kOneBits ? bits : kOneBits;
        const uint32 entry = buckets[bits >> kBucketShift];
        return (entry & kCut) ? afterCut(bits, entry & 0xFFu, boundaries)
                              : static_cast<uint8>(entry);
    }
    static uint8 afterCut(uint32 bits, uint32 byte, const uint32* boundaries) {
        while (bits >= boundaries[byte + 1])
            ++byte;
        return static_cast<uint8>(byte);
    }

    float m_gamma;
    float m_exponent;
    Path m_path;
    /// [k] for k in 1..255: the bit pattern of boundary(k); [0] is 0 and [256] past every float.
    std::array<uint32, 257> m_boundaryBits{};
    /// For each bucket of 2^12 consecutive bit patterns up to 1: the byte of its first float,
    /// with kCut when a boundary lies inside it.
    std::vector<uint16> m_buckets;
};

} // namespace Varnel
