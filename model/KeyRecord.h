#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tamarind {

// Where a key stands; the values are the codes.
enum class KeyState : char {
    Absent = '0',       // neither the key nor a commented-out copy is in the settings file
    Active = '1',       // in its section
    Commented = '2',    // in its section with ";" in front of its name
    ToBeDeleted = '3',  // pending until the next save, as are the two below
    ValueSet = '4',
    ToBeCommented = '5',
};

// Numbers of the pictures in the key list's image list, counted from 1.
enum class KeyIcon : std::uint8_t { Numeric = 1, Text = 2, Commented = 3 };

enum class KeyColor : std::uint8_t {
    Active,  // the colour that the options set for active keys
    Gray,    // the system's colour for disabled text
};

// One key of the data file beside what the settings file says of it. The texts belong to the key
// store that holds the record.
struct KeyRecord {
    std::string_view keyName;
    std::string_view category;                     // tag: the data file's section
    std::string_view defaultValue;                 // col_1
    std::optional<std::string_view> currentValue;  // col_4; nothing where the marker would stand
    KeyState initialState = KeyState::Absent;      // col_5: Absent, Active or Commented
    KeyState currentState = KeyState::Absent;      // col_7
    std::string_view targetSection;                // col_3
    bool saveDescription = false;                  // col_6
    std::string_view description;                  // col_2, "@" for a line break
    bool isChecked = false;
    bool isGhosted = false;
    KeyColor foreColor = KeyColor::Gray;
    KeyIcon smallIcon = KeyIcon::Text;
};

// Numeric for "0" and for every text whose leading number is not zero, else Text.
KeyIcon ValueIconIndex(std::string_view value);

}  // namespace tamarind
