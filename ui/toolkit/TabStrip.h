#pragma once

#include <string>

#include "ui/toolkit/Control.h"

namespace tamarind {

// Is told which tab is selected.
class TabStripListener {
public:
    // Another tab has been selected, by the user or the program.
    virtual void OnTabSelected(int tab) = 0;

protected:
    ~TabStripListener() = default;
};

// The tabs of the pages of a dialog. The template has it as a tab control with WS_CLIPSIBLINGS. The
// pages are windows in front of it, which the listener shows and hides.
class TabStrip final : public Control {
public:
    // Makes sure that Windows knows this kind of control before a dialog is made from its template.
    TabStrip();

    // Takes the control of the dialog over. False if there is none.
    bool Attach(HWND dialog, int id, TabStripListener& listener);

    // Adds a tab at the end. The first one becomes the selected tab without a call of the listener.
    void AddTab(const std::wstring& caption);
    int Selected() const { return static_cast<int>(Send(TCM_GETCURSEL)); }
    // Calls the listener, even if the tab is selected already.
    void Select(int tab);
    // Selects the next or the former tab, from the last one on to the first and back.
    void SelectNext(bool isForward);

    // The place for pages, in pixels of the dialog's client area.
    RECT PageBounds() const;
    // The width in pixels that the control lacks to show all tabs side by side; 0 if none.
    int MissingWidth() const;

private:
    std::optional<LRESULT> OnNotify(NMHDR& header) override;
    int Count() const { return static_cast<int>(Send(TCM_GETITEMCOUNT)); }

    TabStripListener* m_listener = nullptr;
};

}  // namespace tamarind
