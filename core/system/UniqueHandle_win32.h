#pragma once

#include <windows.h>

#include <utility>

namespace tamarind {

// Owns a Windows handle and closes it. `Policy` has the `Type` of the handle, the value `Invalid()`
// that stands for none, and `Close`.
template <typename Policy>
class UniqueHandle {
public:
    using Type = typename Policy::Type;

    UniqueHandle() = default;
    explicit UniqueHandle(Type handle) : m_handle(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept
        : m_handle(std::exchange(other.m_handle, Policy::Invalid())) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other) {
            Reset(std::exchange(other.m_handle, Policy::Invalid()));
        }
        return *this;
    }
    ~UniqueHandle() { Reset(); }

    Type Get() const { return m_handle; }
    explicit operator bool() const { return m_handle != Policy::Invalid(); }

    // Closes what was owned and takes over `handle`.
    void Reset(Type handle = Policy::Invalid()) {
        if (m_handle != Policy::Invalid()) {
            Policy::Close(m_handle);
        }
        m_handle = handle;
    }

    // Gives the handle up; the caller has to close it.
    Type Release() { return std::exchange(m_handle, Policy::Invalid()); }

    // For functions that fill in a handle. What was owned before is closed.
    Type* Put() {
        Reset();
        return &m_handle;
    }

private:
    Type m_handle = Policy::Invalid();
};

// What CreateFileW returns.
struct FileHandlePolicy {
    using Type = HANDLE;
    static Type Invalid() { return INVALID_HANDLE_VALUE; }
    static void Close(Type handle) { CloseHandle(handle); }
};
using UniqueFile = UniqueHandle<FileHandlePolicy>;

// Mutexes, processes and the like, for which "none" is null instead of INVALID_HANDLE_VALUE.
struct ObjectHandlePolicy {
    using Type = HANDLE;
    static Type Invalid() { return nullptr; }
    static void Close(Type handle) { CloseHandle(handle); }
};
using UniqueObject = UniqueHandle<ObjectHandlePolicy>;

// What FindFirstFileW returns; it needs a close function of its own.
struct SearchHandlePolicy : FileHandlePolicy {
    static void Close(Type handle) { FindClose(handle); }
};
using UniqueSearch = UniqueHandle<SearchHandlePolicy>;

struct RegistryKeyPolicy {
    using Type = HKEY;
    static Type Invalid() { return nullptr; }
    static void Close(Type handle) { RegCloseKey(handle); }
};
using UniqueRegistryKey = UniqueHandle<RegistryKeyPolicy>;

}  // namespace tamarind
