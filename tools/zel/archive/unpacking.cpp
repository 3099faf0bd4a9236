// Placing entries, by the rules of the library's own extraction.

#include "archive/unpacking.h"

#include "archive/names.h"
#include "command_line/failure.h"
#include "command_line/printable_text.h"

#include <cerrno>
#include <system_error>
#include <utility>
#include <zel/file.h>

namespace zel {
namespace {

namespace fs = std::filesystem;

fs::path made(fs::path directory) {
    fs::create_directories(directory);
    return directory;
}

std::error_code lastError() { return {errno, std::generic_category()}; }

} // namespace

Unpacking::Unpacking(fs::path directory) : m_directory(std::move(directory)), m_tree(made(m_directory)) {}

/// Goes to the directory of an entry's file; returns where the file is below the root.
fs::path Unpacking::place(std::string const& entryName) {
    if (char const* const reason = Zel::File::whyNotExtracted(entryName))
        throw Failure(kFinding, reason);
    fs::path target = fs::path(withSlashes(entryName)).lexically_normal();
    auto const [earlier, isNew] = m_placed.emplace(toLowerCase(target.generic_string()), entryName);
    if (!isNew)
        throw Failure(kFinding, "it would be the same file as " + printableName(earlier->second));

    m_tree.enter(target.parent_path());
    auto const older = m_tree.find(target.filename());
    if (older && older->isDirectory)
        throw Failure(kFinding, printableName((m_directory / target).string()) + " is a directory");
    // Hosts have rules of their own for names that are one: only they know all of them.
    auto const same = older ? m_extracted.find(older->identity) : m_extracted.end();
    if (same != m_extracted.end())
        throw Failure(kFinding, "it would be the same file as " + printableName(same->second));
    return target;
}

UnpackedFile::UnpackedFile(Unpacking& unpacking, std::string entryName)
    : m_unpacking(unpacking), m_entryName(std::move(entryName)), m_target(m_unpacking.place(m_entryName)) {
    while (!m_stream) {
        m_temporary = ".zel-" + std::to_string(m_unpacking.m_files++) + ".tmp";
        m_stream.reset(m_unpacking.m_tree.create(m_temporary));
        if (!m_stream && errno != EEXIST)
            throwCannotWrite(lastError());
    }
    std::setvbuf(m_stream.get(), nullptr, _IONBF, 0); // pieces are large: a buffer would split them
}

UnpackedFile::~UnpackedFile() {
    m_stream.reset();
    if (!m_temporary.empty())
        m_unpacking.m_tree.remove(m_temporary);
}

void UnpackedFile::write(std::string const& bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_stream.get()) != bytes.size())
        throwCannotWrite(lastError());
}

void UnpackedFile::commit() {
    FileIdentity const identity = identityOf(m_stream.get());
    if (std::fclose(m_stream.release()) != 0)
        throwCannotWrite(lastError());
    std::error_code const error = m_unpacking.m_tree.rename(m_temporary, m_target.filename());
    if (error)
        throwCannotWrite(error);
    m_temporary.clear();
    m_unpacking.m_extracted.insert_or_assign(identity, m_entryName);
}

void UnpackedFile::throwCannotWrite(std::error_code reason) const {
    throw Failure(kOperatingFailure, "cannot write " +
                                         printableName((m_unpacking.m_directory / m_target).string()) + ": " +
                                         reason.message());
}

} // namespace zel
