#include "model/keys/KeyRecord.h"

#include <charconv>
#include <system_error>

#include "core/text/LeadingNumber.h"

namespace tamarind {
namespace {

// A whole number that is written as digits, maybe after a minus sign.
std::optional<std::int64_t> WholeNumber(std::string_view text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number)
                                                                    : std::nullopt;
}

}  // namespace

KeyState PendingStateFor(KeyState state) {
    switch (state) {
        case KeyState::Absent:
            return KeyState::ToBeDeleted;
        case KeyState::Active:
            return KeyState::ValueSet;
        case KeyState::Commented:
            return KeyState::ToBeCommented;
        case KeyState::ToBeDeleted:
        case KeyState::ValueSet:
        case KeyState::ToBeCommented:
            break;
    }
    return state;
}

KeyIcon ValueIconIndex(std::string_view value) {
    return value == "0" || LeadingNumber(value) != 0 ? KeyIcon::Numeric : KeyIcon::Text;
}

bool DiffersFromDefault(const KeyRecord& record) {
    if (!record.Looks().isChecked) {
        return false;
    }
    const std::string_view value = record.currentValue.value_or(std::string_view());
    const auto number = WholeNumber(value);
    return value != record.defaultValue && !(number && number == WholeNumber(record.defaultValue));
}

std::string NameWithSection(const KeyRecord& record) {
    return "[" + std::string(record.targetSection) + "] " + std::string(record.keyName);
}

KeyLooks LooksOf(KeyState currentState, std::string_view defaultValue) {
    KeyLooks looks;
    looks.smallIcon = ValueIconIndex(defaultValue);
    switch (currentState) {
        case KeyState::Absent:
        case KeyState::ToBeDeleted:
            looks.isGhosted = true;
            break;
        case KeyState::Active:
        case KeyState::ValueSet:
            looks.isChecked = true;
            looks.foreColor = KeyColor::Active;
            break;
        case KeyState::Commented:
        case KeyState::ToBeCommented:
            looks.smallIcon = KeyIcon::Commented;
            break;
    }
    return looks;
}

KeyLooks KeyRecord::Looks() const {
    return LooksOf(currentState, defaultValue);
}

}  // namespace tamarind
