#include "ui/main/ChoiceList.h"

#include <algorithm>
#include <utility>

#include "ui/main/ControlIds.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr int kMostRows = 14;

}  // namespace

bool ChoiceList::Make(HWND window) {
    if (Handle() != nullptr) {
        return true;
    }
    ReportRows rows;
    rows.text = [this](int row, int) {
        const auto at = static_cast<std::size_t>(row);
        return at < m_rows.texts.size() ? m_rows.texts[at] : std::wstring();
    };
    rows.isChecked = [this](int row) { return !IsCheckRow(row) || m_owner.isChecked(row); };
    rows.onToggled = [this](int row) {
        if (IsCheckRow(row)) {
            m_owner.onToggled(row);
        }
    };
    rows.onClicked = [this](int row) { OnClicked(row); };
    rows.onLeft = [this] { Close(); };
    rows.onKey = [this](WPARAM key) { return OnKey(key); };
    if (!m_list.Create(window, kIdLstChoices, std::move(rows))) {
        return false;
    }
    m_owner.onMade(m_list);
    return true;
}

// While its texts change, the list is empty.
bool ChoiceList::Open(HWND window, const RECT& anchor, ChoiceRows rows) {
    if (!Make(window)) {
        return false;
    }
    m_list.SetRowCount(0);
    m_rows = std::move(rows);
    m_list.ShowCheckBoxes(m_rows.hasCheckBoxes);
    m_list.SetRowCount(static_cast<int>(m_rows.texts.size()));
    Place(window, anchor);
    m_isOpen = true;
    m_list.SelectRow(m_rows.present);
    m_list.Show(true);
    SetFocus(Handle());
    return true;
}

void ChoiceList::Place(HWND window, const RECT& anchor) {
    RECT at = anchor;
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&at), 2);
    const SIZE area = ClientSizeOf(window);
    const int count = static_cast<int>(m_rows.texts.size());
    const SIZE wanted = m_list.SizeFor(std::min(count, kMostRows));
    const LONG scrollBar = count > kMostRows ? GetSystemMetrics(SM_CXVSCROLL) : 0;
    const LONG width = std::min(std::max(wanted.cx + scrollBar, at.right - at.left), area.cx);
    const bool isBelow = at.bottom + wanted.cy <= area.cy || area.cy - at.bottom >= at.top;
    const LONG height = std::min(wanted.cy, isBelow ? area.cy - at.bottom : at.top);
    const LONG left = std::clamp<LONG>(at.left, 0, area.cx - width);
    const LONG top = isBelow ? at.bottom : at.top - height;
    SetWindowPos(Handle(), HWND_TOP, static_cast<int>(left), static_cast<int>(top),
                 static_cast<int>(width), static_cast<int>(height), SWP_NOACTIVATE);
}

void ChoiceList::Close() {
    if (!std::exchange(m_isOpen, false)) {
        return;
    }
    if (GetFocus() == Handle()) {
        m_owner.onReturn();
    }
    m_list.Show(false);
}

bool ChoiceList::OnKey(WPARAM key) {
    switch (key) {
        case VK_RETURN: {
            const int row = m_list.SelectedRow();
            Close();
            if (m_rows.hasCheckBoxes) {
                m_owner.onEntered();
            } else if (row != ReportList::kNoRow) {
                m_owner.onTaken(row);
            }
            return true;
        }
        case VK_ESCAPE:
            Close();
            m_owner.onCancelled();
            return true;
        case VK_F4:
            Close();
            return true;
        default:
            return false;
    }
}

void ChoiceList::OnClicked(int row) {
    if (IsCheckRow(row)) {
        m_owner.onToggled(row);
    } else if (!m_rows.hasCheckBoxes) {
        Close();
        m_owner.onTaken(row);
    }
}

}  // namespace tamarind
