#pragma once

namespace tamarind {

// Numbers of the main window's controls and containers, by which tools find them. Commands have
// lower ones.
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
};

// Keys of the main window that are no commands.
enum FocusId : int {
    kIdNextPane = 50,
    kIdPreviousPane,
};

}  // namespace tamarind
