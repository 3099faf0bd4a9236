// Trees on Windows: paths from the root, each part of which is looked at before anything is done.

#include "platform/path_parts.h"
#include "platform/platform.h"
#include "platform/stream_mode.h"
#include "platform/windows/paths.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <cstring>

namespace Zel::platform {
namespace {

struct SearchCloser {
    using pointer = HANDLE;
    void operator()(HANDLE search) const { FindClose(search); }
};

bool hasAttribute(DWORD attributes, DWORD attribute) {
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & attribute) != 0;
}

bool isLink(std::string const& path) {
    return hasAttribute(GetFileAttributesA(path.c_str()), FILE_ATTRIBUTE_REPARSE_POINT);
}

/// Makes a new file; what has the name goes first.
Stream replaceFile(std::string const& path) {
    _unlink(path.c_str()); // mostly there is nothing
    int const flags = _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT;
    int const descriptor = _open(path.c_str(), flags, _S_IREAD | _S_IWRITE);
    if (descriptor == -1)
        return nullptr;
    Stream stream(_fdopen(descriptor, modeOf(Open::Write)));
    if (!stream) {
        _close(descriptor);
        _unlink(path.c_str());
    }
    return stream;
}

void removeAll(std::string const& directory);

void removeEntry(std::string const& path, DWORD attributes) {
    bool const link = hasAttribute(attributes, FILE_ATTRIBUTE_REPARSE_POINT);
    bool const directory = hasAttribute(attributes, FILE_ATTRIBUTE_DIRECTORY);
    if (directory && !link) {
        removeAll(path);
        return;
    }
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    if (directory)
        RemoveDirectoryA(path.c_str()); // the link to a directory, not what it leads to
    else
        DeleteFileA(path.c_str());
}

void removeEntries(std::string const& directory) {
    WIN32_FIND_DATAA entry;
    HANDLE const first = FindFirstFileA((directory + "\\*").c_str(), &entry);
    if (first == INVALID_HANDLE_VALUE)
        return;
    std::unique_ptr<HANDLE, SearchCloser> const search(first);
    do {
        if (std::strcmp(entry.cFileName, ".") != 0 && std::strcmp(entry.cFileName, "..") != 0)
            removeEntry(directory + "\\" + entry.cFileName, entry.dwFileAttributes);
    } while (FindNextFileA(first, &entry) != FALSE);
}

void removeAll(std::string const& directory) {
    if (!isLink(directory))
        removeEntries(directory);
    SetFileAttributesA(directory.c_str(), FILE_ATTRIBUTE_NORMAL);
    RemoveDirectoryA(directory.c_str());
}

} // namespace

bool leadsThroughLink(std::string const& path, std::size_t rootLength) {
    std::string const root = path.substr(0, rootLength);
    for (PathParts parts(std::string_view(path).substr(rootLength)); parts.next();)
        if (!parts.upToHere().empty() && isLink(root + std::string(parts.upToHere())))
            return true;
    return false;
}

class Tree::Walk {
public:
    Walk(std::string root, Kind kind) : m_root(std::move(root)), m_kind(kind) {
        if (!m_root.empty() && m_root.find_last_of("\\/:") != m_root.size() - 1)
            m_root += '\\';
    }

    bool isPrivate() const { return m_kind == Private; }

    /// The host's path; empty when the way there cannot be gone.
    std::string pathTo(std::string const& below) const {
        std::string path = m_root + below;
        while (path.size() > m_root.size() && path.ends_with('\\'))
            path.pop_back();
        if (hasZeroByte(path) || path.size() == m_root.size())
            return {};
        std::size_t const above = path.find_last_of("\\/");
        if (isPrivate() && above != std::string::npos && above > m_root.size() &&
            leadsThroughLink(path.substr(0, above), m_root.size()))
            return {};
        return path;
    }

private:
    std::string m_root;
    Kind m_kind;
};

Tree::Tree(std::string const& directory, Kind kind) : m_walk(std::make_unique<Walk>(directory, kind)) {}
Tree::~Tree() = default;

Making Tree::makeDirectory(std::string const& path) {
    std::string const host = m_walk->pathTo(path);
    if (host.empty())
        return Making::Failed;
    if (CreateDirectoryA(host.c_str(), nullptr) != FALSE)
        return Making::Made;
    bool const exists = GetLastError() == ERROR_ALREADY_EXISTS &&
                        hasAttribute(GetFileAttributesA(host.c_str()), FILE_ATTRIBUTE_DIRECTORY);
    return exists && !(m_walk->isPrivate() && isLink(host)) ? Making::Existed : Making::Failed;
}

Stream Tree::openFile(std::string const& path, Open purpose) {
    std::string const host = m_walk->pathTo(path);
    if (host.empty())
        return nullptr;
    if (m_walk->isPrivate() && purpose == Open::Write)
        return replaceFile(host);
    if (m_walk->isPrivate() && isLink(host))
        return nullptr;
    return Stream(std::fopen(host.c_str(), modeOf(purpose)));
}

void Tree::removeFile(std::string const& path) {
    std::string const host = m_walk->pathTo(path);
    if (!host.empty())
        _unlink(host.c_str());
}

void Tree::removeDirectory(std::string const& path) {
    std::string const host = m_walk->pathTo(path);
    if (!host.empty())
        RemoveDirectoryA(host.c_str());
}

void Tree::removeTree(std::string const& path) {
    std::string const host = m_walk->pathTo(path);
    if (hasAttribute(GetFileAttributesA(host.c_str()), FILE_ATTRIBUTE_DIRECTORY))
        removeAll(host);
}

} // namespace Zel::platform
