#pragma once

#include <string>

#include "ui/toolkit/Control.h"

namespace tamarind {

class TreeViewListener {
public:
    // Another node became the selected one, by the user's mouse or keyboard.
    virtual void OnNodeSelected(LPARAM data) = 0;
    // The node at that place is the selected one already.
    virtual void OnTreeMenu(POINT at) = 0;

protected:
    ~TreeViewListener() = default;
};

struct TreeNode {
    std::wstring text;
    int picture = I_IMAGENONE;
    int selectedPicture = I_IMAGENONE;
    LPARAM data = 0;  // what the listener gets
};

// A tree of texts with pictures.
class TreeView final : public Control {
public:
    bool Create(HWND parent, int id, TreeViewListener& listener);

    void SetImages(HIMAGELIST images);
    void SetColors(COLORREF text, COLORREF background);

    void Clear();
    HTREEITEM Add(HTREEITEM parent, const TreeNode& node);
    void Expand(HTREEITEM item);
    // Selects without telling the listener.
    void Select(HTREEITEM item);

private:
    std::optional<LRESULT> OnNotify(NMHDR& header) override;
    std::optional<LRESULT> OnContextMenu(std::optional<POINT> at) override;
    void SelectAt(POINT at);

    TreeViewListener* m_listener = nullptr;
    bool m_isChanging = false;  // the program is, not the user
};

}  // namespace tamarind
