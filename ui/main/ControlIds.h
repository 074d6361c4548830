#pragma once

namespace tamarind {

// Numbers of the main window's controls and containers, by which automation tools find them. They
// are greater than those of commands and menu entries.
enum ControlId : int {
    kIdToolbar1 = 1001,
    kIdToolbar2,
    kIdStatusBar1,
    kIdPicture1,
    kIdPicSpliterContainer,
    kIdDescriptionPane,
    kIdFrame1,
    kIdFrame2,
    kIdTreeView1,
    kIdListView1,
    kIdTxtDescriptionBox,
    kIdPicProgressBar,
    kIdProgressBar1,
    kIdTxtInplaceEdit,
    kIdCmdColorSample,
    kIdKeyListPane,
    kIdCmdRestart,
    kIdUpperPane,
    kIdValueBar,
    kIdLblKey,
    kIdTxtValue,
    kIdCmdChoices,
    kIdSpnValue,
    kIdLblUnit,
    kIdCmdColor,
    kIdCmdBrowse,
    kIdPicWarning,
    kIdLblNote,
    kIdCmdReset,
    kIdLstChoices,
    kIdLstCategories,
    kIdFilterBar,
    kIdTxtFilter,
    kIdCmdClearFilter,
    kIdCmdRecentFilters,
    kIdCmdFilterWords,
    kIdCmdShowAllKeys,
    kIdLblNoHits,
    kIdCmdOtherHits,
};

// Menu entries that change: recent files by slot, and favorites by their place in the list.
enum EntryId : int {
    kIdRecentFirst = 300,
    kIdClearRecent = 399,
    kIdFavoriteFirst = 400,
    kIdFavoriteLast = 999,
};

// Accelerators of the main window that are no commands.
enum FocusId : int {
    kIdNextPane = 50,
    kIdPreviousPane,
    kIdNextPart,  // of these, the toolbar and the splitters
    kIdPreviousPart,
};

}  // namespace tamarind
