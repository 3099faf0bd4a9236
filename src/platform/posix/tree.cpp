// Trees on POSIX hosts: of all the directories on the way down only the one at hand is open, from which the
// next is reached by its name, or by ".." where that leads to where the way down had come from.
//
// Names are found as in all paths: the exact one, or else the first that differs in case alone. For that a
// directory is looked into once, so what others add to it meanwhile may be missed.

#include "platform/path_parts.h"
#include "platform/platform.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/directory_names.h"
#include "platform/posix/paths.h"
#include "platform/posix/removal.h"
#include "platform/stream_mode.h"

#include <cerrno>
#include <climits>
#include <map>
#include <vector>

namespace Zel::platform {
namespace {

constexpr int kEnterDirectory = O_PATH | O_DIRECTORY | O_CLOEXEC;

/// The names on a path that leads down; none when it leads nowhere.
std::vector<std::string> namesOn(std::string const& path) {
    std::vector<std::string> names;
    if (hasZeroByte(path))
        return {};
    for (PathParts parts(path); parts.next();) {
        if (parts.part() == "..")
            return {};
        if (!parts.staysInPlace())
            names.emplace_back(parts.part());
    }
    return names;
}

/// Whether the directory is the user's or the system's, and nobody else may put anything there.
bool isTrusted(struct stat const& status) {
    return (status.st_uid == geteuid() || status.st_uid == 0) && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

} // namespace

class Tree::Walk {
public:
    Walk(std::string const& directory, Kind kind);

    /// Goes to the directory of the last name on the path, and returns that name. Nothing when the way does
    /// not lead there.
    std::optional<std::string> goTo(std::string const& path);

    Making makeDirectory(std::string const& name);
    /// `isNew` tells whether the file was made.
    Descriptor openFile(std::string const& name, bool appends, bool& isNew);
    /// Whether the file may be written: in a private tree, only plain ones.
    bool takes(Descriptor const& file) const;
    void remove(std::string const& name, int flags) {
        withName(name, [&](char const* exact) { return unlinkat(here(), exact, flags); });
    }
    void removeTree(std::string const& name);

private:
    struct Step {
        std::string name; ///< as it was asked for
        Identity identity;
    };

    int here() const { return m_here.isOpen() ? m_here.get() : m_root.get(); }
    Identity identityHere() const { return m_steps.empty() ? m_rootIdentity : m_steps.back().identity; }
    bool isPrivate() const { return m_kind == Private; }
    void goUp();
    bool goDown(std::string const& name);
    DirectoryNames& namesHere();
    void note(std::string const& name);

    /// Calls `act` with the name and, when nothing has it, with the one that differs in case alone; `act`
    /// returns -1 when it fails.
    template <class Act>
    int withName(std::string const& name, Act act) {
        int const result = act(name.c_str());
        if (result != -1 || errno != ENOENT)
            return result;
        auto const match = namesHere().match(name);
        return match && *match != name ? act(match->c_str()) : -1;
    }

    Kind m_kind;
    mode_t m_directoryMode;
    std::size_t m_longestPath; ///< what the host lets anybody reach by a path from its root
    Descriptor m_root;
    Identity m_rootIdentity;
    Descriptor m_here; ///< the directory at hand, unless it is the root
    std::vector<Step> m_steps;
    std::string m_made; ///< in the directory at hand, the one that was made last: it is empty
    std::map<Identity, DirectoryNames> m_names;
};

Tree::Walk::Walk(std::string const& directory, Kind kind) : m_kind(kind) {
    auto const path = toHostPath(directory);
    std::size_t const length = path ? path->size() : PATH_MAX;
    m_longestPath = length < PATH_MAX ? PATH_MAX - 1 - length : 0;
    m_directoryMode = isPrivate() || !path ? S_IRWXU : directoryMode((path->empty() ? "." : *path) + "/x");
    m_root = Descriptor(withExistingPath(
        directory, [](char const* host) { return open(*host != '\0' ? host : ".", kEnterDirectory); }));
    struct stat status = {};
    fstat(m_root.get(), &status);
    m_rootIdentity = identityOf(status);
}

std::optional<std::string> Tree::Walk::goTo(std::string const& path) {
    std::vector<std::string> const names = namesOn(path);
    if (!m_root.isOpen() || names.empty() || path.size() > m_longestPath)
        return std::nullopt;
    std::size_t const depth = names.size() - 1;
    std::size_t common = 0;
    while (common < depth && common < m_steps.size() && m_steps[common].name == names[common])
        ++common;
    while (m_steps.size() > common)
        goUp();
    while (m_steps.size() < depth) {
        if (!goDown(names[m_steps.size()]))
            return std::nullopt;
    }
    return names.back();
}

/// Goes to the directory above or, when somebody has moved one so that the way back is lost, to the root.
void Tree::Walk::goUp() {
    m_made.clear();
    m_steps.pop_back();
    Descriptor above(m_steps.empty() ? -1 : openat(m_here.get(), "..", kEnterDirectory));
    struct stat status;
    if (above.isOpen() && fstat(above.get(), &status) == 0 && identityOf(status) == m_steps.back().identity) {
        m_here = std::move(above);
    } else {
        m_steps.clear();
        m_here = Descriptor();
    }
}

/// Enters a directory. False when that cannot be.
bool Tree::Walk::goDown(std::string const& name) {
    int const flags = kEnterDirectory | (isPrivate() ? O_NOFOLLOW : 0);
    Descriptor below(withName(name, [&](char const* exact) { return openat(here(), exact, flags); }));
    struct stat status;
    if (!below.isOpen() || fstat(below.get(), &status) != 0 || (isPrivate() && !isTrusted(status)))
        return false;
    if (name == m_made)
        m_names[identityOf(status)] = {};
    m_steps.push_back({name, identityOf(status)});
    m_here = std::move(below);
    m_made.clear();
    return true;
}

/// The names in the directory at hand, as they were when it was first looked into.
DirectoryNames& Tree::Walk::namesHere() {
    auto const seen = m_names.find(identityHere());
    if (seen != m_names.end())
        return seen->second;
    return m_names[identityHere()] = DirectoryNames(here());
}

Making Tree::Walk::makeDirectory(std::string const& name) {
    if (goDown(name))
        return Making::Existed;
    if (namesHere().match(name))
        return Making::Failed; // it cannot be entered
    namesHere().insert(name);
    m_made = name; // from here on, nothing throws
    if (mkdirat(here(), name.c_str(), m_directoryMode) == 0)
        return Making::Made;
    m_made.clear();
    return errno == EEXIST && goDown(name) ? Making::Existed : Making::Failed; // somebody else was faster
}

Descriptor Tree::Walk::openFile(std::string const& name, bool appends, bool& isNew) {
    if (isPrivate() && !appends) {
        note(name);
        unlinkat(here(), name.c_str(), 0); // mostly there is nothing
        isNew = true;
        return Descriptor(openat(here(), name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    }
    int const flags =
        O_WRONLY | O_CLOEXEC | (appends ? O_APPEND : O_TRUNC) | (isPrivate() ? O_NOFOLLOW | O_NONBLOCK : 0);
    isNew = false;
    Descriptor existing(openat(here(), name.c_str(), flags));
    if (existing.isOpen() || errno != ENOENT)
        return existing;
    auto const match = namesHere().match(name); // the name itself, for a link that leads to no file yet
    isNew = !match;
    note(name);
    return Descriptor(openat(here(), match.value_or(name).c_str(), flags | O_CREAT, 0666));
}

bool Tree::Walk::takes(Descriptor const& file) const {
    struct stat status;
    return file.isOpen() && (!isPrivate() || (fstat(file.get(), &status) == 0 && S_ISREG(status.st_mode)));
}

/// Keeps what is known of the directory at hand up to date.
void Tree::Walk::note(std::string const& name) {
    auto const seen = m_names.find(identityHere());
    if (seen != m_names.end())
        seen->second.insert(name);
}

void Tree::Walk::removeTree(std::string const& name) {
    withName(name, [&](char const* exact) {
        struct stat status;
        if (fstatat(here(), exact, &status, AT_SYMLINK_NOFOLLOW) != 0)
            return -1;
        if (!isPrivate() || !S_ISDIR(status.st_mode) || isTrusted(status))
            removeBelow(here(), exact);
        return 0;
    });
}

Tree::Tree(std::string const& directory, Kind kind) : m_walk(std::make_unique<Walk>(directory, kind)) {}
Tree::~Tree() = default;

Making Tree::makeDirectory(std::string const& path) {
    auto const name = m_walk->goTo(path);
    return name ? m_walk->makeDirectory(*name) : Making::Failed;
}

Stream Tree::openFile(std::string const& path, Open purpose) {
    auto const name = m_walk->goTo(path);
    if (!name)
        return nullptr;
    bool isNew = false;
    Descriptor file = m_walk->openFile(*name, purpose == Open::Append, isNew);
    Stream stream(m_walk->takes(file) ? fdopen(file.get(), modeOf(purpose)) : nullptr);
    if (stream)
        file.release(); // closed with the stream
    else if (file.isOpen() && isNew)
        m_walk->remove(*name, 0);
    return stream;
}

void Tree::removeFile(std::string const& path) {
    if (auto const name = m_walk->goTo(path))
        m_walk->remove(*name, 0);
}

void Tree::removeDirectory(std::string const& path) {
    if (auto const name = m_walk->goTo(path))
        m_walk->remove(*name, AT_REMOVEDIR);
}

void Tree::removeTree(std::string const& path) {
    if (auto const name = m_walk->goTo(path))
        m_walk->removeTree(*name);
}

} // namespace Zel::platform
