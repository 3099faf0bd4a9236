// What the process asks of its host; one file a platform.
#pragma once

namespace zel {

/// Has standard output pass bytes as they are, and a console show them as UTF-8, while this object lives.
class HostOutput {
public:
    HostOutput();
    HostOutput(HostOutput const&) = delete;
    HostOutput& operator=(HostOutput const&) = delete;
    ~HostOutput();

private:
    [[maybe_unused]] unsigned m_codePage = 0; ///< of the console as it was
};

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
