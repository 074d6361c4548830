#pragma once

#include <string>

#include "core/system/UniqueHandle_win32.h"

namespace tamarind {

// A shell of the system below Wine that runs one line after the other. One for all lines, because
// Wine 8 keeps two file descriptors open for each program of that system that it has started. It
// ends with this object, or five minutes after the last line.
class OuterShell {
public:
    // The lines and what they print go through files in the folder, which ends with a backslash.
    explicit OuterShell(const std::wstring& folder);
    ~OuterShell();
    OuterShell(const OuterShell&) = delete;
    OuterShell& operator=(const OuterShell&) = delete;

    // Waits until the line has ended. False if that takes longer than half a minute.
    bool Run(const std::string& line);

private:
    void Write(const std::string& line) const;

    UniqueFile m_lines;
    UniqueFile m_output;
};

}  // namespace tamarind
