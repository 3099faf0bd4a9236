// The program zel.

#include "command_line/commands.h"
#include "host/process.h"

#include <iostream>

int main(int argc, char** argv) {
    zel::HostOutput const output;
    zel::HostImaging const imaging;
    zel::Console console{std::cin, std::cout, std::cerr};
    if (zel::errorIsTerminal())
        console.terminal = &std::cerr;
    return zel::run({argv + 1, argv + argc}, console);
}
