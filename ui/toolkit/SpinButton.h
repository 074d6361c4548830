#pragma once

#include <functional>

#include "ui/toolkit/Control.h"

namespace tamarind {

// Two arrows with which a number goes up and down. What it counts is its owner's. It is hidden
// until it is shown.
class SpinButton final : public Control {
public:
    // `onStep` gets how far to go: 1 is up. False if Windows cannot create it.
    bool Create(HWND parent, int id, std::function<void(int steps)> onStep);

private:
    std::optional<LRESULT> OnNotify(NMHDR& header) override;

    std::function<void(int steps)> m_onStep;
};

}  // namespace tamarind
