#include "ui/toolkit/CallbackGuard.h"

#include <windows.h>

#include <new>

namespace tamarind {

void ReportUnexpected() noexcept {
    const wchar_t* text = L"An unexpected error occurred. What was being done was not finished.";
    try {
        throw;
    } catch (const std::bad_alloc&) {
        text = L"There is not enough memory. What was being done was not finished.";
    } catch (...) {
        // The general text says it all.
    }
    MessageBoxW(nullptr, text, L"Tamarind Configuration Editor",
                MB_OK | MB_ICONERROR | MB_TASKMODAL);
}

}  // namespace tamarind
