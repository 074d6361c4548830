#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tamarind {

// The state of a key. The values are the codes that are stored as characters.
enum class KeyState : char {
    Absent = '0',       // neither the key nor a commented-out copy is in the settings file
    Active = '1',       // in its section
    Commented = '2',    // in its section with ";" in front of its name
    ToBeDeleted = '3',  // pending until the next save, as are the two below
    ValueSet = '4',
    ToBeCommented = '5',
};

// The pending state that makes a key what it is in another state: one that was absent is to be
// deleted. A pending state is its own.
KeyState PendingStateFor(KeyState state);

// Pictures of the key list's image list, counted from 1.
enum class KeyIcon : std::uint8_t { Numeric = 1, Text = 2, Commented = 3 };

enum class KeyColor : std::uint8_t {
    Active,  // the color that the options set for active keys
    Gray,    // the system's color for disabled text
};

// What a row of the key list looks like besides its text.
struct KeyLooks {
    bool isChecked = false;  // the key is, or will be, active in the settings file
    bool isGhosted = false;  // it has no line there, or will have none
    KeyColor foreColor = KeyColor::Gray;
    KeyIcon smallIcon = KeyIcon::Text;
};

// One key of the data file together with what the settings say of it. The views belong to the
// KeyStore that returned the record, and hold until the store changes.
struct KeyRecord {
    std::string_view keyName;
    std::string_view category;                     // tag: the data file's section
    std::string_view defaultValue;                 // col_1
    std::string_view description;                  // col_2, "@" for a line break
    std::string_view targetSection;                // col_3
    std::optional<std::string_view> currentValue;  // col_4; nothing if it has no value
    KeyState initialState = KeyState::Absent;      // col_5: Absent, Active or Commented
    bool saveDescription = false;                  // col_6
    KeyState currentState = KeyState::Absent;      // col_7

    KeyLooks Looks() const;
};

// Whether two values mean the same: numbers and colors compare by value, "1" is "01" and "255" is
// "$0000FF".
bool IsSameValue(std::string_view left, std::string_view right);

// Whether a key has, or will have, an active line with another value than its default; one without
// a known default differs.
bool DiffersFromDefault(const KeyRecord& record);
// The same, but a key without a known default does not.
bool DiffersFromKnownDefault(const KeyRecord& record);

// "[Layout] ButtonBar".
std::string NameWithSection(const KeyRecord& record);

// The looks that belong to a state. The icon is that of a commented-out key or else follows from
// the kind of the default value.
KeyLooks LooksOf(KeyState currentState, std::string_view defaultValue);

// Numeric for "0" and for every text whose LeadingNumber is not zero, otherwise Text.
KeyIcon ValueIconIndex(std::string_view value);

}  // namespace tamarind
