#include "imagefiles.h"
#include "pipeline.h"

#include <Iex.h>
#include <ImfChannelList.h>
#include <ImfFrameBuffer.h>
#include <ImfHeader.h>
#include <ImfInputFile.h>
#include <ImfOutputFile.h>
#include <ImfRgbaFile.h>
#include <png.h>
#include <stb_image.h>
#include <tiffio.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <vector>

namespace Viewer {

namespace {

using Pixels = std::vector<Rgb>; // rows from the top, as every file keeps them

/// A core float image from rows kept from the top.
Image toImage(int width, int height, const Pixels& pixels) {
    Image image({width, height, 1.f, ImageFormat::RgbaFloat32});
    auto* floats = reinterpret_cast<float*>(image.data());
    for (int y = 0; y < height; ++y) {
        const Rgb* row = pixels.data() + std::size_t(y) * std::size_t(width);
        float* target = floats + std::size_t(height - 1 - y) * std::size_t(width) * 4;
        for (int x = 0; x < width; ++x, target += 4) {
            target[0] = row[x].r;
            target[1] = row[x].g;
            target[2] = row[x].b;
            target[3] = row[x].a;
        }
    }
    return image;
}

Optional<std::string> sizeProblem(long long width, long long height) {
    if (width <= 0 || height <= 0)
        return std::string("The image has no pixels.");
    if (static_cast<unsigned long long>(width) * static_cast<unsigned long long>(height) >
        kMaxPixels)
        return std::string("The image is too large to open.");
    return {};
}

// ---- OpenEXR -----------------------------------------------------------------------------------

Expected<Image, std::string> readExr(const std::string& path) {
    try {
        Imf::InputFile file(path.c_str());
        const Imath::Box2i window = file.header().dataWindow();
        const long long width = (long long)window.max.x - window.min.x + 1;
        const long long height = (long long)window.max.y - window.min.y + 1;
        if (const auto problem = sizeProblem(width, height))
            return Unexpected{*problem};
        const Imf::ChannelList& channels = file.header().channels();
        const bool grey = !channels.findChannel("R") && channels.findChannel("Y");
        // Straight into the core image, whose rows run from the bottom up: the file's row y goes
        // to the image's row height - 1 - (y - min.y), by a negative row stride.
        Image image({int(width), int(height), 1.f, ImageFormat::RgbaFloat32});
        const std::ptrdiff_t rowBytes = std::ptrdiff_t(width) * std::ptrdiff_t(sizeof(Rgb));
        char* top = reinterpret_cast<char*>(image.data()) + (height - 1) * rowBytes;
        char* base = top - window.min.x * std::ptrdiff_t(sizeof(Rgb)) + window.min.y * rowBytes;
        Imf::FrameBuffer frame;
        const auto slice = [&](const char* name, int lane, float fill) {
            frame.insert(name, Imf::Slice(Imf::FLOAT, base + lane * sizeof(float), sizeof(Rgb),
                                          static_cast<std::size_t>(-rowBytes), 1, 1, fill));
        };
        if (grey) {
            slice("Y", 0, 0.f);
        } else {
            slice("R", 0, 0.f);
            slice("G", 1, 0.f);
            slice("B", 2, 0.f);
        }
        slice("A", 3, 1.f);
        file.setFrameBuffer(frame);
        file.readPixels(window.min.y, window.max.y);
        if (grey) {
            auto* floats = reinterpret_cast<float*>(image.data());
            for (std::size_t i = 0; i < std::size_t(width * height); ++i)
                floats[4 * i + 1] = floats[4 * i + 2] = floats[4 * i];
        }
        return image;
    } catch (const Iex::BaseExc& failure) {
        return Unexpected{std::string("The OpenEXR file cannot be read: ") + failure.what()};
    } catch (const std::bad_alloc&) {
        return Unexpected{std::string("There is not enough memory to open the image.")};
    }
}

Optional<std::string> writeExr(const std::string& path, const Wx::ImageSaveSettings& settings,
                               const Image& linear) {
    const int width = linear.descriptor().width, height = linear.descriptor().height;
    try {
        Pixels pixels(std::size_t(width) * std::size_t(height));
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                pixels[std::size_t(y) * std::size_t(width) + std::size_t(x)] =
                    pixelFromTop(linear, x, y);
        const int lanes = settings.alpha ? 4 : 3;
        if (settings.format == Wx::ImageColorFormat::LinearHalf) {
            // Halves go through the library's RGBA interface, which holds them as they are kept.
            std::vector<Imf::Rgba> halves(pixels.size());
            for (std::size_t i = 0; i < pixels.size(); ++i)
                halves[i] = Imf::Rgba(pixels[i].r, pixels[i].g, pixels[i].b, pixels[i].a);
            Imf::RgbaOutputFile file(path.c_str(), width, height,
                                     settings.alpha ? Imf::WRITE_RGBA : Imf::WRITE_RGB);
            file.setFrameBuffer(halves.data(), 1, std::size_t(width));
            file.writePixels(height);
            return {};
        }
        Imf::Header header(width, height);
        const char* names[] = {"R", "G", "B", "A"};
        for (int lane = 0; lane < lanes; ++lane)
            header.channels().insert(names[lane], Imf::Channel(Imf::FLOAT));
        Imf::OutputFile file(path.c_str(), header);
        Imf::FrameBuffer frame;
        for (int lane = 0; lane < lanes; ++lane)
            frame.insert(names[lane],
                         Imf::Slice(Imf::FLOAT,
                                    reinterpret_cast<char*>(pixels.data()) + lane * sizeof(float),
                                    sizeof(Rgb), sizeof(Rgb) * std::size_t(width)));
        file.setFrameBuffer(frame);
        file.writePixels(height);
        return {};
    } catch (const Iex::BaseExc& failure) {
        return std::string("The OpenEXR file cannot be written: ") + failure.what();
    } catch (const std::bad_alloc&) {
        return std::string("There is not enough memory to write the image.");
    }
}

// ---- PNG ---------------------------------------------------------------------------------------

struct PngFailure {
    std::string message;
};

void pngError(png_structp png, png_const_charp message) {
    static_cast<PngFailure*>(png_get_error_ptr(png))->message = message;
    png_longjmp(png, 1);
}

void pngWarning(png_structp, png_const_charp) {}

/// A PNG being read: libpng's two structures, and the size once the header is in.
struct PngReading {
    png_structp png = nullptr;
    png_infop info = nullptr;
    png_uint_32 width = 0, height = 0;
    ~PngReading() { png_destroy_read_struct(&png, &info, nullptr); }
};

/// The header, and the transformations that turn every kind of PNG into 16-bit RGBA in the
/// machine's byte order (palettes, grey, fewer bits and a missing alpha expanded). Alone in its
/// frame, for libpng's long jumps.
bool startPngRead(FILE* file, PngReading& reading, PngFailure& failure) {
    reading.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &failure, &pngError, &pngWarning);
    reading.info = reading.png ? png_create_info_struct(reading.png) : nullptr;
    if (!reading.info)
        return false;
    if (setjmp(png_jmpbuf(reading.png)))
        return false;
    png_init_io(reading.png, file);
    png_read_info(reading.png, reading.info);
    png_set_expand(reading.png);
    png_set_expand_16(reading.png);
    png_set_gray_to_rgb(reading.png);
    png_set_add_alpha(reading.png, 0xFFFF, PNG_FILLER_AFTER);
    png_set_swap(reading.png);
    png_read_update_info(reading.png, reading.info);
    reading.width = png_get_image_width(reading.png, reading.info);
    reading.height = png_get_image_height(reading.png, reading.info);
    return true;
}

bool finishPngRead(PngReading& reading, png_bytepp rows) {
    if (setjmp(png_jmpbuf(reading.png)))
        return false;
    png_read_image(reading.png, rows);
    png_read_end(reading.png, nullptr);
    return true;
}

Expected<Image, std::string> readPng(const std::string& path) {
    const std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (!file)
        return Unexpected{std::string("The file cannot be opened.")};
    PngReading reading;
    PngFailure failure;
    if (!startPngRead(file.get(), reading, failure))
        return Unexpected{"The PNG file cannot be read: " + failure.message};
    if (const auto problem = sizeProblem(reading.width, reading.height))
        return Unexpected{*problem};
    std::vector<uint16_t> samples(std::size_t(reading.width) * reading.height * 4);
    std::vector<png_bytep> rows(reading.height);
    for (png_uint_32 y = 0; y < reading.height; ++y)
        rows[y] = reinterpret_cast<png_bytep>(samples.data() + std::size_t(y) * reading.width * 4);
    if (!finishPngRead(reading, rows.data()))
        return Unexpected{"The PNG file cannot be read: " + failure.message};
    // The samples are sRGB-encoded colours and a linear alpha.
    Pixels pixels(std::size_t(reading.width) * reading.height);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const uint16_t* s = &samples[4 * i];
        pixels[i] = Rgb(decodeSrgb(s[0] / 65535.f), decodeSrgb(s[1] / 65535.f),
                        decodeSrgb(s[2] / 65535.f), s[3] / 65535.f);
    }
    return toImage(int(reading.width), int(reading.height), pixels);
}

/// The libpng calls, alone in their frame: libpng reports errors by a long jump, which must not
/// cross anything with a destructor.
bool writePngRows(FILE* file, int width, int height, int depth, bool alpha, png_bytepp rows,
                  PngFailure& failure) {
    png_structp png =
        png_create_write_struct(PNG_LIBPNG_VER_STRING, &failure, &pngError, &pngWarning);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info) {
        png_destroy_write_struct(&png, nullptr);
        failure.message = "out of memory";
        return false;
    }
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        return false;
    }
    png_init_io(png, file);
    png_set_IHDR(png, info, png_uint_32(width), png_uint_32(height), depth,
                 alpha ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_sRGB_gAMA_and_cHRM(png, info, PNG_sRGB_INTENT_PERCEPTUAL);
    png_write_info(png, info);
    png_write_image(png, rows);
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return true;
}

/// Display values as 8 or 16-bit samples, rows from the top; 16-bit samples big-endian as PNG
/// keeps them (TIFF takes them in the machine's order).
std::vector<uint8> samplesOf(const Image& linear, const std::function<Rgb(const Rgb&)>& display,
                             bool sixteen, bool alpha, bool bigEndian) {
    const int width = linear.descriptor().width, height = linear.descriptor().height;
    const int lanes = alpha ? 4 : 3, bytes = sixteen ? 2 : 1;
    std::vector<uint8> samples(std::size_t(width) * std::size_t(height) * lanes * bytes);
    uint8* out = samples.data();
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const Rgb pixel = display(pixelFromTop(linear, x, y));
            const float values[] = {pixel.r, pixel.g, pixel.b, pixel.a};
            for (int lane = 0; lane < lanes; ++lane) {
                const float v = values[lane] > 0.f ? std::min(values[lane], 1.f) : 0.f;
                if (!sixteen) {
                    *out++ = unitToByte(v);
                    continue;
                }
                const auto word = static_cast<uint16_t>(std::lround(v * 65535.f));
                if (bigEndian) {
                    *out++ = uint8(word >> 8);
                    *out++ = uint8(word & 0xFF);
                } else {
                    std::memcpy(out, &word, 2);
                    out += 2;
                }
            }
        }
    return samples;
}

Optional<std::string> writePng(const std::string& path, const Wx::ImageSaveSettings& settings,
                               const Image& linear, const std::function<Rgb(const Rgb&)>& display) {
    const int width = linear.descriptor().width, height = linear.descriptor().height;
    const bool sixteen = settings.format == Wx::ImageColorFormat::Srgb16;
    std::vector<uint8> samples = samplesOf(linear, display, sixteen, settings.alpha, true);
    const std::size_t rowBytes = samples.size() / std::size_t(std::max(height, 1));
    std::vector<png_bytep> rows(static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y)
        rows[std::size_t(y)] = samples.data() + std::size_t(y) * rowBytes;
    FILE* file = std::fopen(path.c_str(), "wb");
    if (!file)
        return std::string("The file cannot be created: ") + std::strerror(errno);
    PngFailure failure;
    const bool written =
        writePngRows(file, width, height, sixteen ? 16 : 8, settings.alpha, rows.data(), failure);
    const bool closed = std::fclose(file) == 0;
    if (!written)
        return "The PNG file cannot be written: " + failure.message;
    if (!closed)
        return std::string("The PNG file cannot be written: ") + std::strerror(errno);
    return {};
}

// ---- TIFF --------------------------------------------------------------------------------------

std::string& tiffMessage() {
    static std::string message;
    return message;
}

void tiffError(const char*, const char* format, va_list arguments) {
    char text[512];
    std::vsnprintf(text, sizeof text, format, arguments);
    tiffMessage() = text;
}

void quietTiff() {
    TIFFSetErrorHandler(&tiffError);
    TIFFSetWarningHandler(nullptr);
}

Expected<Image, std::string> readTiff(const std::string& path) {
    quietTiff();
    tiffMessage().clear();
    const std::unique_ptr<TIFF, void (*)(TIFF*)> tiff(TIFFOpen(path.c_str(), "r"), &TIFFClose);
    if (!tiff)
        return Unexpected{"The TIFF file cannot be read: " + tiffMessage()};
    uint32_t width = 0, height = 0;
    uint16_t lanes = 1, bits = 8, format = SAMPLEFORMAT_UINT, planar = PLANARCONFIG_CONTIG;
    TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &height);
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, &lanes);
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_SAMPLEFORMAT, &format);
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_PLANARCONFIG, &planar);
    if (const auto problem = sizeProblem(width, height))
        return Unexpected{*problem};
    const bool floats = format == SAMPLEFORMAT_IEEEFP && bits == 32;
    const bool integers = format == SAMPLEFORMAT_UINT && (bits == 8 || bits == 16);
    if (!(floats || integers) || lanes < 1 || lanes > 4 || planar != PLANARCONFIG_CONTIG ||
        TIFFIsTiled(tiff.get()))
        return Unexpected{std::string("This kind of TIFF file (its samples or their layout) is "
                                      "not supported.")};
    std::vector<uint8> row(std::size_t(TIFFScanlineSize(tiff.get())));
    Pixels pixels(std::size_t(width) * height);
    const auto sample = [&](std::size_t index) -> float {
        if (floats) {
            float value;
            std::memcpy(&value, row.data() + 4 * index, 4);
            return value;
        }
        const float unit = bits == 8
                               ? row[index] / 255.f
                               : reinterpret_cast<const uint16_t*>(row.data())[index] / 65535.f;
        return unit;
    };
    for (uint32_t y = 0; y < height; ++y) {
        if (row.size() < std::size_t(width) * lanes * (bits / 8) ||
            TIFFReadScanline(tiff.get(), row.data(), y, 0) < 0)
            return Unexpected{"The TIFF file cannot be read: " + tiffMessage()};
        for (uint32_t x = 0; x < width; ++x) {
            const std::size_t at = std::size_t(x) * lanes;
            // Integer samples are sRGB-encoded colours; alpha is linear already.
            const auto colour = [&](std::size_t index) {
                return floats ? sample(index) : decodeSrgb(sample(index));
            };
            Rgb& pixel = pixels[std::size_t(y) * width + x];
            if (lanes <= 2) {
                pixel.r = pixel.g = pixel.b = colour(at);
                pixel.a = lanes == 2 ? sample(at + 1) : 1.f;
            } else {
                pixel = Rgb(colour(at), colour(at + 1), colour(at + 2),
                            lanes == 4 ? sample(at + 3) : 1.f);
            }
        }
    }
    return toImage(int(width), int(height), pixels);
}

Optional<std::string> writeTiff(const std::string& path, const Wx::ImageSaveSettings& settings,
                                const Image& linear,
                                const std::function<Rgb(const Rgb&)>& display) {
    quietTiff();
    tiffMessage().clear();
    const int width = linear.descriptor().width, height = linear.descriptor().height;
    const bool sixteen = settings.format == Wx::ImageColorFormat::Srgb16;
    std::vector<uint8> samples = samplesOf(linear, display, sixteen, settings.alpha, false);
    TIFF* tiff = TIFFOpen(path.c_str(), "w");
    if (!tiff)
        return "The TIFF file cannot be created: " + tiffMessage();
    const uint16_t lanes = settings.alpha ? 4 : 3;
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, uint32_t(width));
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, uint32_t(height));
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, lanes);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, uint16_t(sixteen ? 16 : 8));
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_ADOBE_DEFLATE);
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff, 0));
    if (settings.alpha) {
        const uint16_t extra[] = {EXTRASAMPLE_UNASSALPHA};
        TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, extra);
    }
    const std::size_t rowBytes = samples.size() / std::size_t(std::max(height, 1));
    bool written = true;
    for (int y = 0; y < height && written; ++y)
        written = TIFFWriteScanline(tiff, samples.data() + std::size_t(y) * rowBytes, uint32_t(y),
                                    0) >= 0;
    written = written && TIFFFlush(tiff) == 1;
    TIFFClose(tiff);
    if (!written)
        return "The TIFF file cannot be written: " + tiffMessage();
    return {};
}

// ---- Radiance HDR and JPEG ---------------------------------------------------------------------

Expected<Image, std::string> readWithStb(const std::string& path) {
    int width = 0, height = 0, lanes = 0;
    const bool hdr = stbi_is_hdr(path.c_str());
    Pixels pixels;
    if (hdr) {
        const std::unique_ptr<float, void (*)(void*)> data(
            stbi_loadf(path.c_str(), &width, &height, &lanes, 4), &stbi_image_free);
        if (!data)
            return Unexpected{std::string("The image cannot be read: ") + stbi_failure_reason()};
        if (const auto problem = sizeProblem(width, height))
            return Unexpected{*problem};
        pixels.resize(std::size_t(width) * std::size_t(height));
        for (std::size_t i = 0; i < pixels.size(); ++i)
            pixels[i] = Rgb(data.get()[4 * i], data.get()[4 * i + 1], data.get()[4 * i + 2], 1.f);
    } else {
        const std::unique_ptr<stbi_uc, void (*)(void*)> data(
            stbi_load(path.c_str(), &width, &height, &lanes, 4), &stbi_image_free);
        if (!data)
            return Unexpected{std::string("The image cannot be read: ") + stbi_failure_reason()};
        if (const auto problem = sizeProblem(width, height))
            return Unexpected{*problem};
        pixels.resize(std::size_t(width) * std::size_t(height));
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            const stbi_uc* s = data.get() + 4 * i;
            pixels[i] = Rgb(decodeSrgb(s[0] / 255.f), decodeSrgb(s[1] / 255.f),
                            decodeSrgb(s[2] / 255.f), s[3] / 255.f);
        }
    }
    return toImage(width, height, pixels);
}

} // namespace

float decodeSrgb(float encoded) {
    return encoded <= 0.04045f ? encoded / 12.92f : std::pow((encoded + 0.055f) / 1.055f, 2.4f);
}

Expected<Image, std::string> readImage(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return Unexpected{std::string("The file cannot be opened.")};
    unsigned char head[16] = {};
    file.read(reinterpret_cast<char*>(head), sizeof head);
    const std::size_t got = static_cast<std::size_t>(file.gcount());
    const auto starts = [&](std::initializer_list<unsigned char> bytes) {
        return got >= bytes.size() && std::equal(bytes.begin(), bytes.end(), head);
    };
    if (starts({0x76, 0x2f, 0x31, 0x01}))
        return readExr(path);
    if (starts({0x89, 'P', 'N', 'G'}))
        return readPng(path);
    if (starts({'I', 'I', 42, 0}) || starts({'M', 'M', 0, 42}))
        return readTiff(path);
    if (starts({0xFF, 0xD8, 0xFF}) || starts({'#', '?'}))
        return readWithStb(path);
    return Unexpected{std::string("The file is not an image the viewer can open (OpenEXR, PNG, "
                                  "TIFF, JPEG or Radiance HDR).")};
}

Optional<FileType> fileTypeOf(const std::string& path) {
    const std::size_t dot = path.rfind('.');
    if (dot == std::string::npos)
        return {};
    std::string extension = path.substr(dot + 1);
    for (char& c : extension)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (extension == "png")
        return FileType::Png;
    if (extension == "tif" || extension == "tiff")
        return FileType::Tiff;
    if (extension == "exr")
        return FileType::Exr;
    return {};
}

Wx::ImageSaveCapabilities capabilitiesOf(FileType type) {
    if (type == FileType::Exr)
        return {{false, false, true, true}, true};
    return {{true, true, false, false}, true};
}

Optional<std::string> writeImage(const std::string& path, FileType type,
                                 const Wx::ImageSaveSettings& settings, const Image& linear,
                                 const std::function<Rgb(const Rgb&)>& display) {
    if (!capabilitiesOf(type).formats[static_cast<std::size_t>(settings.format)])
        return std::string("This file type cannot hold the chosen colour format.");
    switch (type) {
    case FileType::Exr:
        return writeExr(path, settings, linear);
    case FileType::Png:
        return writePng(path, settings, linear, display);
    case FileType::Tiff:
        return writeTiff(path, settings, linear, display);
    }
    return std::string("Unknown file type.");
}

} // namespace Viewer
