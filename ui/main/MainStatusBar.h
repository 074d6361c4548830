#pragma once

#include "model/session/KeySelection.h"
#include "model/session/OpenDataFile.h"
#include "model/session/OpenSettings.h"
#include "ui/main/MainLook.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/Pane.h"
#include "ui/toolkit/ProgressBar.h"
#include "ui/toolkit/StatusBar.h"

namespace tamarind {

// The status bar with its three panels, and the progress bar, which covers it while a file is
// loaded.
class MainStatusBar final : private StatusBarListener,
                            private DataFileListener,
                            private SettingsListener,
                            private KeyListListener,
                            private ProgressListener {
public:
    // All arguments are kept by reference and must outlive the status bar.
    MainStatusBar(OpenDataFile& dataFile, OpenSettings& settings, KeySelection& selection,
                  MainWindowActions& actions);
    ~MainStatusBar() override;
    MainStatusBar(const MainStatusBar&) = delete;
    MainStatusBar& operator=(const MainStatusBar&) = delete;

    bool Create(HWND parent, const MainLook& look);
    void ApplyLook(const MainLook& look);
    // Shows all texts in the present language.
    void ApplyLanguage();
    // In pixels of the parent.
    void SetBounds(const RECT& bounds);
    // The height in pixels that the font needs.
    int IdealHeight() const { return StatusBar1.IdealHeight(); }

private:
    // The panels in their order. Their names are "datafile", "target" and "counter".
    enum Part : int { kDataFilePart, kTargetPart, kCounterPart, kPartCount };

    void OnDataFileChanged() override { ShowDataFile(); }
    void OnSettingsRead() override { ShowTarget(); }
    void OnKeyShown() override { ShowTarget(); }
    void OnKeyListChanged() override { ShowCounter(); }
    void OnProgress(const ProgressMeter& progress) override;
    void OnProgressEnd() override;
    void OnStatusPartClicked(int part) override;
    void ShowDataFile();
    void ShowTarget();
    void ShowCounter();
    // Divides the width among the panels by their texts.
    void UpdateParts();
    // Makes the progress bar if it does not exist yet.
    bool CreateProgress();

    OpenDataFile& m_dataFile;
    OpenSettings& m_settings;
    KeySelection& m_selection;
    MainWindowActions& m_actions;
    int m_dpi = 0;
    HWND m_parent = nullptr;
    RECT m_bounds{};
    HIMAGELIST m_pictures = nullptr;
    StatusBar StatusBar1;
    Pane picProgressBar;  // exists from the first load that takes long
    ProgressBar ProgressBar1;
};

}  // namespace tamarind
