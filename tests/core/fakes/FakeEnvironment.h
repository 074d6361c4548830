#pragma once

#include <map>
#include <string>

#include "core/files/Paths.h"
#include "core/system/Environment.h"

namespace tamarind {

// Environment variables that a test sets. Letter case in names counts, unlike in Windows.
class FakeEnvironment final : public Environment {
public:
    std::map<std::string, std::string> variables;
    std::string currentFolder = "D:\\Here\\";

    std::string Variable(const std::string& name) const override {
        const auto found = variables.find(name);
        return found == variables.end() ? std::string() : found->second;
    }

    std::string FullPath(const std::string& path) const override {
        return path.empty() || IsAbsolutePath(path) ? path : currentFolder + path;
    }
};

}  // namespace tamarind
