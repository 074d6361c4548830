#pragma once

namespace tamarind {

// To be called where an exception is caught that nothing can be done about: tells the user of it.
// Needs no memory itself.
void ReportUnexpected() noexcept;

// Calls `function`; when it fails, reports that and gives `failed` back.
template <typename Result, typename Function>
Result Guarded(Result failed, Function function) noexcept {
    try {
        return function();
    } catch (...) {
        ReportUnexpected();
        return failed;
    }
}

}  // namespace tamarind
