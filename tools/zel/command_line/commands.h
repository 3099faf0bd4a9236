// The commands of the program: each adds its arguments to the command line, and its work.
#pragma once

#include "command_line/failure.h"
#include "command_line/printable_text.h"

#include <functional>
#include <istream>
#include <ostream>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace zel {

/// Where a command's words come from and go to, and how it ended.
struct Console {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;                ///< messages; each starts with "zel: "
    std::ostream* terminal = nullptr; ///< for progress bars; null where nobody watches
    ExitCode exitCode = kSuccess;

    void message(std::string const& text) const { err << "zel: " << printableLine(text) << '\n'; }
};

void addPackCommand(CLI::App& program, Console& console);
void addListCommand(CLI::App& program, Console& console);
void addVerifyCommand(CLI::App& program, Console& console);
void addExtractCommand(CLI::App& program, Console& console);
void addCatCommand(CLI::App& program, Console& console);
void addDiffCommand(CLI::App& program, Console& console);
void addScriptCommand(CLI::App& program, Console& console);
void addImageCommand(CLI::App& program, Console& console);
void addNoiseCommand(CLI::App& program);

/// Does `act` and says what fails in it. Returns the exit code that the failure asks for.
ExitCode reportFailures(Console const& console, std::function<void()> const& act);

/// Runs the program: the arguments without the program's name. Returns its exit code.
int run(std::vector<std::string> arguments, Console console);

} // namespace zel
