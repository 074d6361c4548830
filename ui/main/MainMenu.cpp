#include "ui/main/MainMenu.h"

#include <algorithm>
#include <vector>

#include "core/text/AccessKeys.h"
#include "core/text/WideText_win32.h"
#include "ui/main/ControlIds.h"

namespace tamarind {
namespace {

constexpr int kFixedFavoriteEntries = 2;

// The command that the arrow beside a toolbar button offers.
struct DropDown {
    Command button;
    Command entry;
};
constexpr DropDown kDropDowns[] = {
    {Command::FileSave, Command::FileSaveAndRestart},
    {Command::EditDelete, Command::EditComment},
};

UINT_PTR IdOf(Command command) {
    return static_cast<UINT_PTR>(command);
}

}  // namespace

MainMenu::MainMenu(const Workplace& workplace, const KeySelection& selection,
                   FavoritesBook& favorites, const RecentSettings& recent,
                   const CommandStates& states)
    : m_workplace(workplace),
      m_selection(selection),
      m_favorites(favorites),
      m_recent(recent),
      m_states(states) {
    m_favorites.Watchers().Add(*this);
}

// Everything is built anew, which is simpler than exchanging texts. A menu belongs to the bar from
// the moment it is appended, hence the Release.
bool MainMenu::Create(HWND window) {
    UniqueMenu bar(CreateMenu());
    for (const MenuInfo& menu : MenuBar()) {
        UniqueMenu popup(CreatePopupMenu());
        Fill(popup.Get(), menu.entries);
        const std::wstring title = Widen(m_workplace.Text(menu.textNumber));
        if (AppendMenuW(bar.Get(), MF_POPUP, reinterpret_cast<UINT_PTR>(popup.Get()),
                        title.c_str())) {
            popup.Release();  // the bar destroys it
        }
    }
    const HMENU former = GetMenu(window);
    if (!SetMenu(window, bar.Get())) {
        return false;
    }
    DestroyMenu(former);
    m_bar = bar.Release();
    m_recentFiles = HangBelow(Command::FileRecentFiles);
    Fill(HangBelow(Command::ViewColumns), ColumnsMenu());
    OnFavoritesChanged();
    m_accelerators = MakeAccelerators({});
    m_textAccelerators = MakeAccelerators(MenuBar()[MenuWith(Command::EditValue)].entries);
    return true;
}

// A new menu below an entry of the bar, which destroys it.
HMENU MainMenu::HangBelow(Command command) const {
    const HMENU below = CreatePopupMenu();
    ModifyMenuW(GetSubMenu(m_bar, static_cast<int>(MenuWith(command))),
                static_cast<UINT>(IdOf(command)), MF_BYCOMMAND | MF_POPUP,
                reinterpret_cast<UINT_PTR>(below), EntryText(command).c_str());
    return below;
}

std::wstring MainMenu::EntryText(Command command) const {
    const CommandInfo& info = InfoOf(command);
    std::string text = m_workplace.Text(info.textNumber);
    if (const std::string step = m_states.NameOfStep(command); !step.empty()) {
        text += ": " + WithoutAccessKeys(step);
    }
    if (!info.shortcut.text.empty()) {
        text += '\t';
        text += info.shortcut.text;
    }
    return Widen(text);
}

// Undo and Redo say what they would do.
void MainMenu::ShowNameOfStep(HMENU menu, Command command) const {
    if (command == Command::EditUndo || command == Command::EditRedo) {
        const auto id = static_cast<UINT>(IdOf(command));
        ModifyMenuW(menu, id, MF_BYCOMMAND | MF_STRING, id, EntryText(command).c_str());
    }
}

void MainMenu::Fill(HMENU menu, std::span<const Command> entries) const {
    for (const Command command : entries) {
        if (command == Command::None) {
            AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
        } else {
            AppendMenuW(menu, MF_STRING, IdOf(command), EntryText(command).c_str());
        }
    }
    Refresh(menu);
}

void MainMenu::FillRecentFiles(HMENU menu) const {
    while (DeleteMenu(menu, 0, MF_BYPOSITION)) {
    }
    const cRecentFiles& files = m_recent.Files();
    const auto entries = files.Entries();
    for (const auto& entry : entries) {
        AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(kIdRecentFirst + entry.index - 1),
                    Widen(entry.caption).c_str());
    }
    const UINT clearState = entries.empty() ? MF_GRAYED : MF_ENABLED;
    if (entries.empty()) {
        AppendMenuW(menu, MF_STRING | MF_GRAYED, 0, Widen(files.NoFilesText()).c_str());
    }
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu, MF_STRING | clearState, kIdClearRecent, Widen(files.ClearText()).c_str());
}

// Favorites follow the fixed entries of their menu.
void MainMenu::OnFavoritesChanged() {
    const HMENU menu = FavoritesMenu();
    while (DeleteMenu(menu, kFixedFavoriteEntries, MF_BYPOSITION)) {
    }
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    int id = kIdFavoriteFirst;
    for (const Favorite& favorite : m_favorites.Items()) {
        if (id > kIdFavoriteLast) {
            break;
        }
        const UINT kind = favorite.IsSeparator() ? MF_SEPARATOR : MF_STRING;
        AppendMenuW(menu, kind, static_cast<UINT_PTR>(id++), Widen(favorite.caption).c_str());
    }
}

// Only favorites whose keys are in the list can be chosen.
void MainMenu::RefreshFavorites(HMENU menu) const {
    const ShownNames names = m_selection.NamesInList();
    UINT id = kIdFavoriteFirst;
    for (const Favorite& favorite : m_favorites.Items()) {
        EnableMenuItem(menu, id++, names.HasNameFrom(favorite.name) ? MF_ENABLED : MF_GRAYED);
    }
}

void MainMenu::Refresh(HMENU menu) const {
    if (menu == m_recentFiles) {
        FillRecentFiles(menu);
        return;
    }
    if (menu == FavoritesMenu()) {
        RefreshFavorites(menu);
    }
    const int count = GetMenuItemCount(menu);
    for (int at = 0; at < count; ++at) {
        if (const HMENU below = GetSubMenu(menu, at)) {
            Refresh(below);
            continue;
        }
        const UINT id = GetMenuItemID(menu, at);
        if (const CommandInfo* const info = FindCommand(id)) {
            const bool isEnabled = m_states.IsEnabled(info->command);
            const bool isChecked = m_states.IsChecked(info->command);
            ShowNameOfStep(menu, info->command);
            EnableMenuItem(menu, id, isEnabled ? MF_ENABLED : MF_GRAYED);
            CheckMenuItem(menu, id, isChecked ? MF_CHECKED : MF_UNCHECKED);
        }
    }
}

// Shortcuts of the key list are left out: in other windows those keys edit text.
UniqueAccelerators MainMenu::MakeAccelerators(std::span<const Command> except) {
    std::vector<ACCEL> keys = {
        {FVIRTKEY, VK_F6, kIdNextPart},
        {FVIRTKEY | FSHIFT, VK_F6, kIdPreviousPart},
        {FVIRTKEY, VK_TAB, kIdNextPane},
        {FVIRTKEY | FSHIFT, VK_TAB, kIdPreviousPane},
        // Browsers go to what they filter by this key.
        {FVIRTKEY | FCONTROL, 'L', static_cast<WORD>(Command::SearchFilter)},
    };
    for (const CommandInfo& info : AllCommands()) {
        const Shortcut& shortcut = info.shortcut;
        const bool isExcepted = std::ranges::find(except, info.command) != except.end();
        if (shortcut.key != 0 && !shortcut.isOfKeyList && !isExcepted) {
            const int modifiers = (shortcut.control ? FCONTROL : 0) | (shortcut.shift ? FSHIFT : 0);
            keys.push_back({static_cast<BYTE>(FVIRTKEY | modifiers), shortcut.key,
                            static_cast<WORD>(info.command)});
        }
    }
    return UniqueAccelerators(CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size())));
}

std::size_t MainMenu::MenuWith(Command command) {
    const auto menus = MenuBar();
    const auto found = std::ranges::find_if(menus, [&](const MenuInfo& menu) {
        return std::ranges::find(menu.entries, command) != menu.entries.end();
    });
    return static_cast<std::size_t>(found - menus.begin());
}

HMENU MainMenu::FavoritesMenu() const {
    return GetSubMenu(m_bar, static_cast<int>(MenuWith(Command::FavoritesAdd)));
}

void MainMenu::ShowPopup(HWND window, PopupMenu menu, POINT at) const {
    const UniqueMenu popup(CreatePopupMenu());
    Fill(popup.Get(), menu == PopupMenu::CategoryTree ? TreeMenu()
                      : menu == PopupMenu::KeyList    ? KeyListMenu()
                                                      : ColumnsMenu());
    TrackPopupMenu(popup.Get(), TPM_RIGHTBUTTON, at.x, at.y, 0, window, nullptr);
}

void MainMenu::ShowDropDown(HWND window, Command command, const RECT& button) const {
    const UniqueMenu menu(CreatePopupMenu());
    const auto* const row = std::ranges::find(kDropDowns, command, &DropDown::button);
    if (row != std::end(kDropDowns)) {
        Fill(menu.Get(), {&row->entry, 1});
    } else if (command == Command::FileOpen) {
        FillRecentFiles(menu.Get());
    }
    TPMPARAMS around{sizeof(TPMPARAMS), button};
    TrackPopupMenuEx(menu.Get(), TPM_VERTICAL, button.left, button.bottom, window, &around);
}

}  // namespace tamarind
