#include "ui/main/CategoryTree.h"

#include <algorithm>

#include "core/text/WideText_win32.h"
#include "model/program/StringTable.h"
#include "ui/main/ControlIds.h"
#include "ui/toolkit/RedrawLock.h"

namespace tamarind {
namespace {

// Places in the tree's picture list.
constexpr int kRootPicture = 0;
constexpr int kCategoryPicture = 1;
constexpr int kSelectedCategoryPicture = 2;

}  // namespace

bool CategoryTree::Create(HWND parent) {
    TreeView1.SetChildDescriber([this](LONG child) { return DescribeNode(child); });
    return TreeView1.Create(parent, kIdTreeView1, *this);
}

// The number that is drawn behind a node while a filter is on.
std::optional<AccessibleInfo> CategoryTree::DescribeNode(LONG child) const {
    const auto node = TreeView1.DataOfChild(child);
    const auto hits = node ? m_selection.HitsOf(static_cast<NodeIndex>(*node)) : std::nullopt;
    if (!hits) {
        return std::nullopt;
    }
    AccessibleInfo info;
    info.description = Widen(m_workplace.Text(text::kHits, {std::to_string(*hits)}));
    return info;
}

void CategoryTree::ApplyLook(const MainLook& look) {
    TreeView1.SetImages(look.treePictures.Get());
    TreeView1.SetColors(look.foreground, look.background);
    TreeView1.SetBorder(look.border);
    ApplyUserFont(TreeView1, look.font, true, 0, look.dpi);
}

void CategoryTree::Fill() {
    const RedrawLock lock(TreeView1.Handle());
    TreeView1.Clear();
    m_items.clear();
    TreeNode root;
    root.text = Widen(m_texts.Root());
    root.picture = root.selectedPicture = kRootPicture;
    root.data = kRootNode;
    m_items.push_back(TreeView1.Add(TVI_ROOT, root));
    AddNodes(0);
    // Not earlier: an expanded tree measures and scrolls for every node that is added.
    TreeView1.Expand(m_items.front());
    ShowSelection();
}

void CategoryTree::AddNodes(std::size_t first) {
    const std::vector<CategoryNode>& categories = m_selection.Categories();
    for (std::size_t at = first; at < categories.size(); ++at) {
        const CategoryNode& category = categories[at];
        TreeNode node;
        node.text = Widen(category.Text());
        node.data = static_cast<LPARAM>(at);
        node.isBold = category.IsHeading();
        if (!category.IsHeading()) {
            node.picture = kCategoryPicture;
            node.selectedPicture = kSelectedCategoryPicture;
        }
        m_items.push_back(TreeView1.Add(m_items.front(), node));
    }
}

void CategoryTree::OnMoreCategories(NodeIndex first) {
    const RedrawLock lock(TreeView1.Handle());
    const auto kept = static_cast<std::size_t>(first);
    for (std::size_t at = kept + 1; at < m_items.size(); ++at) {
        TreeView1.Remove(m_items[at]);
    }
    m_items.resize(std::min(m_items.size(), kept + 1));
    if (m_items.size() == kept + 1) {
        AddNodes(kept);
    }
    ShowSelection();
}

void CategoryTree::ShowSelection() {
    const auto at = static_cast<std::size_t>(m_selection.SelectedNode()) + 1;
    if (at < m_items.size()) {
        TreeView1.Select(m_items[at]);
    }
}

void CategoryTree::OnNodeSelected(LPARAM data) {
    m_selection.SelectCategory(static_cast<NodeIndex>(data));
}

void CategoryTree::OnTreeMenu(POINT at) {
    m_actions.ShowPopup(PopupMenu::CategoryTree, at);
}

}  // namespace tamarind
