#pragma once

#include <functional>
#include <string>

#include "ui/toolkit/Control.h"

namespace tamarind {

// A push button outside of dialogs. It is hidden until it is shown.
class PushButton final : public Control {
public:
    // `onClick` is called for each click, also by keyboard. False if Windows cannot create it.
    bool Create(HWND parent, int id, std::function<void()> onClick);

    std::wstring Text() const;
    void SetText(const std::wstring& text);

private:
    std::optional<LRESULT> OnCommand(int id, int code) override;

    std::function<void()> m_onClick;
};

}  // namespace tamarind
