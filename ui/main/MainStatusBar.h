#pragma once

#include "model/session/EditorSession.h"
#include "model/session/SelectionTexts.h"
#include "ui/main/MainLook.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/Pane.h"
#include "ui/toolkit/ProgressBar.h"
#include "ui/toolkit/PushButton.h"
#include "ui/toolkit/StatusBar.h"
#include "ui/toolkit/Timer.h"

namespace tamarind {

// The status bar with its panels, and the progress bar, which covers it while a file is loaded. A
// notice takes the place of the target section for some seconds.
class MainStatusBar final : private StatusBarListener,
                            private WorkplaceListener,
                            private DataFileListener,
                            private SettingsListener,
                            private KeyListListener,
                            private ProgressListener {
public:
    // All arguments are kept by reference and must outlive the status bar.
    MainStatusBar(EditorSession& session, MainWindowActions& actions);
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
    // The panels in their order. Their names are "datafile", "target", "counter" and "changes"; the
    // last one is there while changes are pending.
    enum Part : int { kDataFilePart, kTargetPart, kCounterPart, kChangesPart };

    void OnCommandsChanged() override { ShowChanges(); }
    void OnNotice(const Notice& notice) override;
    void OnDataFileChanged() override { ShowDataFile(); }
    void OnSettingsRead() override { ShowTarget(); }
    void OnKeyShown() override { ShowTarget(); }
    void OnKeyListChanged() override { ShowCounter(); }
    void OnProgress(const ProgressMeter& progress) override;
    void OnProgressEnd() override;
    void OnStatusPartClicked(int part) override;
    void ShowDataFile();
    void ShowTarget();
    void ShowChanges();
    void ShowCounter();
    void EndNotice();
    void ShowRestart();
    void PlaceRestart();
    // Divides the width among the panels by their texts.
    void UpdateParts();
    // Makes the progress bar if it does not exist yet.
    bool CreateProgress();

    Workplace& m_workplace;
    OpenDataFile& m_dataFile;
    OpenSettings& m_settings;
    KeySelection& m_selection;
    const SelectionTexts m_texts{m_workplace, m_selection};
    const PendingChanges& m_pending;
    MainWindowActions& m_actions;
    std::wstring m_changes;  // as shown
    std::optional<Notice> m_notice;
    Timer m_noticeEnd{[this] { EndNotice(); }};
    int m_dpi = 0;
    HWND m_parent = nullptr;
    RECT m_bounds{};
    HIMAGELIST m_pictures = nullptr;
    StatusBar StatusBar1;
    PushButton cmdRestart;  // exists from the first notice that offers it
    Pane picProgressBar;    // exists from the first load that takes long
    ProgressBar ProgressBar1;
};

}  // namespace tamarind
