#pragma once

#include <vector>

#include "model/session/KeySelection.h"
#include "model/session/SelectionTexts.h"
#include "ui/main/MainLook.h"
#include "ui/main/MainWindowActions.h"
#include "ui/toolkit/TreeView.h"

namespace tamarind {

// The tree of the categories of the data file: a view of KeySelection, which owns the selection.
class CategoryTree final : private TreeViewListener, private CategoryListener {
public:
    // All arguments are kept by reference and must outlive the tree.
    CategoryTree(const Workplace& workplace, KeySelection& selection, MainWindowActions& actions)
        : m_workplace(workplace), m_selection(selection), m_actions(actions) {
        m_selection.CategoryWatchers().Add(*this);
    }
    ~CategoryTree() override { m_selection.CategoryWatchers().Remove(*this); }
    CategoryTree(const CategoryTree&) = delete;
    CategoryTree& operator=(const CategoryTree&) = delete;

    // False if Windows cannot create the control.
    bool Create(HWND parent);
    // Colors, font, border and pictures. The pictures stay owned by `look`, which must live until
    // the next call.
    void ApplyLook(const MainLook& look);
    HWND Handle() const { return TreeView1.Handle(); }

    // Fills the tree again, with its texts in the present language.
    void Fill();

private:
    void OnCategoriesChanged() override { Fill(); }
    void OnMoreCategories(NodeIndex first) override;
    // Adds the nodes of the categories from there on.
    void AddNodes(std::size_t first);
    void OnCategorySelected() override { ShowSelection(); }
    void OnHitsChanged() override { TreeView1.RedrawHits(); }
    bool CountsHits() override { return m_selection.HasRanking(); }
    std::optional<std::size_t> HitsOfNode(LPARAM data) override {
        return m_selection.HitsOf(static_cast<NodeIndex>(data));
    }
    void ShowSelection();
    void OnNodeSelected(LPARAM data) override;
    void OnTreeMenu(POINT at) override;

    std::optional<AccessibleInfo> DescribeNode(LONG child) const;

    const Workplace& m_workplace;
    KeySelection& m_selection;
    const SelectionTexts m_texts{m_workplace, m_selection};
    MainWindowActions& m_actions;
    TreeView TreeView1;
    std::vector<HTREEITEM> m_items;  // the root, then the categories in their order
};

}  // namespace tamarind
