#pragma once

#include <windows.h>

#include <optional>

namespace tamarind {

// Sees a window's messages before the window does.
class MessageFilter {
public:
    // The answer to a message, or nothing to let the window handle it.
    virtual std::optional<LRESULT> FilterMessage(HWND window, UINT message, WPARAM wParam,
                                                 LPARAM lParam) = 0;

protected:
    ~MessageFilter() = default;
};

// Puts a filter before a window for as long as the object and the window live.
class Subclass {
public:
    explicit Subclass(MessageFilter& filter) : m_filter(filter) {}
    ~Subclass() { Detach(); }
    Subclass(const Subclass&) = delete;
    Subclass& operator=(const Subclass&) = delete;

    bool Attach(HWND window);
    void Detach();

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR data);

    MessageFilter& m_filter;
    HWND m_window = nullptr;
};

}  // namespace tamarind
