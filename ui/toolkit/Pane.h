#pragma once

#include "ui/toolkit/Window.h"

namespace tamarind {

// An empty window that contains others.
class Pane final : public Window {
public:
    // False if Windows cannot create it.
    bool Create(HWND parent, int id);
    // In pixels of the parent.
    void SetBounds(const RECT& bounds);
};

}  // namespace tamarind
