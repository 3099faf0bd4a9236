// A COM interface that one scope owns.
#pragma once

namespace Zel::platform {

/// Releases its interface when it goes.
template <class Interface>
class ComPointer {
public:
    ComPointer() = default;
    ComPointer(ComPointer const&) = delete;
    ComPointer& operator=(ComPointer const&) = delete;
    ~ComPointer() {
        if (m_interface != nullptr)
            m_interface->Release();
    }

    Interface* operator->() const { return m_interface; }
    Interface* get() const { return m_interface; }

    /// Where a call stores the interface that it gives away. This object must be empty.
    Interface** receive() { return &m_interface; }

private:
    Interface* m_interface = nullptr;
};

} // namespace Zel::platform
