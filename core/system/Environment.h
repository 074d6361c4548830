#pragma once

#include <string>

namespace tamarind {

// The environment of the process: its variables and its current folder. Tests replace it.
class Environment {
public:
    virtual ~Environment() = default;

    // The variable's value in UTF-8; empty for a variable that is not set.
    virtual std::string Variable(const std::string& name) const = 0;

    // The absolute form of a path that may be relative to the current folder. Empty for an empty
    // path.
    virtual std::string FullPath(const std::string& path) const = 0;
};

// The environment of this process.
class ProcessEnvironment final : public Environment {
public:
    std::string Variable(const std::string& name) const override;
    std::string FullPath(const std::string& path) const override;
};

}  // namespace tamarind
