#pragma once

#include <string>
#include <string_view>

namespace tamarind {

// A text about a key, made one about a key whose name has other numbers: in the text each number of
// the former name becomes that of the other. The names must be alike but for their digits.
std::string TextForSibling(std::string_view text, std::string_view former, std::string_view name);

// The same for sections. Their words as a whole are replaced, since a screen of "1920x1080 (8x16)"
// is "1920x1080" in texts, and 8 is a number of many meanings.
std::string TextForSection(std::string_view text, std::string_view former,
                           std::string_view section);

// A text with a name of the user's for "{n}" and a section for "{section}".
std::string WithNames(std::string_view text, std::string_view name, std::string_view section);

}  // namespace tamarind
