#pragma once

#include <string>

namespace tamarind {

// The process's environment: its variables and its current folder.
class Environment {
public:
    virtual ~Environment() = default;

    // The variable's value in UTF-8; empty for a variable that is not set.
    virtual std::string Variable(const std::string& name) const = 0;

    // The absolute form of a path, which is relative to the current folder; an empty one stays so.
    virtual std::string FullPath(const std::string& path) const = 0;
};

class ProcessEnvironment final : public Environment {
public:
    std::string Variable(const std::string& name) const override;
    std::string FullPath(const std::string& path) const override;
};

}  // namespace tamarind
