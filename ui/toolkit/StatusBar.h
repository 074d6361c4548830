#pragma once

#include <span>
#include <string>

#include "ui/toolkit/Control.h"

namespace tamarind {

// Is told of clicks.
class StatusBarListener {
public:
    virtual void OnStatusPartClicked(int part) = 0;

protected:
    ~StatusBarListener() = default;
};

// A bar with text panels ("parts") at the lower edge of a window, with a size grip.
class StatusBar final : public Control {
public:
    bool Create(HWND parent, int id, StatusBarListener& listener);

    // The right edges of the parts in pixels; -1 means that of the bar.
    void SetParts(std::span<const int> rightEdges);
    // Parts are counted from 0.
    void SetText(int part, const std::wstring& text);
    // Where a part is, in pixels of the bar.
    RECT BoundsOfPart(int part) const;
    // Takes the icon over. The bar owns one icon: a second one replaces the first.
    void SetIcon(int part, UniqueIcon icon);

    // In pixels, by the present font.
    int IdealHeight() const;

private:
    std::optional<LRESULT> OnNotify(NMHDR& header) override;

    StatusBarListener* m_listener = nullptr;
    UniqueIcon m_icon;
};

}  // namespace tamarind
