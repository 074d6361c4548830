#pragma once

#include <functional>
#include <string>

#include "ui/main/MainLook.h"
#include "ui/toolkit/Label.h"
#include "ui/toolkit/PushButton.h"

namespace tamarind {

// What an empty list says in place of rows, with a button for what is elsewhere. Both are made when
// they are needed first.
class NoHitsNote {
public:
    explicit NoHitsNote(std::function<void()> onElsewhere)
        : m_onElsewhere(std::move(onElsewhere)) {}
    NoHitsNote(const NoHitsNote&) = delete;
    NoHitsNote& operator=(const NoHitsNote&) = delete;

    void ApplyLook(const MainLook& look);
    // Shows the texts in the window that holds the list; an empty one hides what it is for.
    void Show(HWND parent, const std::wstring& text, const std::wstring& elsewhere);
    // At the top of the area of the rows, in pixels of the parent.
    void SetBounds(const RECT& rows, int dpi);

private:
    void SetUp();

    std::function<void()> m_onElsewhere;
    COLORREF m_color = 0;
    COLORREF m_background = 0;
    UniqueFont m_font;
    int m_lineHeight = 0;
    Label lblNoHits;
    PushButton cmdOtherHits;
};

}  // namespace tamarind
