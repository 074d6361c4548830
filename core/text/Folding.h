#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tamarind {

// Text as a reader who does not care about letter case and accents compares it: in lower case,
// Latin, Greek and Cyrillic letters without their accents ("Größe" is "grosse"), marks of Hebrew
// and Arabic vowels left out, each line break and other control character a blank. The same for
// any two texts that EqualsIgnoreCase calls equal.
std::string Folded(std::string_view text);
void AppendFolded(std::string& folded, std::string_view text);

// The same with the places of its bytes in the text.
struct FoldedText {
    std::string text;
    // For each byte of `text` the UTF-16 unit of the original that it comes from, and last the
    // original's length in units.
    std::vector<std::uint32_t> units;
};
FoldedText FoldedWithUnits(std::string_view text);

}  // namespace tamarind
