#include "model/keys/ColorKeys.h"

#include <algorithm>
#include <iterator>
#include <string>

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

}  // namespace tamarind
