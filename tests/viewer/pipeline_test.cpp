// The viewer's arithmetic and files without a display: the display pipeline's tables against
// its exact formula, the encoding of whole images, histograms, and images written and read back
// through the file libraries, bad files included.
#include "imagefiles.h"
#include "pipeline.h"
#include "testscene.h"

#include "prelude.h"
#include <tiffio.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>

using namespace Viewer;

namespace {

Image imageOf(int width, int height, const std::function<Rgb(int, int)>& pixel) {
    Image image({width, height, 1.f, ImageFormat::RgbaFloat32});
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setRgba(x, height - 1 - y, pixel(x, y)); // y from the top
    return image;
}

DisplaySettings edited() {
    DisplaySettings settings;
    settings.exposureStops = -1.5f;
    settings.curves[CurveChannel::Master].points() =
        Stack<CurvePoint>{{0.f, 0.05f}, {0.4f, 0.6f}, {2.5f, 1.f}};
    settings.curves[CurveChannel::Blue].points() = Stack<CurvePoint>{{0.f, 0.f}, {1.f, 0.7f}};
    settings.curves[CurveChannel::Blue].setInterpolation(Curve::Linear);
    settings.tint = Rgb(1.f, 0.9f, 0.8f, 1.f);
    return settings;
}

std::string temporary(const std::string& name) {
    return (std::filesystem::temp_directory_path() / ("varnel-viewer-" + name)).string();
}

} // namespace

TEST(ViewerPipeline, TablesGiveTheExactPipelinesBytesWithinOne) {
    DisplaySettings falseColor = edited();
    falseColor.falseColor = true;
    falseColor.mapping.inputScale = 0.3f;
    falseColor.mapping.curve.points() = Stack<CurvePoint>{{0.f, 0.f}, {0.5f, 0.8f}, {1.f, 1.f}};
    std::mt19937 random(5);
    std::uniform_real_distribution<float> lane(-0.5f, 12.f);
    for (const DisplaySettings& settings : {DisplaySettings(), edited(), falseColor}) {
        const DisplayTables tables(settings);
        int exact = 0;
        for (int i = 0; i < 20000; ++i) {
            const Rgb pixel(lane(random), lane(random), lane(random), 1.f);
            const auto expected = displayBytes(displayPixel(pixel, settings));
            const auto seen = tables.bytes(pixel);
            for (int c = 0; c < 3; ++c)
                ASSERT_NEAR(seen[c], expected[c], 1) << i << " lane " << c;
            exact += seen == expected;
        }
        EXPECT_GT(exact, 19000) << "a byte off is rare";
        // Broken pixels have a defined look: NaN as 0, infinities as the ends.
        EXPECT_EQ(tables.bytes(Rgb(kNaN, kNaN, kNaN, 1.f)), tables.bytes(Rgb(0, 0, 0, 1.f)));
        EXPECT_EQ(tables.bytes(Rgb(kInf, kInf, kInf, 1.f)),
                  tables.bytes(Rgb(1e30f, 1e30f, 1e30f, 1.f)));
    }
    // The pipeline's own numbers: one stop up of 0.25 is 0.5, encoded.
    DisplaySettings brighter;
    brighter.exposureStops = 1.f;
    EXPECT_FLOAT_EQ(displayPixel(Rgb(0.25f, 0.f, 2.f, 0.5f), brighter).r, encodeSrgb(0.5f));
    EXPECT_FLOAT_EQ(encodeSrgb(0.5f), 0.7353569f);
    EXPECT_FLOAT_EQ(displayPixel(Rgb(0.25f, 0.f, 2.f, 0.5f), brighter).b, 1.f);
    EXPECT_EQ(displayPixel(Rgb(0.25f, 0.f, 2.f, 0.5f), brighter).a, 0.5f);
}

TEST(ViewerPipeline, WholeImagesAreEncodedTopRowFirstOnAnyNumberOfThreads) {
    const Image image = imageOf(37, 23, [](int x, int y) {
        return x == 3 ? Rgb(kNaN, -1.f, kInf, 1.f) : Rgb(x / 10.f, y / 7.f, (x + y) / 30.f, 1.f);
    });
    DisplaySettings belowZero = edited(); // a curve that starts below 0 moves the index of 0
    belowZero.curves[CurveChannel::Red].points() = Stack<CurvePoint>{{-0.5f, 0.2f}, {1.f, 1.f}};
    for (const DisplaySettings& settings : {edited(), belowZero}) {
        const DisplayTables tables(settings);
        std::vector<Varnel::uint8> one(37 * 23 * 3), three(37 * 23 * 3);
        encodeImage(image, tables, one.data(), 1);
        encodeImage(image, tables, three.data(), 3);
        EXPECT_EQ(one, three);
        for (int y = 0; y < 23; ++y)
            for (int x = 0; x < 37; ++x)
                for (int c = 0; c < 3; ++c)
                    ASSERT_EQ(tables.bytes(pixelFromTop(image, x, y))[std::size_t(c)],
                              one[std::size_t(3 * (y * 37 + x) + c)])
                        << x << "," << y;
    }
}

TEST(ViewerPipeline, HistogramsCountTheCurvesInput) {
    // Values 0.1, 0.3, 0.5 and 0.7 in red, one stop down in the curves' eyes.
    const Image image =
        imageOf(4, 1, [](int x, int) { return Rgb(0.2f + 0.4f * x, 0.f, 0.f, 1.f); });
    const Histogram red = imageHistogram(image, -1.f, CurveChannel::Red, {0.f, 1.f}, 5);
    EXPECT_EQ(red.bins(), (Stack<Varnel::uint64>{1, 1, 1, 1, 0}));
    const Histogram master = imageHistogram(image, 0.f, CurveChannel::Master, {0.f, 0.5f}, 2);
    EXPECT_EQ(master.bins(), (Stack<Varnel::uint64>{2, 2})); // means 0.067, 0.2, 0.33, 0.47
    EXPECT_FLOAT_EQ(largestValue(image, Channel::Red), 1.4f);
}

TEST(ViewerFiles, WrittenImagesReadBackAsTheyWereMeant) {
    const Image image = imageOf(9, 5, [](int x, int y) {
        return Rgb(x * 0.37f, y * 0.11f, 3.f - x * 0.2f, 0.25f + x * 0.05f);
    });
    const DisplaySettings settings = edited();
    const auto display = [&](const Rgb& p) {
        return displayPixel(p, settings);
    };
    struct Row {
        const char* name;
        FileType type;
        Wx::ImageColorFormat format;
        float tolerance; // on what each format keeps
    };
    const Row rows[] = {
        {"float.exr", FileType::Exr, Wx::ImageColorFormat::LinearFloat, 0.f},
        {"half.exr", FileType::Exr, Wx::ImageColorFormat::LinearHalf, 2e-3f},
        {"sixteen.png", FileType::Png, Wx::ImageColorFormat::Srgb16, 2e-4f},

        {"sixteen.tif", FileType::Tiff, Wx::ImageColorFormat::Srgb16, 2e-4f},
        {"eight.png", FileType::Png, Wx::ImageColorFormat::Srgb8, 4e-3f},
    };
    for (const Row& row : rows) {
        const std::string path = temporary(row.name);
        const Optional<std::string> failure =
            writeImage(path, row.type, {row.format, true}, image, display);
        ASSERT_FALSE(failure) << row.name << ": " << *failure;
        const Expected<Image, std::string> read = readImage(path);
        ASSERT_TRUE(read) << row.name << ": " << read.error();
        const bool linear = row.type == FileType::Exr;
        for (int y = 0; y < 5; ++y)
            for (int x = 0; x < 9; ++x) {
                const Rgb original = pixelFromTop(image, x, y);
                const Rgb expected = linear ? original : display(original);
                Rgb seen = pixelFromTop(read.value(), x, y);
                if (!linear) // the reader decodes sRGB into linear values
                    seen = Rgb(encodeSrgb(seen.r), encodeSrgb(seen.g), encodeSrgb(seen.b), seen.a);
                const float scale = linear ? std::max(1.f, std::abs(expected.b)) : 1.f;
                EXPECT_NEAR(seen.r, expected.r, row.tolerance * scale) << row.name << x << y;
                EXPECT_NEAR(seen.b, expected.b, row.tolerance * scale) << row.name << x << y;
                EXPECT_NEAR(seen.a, expected.a, linear ? row.tolerance : 3e-3f) << row.name;
            }
        std::remove(path.c_str());
    }
    EXPECT_TRUE(writeImage(temporary("x.exr"), FileType::Exr, {Wx::ImageColorFormat::Srgb8, false},
                           image, display))
        << "a format the type cannot hold";
    EXPECT_TRUE(writeImage("/proc/no-such-dir/x.png", FileType::Png,
                           {Wx::ImageColorFormat::Srgb8, false}, image, display));
}

TEST(ViewerFiles, BadFilesGiveASentenceAndOddOnesADefinedPicture) {
    const auto save = [](const std::string& name, const std::string& bytes) {
        std::ofstream(temporary(name), std::ios::binary) << bytes;
        return temporary(name);
    };
    const auto display = [](const Rgb& p) {
        return p;
    };
    // A whole EXR cut short, a text file, an empty file, a folder, a missing file.
    const std::string whole = temporary("whole.exr");
    const Image big = imageOf(64, 64, [](int x, int y) { return Rgb(x, y, 1.f, 1.f); });
    ASSERT_FALSE(
        writeImage(whole, FileType::Exr, {Wx::ImageColorFormat::LinearFloat, false}, big, display));
    std::ifstream in(whole, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), {});
    for (const std::string& path :
         {save("cut.exr", bytes.substr(0, bytes.size() / 2)), save("text.png", "hello"),
          save("empty.exr", ""), std::filesystem::temp_directory_path().string(),
          temporary("missing.exr")}) {
        const Expected<Image, std::string> read = readImage(path);
        ASSERT_FALSE(read) << path;
        EXPECT_FALSE(read.error().empty());
    }
    // Odd but valid images: one pixel, a long line, NaN and infinity, a non-ASCII name, one grey
    // channel of 16 bits.
    const Image line = imageOf(30000, 1, [](int x, int) { return Rgb(x * 1e-3f, kNaN, kInf, 1); });
    for (const auto& [name, image] :
         {std::pair{std::string("one.exr"), imageOf(1, 1, [](int, int) { return Rgb(); })},
          {std::string("line \xC3\xA9t\xC3\xA9.exr"), line}}) {
        ASSERT_FALSE(writeImage(temporary(name), FileType::Exr,
                                {Wx::ImageColorFormat::LinearFloat, true}, image, display));
        const Expected<Image, std::string> read = readImage(temporary(name));
        ASSERT_TRUE(read) << name;
        EXPECT_EQ(read.value().descriptor().width, image.descriptor().width);
        const Rgb last = pixelFromTop(read.value(), image.descriptor().width - 1, 0);
        EXPECT_EQ(last.b, pixelFromTop(image, image.descriptor().width - 1, 0).b);
    }
    // One grey channel of 16 bits (written here with libtiff) reads as grey, decoded from sRGB.
    TIFF* tiff = TIFFOpen(temporary("grey.tif").c_str(), "w");
    ASSERT_TRUE(tiff);
    const uint16_t greys[] = {0, 65535};
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, 2);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, 1);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 16);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    TIFFWriteScanline(tiff, const_cast<uint16_t*>(greys), 0, 0);
    TIFFClose(tiff);
    const Expected<Image, std::string> back = readImage(temporary("grey.tif"));
    ASSERT_TRUE(back) << back.error();
    EXPECT_EQ(pixelFromTop(back.value(), 1, 0), Rgb(1.f, 1.f, 1.f, 1.f));
    EXPECT_EQ(pixelFromTop(back.value(), 0, 0), Rgb(0.f, 0.f, 0.f, 1.f));
    // The test scene has light well above 1 and no broken pixels.
    const Image scene = renderTestScene(64, 40);
    EXPECT_GT(largestValue(scene, Channel::Luminance), 2.f);
}
