// Names and messages as the program prints them: what a file or an archive calls itself neither moves nor
// colours the terminal, nor breaks a line.
//
// Escaped, each of its bytes on its own, is what controls a terminal or the order of the text around it
// (U+0000 to U+001F, U+007F to U+009F, U+061C, U+200E, U+200F, U+2028 to U+202E, U+2066 to U+2069), and what
// is no UTF-8: as \n, \r or \t, or else as \x and two digits.
#pragma once

#include <string>
#include <string_view>

namespace zel {

/// A name in a row or a message of the program's own: as it is, or quoted when it is empty or holds what is
/// escaped or a double quote. So a backslash is an escape only in a name that begins with a quote.
std::string printableName(std::string_view name);

/// The name for a message that puts it between quotes: escaped as between those of `quotedText`, when it has
/// to be.
std::string printableInQuotes(std::string_view name);

/// The text between double quotes, with \" and \\ for those in it.
std::string quotedText(std::string_view text);

/// A line of text that may hold names already: escaped, but its quotes and backslashes stay as they are.
std::string printableLine(std::string_view line);

} // namespace zel
