// The two sinks of the verbose log: the file and the callback.

#include <zel/verbose.h>

#include "core/format_message.h"
#include "platform/platform.h"

#include <cstdarg>
#include <memory>
#include <string>
#include <zel/file.h>

namespace Zel {
namespace {

bool s_enabled = false;
void (*s_callback)(char const*) = nullptr;
std::string s_logPath; // determined at the first use and kept

std::string logDirectory() {
    if (auto const folder = platform::commonDataFolder("Brisvane\\Trelwyn", platform::FolderQuery::Create))
        return *folder + "\\";
    try {
        return File::getStartupDir();
    } catch (FileException const&) {
        return {}; // no folder at all: the log lands in the working directory rather than nowhere
    }
}

std::string const& logPath() {
    if (s_logPath.empty()) {
        auto const computer = platform::computerName();
        s_logPath = logDirectory() + (computer ? "verbose_" + *computer + ".txt" : "verbose.txt");
    }
    return s_logPath;
}

void writeToFile(char const* format, std::va_list arguments) {
    platform::Stream const stream(platform::openStream(logPath(), "a"));
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

void clearVerbose() { platform::removeFile(logPath()); }

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
