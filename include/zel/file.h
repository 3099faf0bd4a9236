// Files and their names: Path, File and the streams built on it.
#pragma once

#include <cstdint>
#include <cstdio>
#include <list>
#include <string>
#include <zel/api.h>
#include <zel/exception.h>
#include <zel/vector.h>

namespace Zel {

class Archive;

/// A directory path with one operation, append. Separators are backslashes; a slash is accepted on input.
/// On POSIX hosts the drive "z:" is the root directory: z:\home\me is /home/me.
class ZEL_API Path {
public:
    Path() = default;
    /// Keeps the text as it stands; only append applies its rule.
    explicit Path(std::string text);

    /// Goes from this directory to `text`, without looking at the disk. An empty text changes nothing. A
    /// slash is a backslash, and one separator at the end is dropped (a text of nothing else is a root step).
    /// A text that begins with "\\" (a server) replaces the path; any other is applied component by
    /// component: one with a ":" becomes the drive, an empty one goes to the drive's root, "." stays, ".."
    /// goes up, any other goes down. Throws FileException_DirectoryNotFound, naming `text` with backslashes,
    /// when there is no drive to go to the root of or nothing above. Meant: the components before the failing
    /// one stay applied.
    void append(std::string const& text);

    std::string const& str() const;

private:
    void applyComponent(std::string const& component, std::string const& text);

    std::string m_text;
};

/// One open file, archived or loose, and the services for names and directories that every file shares.
///
/// Names are relative to the data directory, and capitals and lower case are the same: the whole resolved
/// path is folded to lower case before it is looked up anywhere. A file opened for reading is sought in the
/// registered archives first, the newest first, then on disk.
///
/// Every failure throws an exception that carries the name as it was given. A File is used by one thread at a
/// time; set up archives and directories before other threads open files.
class ZEL_API File {
public:
    enum Mode : std::int32_t {
        READ = 0,      ///< archives, then the disk; binary
        WRITE = 1,     ///< the disk only; binary, created or emptied
        READ_TEXT = 2, ///< exactly as READ
        WRITE_TEXT = 3 ///< the disk only; with the platform's line ends, created or emptied
    };

    /// Closed, without a name.
    File();

    /// Opens a file. An archived one is read through once to check its CRC-32, in pieces, at every open.
    /// Throws FileException_OpenFailed when nothing can be opened (a directory, a name with a zero byte, a
    /// loose file past 2^31 - 1 bytes and an unknown mode included), FileException_FileCorrupted when the
    /// checksum of an archived file differs, FileException_SeekError or FileException_ReadError when its
    /// archive does not hold the bytes it promises, and FileException_DirectoryNotFound when the name leads
    /// nowhere (see Path::append). An archive that cannot be opened counts as one without the file.
    File(std::string const& name, Mode mode);

    /// Meant: copies are shallow. Copy and source share one stream and its place in it, each with a position
    /// of its own, and each destructor closes the stream it holds, so all but one of them must be kept from
    /// doing so. An assignment does not close the stream that its target held before.
    File(File const&) = default;
    File& operator=(File const&) = default;

    /// Closes the stream.
    virtual ~File();

    /// The name as it was given.
    std::string const& getFilename() const;
    Mode getMode();

    /// Bytes to read; for a file being written, the sum of all writes. Meant: a write that overwrites earlier
    /// bytes counts too.
    int getSize() const;

    /// Bytes from the start of the file. Setting it is not checked against the size; a position that the
    /// stream refuses throws FileException_SeekError and is kept all the same.
    int getPosition() const;
    void setPosition(int position);

    bool endReached() const;

    /// Reads exactly `count` bytes. Past the end, nothing is read; when the host delivers too few, the
    /// position stands behind those that came. Both throw FileException_ReadError.
    void read(void* buffer, int count);

    /// Writes `count` bytes; throws FileException_WriteError when not all could be stored, also for a file
    /// opened for reading.
    void write(void const* buffer, int count);

    /// Hands what was written to the host; throws FileException_WriteError when the host refuses it.
    void flush();

    /// The data directory, the base of every file's name. Meant: setting appends (see Path::append), so a
    /// relative directory lies below the present one, and only one with a drive replaces it. Getting adds a
    /// final separator unless it is empty.
    static void setDataDir(std::string directory);
    static std::string getDataDir();

    /// The current directory. Setting appends to the library's own; as long as no named archive is registered
    /// it also changes the process's working directory to `directory`, and throws
    /// FileException_DirectoryNotFound when that fails. Getting tells, as long as no named archive is
    /// registered, the working directory with a final separator and remembers it; afterwards, what is
    /// remembered, without one. It throws FileException_GetCurrentDirFailed when the working directory cannot
    /// be told (one longer than 260 characters included).
    static void setCurrentDir(std::string const& directory);
    static std::string getCurrentDir();

    /// The directory of the running program, with a final separator. Throws
    /// FileException_GetStartupDirFailed when the host cannot tell it.
    static std::string getStartupDir();

    /// Makes a new directory below Brisvane\temp of the machine-wide data folder and records it in
    /// sm_extractedFiles. Returns its path with a final separator, or "" after 50 failed attempts.
    static std::string getTmpDir();

    /// A name that no file has, from a printf pattern with one integer conversion (%u, %d or %x, with flags
    /// and width) for the numbers 0, 1, 2 and on. It is relative to the working directory; nothing is
    /// created. A pattern without a conversion gives its own text when that is free. Throws
    /// FileException_GetTempNameFailed when it is not, for any other conversion, and for a name past 259
    /// characters.
    static std::string getTempName(std::string const& pattern);

    /// Whether a File of that name could be read: an archive has it or, when archive-only is 0, the disk
    /// (where a directory counts too). Throws FileException_DirectoryNotFound as File does.
    static bool exists(std::string const& name);

    /// The name without everything up to its last "/" and then its last "\". Meant: each of the two steps
    /// keeps at most length - 2 characters, so the last one is lost too when the separator comes first
    /// ("/abc" gives "ab").
    static std::string stripPath(std::string const& name);

    /// The name up to its last ".". Meant: a "." in a directory's name counts as well ("a.b\c" gives "a").
    static std::string stripExtension(std::string const& name);

    /// The extension of the name's last component, without the "."; empty when there is none, and for a name
    /// with a directory, stem or extension of more than 255 characters.
    static std::string getExtension(std::string const& name);

    /// Everything up to and including the last separator; empty when there is none.
    static std::string getFileDir(std::string const& name);

    /// Archive-only, 1 at first: while it is not 0, `exists` does not look at the disk. Opening a File does
    /// not ask it.
    static void setArchiveOnly(int archiveOnly);
    static int getArchiveOnly();

    /// Unique names for temporary directories, 1 at first; 0 numbers them tmp_1, tmp_2 and on.
    static void setUniquePathNames(int unique);

    static Path sm_datadir;
    static Path sm_currentDir;
    static int sm_archiveonly;
    static int sm_uniquepathnames;
    /// Temporary files and directories in order of creation; a directory's path ends in a separator.
    static std::list<std::string> sm_extractedFiles;

private:
    void initializeMembers();
    bool openArchived(std::string const& path);
    void openLoose(std::string const& path);
    void checkEntry(std::uint32_t expectedCrc);

    std::string m_filename;
    Mode m_mode;
    std::int32_t m_size;
    std::int32_t m_offset;
    Archive const* m_archive;
    std::FILE* m_handle;
    std::int32_t m_position; // within the stream: the offset plus the logical position
};

/// A file of typed values, each in a fixed width: 1 byte for bool, char and unsigned char; 2 for short and
/// Float16; 4 for int, long (on every platform) and float; vectors and intervals as their components in
/// order. A read that fails throws as File::read does and leaves the value partly written.
class ZEL_API BinaryFile : public File {
public:
    enum ByteOrder : std::int32_t {
        BYTEORDER_NATIVE = 0, ///< as the machine has them
        BYTEORDER_SWAPPED = 1 ///< the bytes of every 2- and 4-byte value reversed
    };

    /// Opens the file as File does.
    BinaryFile(std::string const& name, Mode mode, ByteOrder byteOrder);

    BinaryFile& operator>>(bool& value);
    BinaryFile& operator>>(char& value);
    BinaryFile& operator>>(unsigned char& value);
    BinaryFile& operator>>(short& value);
    BinaryFile& operator>>(unsigned short& value);
    BinaryFile& operator>>(int& value);
    BinaryFile& operator>>(unsigned int& value);
    BinaryFile& operator>>(long& value);
    BinaryFile& operator>>(unsigned long& value);
    BinaryFile& operator>>(float& value);
    BinaryFile& operator>>(Float16& value);
    BinaryFile& operator>>(Vector2Template<float>& value);
    BinaryFile& operator>>(Vector3Template<float>& value);
    BinaryFile& operator>>(Vector4Template<float>& value);
    BinaryFile& operator>>(IntervalTemplate<float>& value);

    /// Meant: no length is read. The text takes as many bytes as the whole file has, from the present
    /// position on, so only at position 0 does it succeed; anywhere else it takes what is left and throws
    /// FileException_ReadError.
    BinaryFile& operator>>(std::string& value);

    BinaryFile& operator<<(bool value);
    BinaryFile& operator<<(char value);
    BinaryFile& operator<<(unsigned char value);
    BinaryFile& operator<<(short value);
    BinaryFile& operator<<(unsigned short value);
    BinaryFile& operator<<(int value);
    BinaryFile& operator<<(unsigned int value);
    BinaryFile& operator<<(long value);
    BinaryFile& operator<<(unsigned long value);
    BinaryFile& operator<<(float value);
    BinaryFile& operator<<(Float16 value);
    BinaryFile& operator<<(Vector2Template<float> const& value);
    BinaryFile& operator<<(Vector3Template<float> const& value);
    BinaryFile& operator<<(Vector4Template<float> const& value);
    BinaryFile& operator<<(IntervalTemplate<float> const& value);

    /// Meant, and unlike reading: the length as 4 bytes, then the characters.
    BinaryFile& operator<<(std::string const& value);

    /// A pointer would silently become a bool. Write text, string literals included, as std::string.
    template <class T>
    BinaryFile& operator<<(T const* pointer) = delete;

    /// Whether this platform stores the low byte first.
    static bool const sm_bPlatformUsesLittleEndian;

private:
    unsigned short swapShort(unsigned short value) const;
    unsigned long swapLong(unsigned long value) const;
    float swapFloat(float value) const;

    ByteOrder m_byteOrder;
};

/// A whole file in memory, archived or loose.
class ZEL_API MemoryFile {
public:
    /// Reads the file; throws what opening and reading a File throws.
    explicit MemoryFile(std::string const& name);

    /// Meant: copies are shallow. Each destructor releases the block, so all but one of them must be kept
    /// from doing so.
    MemoryFile(MemoryFile const&) = default;
    MemoryFile& operator=(MemoryFile const&) = default;
    virtual ~MemoryFile();

    /// The file's bytes, owned by this object; null for an empty file.
    void* getAddress() const;
    int getSize() const;

private:
    void initializeMembers();

    unsigned char* m_data;
    std::int32_t m_size;
};

} // namespace Zel
