#pragma once

#include <span>
#include <string>

#include "ui/toolkit/Control.h"

namespace tamarind {

class StatusBarListener {
public:
    virtual void OnStatusPartClicked(int part) = 0;

protected:
    ~StatusBarListener() = default;
};

// A bar of text parts at the lower edge of a window, with a size grip.
class StatusBar final : public Control {
public:
    bool Create(HWND parent, int id, StatusBarListener& listener);

    // Right edges in pixels; -1 for the bar's.
    void SetParts(std::span<const int> rightEdges);
    void SetText(int part, const std::wstring& text);
    // The bar takes the icon over.
    void SetIcon(int part, UniqueIcon icon);

    // In pixels.
    int IdealHeight() const;

private:
    std::optional<LRESULT> OnNotify(NMHDR& header) override;

    StatusBarListener* m_listener = nullptr;
    UniqueIcon m_icon;
};

}  // namespace tamarind
