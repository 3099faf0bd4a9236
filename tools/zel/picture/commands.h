// The commands below "zel image".
#pragma once

#include "command_line/commands.h"

namespace zel {

void addImageInfoCommand(CLI::App& image, Console& console);
void addImageConvertCommand(CLI::App& image);
void addImageSheetCommand(CLI::App& image, Console& console);

} // namespace zel
