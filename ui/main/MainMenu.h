#pragma once

#include "model/session/EditorSession.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/Handles.h"

namespace tamarind {

// The menu bar, the menus that pop up, and the keys, all read from the table of commands.
class MainMenu {
public:
    explicit MainMenu(const EditorSession& session) : m_session(session) {}

    // Makes the menu bar in the present language and gives it to the window, which owns it from
    // then on. One that it had before is gone.
    bool Create(HWND window);
    // While a line of text is edited the keys of the Edit menu belong to that.
    HACCEL Accelerators(bool isEditingText) const {
        return (isEditingText ? m_textAccelerators : m_accelerators).Get();
    }

    // Puts the favorites behind the fixed entries of their menu.
    void ShowFavorites() const;

    // Brings the enabled and checked states in a menu up to date, which it needs before it opens.
    void Refresh(HMENU menu) const;

    void ShowPopup(HWND window, PopupMenu menu, POINT at) const;
    // Below a toolbar button; nothing for a command without such a menu.
    void ShowDropDown(HWND window, Command command, const RECT& button) const;

private:
    std::wstring EntryText(Command command) const;
    void Fill(HMENU menu, std::span<const Command> entries) const;
    static UniqueAccelerators MakeAccelerators(std::span<const Command> except);
    void FillRecentFiles(HMENU menu) const;
    void RefreshFavorites(HMENU menu) const;
    // The menu of the menu bar that has a command.
    static std::size_t MenuWith(Command command);
    HMENU FavoritesMenu() const;

    const EditorSession& m_session;
    HMENU m_bar = nullptr;
    HMENU m_recentFiles = nullptr;  // below the File menu
    UniqueAccelerators m_accelerators;
    UniqueAccelerators m_textAccelerators;
};

}  // namespace tamarind
