#include <varnellib/image/bitmap.h>
#include <varnellib/image/image.h>
#include <varnellib/io/filestream.h>

#include "prelude.h"

#include <cstdint>
#include <filesystem>
#include <system_error>

TEST(Image, FormatsDescribeTheirChannelsAndOnlyTwoCarryAlpha) {
    for (int f = 0; f <= 4; ++f) {
        const auto& d = getImageFormatDescriptor(static_cast<ImageFormat>(f));
        EXPECT_EQ(d.hasAlpha, f == 2 || f == 4) << f;
    }
    EXPECT_THROW(getImageFormatDescriptor(static_cast<ImageFormat>(5)), StopException);
}

TEST(Image, PixelsReadBackPerFormatWithRowZeroAtTheBottom) {
    const Rgb color(0.2f, 0.4f, 0.6f, 0.8f);
    const struct {
        ImageFormat format;
        Rgb expected;
    } cases[] = {
        {ImageFormat::RgbaFloat32, color},
        {ImageFormat::RgbFloat32, Rgb(0.2f, 0.4f, 0.6f, 1.f)},
        {ImageFormat::Rgba8, Rgb(51 / 255.f, 102 / 255.f, 153 / 255.f, 204 / 255.f)},
        {ImageFormat::Rgb8, Rgb(51 / 255.f, 102 / 255.f, 153 / 255.f, 1.f)},
        {ImageFormat::LuminanceFloat32, Rgb(0.4f, 0.4f, 0.4f, 1.f)},
    };
    for (const auto& c : cases) {
        Image image({3, 2, 2.2f, c.format});
        image.setRgba(1, 0, color);
        EXPECT_EQ(image.getRgba(1, 0), c.expected) << static_cast<int>(c.format);
        EXPECT_EQ(image.getRgba(1, 1).r, 0.f);
        EXPECT_THROW(image.getRgba(3, 0), StopException);
        EXPECT_THROW(image.getRgba(0, -1), StopException);
    }
    Image bytes({1, 1, 1.f, ImageFormat::Rgb8});
    bytes.setRgba(0, 0, Rgb(2.f, -1.f, 0.5f / 255.f)); // clamped; 0.5 rounds to even
    EXPECT_EQ(bytes.getRgba(0, 0), Rgb(1.f, 0.f, 0.f, 1.f));
}

TEST(BitmapImpl, RgbPixelsAreAlignedForVectorLoads) {
    BitmapImpl<Rgb> bitmap(7, 3, Rgb(1, 2, 3, 4));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(bitmap.data()) % 16, 0u);
    bitmap(6, 2) = Rgb();
    EXPECT_EQ(bitmap.row(2)[6], Rgb());
    EXPECT_EQ(bitmap(0, 0), Rgb(1, 2, 3, 4));
    EXPECT_THROW(bitmap(7, 0), StopException);
    EXPECT_TRUE(BitmapImpl<Rgb>(0, 5).isEmpty());
}

TEST(FileStreams, WriteThenReadWithAShortReadAtTheEnd) {
    const auto path = std::filesystem::temp_directory_path() / "varnel-stream-test.bin";
    const Io::Path file(String::fromUtf8(path.c_str()));
    {
        Io::FileOutputStream out(file, Io::FileOutputStream::Open::CreateOrTruncate);
        out.write("curves", 6);
    }
    {
        Io::FileOutputStream out(file, Io::FileOutputStream::Open::Append);
        out.write("!", 1);
    }
    {
        Io::FileOutputStream out(file, Flags<Io::FileOutputStream::Open>::fromRaw(2));
        out.write("acv", 3); // mode 2 truncates
    }
    Io::FileInputStream in(file);
    char buffer[8] = {};
    EXPECT_EQ(in.read(buffer, 8), 3);
    EXPECT_STREQ(buffer, "acv");
    EXPECT_EQ(in.read(buffer, 8), 0);
    std::filesystem::remove(path);
}

TEST(FileStreams, AFileThatCannotBeOpenedNamesPathAndReason) {
    try {
        Io::FileInputStream in(Io::Path(String(L"/nonexistent/dir/curve.acv")));
        ADD_FAILURE() << "opened a missing file";
    } catch (const std::system_error& error) {
        const std::string message = error.what();
        EXPECT_NE(message.find("/nonexistent/dir/curve.acv"), std::string::npos) << message;
        EXPECT_NE(message.find("No such file or directory"), std::string::npos) << message;
    }
    EXPECT_THROW(Io::FileOutputStream(Io::Path(String(L"/nonexistent/out.acv"))),
                 std::system_error);
}
