#pragma once

#include <algorithm>
#include <string>

namespace tamarind {

// Orders names as if their ASCII letters were capitals.
struct LessIgnoreCase {
    static char Fold(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 0x20) : c; }
    bool operator()(const std::string& left, const std::string& right) const {
        return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                            [](char a, char b) { return Fold(a) < Fold(b); });
    }
};

}  // namespace tamarind
