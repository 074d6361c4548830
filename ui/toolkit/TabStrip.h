#pragma once

#include <string>

#include "ui/toolkit/Control.h"

namespace tamarind {

class TabStripListener {
public:
    // Another tab is the selected one, whoever selected it.
    virtual void OnTabSelected(int tab) = 0;

protected:
    ~TabStripListener() = default;
};

// The tabs of a dialog's pages, which its template has as a tab control with WS_CLIPSIBLINGS. Pages
// are windows in front of it.
class TabStrip final : public Control {
public:
    // Makes sure that Windows has such controls; the template's dialog comes later.
    TabStrip();

    bool Attach(HWND dialog, int id, TabStripListener& listener);

    // The first tab is selected at once, without telling the listener.
    void AddTab(const std::wstring& caption);
    int Selected() const { return static_cast<int>(Send(TCM_GETCURSEL)); }
    void Select(int tab);
    // The tab behind the selected one or before it; the last and the first one are neighbours.
    void SelectNext(bool isForward);

    // The place of pages in the dialog's client area, in pixels.
    RECT PageBounds() const;
    // How much wider the control would have to be to show all tabs side by side, in pixels.
    int MissingWidth() const;

private:
    std::optional<LRESULT> OnNotify(NMHDR& header) override;
    int Count() const { return static_cast<int>(Send(TCM_GETITEMCOUNT)); }

    TabStripListener* m_listener = nullptr;
};

}  // namespace tamarind
