// The verbose log: diagnostic text for a file and a callback, both off at first.
#pragma once

#include <zel/api.h>

namespace Zel {

/// Switches the file on or off. It is "verbose_<computer name>.txt" in the sub-folder Brisvane\Trelwyn of the
/// machine-wide data folder (in the program's own directory where there is no such folder, or one that others
/// have a hand in: see File::getTmpDir; without the computer's name, "verbose.txt"). The path is determined
/// once, when first needed. Nothing is written, or deleted, through a link that is put there later.
ZEL_API void enableVerbose(bool enabled);

/// Sets the function that is handed each message; null switches it off. It outlives its use as the caller's.
ZEL_API void setVerboseCallback(void (*callback)(char const* message));

/// The present callback, or null.
ZEL_API void (*getVerboseCallback())(char const* message);

/// Deletes the log file, whether or not the log is on. Failure is ignored.
ZEL_API void clearVerbose();

/// Logs a message, formatted by the printf rules. The file receives the whole text and a line end of its own,
/// even when the text ends in one; it is opened and closed for each message, so that it survives a crash.
/// The callback receives at most 1023 characters, and no line end is added. Failure is ignored.
ZEL_API void verbose(char const* format, ...) ZEL_PRINTF_FORMAT(1, 2);

} // namespace Zel
