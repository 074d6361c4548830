#include "ui/shell/cCommonDialog.h"

#include <algorithm>

#include "core/files/Paths.h"
#include "core/text/MissingValueMarker.h"
#include "core/text/WideText_win32.h"
#include "ui/toolkit/LateFunction.h"
#include "ui/toolkit/ScopeExit.h"

namespace tamarind {
namespace {

#define TAMARIND_ALL_FILES "All Files (*.*)|*.*"

// In the order of FileFilter. These texts, spelling included, are known to users and stay as they
// are.
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

std::wstring CurrentFolder() {
    std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
    folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
    return folder;
}

}  // namespace

std::string_view FilterText(FileFilter lngFilter) {
    return kFilters.at(static_cast<std::size_t>(lngFilter));
}

std::wstring FilterForDialog(FileFilter lngFilter) {
    std::wstring text = Widen(FilterText(lngFilter)) + L'|';
    std::ranges::replace(text, L'|', L'\0');
    return text;
}

// A file to save to may be a new one.
DWORD SaveFlags(bool blnShowWarningMsg) {
    return (kOpenFlags & ~DWORD{OFN_FILEMUSTEXIST}) | (blnShowWarningMsg ? OFN_OVERWRITEPROMPT : 0);
}

cCommonDialog::cCommonDialog() {
    m_customColors.fill(RGB(255, 255, 255));
}

std::string cCommonDialog::BrowseForOpen(const std::string& strInitDir,
                                         const std::string& strFileName, FileFilter lngFilter,
                                         const std::string& strTitle, const std::string& pattern) {
    std::wstring filter = FilterForDialog(lngFilter);
    if (!pattern.empty()) {
        const std::wstring first = Widen(pattern) + L'\0';
        filter = first + first + filter;
    }
    return Browse({"GetOpenFileNameW", L"Open", kOpenFlags, m_openFolder}, strInitDir, strFileName,
                  filter, strTitle);
}

std::string cCommonDialog::BrowseForSave(const std::string& strInitDir,
                                         const std::string& strFileName, FileFilter lngFilter,
                                         const std::string& strTitle, bool blnShowWarningMsg) {
    return Browse({"GetSaveFileNameW", L"Save", SaveFlags(blnShowWarningMsg), m_saveFolder},
                  strInitDir, strFileName, FilterForDialog(lngFilter), strTitle);
}

std::string cCommonDialog::Browse(const FileDialog& kind, const std::string& strInitDir,
                                  const std::string& strFileName, const std::wstring& filter,
                                  const std::string& strTitle) const {
    const std::wstring folder = Widen(strInitDir.empty() ? kind.folder : strInitDir);
    const std::wstring title = strTitle.empty() ? kind.title : Widen(strTitle);
    std::wstring path = Widen(strFileName);
    path.resize(kMaxPathUnits + 1);

    // The dialog makes the chosen folder the current one, which would keep its drive from being
    // removed.
    const ScopeExit restoreFolder(
        [current = CurrentFolder()] { SetCurrentDirectoryW(current.c_str()); });

    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof(dialog);
    dialog.hwndOwner = VisibleOwner();
    dialog.lpstrFilter = filter.c_str();
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = static_cast<DWORD>(path.size());
    dialog.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
    dialog.lpstrTitle = title.c_str();
    dialog.Flags = kind.flags;
    dialog.lpstrDefExt = (kind.flags & OFN_FILEMUSTEXIST) == 0 ? L"ini" : nullptr;
    const auto chooseFile = DialogFunction<decltype(&GetOpenFileNameW)>(kind.function);
    static const auto lastError =
        DialogFunction<decltype(&CommDlgExtendedError)>("CommDlgExtendedError");
    if (chooseFile == nullptr || lastError == nullptr) {
        return std::string(MissingValueMarker);
    }
    BOOL isChosen = chooseFile(&dialog);
    // A proposed name that no file can have: again without it (Microsoft: FNERR_INVALIDFILENAME).
    if (!isChosen && lastError() == FNERR_INVALIDFILENAME) {
        path[0] = L'\0';
        isChosen = chooseFile(&dialog);
    }
    // A dialog that could not be shown may return the proposed name, which has no folder.
    if (!isChosen || path.find(L'\\') == std::wstring::npos) {
        return std::string(MissingValueMarker);
    }
    std::string chosen = Narrow(path.c_str());
    kind.folder = FolderOfPath(chosen);
    return chosen;
}

std::string cCommonDialog::ColorSelect() {
    CHOOSECOLORW dialog{};
    dialog.lStructSize = sizeof(dialog);
    dialog.hwndOwner = VisibleOwner();
    dialog.rgbResult = m_color;
    dialog.lpCustColors = m_customColors.data();
    dialog.Flags = CC_RGBINIT | CC_ANYCOLOR;
    static const auto chooseColor = DialogFunction<decltype(&ChooseColorW)>("ChooseColorW");
    if (chooseColor == nullptr || !chooseColor(&dialog)) {
        return std::string(MissingValueMarker);
    }
    m_color = dialog.rgbResult;
    return std::to_string(m_color);
}

}  // namespace tamarind
