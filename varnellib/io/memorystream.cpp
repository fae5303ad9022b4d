#include <varnellib/base/stopexception.h>
#include <varnellib/io/bigendian.h>
#include <varnellib/io/memorystream.h>

#include <algorithm>
#include <cstring>

namespace Varnel::Io {

MemoryInputStream::MemoryInputStream(const void* data, int64 size)
    : m_data(static_cast<const unsigned char*>(data)), m_size(size) {
    VARNEL_REQUIRE(size >= 0 && (data || size == 0), "io/memorystream");
}

int64 MemoryInputStream::read(void* buffer, int64 count) {
    VARNEL_REQUIRE(count >= 0 && (buffer || count == 0), "io/memorystream");
    const int64 taken = std::min(count, m_size - m_position);
    if (taken > 0)
        std::memcpy(buffer, m_data + m_position, static_cast<std::size_t>(taken));
    m_position += taken;
    return taken;
}

StreamError::StreamError() : std::runtime_error("Could not load object from the stream.") {}

uint16 readUint16BigEndian(BinaryInputStream& stream) {
    unsigned char bytes[2];
    if (stream.read(bytes, 2) < 2)
        throw StreamError();
    return static_cast<uint16>((bytes[0] << 8) | bytes[1]);
}

void writeUint16BigEndian(BinaryOutputStream& stream, uint16 value) {
    const unsigned char bytes[2] = {static_cast<unsigned char>(value >> 8),
                                    static_cast<unsigned char>(value & 0xFF)};
    stream.write(bytes, 2);
}

} // namespace Varnel::Io
