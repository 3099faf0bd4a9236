// The commands below `zel script`, and the options that they share.
#pragma once

#include "script/environment.h"

namespace CLI {
class App;
}

namespace zel {

struct Console;

void addScriptSources(CLI::App& command, ScriptSources& sources);
void addScriptCheckCommand(CLI::App& script, Console& console);
void addScriptDumpCommand(CLI::App& script, Console& console);

} // namespace zel
