#include "model/keys/SiblingTexts.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace tamarind {
namespace {

constexpr std::string_view kDigits = "0123456789";

bool IsDigit(char character) {
    return kDigits.find(character) != std::string_view::npos;
}

// The parts of a text that have these characters, or those that have none of them.
std::vector<std::string_view> PartsOf(std::string_view text, std::string_view characters,
                                      bool have) {
    std::vector<std::string_view> parts;
    std::size_t begin = 0;
    while (begin < text.size()) {
        begin = have ? text.find_first_of(characters, begin)
                     : text.find_first_not_of(characters, begin);
        if (begin == std::string_view::npos) {
            break;
        }
        const std::size_t end =
            std::min(text.size(), have ? text.find_first_not_of(characters, begin)
                                       : text.find_first_of(characters, begin));
        parts.push_back(text.substr(begin, end - begin));
        begin = end;
    }
    return parts;
}

// Replaces parts, but not those that a digit stands beside.
std::string Replaced(std::string_view text, const std::vector<std::string_view>& from,
                     const std::vector<std::string_view>& to) {
    std::string result;
    std::size_t at = 0;
    while (at < text.size()) {
        std::size_t part = 0;
        while (part < from.size() && !text.substr(at).starts_with(from[part])) {
            ++part;
        }
        const std::size_t end = part < from.size() ? at + from[part].size() : at;
        const bool isWhole = part < from.size() && (at == 0 || !IsDigit(text[at - 1])) &&
                             (end == text.size() || !IsDigit(text[end]));
        if (isWhole) {
            result += to[part];
            at = end;
        } else {
            result += text[at++];
        }
    }
    return result;
}

std::string WithOtherParts(std::string_view text, const std::vector<std::string_view>& from,
                           const std::vector<std::string_view>& to) {
    const bool areAlike = from.size() == to.size();
    return areAlike && from != to ? Replaced(text, from, to) : std::string(text);
}

}  // namespace

std::string TextForSibling(std::string_view text, std::string_view former, std::string_view name) {
    return WithOtherParts(text, PartsOf(former, kDigits, true), PartsOf(name, kDigits, true));
}

std::string TextForSection(std::string_view text, std::string_view former,
                           std::string_view section) {
    return WithOtherParts(text, PartsOf(former, " ", false), PartsOf(section, " ", false));
}

std::string WithNames(std::string_view text, std::string_view name, std::string_view section) {
    std::string result(text);
    for (const auto& [mark, own] :
         {std::pair<std::string_view, std::string_view>("{n}", name), {"{section}", section}}) {
        for (std::size_t at = result.find(mark); at != std::string::npos;
             at = result.find(mark, at + own.size())) {
            result.replace(at, mark.size(), own);
        }
    }
    return result;
}

}  // namespace tamarind
