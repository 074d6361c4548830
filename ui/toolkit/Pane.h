#pragma once

#include "ui/toolkit/Window.h"

namespace tamarind {

// An empty window that holds others.
class Pane final : public Window {
public:
    bool Create(HWND parent, int id);
    void SetBounds(const RECT& bounds);
};

}  // namespace tamarind
