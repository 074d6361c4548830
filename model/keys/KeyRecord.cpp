#include "model/keys/KeyRecord.h"

#include "core/text/LeadingNumber.h"

namespace tamarind {

KeyIcon ValueIconIndex(std::string_view value) {
    return value == "0" || LeadingNumber(value) != 0 ? KeyIcon::Numeric : KeyIcon::Text;
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
