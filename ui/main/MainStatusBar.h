#pragma once

#include "model/session/EditorSession.h"
#include "ui/main/MainLook.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/Pane.h"
#include "ui/toolkit/ProgressBar.h"
#include "ui/toolkit/StatusBar.h"

namespace tamarind {

// The status bar with its three panels, and the progress of a load, which covers it.
class MainStatusBar final : private StatusBarListener {
public:
    MainStatusBar(const EditorSession& session, MainWindowActions& actions)
        : m_session(session), m_actions(actions) {}

    bool Create(HWND parent, const MainLook& look);
    void ApplyLook(const MainLook& look);
    // Shows the texts of the present language.
    void ApplyLanguage();
    void SetBounds(const RECT& bounds);
    int IdealHeight() const { return StatusBar1.IdealHeight(); }

    void ShowDataFile();
    void ShowTarget();
    void ShowCounter();

    // Paints at once and leaves all else alone.
    void ShowProgress(const ProgressMeter& progress);
    void HideProgress();

private:
    // The panels in their order; the keys are "datafile", "target" and "counter".
    enum Part : int { kDataFilePart, kTargetPart, kCounterPart, kPartCount };

    void OnStatusPartClicked(int part) override;
    void UpdateParts();
    bool CreateProgress();

    const EditorSession& m_session;
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
