#pragma once

#include <string_view>

namespace tamarind {

// Whether a path can be that of a file. The system would take other names for something else, which
// harms what nobody has named: "*" and "?" for every file that fits, "NUL" and "COM1" for devices,
// "\\.\" for anything at all, "file:name" for a stream in a file. "\\?\" in front is allowed.
// Source: learn.microsoft.com, "Naming Files, Paths, and Namespaces".
bool CanBeFile(std::string_view path);

}  // namespace tamarind
