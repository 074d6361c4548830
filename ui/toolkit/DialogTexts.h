#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "ui/toolkit/ControlKind.h"

namespace tamarind {

// Returns the text of a number.
using TextByNumber = std::function<std::wstring(std::uint16_t)>;

// The controls of a dialog as they are in its template: their places, and the numbers of their
// texts, which stand there in the place of the texts. Sets the texts of a language and stretches
// the dialog to their lengths; used by Dialog.
class DialogTexts {
public:
    // To be called before anything in the new dialog is changed.
    void Read(HWND dialog);

    // Sets the texts of the dialog and its controls. Those without a number keep what they have.
    void Set(const TextByNumber& text) const;

    // Stretches all places and widths by the same factor, as far as the longest text needs it, but
    // never below those of the template or a client area of `leastWidth` pixels. Heights stay.
    // Returns the resulting width of the client area in pixels, which the caller gives to the
    // dialog.
    int Stretch(int leastWidth = 0) const;

private:
    struct Item {
        HWND control = nullptr;
        ControlKind kind = ControlKind::Other;
        std::uint16_t number = 0;  // 0 for none
        RECT bounds{};             // in the client area, not mirrored
    };
    // The place in the template, in pixels at the present DPI.
    RECT Bounds(const Item& item) const;
    int Width() const;

    HWND m_dialog = nullptr;
    int m_dpi = 0;  // of the pixels that are kept here
    int m_width = 0;
    std::uint16_t m_captionNumber = 0;
    std::vector<Item> m_items;
};

}  // namespace tamarind
