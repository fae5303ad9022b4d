#include <varnellib/base/stopexception.h>
#include <varnellib/image/image.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Varnel {

namespace {

constexpr const char* kSource = "image/image";
constexpr float kByteScale = 255.f;

constexpr ImageFormatDescriptor kFormats[] = {
    {1, ChannelType::Float32, false, 4}, {3, ChannelType::UInt8, false, 3},
    {4, ChannelType::UInt8, true, 4},    {3, ChannelType::Float32, false, 12},
    {4, ChannelType::Float32, true, 16},
};

} // namespace

const ImageFormatDescriptor& getImageFormatDescriptor(ImageFormat format) {
    const int index = static_cast<int>(format);
    VARNEL_REQUIRE(index >= 0 && index < static_cast<int>(std::size(kFormats)), kSource);
    return kFormats[index];
}

Image::Image(const Descriptor& descriptor) : m_descriptor(descriptor) {
    VARNEL_REQUIRE(descriptor.width >= 0 && descriptor.height >= 0, kSource);
    const auto& format = getImageFormatDescriptor(descriptor.format);
    m_data.assign(static_cast<std::size_t>(descriptor.width) *
                      static_cast<std::size_t>(descriptor.height) *
                      static_cast<std::size_t>(format.bytesPerPixel),
                  0);
}

std::size_t Image::offset(int x, int y) const {
    VARNEL_REQUIRE(x >= 0 && x < m_descriptor.width && y >= 0 && y < m_descriptor.height, kSource);
    const auto bytes =
        static_cast<std::size_t>(getImageFormatDescriptor(m_descriptor.format).bytesPerPixel);
    return (static_cast<std::size_t>(y) * static_cast<std::size_t>(m_descriptor.width) +
            static_cast<std::size_t>(x)) *
           bytes;
}

Rgb Image::getRgba(int x, int y) const {
    const uint8* pixel = m_data.data() + offset(x, y);
    const auto& format = getImageFormatDescriptor(m_descriptor.format);
    float lanes[4] = {0.f, 0.f, 0.f, 1.f};
    for (int c = 0; c < format.channelCount; ++c) {
        if (format.channelType == ChannelType::UInt8) {
            lanes[c] = static_cast<float>(pixel[c]) / kByteScale;
        } else {
            std::memcpy(&lanes[c], pixel + 4 * c, sizeof(float));
        }
    }
    if (format.channelCount == 1)
        return {lanes[0], lanes[0], lanes[0], 1.f};
    return {lanes[0], lanes[1], lanes[2], lanes[3]};
}

void Image::setRgba(int x, int y, const Rgb& color) {
    uint8* pixel = m_data.data() + offset(x, y);
    const auto& format = getImageFormatDescriptor(m_descriptor.format);
    const float lanes[4] = {color.r, color.g, color.b, color.a};
    if (format.channelCount == 1) {
        const float grey = (color.r + color.g + color.b) / 3.f;
        std::memcpy(pixel, &grey, sizeof(float));
        return;
    }
    for (int c = 0; c < format.channelCount; ++c) {
        if (format.channelType == ChannelType::UInt8)
            pixel[c] =
                static_cast<uint8>(std::nearbyint(std::clamp(lanes[c], 0.f, 1.f) * kByteScale));
        else
            std::memcpy(pixel + 4 * c, &lanes[c], sizeof(float));
    }
}

} // namespace Varnel
