#pragma once

#include <string>

#include "ui/toolkit/Timer.h"
#include "ui/toolkit/VirtualList.h"

namespace tamarind {

// Takes over what the user has typed.
class InplaceEditListener {
public:
    // The user has pressed Enter. Returns whether the text was taken; otherwise the box stays open.
    virtual bool OnTextEntered(const std::wstring& text) = 0;

protected:
    ~InplaceEditListener() = default;
};

// An edit box of one line over a row of a list, in which the row is edited. The box closes without
// storing anything when the user leaves it, scrolls the list or presses Escape.
class InplaceEdit final : public Control {
public:
    // `list` must outlive the box.
    explicit InplaceEdit(VirtualList& list) : m_list(list) {}

    // The parent must be that of the list.
    bool Create(HWND parent, int id, InplaceEditListener& listener);
    // To be called after list and box have got their fonts for this DPI.
    void SetDpi(int dpi);

    // Opens over a visible row, takes the focus, and selects the text from a UTF-16 unit to its
    // end.
    void Open(int row, const std::wstring& text, std::size_t selectionStart);
    // Hides the box. If it had the focus, the list gets it.
    void Close();
    bool IsOpen() const { return m_row != VirtualList::kNoRow; }

    // Follows the left edge and the width of the list. If the row has moved up or down, the timer
    // closes the box.
    void FollowList();

private:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    // Returns whether the character was handled.
    bool OnCharacter(WPARAM unit, LPARAM flags);
    // Closes the box if its row is elsewhere now.
    void OnTick();
    void Enter();
    // Where the box belongs, in pixels of the parent.
    RECT Place() const;

    VirtualList& m_list;
    InplaceEditListener* m_listener = nullptr;
    int m_dpi = 0;
    int m_row = VirtualList::kNoRow;
    int m_textWidth = 0;  // of the text that it opened with, in pixels
    bool m_isEntering = false;
    Timer Timer2{[this] { OnTick(); }};
};

}  // namespace tamarind
