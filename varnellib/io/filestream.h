#pragma once

#include <varnellib/base/flags.h>
#include <varnellib/base/types.h>
#include <varnellib/export.h>
#include <varnellib/io/path.h>

#include <cstdio>

namespace Varnel::Io {

/// Something bytes are read from.
class VARNEL_LIB_EXPORT BinaryInputStream {
public:
    virtual ~BinaryInputStream();
    /// Reads up to `count` bytes; returns how many were read, fewer only at the end of the data.
    virtual int64 read(void* buffer, int64 count) = 0;
};

/// Something bytes are written to. A failed write throws std::system_error.
class VARNEL_LIB_EXPORT BinaryOutputStream {
public:
    virtual ~BinaryOutputStream();
    virtual void write(const void* buffer, int64 count) = 0;
};

/// An open file, closed on destruction. Opening a file that cannot be opened throws
/// std::system_error whose message names the path and the reason.
class VARNEL_LIB_EXPORT FileStreamBase {
public:
    virtual ~FileStreamBase();
    FileStreamBase(const FileStreamBase&) = delete;
    FileStreamBase& operator=(const FileStreamBase&) = delete;

    const Path& path() const noexcept { return m_path; }

protected:
    FileStreamBase(const Path& path, const char* mode);
    std::FILE* file() const noexcept { return m_file; }
    /// Closes the file now; returns what fclose said (0 for success).
    int closeFile() noexcept;

private:
    Path m_path;
    std::FILE* m_file = nullptr;
};

/// A file opened for reading.
class VARNEL_LIB_EXPORT FileInputStream : public BinaryInputStream, public FileStreamBase {
public:
    explicit FileInputStream(const Path& path);
    int64 read(void* buffer, int64 count) override;
};

/// A file opened for writing, created when missing.
class VARNEL_LIB_EXPORT FileOutputStream : public BinaryOutputStream, public FileStreamBase {
public:
    enum class Open : uint32 {
        /// Create the file if needed and write after what it holds.
        Append = 1,
        /// Create the file if needed and empty it first.
        CreateOrTruncate = 2,
    };

    /// Without Append the file is created or truncated.
    FileOutputStream(const Path& path, Flags<Open> mode = Open::CreateOrTruncate);
    /// Closes the file if close() was not called; a failure then cannot be reported: call
    /// close() where it matters.
    ~FileOutputStream() override;

    void write(const void* buffer, int64 count) override;
    void flush();
    /// Flushes and closes the file, throwing std::system_error if either fails. Writing after
    /// it raises the stop exception.
    void close();
};

} // namespace Varnel::Io
