#pragma once

#include "ui/toolkit/Control.h"

namespace tamarind {

// A progress bar without a text.
class ProgressBar final : public Control {
public:
    bool Create(HWND parent, int id);

    // Shows `value`, between 0 and `maximum`, and paints at once, without waiting for messages.
    void ShowProgress(int value, int maximum);
};

}  // namespace tamarind
