#pragma once

#include <utility>

namespace tamarind {

// Runs a function at the end of the scope, however it is left. The function must not throw.
template <typename Function>
class ScopeExit {
public:
    explicit ScopeExit(Function function) : m_function(std::move(function)) {}
    ~ScopeExit() { m_function(); }
    ScopeExit(const ScopeExit&) = delete;
    ScopeExit& operator=(const ScopeExit&) = delete;

private:
    Function m_function;
};

}  // namespace tamarind
