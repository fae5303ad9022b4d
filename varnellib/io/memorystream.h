#pragma once

#include <varnellib/export.h>
#include <varnellib/io/filestream.h>

namespace Varnel::Io {

/// Reads bytes from a block of memory that outlives the stream (test data, fuzzer input,
/// embedded resources).
class VARNEL_LIB_EXPORT MemoryInputStream : public BinaryInputStream {
public:
    MemoryInputStream(const void* data, int64 size);
    int64 read(void* buffer, int64 count) override;

private:
    const unsigned char* m_data;
    int64 m_size;
    int64 m_position = 0;
};

} // namespace Varnel::Io
