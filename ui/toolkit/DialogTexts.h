#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "ui/toolkit/ControlKind.h"

namespace tamarind {

// Gives the text of a number.
using TextByNumber = std::function<std::wstring(std::uint16_t)>;

// The controls of a dialog as its template has them: where they stand, and the numbers of their
// texts, which the template has in the texts' places.
class DialogTexts {
public:
    // To be called before anything of the new dialog is changed.
    void Read(HWND dialog);

    // Gives the dialog and its controls their texts. Those without a number keep what they have.
    void Set(const TextByNumber& text) const;

    // Stretches places and widths as far as the longest text needs it, but never to less than the
    // template's, nor than a client area of `leastWidth` pixels. Returns the width of the client
    // area that this makes, in pixels.
    int Stretch(int leastWidth = 0) const;

private:
    struct Item {
        HWND control = nullptr;
        ControlKind kind = ControlKind::Other;
        std::uint16_t number = 0;  // 0 for none
        RECT bounds{};             // in the client area, not mirrored
    };
    RECT Bounds(const Item& item) const;
    int Width() const;

    HWND m_dialog = nullptr;
    int m_dpi = 0;  // of the pixels that are kept here
    int m_width = 0;
    std::uint16_t m_captionNumber = 0;
    std::vector<Item> m_items;
};

}  // namespace tamarind
