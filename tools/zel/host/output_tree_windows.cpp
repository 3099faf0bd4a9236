// Paths from the root, each part of which is looked at before anything is done.

#include "host/output_tree.h"

#include "command_line/failure.h"
#include "command_line/printable_text.h"

#include <windows.h>

#include <cerrno>
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace zel {
namespace {

namespace fs = std::filesystem;

struct HandleCloser {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};

FileIdentity identityOf(BY_HANDLE_FILE_INFORMATION const& info) {
    return {info.dwVolumeSerialNumber, std::uint64_t{info.nFileIndexHigh} << 32 | info.nFileIndexLow};
}

} // namespace

FileIdentity identityOf(std::FILE* stream) {
    BY_HANDLE_FILE_INFORMATION info = {};
    GetFileInformationByHandle(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream))), &info);
    return identityOf(info);
}

class OutputTree::Walk {
public:
    explicit Walk(fs::path root) : m_root(std::move(root)), m_here(m_root) {
        if (!fs::is_directory(m_root))
            throw Failure(kOperatingFailure,
                          "cannot open " + printableName(m_root.string()) + ": it is no directory");
    }

    fs::path pathOf(fs::path const& name) const { return m_here / name; }

    void enter(fs::path const& directory) {
        m_here = m_root;
        for (fs::path const& name : directory) {
            m_here /= name;
            DWORD const attributes = GetFileAttributesW(m_here.c_str());
            bool const exists = attributes != INVALID_FILE_ATTRIBUTES;
            if (exists && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0)
                throw Failure(kFinding, printableName(m_here.string()) + " is a link");
            if (exists && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
                throw Failure(kFinding, printableName(m_here.string()) + " is no directory");
            if (!exists)
                fs::create_directory(m_here);
        }
    }

private:
    fs::path m_root;
    fs::path m_here;
};

OutputTree::OutputTree(fs::path root) : m_walk(std::make_unique<Walk>(std::move(root))) {}
OutputTree::~OutputTree() = default;

void OutputTree::enter(fs::path const& directory) { m_walk->enter(directory); }

std::optional<OutputTree::Found> OutputTree::find(fs::path const& name) const {
    HANDLE const file =
        CreateFileW(m_walk->pathOf(name).c_str(), FILE_READ_ATTRIBUTES,
                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                    FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr); // directories, too
    if (file == INVALID_HANDLE_VALUE)
        return std::nullopt;
    std::unique_ptr<HANDLE, HandleCloser> const closer(file);
    BY_HANDLE_FILE_INFORMATION info;
    if (GetFileInformationByHandle(file, &info) == FALSE)
        return std::nullopt;
    return Found{identityOf(info), (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0};
}

std::FILE* OutputTree::create(fs::path const& name) const {
    int const flags = _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT;
    int const file = _wopen(m_walk->pathOf(name).c_str(), flags, _S_IREAD | _S_IWRITE);
    std::FILE* const stream = file != -1 ? _fdopen(file, "wb") : nullptr;
    if (file != -1 && stream == nullptr) {
        _close(file);
        remove(name);
    }
    return stream;
}

std::error_code OutputTree::rename(fs::path const& from, fs::path const& to) const {
    std::error_code error;
    fs::rename(m_walk->pathOf(from), m_walk->pathOf(to), error);
    return error;
}

void OutputTree::remove(fs::path const& name) const {
    std::error_code ignored;
    fs::remove(m_walk->pathOf(name), ignored);
}

} // namespace zel
