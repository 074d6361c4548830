#pragma once

#include "ui/toolkit/SystemLook.h"

namespace tamarind {

// What a test wants Windows to say, once it is in use (SystemLook::Use).
class FakeLook final : public SystemLook {
public:
    bool PrefersDark() const override { return prefersDark; }
    bool HasHighContrast() const override { return hasHighContrast; }
    int TextScale() const override { return textScale; }
    bool prefersDark = false;
    bool hasHighContrast = false;
    int textScale = 100;
};

}  // namespace tamarind
