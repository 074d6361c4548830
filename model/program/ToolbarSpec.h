#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace tamarind {

// Kinds of toolbar buttons. The values are the digits of the text form.
enum class ButtonStyle : std::uint8_t {
    Normal = 0,
    Check = 1,
    Group = 2,
    Separator = 3,
    Placeholder = 4,
    DropDown = 5,
};

// A button of the toolbar; which fields it uses depends on its style.
struct ToolbarButton {
    ButtonStyle style = ButtonStyle::Separator;
    std::string_view name;         // of a picture button
    int picture = -1;              // index in the image list, or -1 for none
    std::uint16_t textNumber = 0;  // of a picture button's tooltip
    int width = 0;                 // of a placeholder, in pixels
};

// The main toolbar in its text form: for each button a digit for its style and its name, separated
// by commas; and for each button with a picture the number of its tooltip's text.
inline constexpr std::string_view kToolbarSpec =
    "5Open,5Save,3,5Delete,3,0Edit,3,0Undo,0Redo,3,"
    "2Show All Keys,2Show Active Keys,2Show Inactive Keys,3,0Options";
inline constexpr std::string_view kToolbarIds = "103,104,132,192,190,191,152,153,154,150";

// The buttons of a toolbar in its text form. The last one is that with picture number `pictures` -
// `reserve`, counted from 1; if the text has fewer, nameless normal buttons are added.
std::vector<ToolbarButton> BuildToolbar(int pictures, std::string_view spec, std::string_view ids,
                                        int reserve);

}  // namespace tamarind
