// Of all the directories on the way down only the one at hand is open, as there may be more than a process
// may open. ".." leads back where it leads to the directory that the way down had come from.

#include "host/output_tree.h"

#include "command_line/failure.h"
#include "command_line/printable_text.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace zel {
namespace {

namespace fs = std::filesystem;

constexpr int kEnterDirectory = O_PATH | O_DIRECTORY | O_CLOEXEC;

/// A descriptor that one scope owns; -1 is none.
class Descriptor {
public:
    explicit Descriptor(int value) : m_value(value) {}
    Descriptor(Descriptor&& other) noexcept : m_value(std::exchange(other.m_value, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_value, other.m_value);
        return *this;
    }
    ~Descriptor() {
        if (isOpen())
            close(m_value);
    }

    int get() const { return m_value; }
    bool isOpen() const { return m_value != -1; }

private:
    int m_value;
};

FileIdentity identityOf(struct stat const& status) { return {status.st_dev, status.st_ino}; }

/// The identity of no file when there is none.
FileIdentity identityOf(Descriptor const& file) {
    struct stat status = {};
    fstat(file.get(), &status);
    return identityOf(status);
}

std::error_code lastError() { return {errno, std::generic_category()}; }

} // namespace

FileIdentity identityOf(std::FILE* stream) {
    struct stat status = {};
    fstat(fileno(stream), &status);
    return identityOf(status);
}

class OutputTree::Walk {
public:
    explicit Walk(fs::path root) : m_root(std::move(root)), m_top(open(m_root.c_str(), kEnterDirectory)) {
        if (!m_top.isOpen())
            throw Failure(kOperatingFailure,
                          "cannot open " + printableName(m_root.string()) + ": " + lastError().message());
    }

    int here() const { return m_here.isOpen() ? m_here.get() : m_top.get(); }

    void enter(fs::path const& directory) {
        std::vector<fs::path> const names(directory.begin(), directory.end());
        std::size_t common = 0;
        while (common < names.size() && common < m_steps.size() && m_steps[common].name == names[common])
            ++common;
        while (m_steps.size() > common)
            goUp();
        while (m_steps.size() < names.size())
            goDown(names[m_steps.size()]);
    }

private:
    struct Step {
        fs::path name;
        FileIdentity identity;
    };

    /// To the directory above or, when somebody has moved one so that the way back is lost, to the root.
    void goUp() {
        m_steps.pop_back();
        Descriptor above(m_steps.empty() ? -1 : openat(m_here.get(), "..", kEnterDirectory));
        if (above.isOpen() && identityOf(above) == m_steps.back().identity) {
            m_here = std::move(above);
        } else {
            m_steps.clear();
            m_here = Descriptor(-1);
        }
    }

    void goDown(fs::path const& name) {
        Descriptor below(openat(here(), name.c_str(), kEnterDirectory | O_NOFOLLOW));
        if (!below.isOpen() && errno == ENOENT) {
            mkdirat(here(), name.c_str(), S_IRWXU | S_IRWXG | S_IRWXO);
            below = Descriptor(openat(here(), name.c_str(), kEnterDirectory | O_NOFOLLOW));
        }
        if (!below.isOpen())
            throwCannotEnter(name, lastError());
        m_steps.push_back({name, identityOf(below)});
        m_here = std::move(below);
    }

    [[noreturn]] void throwCannotEnter(fs::path const& name, std::error_code reason) const {
        fs::path path = m_root;
        for (Step const& step : m_steps)
            path /= step.name;
        path /= name;
        struct stat status;
        bool const exists = fstatat(here(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
        if (exists && S_ISLNK(status.st_mode))
            throw Failure(kFinding, printableName(path.string()) + " is a link");
        if (exists && !S_ISDIR(status.st_mode))
            throw Failure(kFinding, printableName(path.string()) + " is no directory");
        throw Failure(kOperatingFailure,
                      "cannot make " + printableName(path.string()) + ": " + reason.message());
    }

    fs::path m_root;
    Descriptor m_top;
    Descriptor m_here{-1}; ///< unless it is the root
    std::vector<Step> m_steps;
};

OutputTree::OutputTree(fs::path root) : m_walk(std::make_unique<Walk>(std::move(root))) {}
OutputTree::~OutputTree() = default;

void OutputTree::enter(fs::path const& directory) { m_walk->enter(directory); }

std::optional<OutputTree::Found> OutputTree::find(fs::path const& name) const {
    struct stat status;
    if (fstatat(m_walk->here(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return std::nullopt;
    return Found{identityOf(status), S_ISDIR(status.st_mode)};
}

std::FILE* OutputTree::create(fs::path const& name) const {
    int const file = openat(m_walk->here(), name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                            S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH);
    std::FILE* const stream = file != -1 ? fdopen(file, "wb") : nullptr;
    if (file != -1 && stream == nullptr) {
        close(file);
        remove(name);
    }
    return stream;
}

std::error_code OutputTree::rename(fs::path const& from, fs::path const& to) const {
    int const result = renameat(m_walk->here(), from.c_str(), m_walk->here(), to.c_str());
    return result == 0 ? std::error_code() : lastError();
}

void OutputTree::remove(fs::path const& name) const { unlinkat(m_walk->here(), name.c_str(), 0); }

} // namespace zel
