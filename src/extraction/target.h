// Where extraction puts its copies of entries.
#pragma once

#include "platform/platform.h"

#include <span>
#include <string>

namespace Zel {

/// A directory that gets copies. What is made in a temporary one is recorded for File::cleanup, and nothing
/// is written through a link there.
class ExtractionTarget {
public:
    enum Lifetime { Temporary, Permanent };

    /// `directory` ends with a separator, or is empty: then nothing may be put there.
    ExtractionTarget(std::string directory, Lifetime lifetime);

    std::string const& directory() const { return m_directory; }

    /// Makes the directories that a path from here to a file names. False when one cannot be made.
    bool makeDirectories(std::string const& relative);

    /// Writes a file to a path from here whose directories are there. False when nothing can be written under
    /// that name. Throws FileException_WriteError, naming `key`; no file is left behind then.
    bool write(std::span<unsigned char const> content, std::string const& key, std::string const& relative);

private:
    bool isTemporary() const { return m_lifetime == Temporary; }

    std::string m_directory;
    Lifetime m_lifetime;
    std::size_t m_rootLength; ///< of the directory, the part that leads to the tree's root
    platform::Tree m_tree;
    std::string m_made; ///< the directories made for the last entry, with a final separator
};

} // namespace Zel
