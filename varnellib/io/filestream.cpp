#include <varnellib/base/stopexception.h>
#include <varnellib/io/filestream.h>

#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

namespace Varnel::Io {

namespace {

[[noreturn]] void throwFileError(const char* what, const Path& path, int error) {
    throw std::system_error(error, std::generic_category(),
                            std::string(what) + " '" + path.native().data() + "'");
}

} // namespace

BinaryInputStream::~BinaryInputStream() = default;
BinaryOutputStream::~BinaryOutputStream() = default;

FileStreamBase::FileStreamBase(const Path& path, const char* mode) : m_path(path) {
    m_file = std::fopen(path.native().data(), mode);
    if (!m_file)
        throwFileError("cannot open", path, errno);
}

FileStreamBase::~FileStreamBase() {
    closeFile();
}

int FileStreamBase::closeFile() noexcept {
    std::FILE* file = std::exchange(m_file, nullptr);
    return file ? std::fclose(file) : 0;
}

FileInputStream::FileInputStream(const Path& path) : FileStreamBase(path, "rb") {}

int64 FileInputStream::read(void* buffer, int64 count) {
    VARNEL_REQUIRE(count >= 0 && (buffer || count == 0), "io/filestream");
    const std::size_t got = std::fread(buffer, 1, static_cast<std::size_t>(count), file());
    if (got < static_cast<std::size_t>(count) && std::ferror(file()))
        throwFileError("cannot read", path(), errno);
    return static_cast<int64>(got);
}

FileOutputStream::FileOutputStream(const Path& path, Flags<Open> mode)
    : FileStreamBase(path, mode.has(Open::Append) ? "ab" : "wb") {}

FileOutputStream::~FileOutputStream() = default;

void FileOutputStream::write(const void* buffer, int64 count) {
    VARNEL_REQUIRE(count >= 0 && (buffer || count == 0) && file(), "io/filestream");
    if (std::fwrite(buffer, 1, static_cast<std::size_t>(count), file()) !=
        static_cast<std::size_t>(count))
        throwFileError("cannot write", path(), errno);
}

void FileOutputStream::flush() {
    VARNEL_REQUIRE(file(), "io/filestream");
    if (std::fflush(file()) != 0)
        throwFileError("cannot write", path(), errno);
}

void FileOutputStream::close() {
    flush();
    if (closeFile() != 0)
        throwFileError("cannot close", path(), errno);
}

} // namespace Varnel::Io
