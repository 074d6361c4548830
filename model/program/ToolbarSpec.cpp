#include "model/program/ToolbarSpec.h"

#include "core/text/LeadingNumber.h"

namespace tamarind {
namespace {

constexpr std::size_t kIdStride = 4;  // three digits and a comma

ButtonStyle StyleOf(std::string_view token) {
    const int digit = LeadingInteger(token.substr(0, 1));
    return digit >= 0 && digit <= 5 ? static_cast<ButtonStyle>(digit) : ButtonStyle::Separator;
}

}  // namespace

std::vector<ToolbarButton> BuildToolbar(int pictures, std::string_view spec, std::string_view ids,
                                        int reserve) {
    std::vector<ToolbarButton> buttons;
    int used = 0;
    while (used < pictures - reserve) {
        const std::size_t end = spec.find(',');
        const std::string_view token = spec.substr(0, end);
        spec.remove_prefix(end == std::string_view::npos ? spec.size() : end + 1);
        ToolbarButton button;
        // A token that is missing counts as a normal button without a name.
        button.style = StyleOf(token);
        const std::string_view name = token.substr(token.empty() ? 0 : 1);
        if (button.style == ButtonStyle::Placeholder) {
            button.width = LeadingInteger(name);
        } else if (button.style != ButtonStyle::Separator) {
            const std::size_t idAt = static_cast<std::size_t>(used) * kIdStride;
            const std::string_view id = idAt < ids.size() ? ids.substr(idAt, 3) : "";
            button.name = name;
            button.picture = used++;
            button.textNumber = static_cast<std::uint16_t>(LeadingInteger(id));
        }
        buttons.push_back(button);
    }
    return buttons;
}

}  // namespace tamarind
