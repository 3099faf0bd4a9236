// The whole contract with the host. windows/ and posix/ each implement it; a third platform is a third
// folder.
//
// Paths are the library's own: drive:\dir\file or dir\file, "/" allowed. No function throws for a host that
// refuses: each one tells in its result. A path with a zero byte in it names nothing on any platform.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace Zel::platform {

struct StreamCloser {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};
/// A C stream that one scope owns.
using Stream = std::unique_ptr<std::FILE, StreamCloser>;

/// A file that is open for reading. It is read from the host straight, until a stream takes it over.
class Source {
public:
    Source() = default;
    /// Opens a file. It is not open on failure, which opening a directory is.
    explicit Source(std::string const& path);
    Source(Source&& other) noexcept { swap(other); }
    Source& operator=(Source&& other) noexcept {
        swap(other);
        return *this;
    }
    ~Source();

    bool isOpen() const { return m_descriptor != -1; }
    /// In bytes, as it was when the file was opened; -1 when the host could not tell.
    std::int64_t length() const { return m_length; }
    /// Goes to a place in bytes from the start. False on failure.
    bool seek(std::int64_t position);
    /// Reads the next bytes and tells how many: fewer at the end of the file, or when the host fails.
    std::size_t read(void* bytes, std::size_t count);
    /// Gives the file away, to a stream that stands at the same place. Null on failure.
    Stream toStream();

private:
    void swap(Source& other) noexcept {
        std::swap(m_descriptor, other.m_descriptor);
        std::swap(m_length, other.m_length);
    }

    int m_descriptor = -1; ///< of the C runtime, on either platform
    std::int64_t m_length = -1;
};

/// What a file is opened for.
enum class Open {
    Write,     ///< from its start; it is made, or emptied
    WriteText, ///< the same, with the host's line ends
    Append     ///< at its end; it is made if need be. Trees alone open files for it
};

/// Opens a file to be written. Null on failure, which opening a directory is.
Stream openStream(std::string const& path, Open purpose);

/// What the stream holds of its file beyond the place where it stands, without asking the host. It stays
/// until the stream is used.
inline std::string_view heldBytes(std::FILE* stream);

/// The same, read from the host when there is nothing: one byte at least, unless the stream's end or an error
/// has been reached.
inline std::string_view readAhead(std::FILE* stream);

/// Reads bytes that the stream holds.
inline void passReadAhead(std::FILE* stream, std::size_t count);

/// Whether a file or directory of that name exists.
bool pathExists(std::string const& path);

/// Whether anything has that name, a link that leads nowhere included.
bool isTaken(std::string const& path);

enum class Making { Made, Existed, Failed };

/// A directory, and what is below it. It is opened once, and every directory further down from the one above:
/// when others replace a directory meanwhile, no operation leaves the tree. (A host that has paths alone
/// looks at each part before it acts.)
///
/// Paths lead down from it: names with separators between them, where empty names and "." stay in place.
class Tree {
public:
    enum Kind {
        Own,    ///< the caller's: links in it lead on
        Private ///< nobody else's. On the way down, links are refused. So are, where the host knows owners,
                ///< directories that belong to others than the user and root, or that others may write to
    };

    /// Opens the directory; links that lead to it are followed. When it cannot be opened, all that is done in
    /// it fails.
    Tree(std::string const& directory, Kind kind);
    ~Tree();

    /// Makes one directory inside an existing one. "Existed" tells that there is one to be entered.
    Making makeDirectory(std::string const& path);

    /// Opens a file for Write or Append. In a private tree, Write removes what has that very name (of a link,
    /// the link itself) and makes a new file, and Append opens plain files alone. Null on failure.
    Stream openFile(std::string const& path, Open purpose);

    /// Removes a file; of a link, the link itself. A failure is ignored.
    void removeFile(std::string const& path);

    /// Removes an empty directory. A failure is ignored.
    void removeDirectory(std::string const& path);

    /// Removes a directory and all that it holds, what is read-only included. Links are removed, never
    /// followed. What cannot be removed stays, and files that have the name do.
    void removeTree(std::string const& path);

private:
    class Walk;
    std::unique_ptr<Walk> m_walk;
};

/// Whether the name, without separators and neither "." nor "..", is that of an ordinary file. On Windows,
/// names of devices and those of nothing but dots and blanks are not.
bool isFileName(std::string const& name);

/// Makes a directory the working directory of the process. False on failure.
bool changeDirectory(std::string const& path);

/// The working directory of the process, of at most 260 characters; nothing when it is longer or gone, or has
/// a name that no path of the library's can hold.
std::optional<std::string> currentDirectory();

/// The directory of the running program, with a final separator.
std::optional<std::string> startupDirectory();

enum class FolderQuery {
    Locate, ///< tell the path, whether or not it exists
    Create  ///< make whatever of it is missing
};

/// A sub-folder of the machine-wide data folder, without a final separator. None is created where that could
/// not be entered as a private tree below the data folder.
std::optional<std::string> commonDataFolder(std::string const& subFolder, FolderQuery query);

/// The name of this computer.
std::optional<std::string> computerName();

/// The time of day in units of 100 ns since 1601-01-01 UTC; 0 when the host cannot tell it as a number.
std::uint64_t systemTime();

/// Milliseconds of a steady clock, modulo 2^32.
std::uint32_t milliseconds();

/// Has `milliseconds` advance in steps of 1 until endMillisecondTicks is called. False when the host refuses.
bool beginMillisecondTicks();
void endMillisecondTicks();

/// The finest steady counter of the host, in units of its own.
std::uint64_t performanceCounter();

/// The units of performanceCounter in a second; nothing when the host has no such counter.
std::optional<std::int64_t> performanceFrequency();

/// Tells the host that new memory will be used from end to end, so that it may hand it out in large pieces.
void expectUse(void* memory, std::size_t size);

/// A picture whose pixels stand row by row from the top, without padding.
struct JpegPicture {
    int width = 0;
    int height = 0;
    int bytesPerPixel = 3; ///< 1: grey; 3: blue, green and red; 4: the same, and 255

    std::size_t rowSize() const {
        return static_cast<std::size_t>(width) * static_cast<std::size_t>(bytesPerPixel);
    }
    std::size_t size() const { return rowSize() * static_cast<std::size_t>(height); }
};

enum class JpegResult {
    Done,
    UnsupportedColorSpace, ///< neither 24-bit colour nor 8-bit grey; nothing is converted
    TooManyPixels,         ///< more than 2^31 - 1; width and height are told
    Failed
};

/// Decodes a JPEG file on the disk. `takeRoom` gives memory for all bytes of the picture; it is called once
/// at most, with a size that the file's bytes can fill, and may throw.
JpegResult decodeJpeg(std::string const& path, JpegPicture& picture,
                      std::function<unsigned char*(JpegPicture const&)> const& takeRoom);

/// Encodes a picture of three bytes a pixel and drops the result. False when that fails.
bool encodeJpeg(JpegPicture const& picture, unsigned char* bytes);

} // namespace Zel::platform

#include "read_ahead.h" // the inline part, from the folder of the host
