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

/// A directory path with one operation, append. Separators are backslashes; append takes slashes, too.
/// On POSIX hosts the drive "z:" is the root directory: z:\home\me is /home/me.
class ZEL_API Path {
public:
    Path() = default;
    /// Keeps the text as it stands; only append applies its rule.
    explicit Path(std::string text);

    /// Goes from this directory to `text`; does not look at the disk.
    ///
    /// From c:\data, "a/b" leads to c:\data\a\b, "..\x" to c:\x, "\x" to c:\x, and "d:\x" to d:\x.
    ///
    /// Slashes count as backslashes. One separator at the end is dropped. An empty text changes nothing. A
    /// text that begins with two separators (a server) replaces the path. Any other text is applied part by
    /// part: a part with a ":" replaces all by that drive, an empty part goes to the drive's root, "." stays,
    /// ".." goes up, and any other part goes down.
    ///
    /// Throws FileException_DirectoryNotFound, naming `text` with backslashes, when ".." finds no
    /// backslash before it, or an empty part no drive. Meant: the parts before it stay applied.
    void append(std::string const& text);

    std::string const& str() const& { return m_text; }
    std::string str() && { return std::move(m_text); }

private:
    bool applyComponent(std::string_view component, std::size_t& driveEnd);

    std::string m_text;
};

/// One open file, archived or loose, and the services for names and directories that all files share.
///
/// Names are relative to the data directory. Case does not matter: the whole resolved path is folded to lower
/// case before it is looked up. A file opened for reading is looked up in the archives that are searched (see
/// Archive::getArchiveCount), the one registered last first, and then on the disk.
///
/// Opening, reading, writing and seeking throw when they fail; the exception names the file as the caller
/// did. The other operations say what they do. One thread at a time uses a File. Set up archives and
/// directories before other threads open files.
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

    /// Opens a file. Every open of an archived file reads it through once, in pieces, to check its CRC-32.
    /// The newest archive that has the file decides. When that archive cannot be opened, the disk is
    /// searched; older archives are not.
    ///
    /// Throws FileException_OpenFailed when nothing can be opened. That includes a directory, a name with a
    /// zero byte, a loose file of more than 2^31 - 1 bytes, and an unknown mode. Throws
    /// FileException_DirectoryNotFound when the name leads nowhere (see Path::append). For an archived file,
    /// throws FileException_FileCorrupted when its checksum differs, and FileException_SeekError or
    /// FileException_ReadError when the archive is shorter than it promises.
    File(std::string const& name, Mode mode);

    /// Meant: copies are shallow. Copy and source share one stream, and a read by one moves it for both; each
    /// has a position of its own, which only its own reads move: call setPosition before reading through the
    /// other. Each destructor closes the stream, so destroy only one of the objects that share it. An
    /// assignment does not close the stream that its target held before.
    File(File const& other);
    File& operator=(File const& other);

    /// Closes the stream. A failure to store the last bytes is lost here: call flush first to learn of it.
    virtual ~File();

    /// The name as it was given.
    std::string const& getFilename() const;
    Mode getMode();

    /// The length in bytes; of a file being written, the sum of all writes. Meant: a write that overwrites
    /// earlier bytes counts, too.
    int getSize() const;

    /// The position in bytes from the start of the file. Setting it compares it neither with the size nor
    /// with 0: keep it from 0 to getSize(). Throws FileException_SeekError when the host refuses to go there;
    /// getPosition then tells the new position, although the stream is not there.
    int getPosition() const;
    void setPosition(int position);

    /// Whether the position is at the end or behind it.
    bool endReached() const { return m_position >= std::int64_t{m_offset} + m_size; }

    /// Reads exactly `count` bytes. Throws FileException_ReadError, and reads nothing, when fewer are left,
    /// `count` is negative, or the file was opened for writing. Throws it, too, when the host delivers too
    /// few; the position is behind those that came.
    void read(void* buffer, int count);

    /// Writes `count` bytes. Throws FileException_WriteError when not all could be stored; position and size
    /// then count those that were. Throws it, too, and writes nothing, when the file was opened for reading,
    /// `count` is negative, or the file would pass 2^31 - 1 bytes.
    void write(void const* buffer, int count);

    /// Hands what was written to the host. Throws FileException_WriteError when the host refuses it. Does
    /// nothing for a file opened for reading.
    void flush();

    /// The data directory, which every file's name is relative to; empty at first. Meant: setting appends
    /// (see Path::append). setDataDir("c:/data") and then setDataDir("maps") gives c:\data\maps; only a
    /// directory with a drive, or a server, replaces the present one. Getting adds a final separator unless
    /// it is empty. Throws FileException_DirectoryNotFound as append does.
    static void setDataDir(std::string directory);
    static std::string getDataDir();

    /// The library's current directory. It is the process's working directory until an archive with a
    /// file name is registered. From then on it is what was remembered last, by getCurrentDir or when the
    /// first archive was made.
    ///
    /// Setting appends to what is remembered, and throws FileException_DirectoryNotFound as append does.
    /// Without such an archive it also changes the working directory to `directory`; it throws the same when
    /// that fails, and what is remembered has changed then.
    ///
    /// Getting, without such an archive, remembers the working directory and returns it with a final
    /// separator. It throws FileException_GetCurrentDirFailed when the host cannot tell it, when it has more
    /// than 260 characters and, on POSIX hosts, when a ":" or "\" is in it. With one, it returns what is
    /// remembered, without a final separator.
    static void setCurrentDir(std::string const& directory);
    static std::string getCurrentDir();

    /// The directory of the running program, with a final separator. Throws
    /// FileException_GetStartupDirFailed when the host cannot tell it.
    static std::string getStartupDir();

    /// Makes a new directory below Brisvane\temp of the machine-wide data folder, and records it in
    /// sm_extractedFiles. Returns its path with a final separator, or "" after 50 failed attempts. All
    /// attempts fail when Brisvane or temp is a link. On POSIX hosts they fail, too, when one of the two
    /// belongs to anybody but the user or root, or others may write to it.
    static std::string getTmpDir();

    /// A name that no file has: the first of those that a printf pattern gives for the numbers 0, 1, 2 and so
    /// on. "shot%03d.tga" gives "shot000.tga". The name is relative to the working directory; nothing is
    /// created.
    ///
    /// The pattern holds one integer conversion (%d, %i, %u, %x, %X or %o, with flags, width and precision).
    /// One without a conversion gives its own text. Throws FileException_GetTempNameFailed when all names
    /// of the pattern are taken, for any other conversion, for a length modifier (%ld), and for a name of
    /// more than 259 characters.
    static std::string getTempName(std::string const& pattern);

    /// Whether an archive has a file of that name. When archive-only is 0, the disk is asked as well, where a
    /// directory counts, too. Throws FileException_DirectoryNotFound as opening a File does.
    static bool exists(std::string const& name);

    /// The name behind its last "/", and of that what is behind its last "\". Meant: when the text begins
    /// with the separator, the result also loses its last character: "/abc" gives "ab".
    static std::string stripPath(std::string const& name);

    /// The name up to its last ".". Meant: a "." in a directory's name counts, too: "a.b\c" gives "a".
    static std::string stripExtension(std::string const& name);

    /// The extension of the name's last part, without the "."; empty when there is none. Empty, too, when the
    /// directory with its separator, the stem, or the extension with its "." has more than 255 characters.
    /// The name ends at a zero byte.
    static std::string getExtension(std::string const& name);

    /// Everything up to the last separator, with it; empty when there is none.
    static std::string getFileDir(std::string const& name);

    // Extraction: copies of archived files for programs that need a real path. A temporary extraction makes a
    // directory of its own (see getTmpDir). All that it makes is recorded for `cleanup`, also when it fails;
    // nothing of it is made or removed through a link that others put there meanwhile.
    //
    // Extraction of an entry fails when its archive's file cannot be opened, its key is not below the data
    // directory, no temporary directory can be made, nothing can be written under its name, or that leads out
    // of the destination (see whyNotExtracted). Of entries that are one file on this host, the last one
    // stays.
    //
    // Exceptions name the entry's key. FileException_FileCorrupted: the checksum differs.
    // FileException_SeekError, FileException_ReadError: the archive is shorter than it promises.
    // FileException_WriteError: the disk refuses the bytes. No part of the file is left behind then.
    // FileException_DirectoryNotFound: the given name leads nowhere (see Path::append).

    /// Extracts one archived file, the one that File(name) would read. On success returns true, and `name` is
    /// the path of the copy. Otherwise `name` becomes its full path in lower case, and the result is false
    /// while archive-only is set, else whether that exists on the disk. Meant: the temporary directory is
    /// made first, whether or not anything is found.
    static bool extractFile(std::string& name);

    /// Extracts all entries below a directory, in the order of their keys, from the newest archive that has
    /// any. Meant: takes every entry whose key contains the directory's full path and a backslash; with an
    /// empty data directory that may lie in another directory. Stops at the first entry that fails. Returns
    /// whether all succeeded. Once one has, `dir` is the temporary directory followed by what was given, with
    /// a final backslash.
    ///
    /// When no archive has any, or the first fails, the result is false while archive-only is set. When it
    /// is 0, `dir` becomes its full path in lower case, with a final backslash, and the result tells whether
    /// that exists on the disk.
    static bool extractDirectory(std::string& dir);

    /// The same, but into `destination`, an existing directory given with a final separator, and for good:
    /// nothing is recorded for `cleanup`. Files there are overwritten. Links there are followed, as they are
    /// the caller's own. With "" as destination nothing is extracted.
    static bool extractDirectoryPermanent(std::string& dir, std::string destination);

    /// Removes what temporary extractions and getTmpDir have recorded, the newest first, and empties the
    /// record. Failures are ignored: a directory in which somebody else has put files stays. Nothing is
    /// removed through a link below the machine-wide data folder.
    static void cleanup();

    /// Removes Brisvane\temp with all that is in it, the temporary directories of other running programs,
    /// too. Does nothing where getTmpDir could make none.
    void forced_cleanup();

    /// Removes a directory and all that is in it, read-only files included. Links are removed, never
    /// followed. Failures are ignored.
    void forced_remove_directory(char const* directory);

    /// Why an entry stored under this name is refused, in a few words (a literal); null when it is not
    /// refused. A name must lead down from the destination to a file, on this host. For programs that write
    /// entries to disk themselves.
    static char const* whyNotExtracted(std::string const& name);

    /// Archive-only, 1 at first. While it is not 0, `exists` and the extraction operations do not look for
    /// files on the disk. Opening a File ignores this setting.
    static void setArchiveOnly(int archiveOnly);
    static int getArchiveOnly();

    /// Whether temporary directories get unique names; 1 at first. With 0 they are tmp_1, tmp_2 and so on.
    static void setUniquePathNames(int unique);

    // What the operations above set and read.
    static Path sm_datadir;
    static Path sm_currentDir;
    static int sm_archiveonly;
    static int sm_uniquepathnames;
    /// What `cleanup` removes, in order of creation; a directory's path ends with a separator.
    static std::list<std::string> sm_extractedFiles;

private:
    void initializeMembers();
    // The stream, when the file was opened for that; null otherwise. The C runtime of Windows would not
    // refuse: it writes into what it has read ahead, and reads what it is to write.
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

/// A file of typed values of fixed width. bool, char and unsigned char take 1 byte; short, unsigned short and
/// Float16 take 2; int, long (on every platform), their unsigned types and float take 4; vectors and
/// intervals are their components in order.
///
/// Reading throws as File::read does. When the host delivers too few bytes, a number holds those that came,
/// as the file has them (from an archive, scrambled).
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

    /// Reads the whole file; call it at position 0. Meant: no length is read, unlike what << writes. At
    /// another position it asks for the whole file's length, reads what is left, and throws
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

    /// Writes the length as 4 bytes, then the characters. Meant, although >> reads no length.
    BinaryFile& operator<<(std::string const& value);

    /// Deleted: a pointer would be written as a bool. Write text, literals too, as std::string.
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
/// space, the tab, the line feed, the vertical tab, the form feed and the carriage return, in every locale. A
/// zero byte ends a token, a line, or readFile, as the end of the file does. Errors are those of File.
///
/// Reading a token skips the white space before it and behind it. A token reaches to the next white space.
/// One that begins with a double quote reaches to the next double quote; it may hold white space and line
/// ends, and both quotes are dropped. There is no escape character. Meant: at the end of the file a token is
/// one zero character.
class ZEL_API TextFile : public File {
public:
    /// Opens the file as File does.
    TextFile(std::string const& name, Mode mode);

    /// Reads the rest of the file, up to a zero byte.
    void readFile(std::string& text);

    /// Skips white space (and so blank lines), then reads a line without its CR or LF. True when CR or LF
    /// ended it; false when a zero byte or the file's end did. `line` holds what was read either way.
    bool readLine(std::string& line);

    /// Reads the words of a line, up to CR, LF or the end of the file. A zero byte ends a word, not the line.
    /// Meant: every single white space ends a word, so two in a row have an empty word between them. Meant:
    /// of CR LF, the LF is left and becomes a line of its own.
    void readLine(std::vector<std::string>& words);

    TextFile& operator>>(std::string& value);

    /// Numbers are read from a token by the rules of atoi and atof in the "C" locale: a token that does not
    /// begin with a number is 0. Integers are limited to -2147483648 to 2147483647, for unsigned
    /// types, too, and then converted to the target's type (-1 becomes 4294967295 in an unsigned long). A
    /// bool is true when the integer is not 0.
    TextFile& operator>>(bool& value);
    TextFile& operator>>(short& value);
    TextFile& operator>>(unsigned short& value);
    TextFile& operator>>(int& value);
    TextFile& operator>>(unsigned int& value);
    TextFile& operator>>(long& value);
    TextFile& operator>>(unsigned long& value);
    TextFile& operator>>(float& value);

    /// The next character that is no white space; 0 at the end. The white space behind it is skipped, too.
    TextFile& operator>>(char& value);

    /// Meant, and unlike char: reads a whole token and keeps its first character.
    TextFile& operator>>(unsigned char& value);

    TextFile& operator>>(Vector3Template<float>& value);

    /// Red, green and blue; alpha stays as it is.
    TextFile& operator>>(FColor& value);

    TextFile& operator<<(std::string const& value);

    /// Written with six decimals.
    TextFile& operator<<(float value);

    /// Written as signed numbers of 32 bits. Meant: 4294967295 is written as -1.
    TextFile& operator<<(short value);
    TextFile& operator<<(unsigned short value);
    TextFile& operator<<(int value);
    TextFile& operator<<(unsigned int value);
    TextFile& operator<<(long value);
    TextFile& operator<<(unsigned long value);

    /// Written as the components with a space between them.
    TextFile& operator<<(Vector3Template<float> const& value);

    /// Deleted: bool, char, unsigned char and double would be written as an int or a float.
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
    /// Reads the file. Throws what opening and reading a File throws.
    MemoryFile(std::string const& name);

    /// Meant: copies are shallow and share one block of memory. Each destructor releases it, so destroy only
    /// one of the objects that share it.
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
