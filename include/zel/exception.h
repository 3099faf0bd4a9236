// The root of the library's exceptions (std::bad_alloc is thrown, too, when memory runs out), and the
// exceptions of files and archives.
#pragma once

#include <zel/api.h>

namespace Zel {

/// An error with a message of at most 1023 characters, which the object holds itself. No exception owns
/// memory, so all can be thrown and copied freely. They are no std::exceptions. Catch Zel::Exception const&:
/// a copy of type Exception keeps the message and loses the class.
class ZEL_API Exception {
public:
    /// An empty message.
    Exception();
    Exception(Exception const&) = default;
    Exception& operator=(Exception const&) = default;
    virtual ~Exception();

    /// The message, NUL-terminated. It is valid as long as this object lives.
    char const* getError() const;

    /// Formats the message by the printf rules. Everything from character 1024 on is cut off silently.
    void setError(char const* format, ...) ZEL_PRINTF_FORMAT(2, 3);

private:
    char m_message[1024];
};

/// Declares one kind of failure. Its default constructor leaves the message empty; the other one formats the
/// message of this kind from its arguments. Names appear in it exactly as they are given.
#define ZEL_DECLARE_EXCEPTION(Name, Base, ...) \
    class ZEL_API Name : public Base {         \
    public:                                    \
        Name() = default;                      \
        Name(__VA_ARGS__);                     \
    }

/// An archive file of another version than 44. It is no FileException: a handler for these does not catch it.
ZEL_DECLARE_EXCEPTION(Exception_ArchiveVersionInvalid, Exception, char const* archiveName, int foundVersion,
                      int expectedVersion);
/// An archive's table of entries fails its checksum or contradicts itself. It is no FileException either.
ZEL_DECLARE_EXCEPTION(Exception_ArchiveCorrupt, Exception, char const* archiveName);

/// The family of all failures of files and directories.
class ZEL_API FileException : public Exception {};

/// A file could not be opened, for reading or for writing.
ZEL_DECLARE_EXCEPTION(FileException_OpenFailed, FileException, char const* fileName);
/// Part of the vocabulary; no operation of the library throws it.
ZEL_DECLARE_EXCEPTION(FileException_GetSizeFailed, FileException, char const* fileName);
/// Not all bytes could be read: see File::read.
ZEL_DECLARE_EXCEPTION(FileException_ReadError, FileException, char const* fileName);
/// Not all bytes could be stored: see File::write and File::flush.
ZEL_DECLARE_EXCEPTION(FileException_WriteError, FileException, char const* fileName);
/// A position to which the host does not go.
ZEL_DECLARE_EXCEPTION(FileException_SeekError, FileException, char const* fileName);
/// A name that leads up from the top or to the root of no drive, or a directory that cannot be entered.
ZEL_DECLARE_EXCEPTION(FileException_DirectoryNotFound, FileException, char const* directory);
/// A pattern of temporary names that gives no free name.
ZEL_DECLARE_EXCEPTION(FileException_GetTempNameFailed, FileException, char const* pattern);
/// Part of the vocabulary; no operation of the library throws it.
ZEL_DECLARE_EXCEPTION(FileException_NotAllowedToWriteArchivedFile, FileException, char const* fileName);
/// The bytes of an archived file do not match its checksum.
ZEL_DECLARE_EXCEPTION(FileException_FileCorrupted, FileException, char const* fileName);

/// The working directory cannot be told. The message is fixed.
class ZEL_API FileException_GetCurrentDirFailed : public FileException {
public:
    FileException_GetCurrentDirFailed();
};

/// The directory of the running program cannot be told. The message is fixed.
class ZEL_API FileException_GetStartupDirFailed : public FileException {
public:
    FileException_GetStartupDirFailed();
};

} // namespace Zel
