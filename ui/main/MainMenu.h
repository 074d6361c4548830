#pragma once

#include "model/session/CommandStates.h"
#include "model/session/FavoritesBook.h"
#include "model/session/RecentSettings.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/Handles.h"

namespace tamarind {

// The menu bar, the pop-up menus and the accelerators, all built from the table of commands.
class MainMenu final : private FavoritesListener {
public:
    // All arguments are kept by reference and must outlive this object.
    MainMenu(const Workplace& workplace, const KeySelection& selection, FavoritesBook& favorites,
             const RecentSettings& recent, const CommandStates& states);
    ~MainMenu() override { m_favorites.Watchers().Remove(*this); }
    MainMenu(const MainMenu&) = delete;
    MainMenu& operator=(const MainMenu&) = delete;

    // Builds the menu bar in the present language and gives it to the window, which owns it from
    // then on. Its former menu bar is destroyed.
    bool Create(HWND window);
    // The accelerators. While text is edited, those of the Edit menu are left to the text.
    HACCEL Accelerators(bool isEditingText) const {
        return (isEditingText ? m_textAccelerators : m_accelerators).Get();
    }

    // Updates the enabled and checked states of a menu; to be called before it opens
    // (WM_INITMENUPOPUP).
    void Refresh(HMENU menu) const;

    // `at` is in screen pixels. Returns when the menu is closed.
    void ShowPopup(HWND window, PopupMenu menu, POINT at) const;
    // Opens the menu of a toolbar button below it. `button` is in screen pixels.
    void ShowDropDown(HWND window, Command command, const RECT& button) const;

private:
    void OnFavoritesChanged() override;
    HMENU HangBelow(Command command) const;
    std::wstring EntryText(Command command) const;
    void Fill(HMENU menu, std::span<const Command> entries) const;
    // The shortcuts that work in the whole window, except those of the given commands.
    static UniqueAccelerators MakeAccelerators(std::span<const Command> except);
    void ShowNameOfStep(HMENU menu, Command command) const;
    void FillRecentFiles(HMENU menu) const;
    void RefreshFavorites(HMENU menu) const;
    // The index of the menu of the menu bar that contains a command.
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
