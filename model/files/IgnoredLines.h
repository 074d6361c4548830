#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "model/files/SettingsFiles.h"

namespace tamarind {

// A line of the settings that Total Commander does not read.
struct IgnoredLine {
    enum class Reason {
        Repeated,    // an earlier line of its section has the name, or an earlier section its name
        NoKey,       // neither key, comment nor header
        LeftBehind,  // its section is kept in another file
    };
    std::string path;
    std::size_t number = 0;  // in its file, from 1
    std::string text;
    Reason reason = Reason::NoKey;
    std::string section;  // of a key
    std::string key;
    std::string keptIn;  // of a line that was left behind: the path of the file
};

// All of them, file by file, in their order. Files that others lead to are looked at where they are
// read: in the sections that are kept there.
std::vector<IgnoredLine> FindIgnoredLines(const SettingsFiles& settings);

}  // namespace tamarind
