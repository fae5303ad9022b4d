#include "guitest.h"

#include <varnellib/color/byteencoding.h>
#include <varnellib/image/image.h>
#include <varnellibwx/bitmapconversion.h>

#include <wx/mstream.h>
#include <wx/toplevel.h>

#include <random>

using Test::pixelAt;

using BitmapConversion = Test::GuiTest;

TEST_F(BitmapConversion, MemoryImagesDecodeAndGarbageGivesAnInvalidImageQuietly) {
    wxImage original(3, 2);
    original.SetRGB(2, 1, 10, 20, 30);
    wxMemoryOutputStream encoded;
    ASSERT_TRUE(original.SaveFile(encoded, wxBITMAP_TYPE_PNG));
    std::vector<char> bytes(encoded.GetSize());
    encoded.CopyTo(bytes.data(), bytes.size());

    const wxImage decoded =
        Wx::convertMemoryToImage(bytes.data(), static_cast<int>(bytes.size()), wxBITMAP_TYPE_PNG);
    ASSERT_TRUE(decoded.IsOk());
    EXPECT_EQ(pixelAt(decoded, 2, 1), wxColour(10, 20, 30));
    EXPECT_TRUE(
        Wx::convertMemoryToBitmap(bytes.data(), static_cast<int>(bytes.size()), wxBITMAP_TYPE_PNG)
            .IsOk());

    std::mt19937 random(3);
    std::vector<char> garbage(512);
    for (char& c : garbage)
        c = static_cast<char>(random());
    const std::size_t windowsBefore = wxTopLevelWindows.size();
    EXPECT_FALSE(Wx::convertMemoryToImage(garbage.data(), 512, wxBITMAP_TYPE_ANY).IsOk());
    EXPECT_FALSE(Wx::convertMemoryToBitmap(garbage.data(), 512, wxBITMAP_TYPE_JPEG).IsOk());
    EXPECT_FALSE(Wx::convertMemoryToImage(nullptr, 0, wxBITMAP_TYPE_PNG).IsOk());
    EXPECT_EQ(wxTopLevelWindows.size(), windowsBefore) << "a decoding error opened a window";
}

TEST_F(BitmapConversion, FloatPixelsBecomeClampedBytesAsTheScalarRuleHasThem) {
    // Every lane as the scalar rule has it (halves round to even), special values and row ends
    // included; without alpha, a 24-bit bitmap.
    const float lanes[] = {kNaN, -1.f, 0.f, 0.5f / 255.f, 1.5f / 255.f, 0.9980392f, 1.f, 3.f, kInf};
    BitmapImpl<Rgb> odd(9, 3);
    for (int i = 0; i < 27; ++i)
        odd(i % 9, i / 9) = Rgb(lanes[i % 9], lanes[(i + 2) % 9], lanes[(i + 4) % 9], lanes[i / 3]);
    for (const bool alpha : {false, true}) {
        const wxBitmap bitmap = Wx::toWxBitmap(odd, alpha);
        EXPECT_EQ(bitmap.GetDepth(), alpha ? 32 : 24);
        const wxImage seen = bitmap.ConvertToImage();
        ASSERT_EQ(seen.HasAlpha(), alpha);
        for (int i = 0; i < 27; ++i) {
            const Rgb& p = odd(i % 9, i / 9);
            ASSERT_EQ(pixelAt(seen, i % 9, i / 9),
                      wxColour(unitToByte(p.r), unitToByte(p.g), unitToByte(p.b)))
                << i;
            if (alpha) {
                ASSERT_EQ(seen.GetAlpha(i % 9, i / 9), unitToByte(p.a)) << i;
            }
        }
    }
    EXPECT_FALSE(Wx::toWxBitmap(BitmapImpl<Rgb>(0, 4), false).IsOk());
}

TEST_F(BitmapConversion, BitmapsReadBackAsUnlinearisedFloats) {
    wxImage source(2, 2);
    source.SetRGB(1, 0, 255, 51, 0);
    wxBitmap opaque(source, 24);
    const auto rgb = Wx::toRgbBitmap(opaque);
    ASSERT_TRUE(rgb.hasValue()) << rgb.error().toUtf8().data();
    EXPECT_EQ(rgb.value()(1, 0), Rgb(1.f, 0.2f, 0.f, 1.f)); // row 0 stays on top

    source.SetAlpha();
    source.SetAlpha(1, 0, 102);
    wxBitmap translucent(source, 32);
    const auto rgba = Wx::toRgbBitmap(translucent);
    ASSERT_TRUE(rgba.hasValue());
    EXPECT_EQ(rgba.value()(1, 0).a, 0.4f);

    for (int depth : {1, 8}) {
        wxBitmap other(4, 4, depth);
        if (other.IsOk() && (other.GetDepth() == 24 || other.GetDepth() == 32))
            continue; // the toolkit made a true-colour bitmap of it after all
        const auto failure = Wx::toRgbBitmap(other);
        ASSERT_FALSE(failure.hasValue()) << depth;
        EXPECT_EQ(failure.error(), String(L"Bitmap has unsupported bit depth."));
    }
    wxBitmap none;
    EXPECT_FALSE(Wx::toRgbBitmap(none).hasValue());
}

// Core images: every lane, alpha included, takes the exponent 1 / gamma; row 0 is the bottom; only
// the formats with alpha give an image with alpha.
TEST_F(BitmapConversion, CoreImagesGiveThePerPixelFormulasBytesFlippedInEveryFormat) {
    const float lanes[] = {0.f, 0.5f, 0.2140f, 1.f, 1.5f, -0.25f, kNaN, kInf, -kInf, 1e-20f, 0.73f};
    for (const float gamma : {2.2f, 1.f, 0.5f, 0.f, -2.2f, kNaN, 1e30f}) {
        for (int format = 0; format <= 4; ++format) {
            Image image({4, 3, gamma, static_cast<ImageFormat>(format)});
            for (int i = 0; i < 12; ++i)
                image.setRgba(i % 4, i / 4,
                              Rgb(lanes[i % 11], lanes[(i + 3) % 11], lanes[(i + 7) % 11],
                                  lanes[(i + 5) % 11]));
            const wxImage shown = BitmapConverter::vellumImageToWxImage(image);
            ASSERT_EQ(shown.HasAlpha(), getImageFormatDescriptor(ImageFormat(format)).hasAlpha);
            for (int i = 0; i < 12; ++i) {
                const Rgb pixel = image.getRgba(i % 4, i / 4);
                const auto byte = [&](float lane) {
                    return GammaByteEncoder::formula(lane, 1.f / gamma);
                };
                const int x = i % 4, y = 2 - i / 4;
                ASSERT_EQ(pixelAt(shown, x, y),
                          wxColour(byte(pixel.r), byte(pixel.g), byte(pixel.b)))
                    << "gamma " << gamma << " format " << format << " pixel " << i;
                if (shown.HasAlpha()) {
                    ASSERT_EQ(shown.GetAlpha(x, y), byte(pixel.a));
                }
            }
        }
    }
    EXPECT_TRUE(
        BitmapConverter::vellumImageToWxBitmap(Image({1, 2, 1.f, ImageFormat::Rgb8})).IsOk());

    // Images without pixels, and a long single row in every path: the last pixel of each row is
    // written on its own.
    const wxImage empty =
        BitmapConverter::vellumImageToWxImage(Image({3, 0, 1.f, ImageFormat::Rgb8}));
    EXPECT_EQ(empty.IsOk() ? empty.GetHeight() : 0, 0);
    const wxImage none =
        BitmapConverter::vellumImageToWxImage(Image({0, 0, 2.2f, ImageFormat::RgbaFloat32}));
    EXPECT_EQ(none.IsOk() ? none.GetWidth() : 0, 0);
    Image row({30000, 1, 2.2f, ImageFormat::RgbaFloat32});
    row.setRgba(29999, 0, Rgb(1, 0.5f, 0, 1));
    const wxImage wide = BitmapConverter::vellumImageToWxImage(row);
    EXPECT_EQ(pixelAt(wide, 29999, 0), wxColour(255, GammaByteEncoder::formula(0.5f, 1 / 2.2f), 0));
    BitmapImpl<Rgb> floats(30000, 1, Rgb(0.5f, 0.5f, 0.5f, 1));
    EXPECT_EQ(pixelAt(Wx::toWxBitmap(floats, false).ConvertToImage(), 29999, 0),
              wxColour(128, 128, 128));
}
