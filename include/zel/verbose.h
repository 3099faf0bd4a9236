// The verbose log: diagnostic text for a file and a callback, both off at first.
#pragma once

#include <zel/api.h>

namespace Zel {

/// Switches the log file on or off.
///
/// It is verbose_NAME.txt, with the computer's name, in the sub-folder Brisvane\Trelwyn of the machine-wide
/// data folder. It lies in the program's own directory when that folder cannot be made, or others can change
/// it (see File::getTmpDir), and in the working directory when the program's cannot be told. Without a
/// computer's name it is verbose.txt. The path is determined once, when it is first needed. In the
/// data folder, nothing is written or deleted through a link that is put there later.
ZEL_API void enableVerbose(bool enabled);

/// Sets the function that gets each message; null switches it off. It must stay valid while it is set.
ZEL_API void setVerboseCallback(void (*callback)(char const* message));

/// The present callback, or null.
ZEL_API void (*getVerboseCallback())(char const* message);

/// Deletes the log file, whether or not the log is on. Failure is ignored.
ZEL_API void clearVerbose();

/// Logs a message, formatted by the printf rules. The file gets the whole text and a line end of its own,
/// even when the text ends with one. It is opened and closed for each message, so that a crash loses nothing.
/// The callback gets at most 1023 characters, and no line end is added. Failure is ignored.
ZEL_API void verbose(char const* format, ...) ZEL_PRINTF_FORMAT(1, 2);

} // namespace Zel
