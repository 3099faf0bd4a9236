// What happens to a temporary file when a signal or a console event ends the program; one file a platform.
#pragma once

#include <filesystem>

namespace zel {

/// While it lives, a signal or console event that ends the process (Ctrl+C, a closed terminal, a request to
/// end) removes a file first. Signals that are ignored, or handled otherwise, stay so. One can live at a
/// time.
class RemovedOnInterruption {
public:
    explicit RemovedOnInterruption(std::filesystem::path file);
    RemovedOnInterruption(RemovedOnInterruption const&) = delete;
    RemovedOnInterruption& operator=(RemovedOnInterruption const&) = delete;
    ~RemovedOnInterruption();

private:
    std::filesystem::path m_file;
};

} // namespace zel
