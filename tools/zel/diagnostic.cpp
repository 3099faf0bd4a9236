// The places in the messages of scripts, found by their wording.

#include "diagnostic.h"

#include <cstdlib>
#include <string_view>

namespace zel {
namespace {

/// What stands before a file's name and between it and the line, in the library's messages.
struct Wording {
    std::string_view beforeFile;
    std::string_view beforeLine; ///< empty when the file ends the message
};

constexpr Wording kWordings[] = {
    {"Syntax error in file ", " at line "},
    {" has an invalid range in file ", " at line "},
    {" already defined in ", " on line "},
    {" includes itself without end in ", " on line "},
    {"Expansion grows too large in ", " on line "},
    {"\" in ", " on line "}, // of a directive
    {") in ", " on line "},  // of a character
    {"Unexpected end of file in script ", ""},
    {" characters does not match in ", ""},
};

constexpr std::string_view kComment = "Comment beginning on line ";
constexpr std::string_view kBeforeCommentFile = " in ";
constexpr std::string_view kBehindCommentFile = " is not terminated";

/// The number that begins there; 0 at the end of the message.
int numberAt(std::string const& message, std::size_t position) {
    return static_cast<int>(std::strtol(message.c_str() + position, nullptr, 10));
}

} // namespace

Diagnostic diagnosticOf(Zel::Exception const& exception) {
    constexpr std::size_t kLongestMessage = 1023;
    std::string const message = exception.getError();
    if (message.size() >= kLongestMessage)
        return {"", 0, message}; // cut off, and the name of the file with it
    if (message.starts_with(kComment)) {
        std::size_t const file =
            message.find(kBeforeCommentFile, kComment.size()) + kBeforeCommentFile.size();
        return {message.substr(file, message.rfind(kBehindCommentFile) - file),
                numberAt(message, kComment.size()), message};
    }
    for (auto const& [beforeFile, beforeLine] : kWordings) {
        std::size_t const found = message.find(beforeFile);
        std::size_t const end = beforeLine.empty() ? message.size() : message.rfind(beforeLine);
        if (found == std::string::npos || end == std::string::npos)
            continue;
        std::size_t const file = found + beforeFile.size();
        return {message.substr(file, end - file), numberAt(message, end + beforeLine.size()), message};
    }
    return {"", 0, message};
}

} // namespace zel
