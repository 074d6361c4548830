#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ui/toolkit/ReportList.h"

namespace tamarind {

// What the owner of a list of choices does for it.
struct ChoiceListOwner {
    std::function<void(Control& list)> onMade;  // the control is there: font, direction, name
    std::function<bool(int row)> isChecked;
    std::function<void(int row)> onToggled;  // of a check box
    std::function<void(int row)> onTaken;    // a choice was clicked or entered
    std::function<void()> onEntered;         // Enter in a list of check boxes
    std::function<void()> onCancelled;       // Esc, after the list was closed
    std::function<void()> onReturn;          // the list gives the focus back
};

// What it shows: choices of which one is taken, or check boxes; rows from `checkCount` on have a
// check mark that stays.
struct ChoiceRows {
    std::vector<std::wstring> texts;
    bool hasCheckBoxes = false;
    int checkCount = 0;
    int present = 0;  // the row to begin with
};

// The list that opens below a field. It is a child of the main window, which stays the active one,
// and closes when it loses the focus.
class ChoiceList {
public:
    explicit ChoiceList(ChoiceListOwner owner) : m_owner(std::move(owner)) {}
    ChoiceList(const ChoiceList&) = delete;
    ChoiceList& operator=(const ChoiceList&) = delete;

    Control& List() { return m_list; }
    HWND Handle() const { return m_list.Handle(); }
    bool IsOpen() const { return m_isOpen; }

    // Opens over `window` below the anchor, in pixels of the screen, or above it where there is
    // more room, and takes the focus. False if Windows cannot create the list.
    bool Open(HWND window, const RECT& anchor, ChoiceRows rows);
    void Close();
    void Redraw() { m_list.Redraw(); }

private:
    bool Make(HWND window);
    void Place(HWND window, const RECT& anchor);
    bool IsCheckRow(int row) const { return m_rows.hasCheckBoxes && row < m_rows.checkCount; }
    bool OnKey(WPARAM key);
    void OnClicked(int row);

    ChoiceListOwner m_owner;
    ChoiceRows m_rows;
    bool m_isOpen = false;
    ReportList m_list;
};

}  // namespace tamarind
