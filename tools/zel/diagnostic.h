// Where in which file a script is wrong.
#pragma once

#include <string>
#include <zel/exception.h>

namespace zel {

struct Diagnostic {
    std::string file; ///< as the library names it; empty when the exception tells of none
    int line = 0;     ///< 0 when the exception tells of none
    std::string message;
};

/// Takes the place apart from the message of an exception that a Script has thrown.
Diagnostic diagnosticOf(Zel::Exception const& exception);

} // namespace zel
