#include <varnellib/io/filestream.h>
#include <varnellib/io/memorystream.h>
#include <varnellibwx/widgets/acvfile.h>

#include "prelude.h"

#include <filesystem>
#include <fstream>
#include <iterator>

using namespace Varnel::Wx::Detail;

namespace {

const std::filesystem::path kCorpus = VARNEL_ACV_CORPUS_DIR;

Expected<AcvCurves, String> readCorpus(const char* name) {
    return readAcvFile(Io::Path(String::fromUtf8((kCorpus / name).c_str())));
}

std::vector<CurvePoint> pointsOf(const Curve& curve) {
    return {curve.points().begin(), curve.points().end()};
}

std::vector<unsigned char> bytesOf(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

class TempFile {
public:
    explicit TempFile(const char* name) : m_path(std::filesystem::temp_directory_path() / name) {}
    ~TempFile() { std::filesystem::remove(m_path); }
    Io::Path path() const { return Io::Path(String::fromUtf8(m_path.c_str())); }
    const std::filesystem::path& native() const { return m_path; }

private:
    std::filesystem::path m_path;
};

// A file value as the reader scales it.
float unit(int fileValue) {
    return static_cast<float>(fileValue) * 0.003921569f;
}

} // namespace

TEST(AcvFile, IdentityRecordsLoadWithNothingAppended) {
    const auto curves = readCorpus("identity.acv");
    ASSERT_TRUE(curves.hasValue()) << curves.error().toUtf8().data();
    for (const Curve& curve : curves.value())
        EXPECT_EQ(pointsOf(curve), (std::vector<CurvePoint>{{0, 0}, {unit(255), unit(255)}}));
}

TEST(AcvFile, EndPointsAreAppendedAndTheOutputComesFirst) {
    const auto curves = readCorpus("single-point.acv"); // output 64, input 128
    ASSERT_TRUE(curves.hasValue());
    EXPECT_EQ(pointsOf(curves.value()[0]),
              (std::vector<CurvePoint>{{0, unit(64)}, {unit(128), unit(64)}, {1, unit(64)}}));
    EXPECT_NEAR(unit(64), 0.25098f, 1e-5f);
    // Records the file does not hold keep the default curve.
    for (int channel = 1; channel < 4; ++channel)
        EXPECT_TRUE(curves.value()[static_cast<std::size_t>(channel)].isIdentity());

    const auto sorted = readCorpus("unsorted.acv"); // points at x 200, 10, 100
    ASSERT_TRUE(sorted.hasValue());
    const auto points = pointsOf(sorted.value()[0]);
    ASSERT_EQ(points.size(), 5u);                          // (0, first y) and (1, last y) added
    EXPECT_EQ(points.front(), (CurvePoint{0, unit(200)})); // the first point of the file
    EXPECT_EQ(points.back(), (CurvePoint{1, unit(100)}));  // the last point of the file
    EXPECT_TRUE(
        std::is_sorted(points.begin(), points.end(), [](auto& a, auto& b) { return a.x < b.x; }));
}

TEST(AcvFile, CountsOtherThanFourAndOddRecords) {
    const auto none = readCorpus("no-curves.acv");
    ASSERT_TRUE(none.hasValue());
    for (const Curve& curve : none.value())
        EXPECT_EQ(curve, Curve());

    const auto six = readCorpus("six-records.acv"); // the fifth count ends the file
    ASSERT_TRUE(six.hasValue()) << six.error().toUtf8().data();

    const auto large = readCorpus("large-values.acv");
    ASSERT_TRUE(large.hasValue());
    EXPECT_EQ(pointsOf(large.value()[0]),
              (std::vector<CurvePoint>{{0, unit(510)}, {unit(300), 0}}));

    const auto empty = readCorpus("zero-points.acv");
    ASSERT_TRUE(empty.hasValue());
    EXPECT_TRUE(empty.value()[0].points().isEmpty());
    EXPECT_EQ(empty.value()[1].points().size(), 2);
}

TEST(AcvFile, FailuresGiveTheirTexts) {
    const auto version = readCorpus("version-2.acv");
    ASSERT_FALSE(version.hasValue());
    EXPECT_EQ(version.error(), String(L"Version 1 of acv file is not supported."));

    const auto truncated = readCorpus("truncated-point.acv");
    ASSERT_FALSE(truncated.hasValue());
    EXPECT_EQ(truncated.error(), String(L"Could not load object from the stream."));

    const unsigned char header[] = {0, 4, 0};
    Io::MemoryInputStream shortHeader(header, sizeof header);
    EXPECT_EQ(readAcvCurves(shortHeader).error(),
              String(L"Could not load object from the stream."));

    const auto missing = readAcvFile(Io::Path(String(L"/nonexistent/curves.acv")));
    ASSERT_FALSE(missing.hasValue());
    EXPECT_NE(std::wstring(missing.error().view()).find(L"/nonexistent/curves.acv"),
              std::wstring::npos);

    // A broken contract inside a read is the caller's to see, not a load failure.
    struct StoppingStream : Io::BinaryInputStream {
        int64 read(void*, int64) override { VARNEL_STOP("tests/acvfile"); }
    } stopping;
    EXPECT_THROW(readAcvCurves(stopping), StopException);
}

TEST(AcvFile, WritingTruncatesAndKeepsThePointsAsStored) {
    ColorCurve curves;
    Curve& master = curves[CurveChannel::Master];
    master.points().clear();
    master.points().push({1.f, 1.f});
    master.points().push({0.999f, 0.5f}); // unsorted, written as stored
    master.points().push({-0.5f, 2.f});   // no clamping: low 16 bits of the truncation
    TempFile file("varnel-acv-write.acv");
    ASSERT_TRUE(writeAcvFile(curves, file.path()));

    const std::vector<unsigned char> expected = {
        0, 4, 0, 4,                                                   // version, count
        0, 3, 0, 255, 0, 255, 0, 127, 0, 254, 0x01, 0xFE, 0xFF, 0x81, // master
        0, 2, 0, 0,   0, 0,   0, 255, 0, 255,                         // red
        0, 2, 0, 0,   0, 0,   0, 255, 0, 255,                         // green
        0, 2, 0, 0,   0, 0,   0, 255, 0, 255,                         // blue
    };
    EXPECT_EQ(bytesOf(file.native()), expected);

    const auto back = readAcvFile(file.path());
    ASSERT_TRUE(back.hasValue());
    EXPECT_EQ(back.value()[1], curves[CurveChannel::Red]);
}

TEST(AcvFile, AFailedWriteReportsFalseAndLeavesThePartialFile) {
    const ColorCurve curves;
    EXPECT_FALSE(writeAcvFile(curves, Io::Path(String(L"/nonexistent/dir/out.acv"))));
    if (std::filesystem::exists("/dev/full")) { // every write there fails for want of space
        EXPECT_FALSE(writeAcvFile(curves, Io::Path(String(L"/dev/full"))));
    }
}
