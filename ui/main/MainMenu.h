#pragma once

#include "model/EditorSession.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/Handles.h"

namespace tamarind {

// The menu bar, the menus that pop up, and the keys, all read from the table of commands.
class MainMenu {
public:
    explicit MainMenu(const EditorSession& session) : m_session(session) {}

    // Makes the menu bar and gives it to the window, which owns it from then on.
    bool Create(HWND window);
    // While a line of text is edited the keys of the Edit menu belong to that.
    HACCEL Accelerators(bool isEditingText) const {
        return (isEditingText ? m_textAccelerators : m_accelerators).Get();
    }

    // Brings the enabled and checked states in a menu up to date, which it needs before it opens.
    void Refresh(HMENU menu) const;

    void ShowPopup(HWND window, PopupMenu menu, POINT at) const;
    // Below a toolbar button; nothing for a command without such a menu.
    void ShowDropDown(HWND window, Command command, const RECT& button) const;

private:
    std::wstring EntryText(Command command) const;
    void Fill(HMENU menu, std::span<const Command> entries) const;
    static UniqueAccelerators MakeAccelerators(std::span<const Command> except);
    static std::size_t EditMenu();

    const EditorSession& m_session;
    HMENU m_bar = nullptr;
    UniqueAccelerators m_accelerators;
    UniqueAccelerators m_textAccelerators;
};

}  // namespace tamarind
