// What the process asks of its host; one file a platform.
#pragma once

namespace zel {

/// Makes standard output pass bytes as they are.
void setBinaryOutput();

/// Whether somebody watches standard error.
bool errorIsTerminal();

/// Lets the calling thread decode JPEG pictures while this object lives.
class HostImaging {
public:
    HostImaging();
    HostImaging(HostImaging const&) = delete;
    HostImaging& operator=(HostImaging const&) = delete;
    ~HostImaging();
};

} // namespace zel
