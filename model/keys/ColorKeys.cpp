#include "model/keys/ColorKeys.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string>
#include <system_error>

#include "core/text/LeadingNumber.h"
#include "core/text/Unicode.h"

namespace tamarind {
namespace {

constexpr std::uint32_t kColorBits = 0xFFFFFF;

bool IsColorKey(std::string_view name) {
    constexpr std::string_view kNames[] = {"fgcolor", "bgcolor", "fgselcolor", "bgselcolor",
                                           "linkcolor"};
    return std::ranges::any_of(
        kNames, [&](std::string_view colorKey) { return EqualsIgnoreCase(name, colorKey); });
}

constexpr std::size_t kHexDigits = 6;

// Between red, green, blue from the top and blue, green, red.
std::uint32_t Reversed(std::uint32_t color) {
    return (color & 0xFF) << 16 | (color & 0xFF00) | color >> 16;
}

}  // namespace

bool HasColor(const KeyRecord& record) {
    return EqualsIgnoreCase(record.targetSection, "colors") ||
           (EqualsIgnoreCase(record.targetSection, "lister") && IsColorKey(record.keyName));
}

ColorSample ColorOfValue(std::optional<std::string_view> value) {
    ColorSample sample;
    if (!value) {
        sample.isSystemColor = true;
        return sample;
    }
    const std::string number =
        value->substr(0, 1) == "$" ? "&H" + std::string(value->substr(1)) : std::string(*value);
    const double color = LeadingNumber(number);
    sample.isSystemColor = color == -1;
    sample.color = static_cast<std::uint32_t>(static_cast<std::int64_t>(color)) & kColorBits;
    return sample;
}

std::optional<std::uint32_t> ParseColor(std::string_view text) {
    const char mark = text.empty() ? '\0' : text[0];
    const bool isHex = mark == '$' || mark == '#';
    const std::string_view digits = text.substr(isHex ? 1 : 0);
    std::uint32_t color = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), color, isHex ? 16 : 10);
    const bool isColor = error == std::errc() && end == digits.data() + digits.size() &&
                         color <= kColorBits && (mark != '#' || digits.size() == kHexDigits);
    return isColor ? std::optional(mark == '#' ? Reversed(color) : color) : std::nullopt;
}

std::string FormatColor(std::uint32_t color, std::string_view like) {
    const char mark = like.empty() ? '\0' : like[0];
    if (mark != '$' && mark != '#') {
        return std::to_string(color);
    }
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text(1, mark);
    color = mark == '#' ? Reversed(color) : color;
    for (std::size_t digit = kHexDigits; digit-- > 0;) {
        text += kDigits[color >> 4 * digit & 0xF];
    }
    return text;
}

}  // namespace tamarind
