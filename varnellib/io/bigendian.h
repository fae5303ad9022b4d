#pragma once

#include <varnellib/base/types.h>
#include <varnellib/export.h>
#include <varnellib/io/filestream.h>

#include <stdexcept>

namespace Varnel::Io {

/// A stream ended inside a value.
class VARNEL_LIB_EXPORT StreamError : public std::runtime_error {
public:
    StreamError();
};

/// Reads a 16-bit value stored most significant byte first; throws StreamError ("Could not
/// load object from the stream.") when fewer than two bytes are left.
VARNEL_LIB_EXPORT uint16 readUint16BigEndian(BinaryInputStream& stream);

/// Writes a 16-bit value most significant byte first.
VARNEL_LIB_EXPORT void writeUint16BigEndian(BinaryOutputStream& stream, uint16 value);

} // namespace Varnel::Io
