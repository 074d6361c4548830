#include "model/keys/KeyRecord.h"

#include "core/text/LeadingNumber.h"
#include "model/keys/ColorKeys.h"

namespace tamarind {
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

bool IsSameValue(std::string_view left, std::string_view right) {
    if (left == right) {
        return true;
    }
    const auto number = WholeNumber(left);
    if (number && number == WholeNumber(right)) {
        return true;
    }
    const auto color = ParseColor(left);
    return color && color == ParseColor(right);
}

bool DiffersFromDefault(const KeyRecord& record) {
    return record.Looks().isChecked &&
           !IsSameValue(record.currentValue.value_or(std::string_view()), record.defaultValue);
}

bool DiffersFromKnownDefault(const KeyRecord& record) {
    return !record.defaultValue.empty() && DiffersFromDefault(record);
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
