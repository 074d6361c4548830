#pragma once

#include "ui/toolkit/Control.h"

namespace tamarind {

class ProgressBar final : public Control {
public:
    bool Create(HWND parent, int id);

    // `value` is between 0 and `maximum`. Paints at once.
    void ShowProgress(int value, int maximum);
};

}  // namespace tamarind
