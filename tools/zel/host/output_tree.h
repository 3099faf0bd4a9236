// Writing below a directory that others may change meanwhile; one file a platform.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

namespace zel {

/// What tells one file of this host from another, whatever it is called.
using FileIdentity = std::pair<std::uint64_t, std::uint64_t>;

FileIdentity identityOf(std::FILE* stream);

/// A directory tree, written from within: each directory is opened from the one above and no link is
/// followed, so that nothing lands elsewhere when somebody puts a link in a directory's place. (On Windows,
/// each directory on the way is looked at first.)
class OutputTree {
public:
    /// Opens the directory; links that lead to it are followed. Throws Failure.
    explicit OutputTree(std::filesystem::path root);
    OutputTree(OutputTree const&) = delete;
    OutputTree& operator=(OutputTree const&) = delete;
    ~OutputTree();

    /// Goes to a directory below the root, named by names alone, and makes those that are missing. Throws
    /// Failure, a finding when a link or a file is in the way.
    void enter(std::filesystem::path const& directory);

    // What follows is done in the directory that was entered.

    /// What has that name; of a link, the link itself.
    struct Found {
        FileIdentity identity;
        bool isDirectory;
    };
    std::optional<Found> find(std::filesystem::path const& name) const;

    /// Makes a file; null, with the reason in errno, when that fails or the name is taken.
    std::FILE* create(std::filesystem::path const& name) const;

    /// Gives a file another name, and replaces what has that. Returns why it could not.
    std::error_code rename(std::filesystem::path const& from, std::filesystem::path const& to) const;

    /// Removes a file. A failure is ignored.
    void remove(std::filesystem::path const& name) const;

private:
    class Walk;
    std::unique_ptr<Walk> m_walk;
};

} // namespace zel
