// The two sinks of the verbose log: the file and the callback.

#include <zel/verbose.h>

#include "core/format_message.h"
#include "platform/platform.h"

#include <cstdarg>
#include <cstring>
#include <optional>
#include <string>
#include <utility>

namespace Zel {
namespace {

bool s_enabled = false;
void (*s_callback)(char const*) = nullptr;

/// Where the log is.
struct LogPlace {
    std::string root;
    platform::Tree::Kind kind;
    std::string file; ///< from the root

    platform::Tree tree() const { return {root, kind}; }
};

std::optional<LogPlace> s_log; // determined at the first use and kept

LogPlace findLog() {
    constexpr char const* kFolder = "Brisvane\\Trelwyn";
    auto const computer = platform::computerName();
    std::string const name = computer ? "verbose_" + *computer + ".txt" : "verbose.txt";
    if (auto folder = platform::commonDataFolder(kFolder, platform::FolderQuery::Create)) {
        folder->resize(folder->size() - std::strlen(kFolder));
        return {*folder, platform::Tree::Private, std::string(kFolder) + "\\" + name};
    }
    // Without either, in the working directory rather than nowhere.
    return {platform::startupDirectory().value_or(""), platform::Tree::Own, name};
}

LogPlace const& logPlace() {
    if (!s_log)
        s_log = findLog();
    return *s_log;
}

void writeToFile(char const* format, std::va_list arguments) {
    LogPlace const& log = logPlace();
    platform::Stream const stream(log.tree().openFile(log.file, platform::Open::Append));
    if (stream)
        std::vfprintf(stream.get(), (std::string(format) + "\n").c_str(), arguments);
}

void writeToCallback(char const* format, std::va_list arguments) {
    char message[1024];
    formatMessage(message, format, arguments);
    s_callback(message);
}

} // namespace

void enableVerbose(bool enabled) { s_enabled = enabled; }

void setVerboseCallback(void (*callback)(char const*)) { s_callback = callback; }

void (*getVerboseCallback())(char const*) { return s_callback; }

void clearVerbose() { logPlace().tree().removeFile(logPlace().file); }

void verbose(char const* format, ...) {
    if (s_enabled) {
        std::va_list arguments;
        va_start(arguments, format);
        writeToFile(format, arguments);
        va_end(arguments);
    }
    if (s_callback != nullptr) {
        std::va_list arguments;
        va_start(arguments, format);
        writeToCallback(format, arguments);
        va_end(arguments);
    }
}

} // namespace Zel
