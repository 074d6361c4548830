#pragma once

#include <functional>
#include <string>

#include "ui/toolkit/Control.h"

namespace tamarind {

// Who hears of a TextField. All are called after the control has changed.
struct TextFieldEvents {
    std::function<void()> onTyped;  // the user has changed the text
    std::function<void()> onFocus;  // the field has got the focus
    // A key was pressed; a virtual-key code. Returns whether it was handled.
    std::function<bool(WPARAM key, bool withAlt)> onKey;
};

// A box for one line of text. It beeps at no key: Enter, Esc and Tab are its owner's.
class TextField final : public Control {
public:
    // False if Windows cannot create it. It is hidden until it is shown.
    bool Create(HWND parent, int id, TextFieldEvents events);

    std::wstring Text() const;
    // Shows another text, which is no typing. The caret stays at its beginning.
    void SetText(const std::wstring& text);
    // Puts a text in the place of the selection, or at the caret, as if it were typed.
    void Insert(const std::wstring& text);
    // The pale text that an empty field shows.
    void SetCue(const std::wstring& text);
    void SetReadOnly(bool isReadOnly);
    void SelectAll() { Send(EM_SETSEL, 0, -1); }
    // Puts the caret behind the text.
    void SelectEnd();

private:
    std::optional<LRESULT> OnCommand(int id, int code) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    TextFieldEvents m_events;
    bool m_isSetting = false;
};

}  // namespace tamarind
