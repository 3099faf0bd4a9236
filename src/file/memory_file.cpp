// A whole file in one block of memory.

#include <memory>
#include <zel/file.h>

namespace Zel {

MemoryFile::MemoryFile(std::string const& name) { // NOLINT(cppcoreguidelines-pro-type-member-init)
    initializeMembers();
    File file(name, File::READ);
    if (file.getSize() == 0)
        return;
    std::unique_ptr<unsigned char[]> block(new unsigned char[static_cast<std::size_t>(file.getSize())]);
    file.read(block.get(), file.getSize());
    m_data = block.release();
    m_size = file.getSize();
}

MemoryFile::~MemoryFile() {
    delete[] m_data;
    initializeMembers();
}

void MemoryFile::initializeMembers() {
    m_data = nullptr;
    m_size = 0;
}

void* MemoryFile::getAddress() const { return m_data; }

int MemoryFile::getSize() const { return m_size; }

} // namespace Zel
