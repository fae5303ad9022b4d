// The fast 8-bit encoders against their formulas, over every float near every rounding boundary
// and a sweep of the whole unit interval.
#include <varnellib/color/byteencoding.h>

#include "prelude.h"

#include <bit>

namespace {

const std::vector<float> kSpecial = {
    kNaN,  -kNaN, kInf, -kInf,      0.f, -0.f,  -1e-30f,
    -0.5f, -2.f,  1.f,  1.0000001f, 7.f, 1e38f, std::numeric_limits<float>::denorm_min(),
    1e-30f};

// Floats within `radius` bit patterns of `centre`, either side.
std::vector<float> around(float centre, int radius) {
    std::vector<float> values;
    const uint32 bits = std::bit_cast<uint32>(centre);
    for (int offset = -radius; offset <= radius; ++offset)
        if (static_cast<int64>(bits) + offset > 0)
            values.push_back(std::bit_cast<float>(static_cast<uint32>(bits + offset)));
    return values;
}

} // namespace

TEST(ByteEncoding, VectorLanesGiveTheScalarBytes) {
    std::vector<float> values = kSpecial;
    for (int byte = 0; byte < 256; ++byte) // every rounding boundary, (k + 0.5) / 255
        for (float value : around((static_cast<float>(byte) + 0.5f) / 255.f, 64))
            values.push_back(value);
    for (std::size_t length : {values.size(), std::size_t{15}, std::size_t{17}, std::size_t{0}}) {
        std::vector<uint8> bytes(length);
        unitsToBytes(values.data(), bytes.data(), length);
        for (std::size_t i = 0; i < length; ++i)
            ASSERT_EQ(bytes[i], unitToByte(values[i])) << values[i];
    }
}

TEST(ByteEncoding, GammaTablesGiveTheFormulasBytesForEveryFloat) {
    // Display gammas, their inverses, an integer exponent (whose power keeps negative lanes'
    // signs), and gammas the table cannot serve: 0, negative, NaN, infinite and huge.
    const float gammas[] = {2.2f, 1.8f, 2.4f,  1.f / 2.2f, 0.5f, 1.0001f, 1e30f,
                            1.f,  0.f,  -2.2f, kNaN,       kInf, -kInf};
    for (const float gamma : gammas) {
        const GammaByteEncoder encode(gamma);
        const float exponent = 1.f / gamma;
        std::vector<float> values = kSpecial;
        for (int byte = 1; byte <= 255; ++byte)
            for (float value : around(encode.boundary(byte), 256))
                values.push_back(value);
        for (uint32 bits = 1; bits < 0x3F800000u; bits += 1021) // the whole of (0, 1)
            values.push_back(std::bit_cast<float>(bits));
        std::vector<uint8> batch(values.size());
        encode.encode(values.data(), batch.data(), values.size());
        for (std::size_t i = 0; i < values.size(); ++i) {
            const uint8 expected = GammaByteEncoder::formula(values[i], exponent);
            ASSERT_EQ(encode(values[i]), expected) << "gamma " << gamma << " value " << values[i];
            ASSERT_EQ(batch[i], expected) << "gamma " << gamma << " value " << values[i];
        }
    }
}
