#pragma once

#include <string_view>

namespace tamarind {

// Whether a path can be that of a file. Windows takes some names for something else, and writing to
// them would harm that: "*" and "?" stand for every file that fits, "NUL" and "COM1" are devices,
// "\\.\" opens any device at all, "file:name" is a stream within a file. The prefix "\\?\" is
// allowed.
//
// Source: learn.microsoft.com, "Naming Files, Paths, and Namespaces".
bool CanBeFile(std::string_view path);

}  // namespace tamarind
