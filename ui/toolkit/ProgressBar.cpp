#include "ui/toolkit/ProgressBar.h"

namespace tamarind {

bool ProgressBar::Create(HWND parent, int id) {
    return CreateControl(PROGRESS_CLASSW, parent, id, WS_VISIBLE | PBS_SMOOTH);
}

void ProgressBar::ShowProgress(int value, int maximum) {
    Send(PBM_SETRANGE32, 0, maximum);
    Send(PBM_SETPOS, static_cast<WPARAM>(value));
    UpdateWindow(Handle());
}

}  // namespace tamarind
