#pragma once

#include "model/session/EditorSession.h"
#include "ui/main/CategoryTree.h"
#include "ui/main/DescriptionPane.h"
#include "ui/main/KeyListView.h"
#include "ui/shell/cSplitter.h"
#include "ui/toolkit/Pane.h"

namespace tamarind {

// The panes of the main window and the two splitters between them: the tree beside the key list,
// both above the description.
class MainPanes {
public:
    // All arguments outlive the panes.
    MainPanes(EditorSession& session, MainWindowActions& actions);

    bool Create(HWND parent, const MainLook& look);
    void ApplyLook(const MainLook& look);
    void SetBounds(const RECT& bounds) { Picture1.SetBounds(bounds); }

    CategoryTree& Tree() { return m_tree; }
    KeyListView& Keys() { return m_keys; }
    DescriptionPane& Description() { return m_description; }

    void ShowDescriptionPane(bool isVisible);
    // To be called once the window has its first size: from then on the description keeps its
    // height.
    void StartFollowingSize() { m_descriptionSplitter.KeepSecondPaneSize(true); }
    void StorePositions(Settings& settings) const;

    void FocusTree() { SetFocus(m_tree.Handle()); }
    // Moves the focus between tree, list and description.
    void FocusNext(bool isForward);

private:
    const SettingsStore& m_ownSettings;
    Pane Picture1;
    Pane picSpliterContainer;
    SplitterBar Frame1;
    SplitterBar Frame2;
    CategoryTree m_tree;
    KeyListView m_keys;
    DescriptionPane m_description;
    cSplitter m_treeSplitter;
    cSplitter m_descriptionSplitter;
};

}  // namespace tamarind
