// The root of every exception that the library throws, and the exceptions of files and archives.
#pragma once

#include <zel/api.h>

namespace Zel {

/// An error with a message of at most 1023 characters, held inside the object: no exception owns memory, so
/// every one of them can be thrown, caught by value and copied freely.
class ZEL_API Exception {
public:
    /// An empty message.
    Exception();
    Exception(Exception const&) = default;
    Exception& operator=(Exception const&) = default;
    virtual ~Exception();

    /// The message, NUL-terminated; valid as long as this object lives.
    char const* getError() const;

    /// Formats the message by the printf rules. What passes 1023 characters is cut off silently.
    void setError(char const* format, ...) ZEL_PRINTF_FORMAT(2, 3);

private:
    char m_message[1024];
};

/// Declares one kind of failure: a default constructor that leaves the message empty, and one that formats
/// the message of this kind from its arguments. A name appears in the message exactly as it is given.
#define ZEL_DECLARE_EXCEPTION(Name, Base, ...) \
    class ZEL_API Name : public Base {         \
    public:                                    \
        Name() = default;                      \
        Name(__VA_ARGS__);                     \
    }

/// An archive file starts with another version than the reader knows. Not a FileException: a handler for
/// those does not catch it.
ZEL_DECLARE_EXCEPTION(Exception_ArchiveVersionInvalid, Exception, char const* archiveName, int foundVersion,
                      int expectedVersion);
/// An archive's table of entries fails its checksum or contradicts itself. Not a FileException either.
ZEL_DECLARE_EXCEPTION(Exception_ArchiveCorrupt, Exception, char const* archiveName);

/// The family of all failures of files and directories.
class ZEL_API FileException : public Exception {};

/// No stream could be opened, in whatever mode.
ZEL_DECLARE_EXCEPTION(FileException_OpenFailed, FileException, char const* fileName);
/// Part of the vocabulary; no operation of the library throws it.
ZEL_DECLARE_EXCEPTION(FileException_GetSizeFailed, FileException, char const* fileName);
/// A read past the end, or one that delivered fewer bytes than it was asked for.
ZEL_DECLARE_EXCEPTION(FileException_ReadError, FileException, char const* fileName);
/// A write that stored fewer bytes than it was given, a write to a file opened for reading included.
ZEL_DECLARE_EXCEPTION(FileException_WriteError, FileException, char const* fileName);
/// A position that the stream cannot take.
ZEL_DECLARE_EXCEPTION(FileException_SeekError, FileException, char const* fileName);
/// A name that leads above the top, a root step without a drive, or a directory that cannot be entered.
ZEL_DECLARE_EXCEPTION(FileException_DirectoryNotFound, FileException, char const* directory);
/// A pattern for temporary names that cannot give a name of its own.
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
