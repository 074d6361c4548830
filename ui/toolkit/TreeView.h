#pragma once

#include <string>

#include "ui/toolkit/Control.h"

namespace tamarind {

// Is told what the user does in the tree.
class TreeViewListener {
public:
    // The user has selected another node, by mouse or keyboard.
    virtual void OnNodeSelected(LPARAM data) = 0;
    // A context menu is asked for; `at` is in screen pixels. The node there is selected already.
    virtual void OnTreeMenu(POINT at) = 0;
    // How many hits to show behind the text of a node, which is gray if there are none; nothing
    // while nothing is counted.
    virtual std::optional<std::size_t> HitsOfNode(LPARAM) { return std::nullopt; }
    virtual bool CountsHits() { return false; }

protected:
    ~TreeViewListener() = default;
};

// A node to be added.
struct TreeNode {
    std::wstring text;
    int picture = I_IMAGENONE;
    int selectedPicture = I_IMAGENONE;
    bool isBold = false;
    LPARAM data = 0;  // what the listener gets
};

// A tree of texts with pictures.
class TreeView final : public Control {
public:
    bool Create(HWND parent, int id, TreeViewListener& listener);

    // The list must outlive the tree or be replaced first.
    void SetImages(HIMAGELIST images);
    void SetColors(COLORREF text, COLORREF background);

    // Removes all nodes, without a call of the listener.
    void Clear();
    // Adds a last child to `parent`, or to TVI_ROOT. The item is valid until Clear.
    HTREEITEM Add(HTREEITEM parent, const TreeNode& node);
    // Without a call of the listener.
    void Remove(HTREEITEM item);
    void Expand(HTREEITEM item);
    // Selects a node and scrolls it into view, without a call of the listener.
    void Select(HTREEITEM item);
    // The data of the node that a screen reader has this number for; nothing if there is none.
    std::optional<LPARAM> DataOfChild(LONG child) const;
    // To be called when nodes have other numbers of hits.
    void RedrawHits() { InvalidateRect(Handle(), nullptr, FALSE); }

private:
    std::optional<LRESULT> OnNotify(NMHDR& header) override;
    std::optional<LRESULT> OnContextMenu(std::optional<POINT> at) override;
    void SelectAt(POINT at);
    LRESULT OnCustomDraw(NMTVCUSTOMDRAW& draw) const;
    void DrawHits(const NMTVCUSTOMDRAW& draw, std::size_t hits) const;

    TreeViewListener* m_listener = nullptr;
    bool m_isChanging = false;  // the program is, not the user
};

}  // namespace tamarind
