#pragma once

namespace tamarind {

// Tells the user of an exception, where nothing else can be done about it. To be called in a catch
// block. Needs no memory of its own.
void ReportUnexpected() noexcept;

// Calls `function` and returns its result. If it throws, reports that and returns `failed`. No
// exception may leave a procedure that Windows calls.
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
