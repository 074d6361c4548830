#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace tamarind {

// Everything that the user can do from the menu. The values are the numbers of the menu entries.
enum class Command : std::uint16_t {
    None = 0,
    FileOpen = 100,
    FileOpenDataFile,
    FileSave,
    FileSaveDataFile,
    FileSaveAndRestart,
    FileExport,
    FileImport,
    FileRestoreBackup,
    FilePendingChanges,
    FileExportSelected,
    FileExportDifferences,
    FileRecentFiles,
    FileExit,
    EditUndo,
    EditRedo,
    EditValue,
    EditSetValue1,
    EditSetValue0,
    EditBrowseValue,
    EditComment,
    EditDelete,
    EditReset,
    EditResetCategory,
    EditCopy,
    EditSelectAll,
    EditDescribe,
    EditAddKey,
    ViewToolbar,
    ViewDescription,
    ViewAllKeys,
    ViewActiveKeys,
    ViewInactiveKeys,
    ViewChangedKeys,
    ViewDifferentKeys,
    ViewOptions,
    ViewValueBar,
    ViewFilterBar,
    ViewUndescribed,
    ViewIgnoredLines,
    ViewColumns,
    ViewColumnState,
    ViewColumnDefault,
    ViewColumnMeaning,
    ViewColumnCategory,
    ViewColumnSection,
    SearchFind,
    SearchFindNext,
    SearchShowInCategory,
    SearchFilter,
    SearchFilterAgain,
    FavoritesAdd,
    FavoritesOrganize,
    HelpTopics,
    HelpAbout,
};

// A key with its modifiers, by virtual-key codes of Windows. A shortcut of the key list works only
// while the list has the focus, but is shown in the menu.
struct Shortcut {
    std::uint16_t key = 0;  // 0: none
    bool control = false;
    bool shift = false;
    bool isOfKeyList = false;
    std::string_view text = {};  // as the menu shows it
};

// What decides whether commands are enabled and checked. CommandStates fills it in.
struct CommandState {
    bool hasKey = false;              // there is a current key, and no heading is shown
    bool isKeyPresent = false;        // a selected one has, or will have, a line in the settings
    bool isKeyActive = false;         // and is not commented out
    bool hasDescribedRow = false;     // there is a current key, and the data file has it
    bool isModified = false;          // changes are pending
    bool isDataFileModified = false;  // descriptions wait to be written
    bool canFind = false;             // there is a text to look for
    bool canUndo = false;
    bool canRedo = false;
    bool isTotalCommanderRunning = false;
    bool isToolbarVisible = false;
    bool isDescriptionVisible = false;
    bool isValueBarVisible = false;
    bool isFilterBarVisible = false;
    bool areUndescribedVisible = false;  // keys
    bool isFiltered = false;             // by the text in the filter bar
    std::array<bool, 5> showsColumns{};  // besides that of the key, in the order of the commands
    bool showsAllKeys = false;
    bool showsActiveKeys = false;
    bool showsInactiveKeys = false;
    bool showsChangedKeys = false;
    bool showsDifferentKeys = false;
    bool canDescribe = false;        // nothing describes the current key
    bool canShowInCategory = false;  // another node than the current key's own is shown
};

// Everything about a command except what it does.
struct CommandInfo {
    Command command;
    std::uint16_t textNumber;
    Shortcut shortcut;
    std::string_view toolbarName;  // the toolbar button that does the same
    bool (*isEnabled)(const CommandState&);
    bool (*isChecked)(const CommandState&);
    bool endsEditing;  // the edit box is closed first, and what was typed is dropped
};

// One row for each command, in the order of the enum.
std::span<const CommandInfo> AllCommands();
// `command` must not be None.
const CommandInfo& InfoOf(Command command);
// The row of the menu entry with this number; null if there is none.
const CommandInfo* FindCommand(std::uint32_t number);
// The command of a toolbar button by its name, or None.
Command CommandOfButton(std::string_view toolbarName);

// A menu: the number of its title's text and its entries, None for a separator.
struct MenuInfo {
    std::uint16_t textNumber;
    std::span<const Command> entries;
};
// The menus in the order of the menu bar.
std::span<const MenuInfo> MenuBar();
// What the menus of the category tree and of the key list offer.
std::span<const Command> TreeMenu();
// What View > Columns and the menu of the list's title offer.
std::span<const Command> ColumnsMenu();
std::span<const Command> KeyListMenu();

}  // namespace tamarind
