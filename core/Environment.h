#pragma once

#include <string>

namespace tamarind {

// Variables of the process's environment.
class Environment {
public:
    virtual ~Environment() = default;

    // The variable's value in UTF-8; empty for a variable that is not set.
    virtual std::string Variable(const std::string& name) const = 0;
};

class ProcessEnvironment final : public Environment {
public:
    std::string Variable(const std::string& name) const override;
};

}  // namespace tamarind
