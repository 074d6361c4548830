#pragma once

#include <span>

#include "model/session/EditorSession.h"
#include "ui/main/CategoryTree.h"
#include "ui/main/DescriptionPane.h"
#include "ui/main/KeyListView.h"
#include "ui/main/ValueBar.h"
#include "ui/shell/cSplitter.h"
#include "ui/toolkit/Pane.h"

namespace tamarind {

// The panes of the main window and the two splitters between them: the tree and the key list side
// by side, below them the value bar, and at the bottom the description.
class MainPanes final : private MessageFilter {
public:
    // All arguments are kept by reference and must outlive the panes.
    MainPanes(EditorSession& session, MainWindowActions& actions);
    ~MainPanes();
    MainPanes(const MainPanes&) = delete;
    MainPanes& operator=(const MainPanes&) = delete;

    // Makes all panes, with the splitters where the settings want them. False if Windows cannot
    // create one.
    bool Create(HWND parent, const MainLook& look);
    void ApplyLook(const MainLook& look);
    void SetBounds(const RECT& bounds) { Picture1.SetBounds(bounds); }

    CategoryTree& Tree() { return m_tree; }
    KeyListView& Keys() { return m_keys; }
    ValueBar& Value() { return m_value; }
    DescriptionPane& Description() { return m_description; }

    // If the pane that is hidden has the focus, the tree gets it.
    void ShowValueBar(bool isVisible);
    void ShowFilterBar(bool isVisible);
    void ShowDescriptionPane(bool isVisible);
    // To be called when the window has its first size. From then on the description keeps its
    // height when the size of the window changes.
    void StartFollowingSize() { m_descriptionSplitter.KeepSecondPaneSize(true); }
    // Puts the positions of the splitters into the settings, in twips.
    void StorePositions(OwnSettings& settings) const;

    void FocusTree() { SetFocus(m_tree.Handle()); }
    // Moves the focus to the next or the former one of tree, list, value and description that can
    // have it.
    void FocusNext(bool isForward);
    // The same with the toolbar and the splitters, which the arrow keys move.
    void FocusNextPart(bool isForward, HWND toolbar);

private:
    std::optional<LRESULT> FilterMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void LayoutUpper();
    void FocusNextOf(std::span<const HWND> order, bool isForward);

    const Workplace& m_workplace;
    const OwnSettingsStore& m_ownSettings;
    Pane Picture1;
    Pane m_upper;  // what is above the description
    Pane picSpliterContainer;
    SplitterBar Frame1;
    SplitterBar Frame2;
    CategoryTree m_tree;
    KeyListView m_keys;
    ValueBar m_value;
    bool m_isValueVisible = false;
    DescriptionPane m_description;
    cSplitter m_treeSplitter;
    cSplitter m_descriptionSplitter;
};

}  // namespace tamarind
