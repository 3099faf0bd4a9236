// Files and their names: Path, File and the streams built on it.
#pragma once

#include <cstdint>
#include <cstdio>
#include <list>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>
#include <zel/api.h>
#include <zel/exception.h>
#include <zel/vector.h>

namespace Zel {

class Archive;
class FColor;
struct CharacterSet;

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

    std::string const& str() const& { return m_text; }
    std::string str() && { return std::move(m_text); }

private:
    bool applyComponent(std::string_view component, std::size_t& driveEnd);

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
    File(File const& other);
    File& operator=(File const& other);

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

    bool endReached() const { return m_position >= std::int64_t{m_offset} + m_size; }

    /// Reads exactly `count` bytes. Past the end, and in a file opened for writing, nothing is read; when the
    /// host delivers too few, the position stands behind those that came. All three throw
    /// FileException_ReadError.
    void read(void* buffer, int count);

    /// Writes `count` bytes; throws FileException_WriteError when not all could be stored. To a file opened
    /// for reading, nothing is written: position and size stay.
    void write(void const* buffer, int count);

    /// Hands what was written to the host; throws FileException_WriteError when the host refuses it. Nothing
    /// happens to a file opened for reading.
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
    /// be told (one longer than 260 characters included and, on POSIX hosts, one with a ":" or "\" in it,
    /// where no File could be opened).
    static void setCurrentDir(std::string const& directory);
    static std::string getCurrentDir();

    /// The directory of the running program, with a final separator. Throws
    /// FileException_GetStartupDirFailed when the host cannot tell it.
    static std::string getStartupDir();

    /// Makes a new directory below Brisvane\temp of the machine-wide data folder and records it in
    /// sm_extractedFiles. Returns its path with a final separator, or "" after 50 failed attempts. All fail
    /// where Brisvane or temp is a link or, on POSIX hosts, belongs to somebody else than the user or root or
    /// may be written by others.
    static std::string getTmpDir();

    /// A name that no file has, from a printf pattern with one integer conversion (%d, %i, %u, %x, %X or %o,
    /// with flags, width and precision) for the numbers 0, 1, 2 and on. It is relative to the working
    /// directory; nothing is created. A pattern without a conversion gives its own text when that is free.
    /// Throws FileException_GetTempNameFailed when it is not, for any other conversion (one with a length
    /// modifier included), and for a name past 259 characters.
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

    /// Extraction: copies of archived files for those who need a real path. Temporary ones go to a directory
    /// of their own (see getTmpDir), and all that they make is recorded for `cleanup`, also when they fail.
    /// Nothing is made or removed through a link that others put there meanwhile.
    ///
    /// An entry is not extracted when nothing can be written under its name, or when its name leads out of
    /// the destination (see whyNotExtracted). Of entries that are one file on this host, the last one stays.
    /// The exceptions name the entry's key: FileException_SeekError and FileException_ReadError when the
    /// archive does not hold the bytes it promises, FileException_FileCorrupted when the checksum differs,
    /// FileException_WriteError when the disk refuses them; no part of the file is left behind then. They
    /// throw FileException_DirectoryNotFound when the given name leads nowhere (see Path::append).

    /// Extracts the file that opening `name` would find in an archive. True when it could: `name` is then the
    /// path of the copy. Otherwise `name` becomes the path under which the disk would be asked and, unless
    /// archive-only is set, the result tells whether that exists. Meant: the temporary directory is made
    /// before anything is looked up.
    static bool extractFile(std::string& name);

    /// Extracts what the newest archive with anything below a directory has there, in the order of the keys,
    /// until one fails. Returns whether all went well; once the first has, `dir` is what was given below the
    /// temporary directory, with a final backslash. When there is none, or the first fails, and archive-only
    /// is 0, `dir` becomes the full path, with a final backslash, and the result tells whether that exists.
    static bool extractDirectory(std::string& dir);

    /// The same, but below `destination`, an existing directory given with a final separator, to stay:
    /// nothing is recorded. Files that are there are overwritten; links that are there are the caller's own
    /// and lead on. An empty destination is refused.
    static bool extractDirectoryPermanent(std::string& dir, std::string destination);

    /// Removes what temporary extractions and getTmpDir have recorded, the newest first, and forgets it.
    /// Failures are ignored: a directory in which somebody else has put files stays. Nothing is removed
    /// through a link below the machine-wide data folder.
    static void cleanup();

    /// Removes the temporary directories of every run, those of other running programs included. Does nothing
    /// where getTmpDir makes none.
    void forced_cleanup();

    /// Removes a directory and all below it, read-only files included. Links are removed, never followed.
    /// Failures are ignored.
    void forced_remove_directory(char const* directory);

    /// Why no entry stored under this name is extracted, in a few words, or null when it may be: names must
    /// lead down from the destination on this host, to a file. For programs that write an archive's entries
    /// themselves.
    static char const* whyNotExtracted(std::string const& name);

    /// Archive-only, 1 at first: while it is not 0, `exists` and the extraction operations do not look at the
    /// disk. Opening a File does not ask it.
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
    // The stream, when the file was opened for reading or for writing; null otherwise. The host need not
    // refuse by itself: Windows' C runtime writes into what it has read ahead, and reads what it is to write.
    std::FILE* readStream() const { return m_mode == READ || m_mode == READ_TEXT ? m_handle : nullptr; }
    std::FILE* writeStream() const { return m_mode == WRITE || m_mode == WRITE_TEXT ? m_handle : nullptr; }
    void openForReading();
    void loseStep() const;

    friend class TextFile; // which reads within what the stream has read ahead

    std::string m_filename;
    Mode m_mode;
    std::int32_t m_size;
    std::int32_t m_offset;
    Archive const* m_archive;
    std::FILE* m_handle;
    std::int32_t m_position; // within the stream: the offset plus the logical position
    // Whether the stream surely stands at m_position: not after a seek that failed, and not once the File was
    // copied, for then either may move the stream that the other reads.
    mutable bool m_inStep;
};

/// A file of typed values, each in a fixed width: 1 byte for bool, char and unsigned char; 2 for short and
/// Float16; 4 for int, long (on every platform) and float; vectors and intervals as their components in
/// order. A read that fails throws as File::read does and leaves the value partly written, with the bytes
/// that came as the file has them.
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

/// A file of text: tokens with white space between them, and lines. Characters are bytes. White space is the
/// space, the tab, the line feed, the vertical tab, the form feed and the carriage return, in every locale; a
/// zero byte ends whatever is being read, as the end of the file does. Errors are those of File.
///
/// A token is skipped to over white space, and the white space behind it is skipped too. It reaches to the
/// next white space, or from one double quote to the next: then it may hold white space and line ends, and
/// the quotes are dropped. Nothing can be escaped. Meant: the token at the end of the file is one zero
/// character.
class ZEL_API TextFile : public File {
public:
    /// Opens the file as File does.
    TextFile(std::string const& name, Mode mode);

    /// Reads all the rest, up to a zero byte.
    void readFile(std::string& text);

    /// Reads a line without its end, CR or LF, over blank lines and leading white space. Whether it had an
    /// end: the last line of a file may have none, and what there is of it is in `line` all the same.
    bool readLine(std::string& line);

    /// Reads the words of a line, up to CR or LF; at the end of the file, what there is. Meant: every white
    /// space ends a word, so two in a row have an empty word between them, and of CR LF the LF is left for
    /// the next line.
    void readLine(std::vector<std::string>& words);

    TextFile& operator>>(std::string& value);

    /// Numbers are read from a token by the rules of the C library's atoi and atof: what does not lead with a
    /// number is 0. An integer becomes the nearest one of 32 bits, signed, and is then stored with the
    /// target's width (-1 is 4294967295 in an unsigned long). A bool is whether such an integer is not 0.
    TextFile& operator>>(bool& value);
    TextFile& operator>>(short& value);
    TextFile& operator>>(unsigned short& value);
    TextFile& operator>>(int& value);
    TextFile& operator>>(unsigned int& value);
    TextFile& operator>>(long& value);
    TextFile& operator>>(unsigned long& value);
    TextFile& operator>>(float& value);

    /// The next character, white space around it skipped; 0 at the end.
    TextFile& operator>>(char& value);

    /// Meant, and unlike char: a token, of which the first character is kept.
    TextFile& operator>>(unsigned char& value);

    TextFile& operator>>(Vector3Template<float>& value);

    /// Red, green and blue; alpha stays as it is.
    TextFile& operator>>(FColor& value);

    /// Nothing is written before or after the value.
    TextFile& operator<<(std::string const& value);

    /// With six decimals.
    TextFile& operator<<(float value);

    /// Meant: as a signed number of 32 bits, so 4294967295 is written as -1.
    TextFile& operator<<(short value);
    TextFile& operator<<(unsigned short value);
    TextFile& operator<<(int value);
    TextFile& operator<<(unsigned int value);
    TextFile& operator<<(long value);
    TextFile& operator<<(unsigned long value);

    /// The components with a space between them.
    TextFile& operator<<(Vector3Template<float> const& value);

    /// Any other number, and bool, char and unsigned char, would silently be written as an int.
    template <class T, std::enable_if_t<std::is_arithmetic_v<T>, int> = 0>
    TextFile& operator<<(T value) = delete;

private:
    int readChar();
    bool nothingToSkip() const;
    std::string_view readAhead();
    void pass(std::size_t count);
    void appendPlain(std::string& text, std::string_view bytes) const;
    char plain(char byte) const;
    int readTo(CharacterSet const& ends, std::string* text);
    int readPast(CharacterSet const& ends, std::string* text);
    void skipWhiteSpaces();
    std::int32_t readInteger();
};

/// A whole file in memory, archived or loose.
class ZEL_API MemoryFile {
public:
    /// Reads the file; throws what opening and reading a File throws.
    MemoryFile(std::string const& name);

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
