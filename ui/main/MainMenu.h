#pragma once

#include "model/session/CommandStates.h"
#include "model/session/FavoritesBook.h"
#include "model/session/RecentSettings.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/Handles.h"

namespace tamarind {

// The menu bar, the menus that pop up, and the keys, all read from the table of commands.
class MainMenu final : private FavoritesListener {
public:
    // All arguments outlive the menu.
    MainMenu(const Workplace& workplace, const KeySelection& selection, FavoritesBook& favorites,
             const RecentSettings& recent, const CommandStates& states);
    ~MainMenu() override { m_favorites.Watchers().Remove(*this); }
    MainMenu(const MainMenu&) = delete;
    MainMenu& operator=(const MainMenu&) = delete;

    // Makes the menu bar in the present language and gives it to the window, which owns it from
    // then on. One that it had before is gone.
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
    void OnFavoritesChanged() override;
    std::wstring EntryText(Command command) const;
    void Fill(HMENU menu, std::span<const Command> entries) const;
    static UniqueAccelerators MakeAccelerators(std::span<const Command> except);
    void FillRecentFiles(HMENU menu) const;
    void RefreshFavorites(HMENU menu) const;
    // The menu of the menu bar that has a command.
    static std::size_t MenuWith(Command command);
    HMENU FavoritesMenu() const;

    const Workplace& m_workplace;
    const KeySelection& m_selection;
    FavoritesBook& m_favorites;
    const RecentSettings& m_recent;
    const CommandStates& m_states;
    HMENU m_bar = nullptr;
    HMENU m_recentFiles = nullptr;  // below the File menu
    UniqueAccelerators m_accelerators;
    UniqueAccelerators m_textAccelerators;
};

}  // namespace tamarind
