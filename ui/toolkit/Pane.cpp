#include "ui/toolkit/Pane.h"

#include "ui/toolkit/WindowCalls.h"

namespace tamarind {

bool Pane::Create(HWND parent, int id) {
    WindowParams params;
    params.className = L"TamarindPane";
    params.style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    params.parent = parent;
    params.id = id;
    return CreateHandle(params);
}

void Pane::SetBounds(const RECT& bounds) {
    SetWindowBounds(Handle(), bounds);
}

}  // namespace tamarind
