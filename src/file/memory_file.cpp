// A whole file in one block of memory.

#include "file/content.h"

#include <memory>
#include <zel/file.h>

namespace Zel {

MemoryFile::MemoryFile(std::string const& name) { // NOLINT(cppcoreguidelines-pro-type-member-init)
    initializeMembers();
    FileContent content(name);
    if (content.size() == 0)
        return;
    std::unique_ptr<unsigned char[]> block;
    content.readWhole([&block](std::size_t size) {
        block = std::make_unique_for_overwrite<unsigned char[]>(size);
        return block.get();
    });
    m_data = block.release();
    m_size = content.size();
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
