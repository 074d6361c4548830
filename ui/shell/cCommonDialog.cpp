#include "ui/shell/cCommonDialog.h"

#include <commdlg.h>

#include <algorithm>
#include <array>

#include "core/MissingValueMarker.h"
#include "core/Paths.h"
#include "core/WideText_win32.h"
#include "ui/toolkit/ScopeExit.h"

namespace tamarind {
namespace {

#define TAMARIND_ALL_FILES "All Files (*.*)|*.*"

// Translations and old habits know these texts as they are, spelling included.
constexpr std::array<std::string_view, 10> kFilters = {
    TAMARIND_ALL_FILES,
    "Wincmd.ini (*.ini)|*.ini|" TAMARIND_ALL_FILES,
    "TC Main Menu File (*.mnu)|*.mnu|" TAMARIND_ALL_FILES,
    "TC Intenal Command File (*.inc)|*.inc|" TAMARIND_ALL_FILES,
    "Picture File (*.ico;*.bmp)|*.ico;*.bmp",
    "Language File (*.lng)|*.lng|" TAMARIND_ALL_FILES,
    TAMARIND_ALL_FILES "|Programs (*.EXE;*.COM;*.BAT;*.PIF)|*.EXE;*.COM;*.BAT;*.PIF",
    "TC Configuration Data File(*.tmdf)|*.tmdf|" TAMARIND_ALL_FILES,
    "TC Default Hotkeys Data File(*.hky)|*.hky|" TAMARIND_ALL_FILES,
    "Wcx_ftp.ini (*.ini)|*.ini|" TAMARIND_ALL_FILES,
};

#undef TAMARIND_ALL_FILES

constexpr DWORD kOpenFlags =
    OFN_EXPLORER | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_FILEMUSTEXIST;
static_assert(kOpenFlags == 530436);

// As the dialog takes it: a NUL behind every part, another one at the end.
std::wstring FilterForDialog(FileFilter filter) {
    std::wstring text = Widen(FilterText(filter)) + L'|';
    std::replace(text.begin(), text.end(), L'|', L'\0');
    return text;
}

// The library of the dialogs, loaded when one is first needed: it brings many others with it, and
// most starts of the program need none.
template <typename Function>
Function DialogFunction(const char* name) {
    static const HMODULE library = LoadLibraryW(L"comdlg32.dll");
    const FARPROC address = library != nullptr ? GetProcAddress(library, name) : nullptr;
    return reinterpret_cast<Function>(reinterpret_cast<void*>(address));
}

std::wstring CurrentFolder() {
    std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
    folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
    return folder;
}

}  // namespace

std::string_view FilterText(FileFilter lngFilter) {
    return kFilters.at(static_cast<std::size_t>(lngFilter));
}

std::string cCommonDialog::BrowseForOpen(const std::string& strInitDir,
                                         const std::string& strFileName, FileFilter lngFilter,
                                         const std::string& strTitle) {
    const std::wstring filter = FilterForDialog(lngFilter);
    const std::wstring folder = Widen(strInitDir.empty() ? m_openFolder : strInitDir);
    const std::wstring title = strTitle.empty() ? L"Open" : Widen(strTitle);
    std::wstring path = Widen(strFileName);
    path.resize(kMaxPathUnits + 1);

    // The dialog leaves the chosen folder as the current one, which would keep the drive in use.
    const ScopeExit restoreFolder(
        [current = CurrentFolder()] { SetCurrentDirectoryW(current.c_str()); });

    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof(dialog);
    dialog.hwndOwner = IsWindowVisible(m_owner) ? m_owner : nullptr;
    dialog.lpstrFilter = filter.c_str();
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = static_cast<DWORD>(path.size());
    dialog.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
    dialog.lpstrTitle = title.c_str();
    dialog.Flags = kOpenFlags;
    static const auto openFile = DialogFunction<decltype(&GetOpenFileNameW)>("GetOpenFileNameW");
    static const auto lastError =
        DialogFunction<decltype(&CommDlgExtendedError)>("CommDlgExtendedError");
    if (openFile == nullptr || lastError == nullptr) {
        return std::string(MissingValueMarker);
    }
    BOOL isChosen = openFile(&dialog);
    if (!isChosen && lastError() == FNERR_INVALIDFILENAME) {
        path[0] = L'\0';
        isChosen = openFile(&dialog);
    }
    // A dialog that could not be shown may come back with the proposed name.
    if (!isChosen || path.find(L'\\') == std::wstring::npos) {
        return std::string(MissingValueMarker);
    }
    std::string chosen = Narrow(path.c_str());
    m_openFolder = FolderOfPath(chosen);
    return chosen;
}

}  // namespace tamarind
