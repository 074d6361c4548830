#include "tests/ui/WindowDriver.h"

#include "core/text/WideText_win32.h"

namespace tamarind {
namespace {

constexpr DWORD kAppearsWithinMs = 10000;
constexpr int kTextUnits = 512;

// Sends a message with a record in the memory of the control's process; the text that it leaves
// behind the record.
template <typename Record>
std::string Ask(HWND control, UINT message, WPARAM which, Record& record) {
    DWORD id = 0;
    GetWindowThreadProcessId(control, &id);
    const HANDLE process = OpenProcess(PROCESS_ALL_ACCESS, FALSE, id);
    auto* const memory = static_cast<char*>(VirtualAllocEx(
        process, nullptr, sizeof record + 2 * kTextUnits, MEM_COMMIT, PAGE_READWRITE));
    if constexpr (requires { record.pszText; }) {
        record.pszText = reinterpret_cast<wchar_t*>(memory + sizeof record);
        record.cchTextMax = kTextUnits;
    }
    WriteProcessMemory(process, memory, &record, sizeof record, nullptr);
    SendMessageW(control, message, which, reinterpret_cast<LPARAM>(memory));
    ReadProcessMemory(process, memory, &record, sizeof record, nullptr);
    std::wstring text(kTextUnits, L'\0');
    ReadProcessMemory(process, memory + sizeof record, text.data(), 2 * kTextUnits, nullptr);
    VirtualFreeEx(process, memory, 0, MEM_RELEASE);
    CloseHandle(process);
    return Narrow(text.c_str());
}

}  // namespace

bool WaitUntil(const std::function<bool()>& condition) {
    const ULONGLONG end = GetTickCount64() + kAppearsWithinMs;
    while (!condition()) {
        if (GetTickCount64() > end) {
            return false;
        }
        for (MSG message{}; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
            DispatchMessageW(&message);
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    return true;
}

std::vector<HWND> ChildrenOf(HWND parent) {
    std::vector<HWND> children;
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        children.push_back(child);
    }
    return children;
}

HWND FindControl(HWND parent, int id) {
    for (const HWND child : ChildrenOf(parent)) {
        if (const HWND found = GetDlgCtrlID(child) == id ? child : FindControl(child, id)) {
            return found;
        }
    }
    return nullptr;
}

int FocusBeside(HWND window) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
    return info.hwndFocus != nullptr ? GetDlgCtrlID(info.hwndFocus) : 0;
}

std::string TextOf(HWND window) {
    wchar_t text[kTextUnits] = L"";
    SendMessageW(window, WM_GETTEXT, kTextUnits, reinterpret_cast<LPARAM>(text));
    return Narrow(text);
}

std::string ClassOf(HWND window) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, ARRAYSIZE(name));
    return Narrow(name);
}

LONG FontHeightOf(HWND control) {
    LOGFONTW font{};
    const auto handle = reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0));
    GetObjectW(handle, sizeof(font), &font);
    return font.lfHeight;
}

std::string CellIn(HWND list, int row, int column) {
    LVITEMW item{};
    item.iSubItem = column;
    return Ask(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), item);
}

Strings RowsIn(HWND list) {
    Strings rows;
    for (int row = 0; row < ListView_GetItemCount(list); ++row) {
        rows.push_back(CellIn(list, row, 0));
    }
    return rows;
}

int SelectedIn(HWND list) {
    return ListView_GetNextItem(list, -1, LVNI_SELECTED);
}

RECT PlaceOfRow(HWND list, int row, int part) {
    RECT place{part, 0, 0, 0};
    Ask(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), place);
    return place;
}

Strings NodesIn(HWND tree) {
    Strings texts;
    for (HTREEITEM node = TreeView_GetRoot(tree); node != nullptr;
         node = TreeView_GetNextVisible(tree, node)) {
        TVITEMW item{};
        item.mask = TVIF_TEXT;
        item.hItem = node;
        texts.push_back(Ask(tree, TVM_GETITEMW, 0, item));
    }
    return texts;
}

}  // namespace tamarind
