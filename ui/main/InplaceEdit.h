#pragma once

#include <string>

#include "ui/toolkit/Timer.h"
#include "ui/toolkit/VirtualList.h"

namespace tamarind {

class InplaceEditListener {
public:
    // The user is done with the text. Returns whether it was taken; else the box stays open.
    virtual bool OnTextEntered(const std::wstring& text) = 0;

protected:
    ~InplaceEditListener() = default;
};

// A box of one line over a row of a list, in which the row is edited. It closes without a word
// when the user leaves it or scrolls the list.
class InplaceEdit final : public Control {
public:
    explicit InplaceEdit(VirtualList& list) : m_list(list) {}

    // The parent is the list's.
    bool Create(HWND parent, int id, InplaceEditListener& listener);
    // To be called when list and box have the font of this resolution.
    void SetDpi(int dpi);

    // Opens over a row that is in sight, with the focus and the text selected from a UTF-16 unit
    // to its end.
    void Open(int row, const std::wstring& text, std::size_t selectionStart);
    // Gives the focus to the list if it had it.
    void Close();
    bool IsOpen() const { return m_row != VirtualList::kNoRow; }

    // Follows the list's left edge and width. What moves the row up or down closes the box.
    void FollowList();

private:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnCharacter(WPARAM unit, LPARAM flags);
    void OnTick();
    void Enter();
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
