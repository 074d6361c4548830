#pragma once

#include <vector>

#include "model/session/EditorSession.h"
#include "ui/main/MainLook.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/TreeView.h"

namespace tamarind {

// The tree of the data file's categories.
class CategoryTree final : private TreeViewListener {
public:
    CategoryTree(EditorSession& session, MainWindowActions& actions)
        : m_session(session), m_actions(actions) {}

    bool Create(HWND parent);
    void ApplyLook(const MainLook& look);
    HWND Handle() const { return TreeView1.Handle(); }

    void Fill();
    void ShowSelection();

private:
    void OnNodeSelected(LPARAM data) override;
    void OnTreeMenu(POINT at) override;

    EditorSession& m_session;
    MainWindowActions& m_actions;
    TreeView TreeView1;
    std::vector<HTREEITEM> m_items;  // the root, then the categories in their order
};

}  // namespace tamarind
