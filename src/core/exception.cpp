// The messages of the exceptions of files and archives: each stands here and nowhere else.

#include <zel/exception.h>

#include "core/format_message.h"

namespace Zel {

// Only the first byte is set: the rest of the array is never read before setError has written it.
Exception::Exception() { m_message[0] = '\0'; } // NOLINT(cppcoreguidelines-pro-type-member-init)
Exception::~Exception() = default;

char const* Exception::getError() const { return m_message; }

void Exception::setError(char const* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    formatMessage(m_message, format, arguments);
    va_end(arguments);
}

Exception_ArchiveVersionInvalid::Exception_ArchiveVersionInvalid(char const* archiveName, int foundVersion,
                                                                 int expectedVersion) {
    setError("Archive \"%s\" has invalid version %d (expected %d)", archiveName, foundVersion,
             expectedVersion);
}

// The kinds of failure whose message names one thing, each with its message.
#define ZEL_DEFINE_EXCEPTION(Name, message) \
    Name::Name(char const* name) { setError(message, name); }

ZEL_DEFINE_EXCEPTION(Exception_ArchiveCorrupt, "Archive \"%s\" is corrupt")
ZEL_DEFINE_EXCEPTION(FileException_OpenFailed, "Failed to open file \"%s\"")
ZEL_DEFINE_EXCEPTION(FileException_GetSizeFailed, "Failed to determine size of file \"%s\"")
ZEL_DEFINE_EXCEPTION(FileException_ReadError, "Read error in \"%s\"")
ZEL_DEFINE_EXCEPTION(FileException_WriteError, "Write error in \"%s\"")
ZEL_DEFINE_EXCEPTION(FileException_SeekError, "Seek error in \"%s\"")
ZEL_DEFINE_EXCEPTION(FileException_DirectoryNotFound, "Directory \"%s\" not found")
ZEL_DEFINE_EXCEPTION(FileException_GetTempNameFailed, "Failed to find temporary filename with pattern \"%s\"")
// Meant: no quotes round the name, unlike all the others.
ZEL_DEFINE_EXCEPTION(FileException_NotAllowedToWriteArchivedFile, "Not allowed to write archived file %s")
ZEL_DEFINE_EXCEPTION(FileException_FileCorrupted, "File \"%s\" is corrupted")

FileException_GetCurrentDirFailed::FileException_GetCurrentDirFailed() {
    setError("Failed to determine current directory");
}

FileException_GetStartupDirFailed::FileException_GetStartupDirFailed() {
    setError("Failed to determine startup directory");
}

} // namespace Zel
