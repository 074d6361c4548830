#include "model/program/Commands.h"

#include <algorithm>
#include <iterator>

namespace tamarind {
namespace {

constexpr std::uint16_t kKeyReturn = 0x0D;
constexpr std::uint16_t kKeyDelete = 0x2E;
constexpr std::uint16_t kKeyF1 = 0x70;
constexpr std::uint16_t kKeyF3 = 0x72;
constexpr std::uint16_t kKeyF5 = 0x74;

constexpr Shortcut kNoShortcut;

constexpr Shortcut WithControl(char letter, std::string_view text) {
    return {static_cast<std::uint16_t>(letter), true, false, false, text};
}

bool Always(const CommandState&) {
    return true;
}

bool HasKey(const CommandState& state) {
    return state.hasKey;
}

bool HasPresentKey(const CommandState& state) {
    return state.hasKey && state.isKeyPresent;
}

bool HasActiveKey(const CommandState& state) {
    return state.hasKey && state.isKeyActive;
}

bool IsModified(const CommandState& state) {
    return state.isModified;
}

template <std::size_t Column>
bool ShowsColumn(const CommandState& state) {
    return state.showsColumns[Column];
}

bool Never(const CommandState&) {
    return false;
}

constexpr bool kEndsEditing = true;
constexpr bool kKeepsEditing = false;

// In the order of the enum Command: InfoOf and FindCommand use the command's number as an index.
// Columns: command, text number, shortcut, toolbar button, enabled, checked, ends editing.
constexpr CommandInfo kCommands[] = {
    {Command::FileOpen, 103, WithControl('O', "Ctrl+O"), "Open", Always, Never, kEndsEditing},
    {Command::FileOpenDataFile, 114, kNoShortcut, "", Always, Never, kEndsEditing},
    {Command::FileSave, 104, WithControl('S', "Ctrl+S"), "Save", IsModified, Never, kEndsEditing},
    {Command::FileSaveDataFile, 115, kNoShortcut, "",
     [](const CommandState& state) { return state.isDataFileModified; }, Never, kKeepsEditing},
    {Command::FileSaveAndRestart, 116, kNoShortcut, "",
     [](const CommandState& state) { return state.isTotalCommanderRunning; }, Never, kEndsEditing},
    {Command::FileExport, 112, kNoShortcut, "", HasKey, Never, kEndsEditing},
    {Command::FileImport, 113, kNoShortcut, "", HasKey, Never, kEndsEditing},
    {Command::FileRestoreBackup, 4021, kNoShortcut, "", Always, Never, kKeepsEditing},
    {Command::FilePendingChanges,
     4060,
     {'S', true, true, false, "Ctrl+Shift+S"},
     "",
     Always,
     Never,
     kKeepsEditing},
    {Command::FileExportSelected, 4094, kNoShortcut, "", HasKey, Never, kEndsEditing},
    {Command::FileExportDifferences, 4095, kNoShortcut, "", HasKey, Never, kEndsEditing},
    {Command::FileRecentFiles, 107, kNoShortcut, "", Always, Never, kKeepsEditing},
    {Command::FileExit, 110, kNoShortcut, "", Always, Never, kKeepsEditing},
    {Command::EditUndo, 190, WithControl('Z', "Ctrl+Z"), "Undo",
     [](const CommandState& state) { return state.canUndo; }, Never, kEndsEditing},
    {Command::EditRedo, 191, WithControl('Y', "Ctrl+Y"), "Redo",
     [](const CommandState& state) { return state.canRedo; }, Never, kEndsEditing},
    {Command::EditValue,
     192,
     {kKeyReturn, false, false, true, "Enter"},
     "Edit",
     HasKey,
     Never,
     kKeepsEditing},
    {Command::EditSetValue1, 193, kNoShortcut, "", HasKey, Never, kEndsEditing},
    {Command::EditSetValue0, 194, kNoShortcut, "", HasKey, Never, kEndsEditing},
    {Command::EditBrowseValue, 195, kNoShortcut, "", HasKey, Never, kEndsEditing},
    {Command::EditComment,
     140,
     {kKeyDelete, false, true, true, "Shift+Del"},
     "",
     HasActiveKey,
     Never,
     kEndsEditing},
    {Command::EditDelete,
     132,
     {kKeyDelete, false, false, true, "Del"},
     "Delete",
     HasPresentKey,
     Never,
     kKeepsEditing},
    {Command::EditReset,
     4089,
     {kKeyDelete, true, false, true, "Ctrl+Del"},
     "",
     HasPresentKey,
     Never,
     kEndsEditing},
    {Command::EditResetCategory, 4090, kNoShortcut, "", HasKey, Never, kEndsEditing},
    {Command::EditCopy, 4096, {'C', true, false, true, "Ctrl+C"}, "", HasKey, Never, kKeepsEditing},
    {Command::EditSelectAll,
     4097,
     {'A', true, false, true, "Ctrl+A"},
     "",
     HasKey,
     Never,
     kKeepsEditing},
    {Command::EditDescribe, 4186, kNoShortcut, "",
     [](const CommandState& state) { return state.canDescribe; }, Never, kEndsEditing},
    {Command::EditAddKey, 4187, kNoShortcut, "", Always, Never, kEndsEditing},
    {Command::ViewToolbar, 142, kNoShortcut, "", Always,
     [](const CommandState& state) { return state.isToolbarVisible; }, kKeepsEditing},
    {Command::ViewDescription, 151, kNoShortcut, "", Always,
     [](const CommandState& state) { return state.isDescriptionVisible; }, kKeepsEditing},
    {Command::ViewAllKeys, 152, kNoShortcut, "Show All Keys", Always,
     [](const CommandState& state) { return state.showsAllKeys; }, kKeepsEditing},
    {Command::ViewActiveKeys, 153, kNoShortcut, "Show Active Keys", Always,
     [](const CommandState& state) { return state.showsActiveKeys; }, kKeepsEditing},
    {Command::ViewInactiveKeys, 154, kNoShortcut, "Show Inactive Keys", Always,
     [](const CommandState& state) { return state.showsInactiveKeys; }, kKeepsEditing},
    {Command::ViewChangedKeys, 4143, kNoShortcut, "", Always,
     [](const CommandState& state) { return state.showsChangedKeys; }, kKeepsEditing},
    {Command::ViewDifferentKeys, 4144, kNoShortcut, "", Always,
     [](const CommandState& state) { return state.showsDifferentKeys; }, kKeepsEditing},
    {Command::ViewOptions, 150, kNoShortcut, "Options", Always, Never, kKeepsEditing},
    {Command::ViewValueBar, 4105, kNoShortcut, "", Always,
     [](const CommandState& state) { return state.isValueBarVisible; }, kKeepsEditing},
    {Command::ViewFilterBar, 4147, kNoShortcut, "", Always,
     [](const CommandState& state) { return state.isFilterBarVisible; }, kKeepsEditing},
    {Command::ViewUndescribed, 4184, kNoShortcut, "", Always,
     [](const CommandState& state) { return state.areUndescribedVisible; }, kEndsEditing},
    {Command::ViewIgnoredLines, 4188, kNoShortcut, "", Always, Never, kEndsEditing},
    {Command::ViewColumns, 4106, kNoShortcut, "", Always, Never, kKeepsEditing},
    {Command::ViewColumnState, 4107, kNoShortcut, "", Always, ShowsColumn<0>, kEndsEditing},
    {Command::ViewColumnDefault, 4108, kNoShortcut, "", Always, ShowsColumn<1>, kEndsEditing},
    {Command::ViewColumnMeaning, 4109, kNoShortcut, "", Always, ShowsColumn<2>, kEndsEditing},
    {Command::ViewColumnCategory, 4110, kNoShortcut, "", Always, ShowsColumn<3>, kEndsEditing},
    {Command::ViewColumnSection, 4062, kNoShortcut, "", Always, ShowsColumn<4>, kEndsEditing},
    {Command::SearchFind, 251, WithControl('F', "Ctrl+F"), "", Always, Never, kKeepsEditing},
    {Command::SearchFindNext,
     252,
     {kKeyF3, false, false, false, "F3"},
     "",
     [](const CommandState& state) { return state.canFind; },
     Never,
     kEndsEditing},
    {Command::SearchShowInCategory, 4145, WithControl('G', "Ctrl+G"), "",
     [](const CommandState& state) { return state.canShowInCategory; }, Never, kEndsEditing},
    {Command::SearchFilter, 4179, WithControl('E', "Ctrl+E"), "", Always, Never, kEndsEditing},
    {Command::SearchFilterAgain,
     4180,
     {kKeyF5, false, false, false, "F5"},
     "",
     [](const CommandState& state) { return state.isFiltered; },
     Never,
     kEndsEditing},
    {Command::FavoritesAdd, 201, kNoShortcut, "",
     [](const CommandState& state) { return state.hasDescribedRow; }, Never, kKeepsEditing},
    {Command::FavoritesOrganize, 202, kNoShortcut, "", Always, Never, kKeepsEditing},
    {Command::HelpTopics,
     162,
     {kKeyF1, false, false, false, "F1"},
     "",
     Always,
     Never,
     kKeepsEditing},
    {Command::HelpAbout, 163, kNoShortcut, "", Always, Never, kKeepsEditing},
};

constexpr Command kSeparator = Command::None;

constexpr Command kFileMenu[] = {
    Command::FileOpen,
    Command::FileOpenDataFile,
    kSeparator,
    Command::FileSave,
    Command::FileSaveDataFile,
    Command::FileSaveAndRestart,
    kSeparator,
    Command::FileExport,
    Command::FileImport,
    Command::FileRestoreBackup,
    Command::FilePendingChanges,
    kSeparator,
    Command::FileRecentFiles,
    kSeparator,
    Command::FileExit,
};
// The Edit menu is the key list's without what only that has.
constexpr Command kKeyListMenu[] = {
    Command::EditUndo,
    Command::EditRedo,
    kSeparator,
    Command::EditValue,
    Command::EditSetValue1,
    Command::EditSetValue0,
    Command::EditBrowseValue,
    kSeparator,
    Command::EditComment,
    Command::EditDelete,
    kSeparator,
    Command::EditReset,
    Command::EditCopy,
    Command::EditSelectAll,
    kSeparator,
    Command::EditDescribe,
    Command::EditAddKey,
    kSeparator,
    Command::FileExportSelected,
    Command::FileExportDifferences,
    kSeparator,
    Command::SearchShowInCategory,
};
constexpr std::size_t kOfKeyListOnly = 5;
constexpr std::span kEditEntries =
    std::span(kKeyListMenu).first(std::size(kKeyListMenu) - kOfKeyListOnly);
constexpr Command kTreeMenu[] = {Command::FileExport, Command::FileImport, kSeparator,
                                 Command::EditResetCategory};
constexpr Command kViewMenu[] = {
    Command::ViewToolbar,
    Command::ViewDescription,
    kSeparator,
    Command::ViewAllKeys,
    Command::ViewActiveKeys,
    Command::ViewInactiveKeys,
    Command::ViewChangedKeys,
    Command::ViewDifferentKeys,
    kSeparator,
    Command::ViewOptions,
    kSeparator,
    Command::ViewValueBar,
    Command::ViewFilterBar,
    Command::ViewColumns,
    Command::ViewUndescribed,
    Command::ViewIgnoredLines,
};
constexpr Command kColumnsMenu[] = {
    Command::ViewColumnState,    Command::ViewColumnDefault, Command::ViewColumnMeaning,
    Command::ViewColumnCategory, Command::ViewColumnSection,
};
constexpr Command kSearchMenu[] = {Command::SearchFind, Command::SearchFindNext,
                                   Command::SearchShowInCategory, Command::SearchFilter,
                                   Command::SearchFilterAgain};
constexpr Command kFavoritesMenu[] = {Command::FavoritesAdd, Command::FavoritesOrganize};
constexpr Command kHelpMenu[] = {Command::HelpTopics, kSeparator, Command::HelpAbout};

constexpr MenuInfo kMenuBar[] = {
    {101, kFileMenu},   {121, kEditEntries},   {141, kViewMenu},
    {250, kSearchMenu}, {200, kFavoritesMenu}, {161, kHelpMenu},
};

// InfoOf finds a row by its place.
constexpr bool IsInOrder() {
    for (std::size_t row = 1; row < std::size(kCommands); ++row) {
        if (static_cast<int>(kCommands[row].command) !=
            static_cast<int>(kCommands[row - 1].command) + 1) {
            return false;
        }
    }
    return true;
}
static_assert(IsInOrder());

}  // namespace

std::span<const CommandInfo> AllCommands() {
    return kCommands;
}

const CommandInfo& InfoOf(Command command) {
    return kCommands[static_cast<std::size_t>(command) -
                     static_cast<std::size_t>(kCommands[0].command)];
}

const CommandInfo* FindCommand(std::uint32_t number) {
    const auto first = static_cast<std::uint32_t>(kCommands[0].command);
    return number >= first && number - first < std::size(kCommands) ? &kCommands[number - first]
                                                                    : nullptr;
}

Command CommandOfButton(std::string_view toolbarName) {
    const auto* const row = std::ranges::find_if(kCommands, [&](const CommandInfo& info) {
        return !toolbarName.empty() && info.toolbarName == toolbarName;
    });
    return row == std::end(kCommands) ? Command::None : row->command;
}

std::span<const MenuInfo> MenuBar() {
    return kMenuBar;
}

std::span<const Command> TreeMenu() {
    return kTreeMenu;
}

std::span<const Command> ColumnsMenu() {
    return kColumnsMenu;
}

std::span<const Command> KeyListMenu() {
    return kKeyListMenu;
}

}  // namespace tamarind
