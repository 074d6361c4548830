#include "ui/shell/FolderDialog.h"

#include <shobjidl.h>

#include "core/text/MissingValueMarker.h"
#include "core/text/WideText_win32.h"
#include "ui/toolkit/LateFunction.h"
#include "ui/toolkit/ScopeExit.h"

namespace tamarind {
namespace {

// Releases an object of COM at the end of its scope.
template <typename Object>
class ComObject {
public:
    ComObject() = default;
    ~ComObject() {
        if (m_object != nullptr) {
            m_object->Release();
        }
    }
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    Object* operator->() const { return m_object; }
    Object* Get() const { return m_object; }
    void** Place() { return reinterpret_cast<void**>(&m_object); }
    Object** Out() { return &m_object; }

private:
    Object* m_object = nullptr;
};

// The functions of ole32.dll, which no start of the program needs.
template <typename Function>
Function OleFunction(const char* name) {
    return LateFunction<Function>(L"ole32.dll", name);
}

void StartIn(IFileDialog& dialog, const std::string& folder) {
    const auto itemOf = LateFunction<decltype(&SHCreateItemFromParsingName)>(
        L"shell32.dll", "SHCreateItemFromParsingName");
    ComObject<IShellItem> item;
    if (itemOf != nullptr && !folder.empty() &&
        itemOf(Widen(folder).c_str(), nullptr, __uuidof(IShellItem), item.Place()) == S_OK) {
        dialog.SetFolder(item.Get());
    }
}

}  // namespace

std::string ChooseFolder(HWND owner, const std::string& folder) {
    const auto initialize = OleFunction<decltype(&CoInitializeEx)>("CoInitializeEx");
    const auto uninitialize = OleFunction<decltype(&CoUninitialize)>("CoUninitialize");
    const auto create = OleFunction<decltype(&CoCreateInstance)>("CoCreateInstance");
    const auto free = OleFunction<decltype(&CoTaskMemFree)>("CoTaskMemFree");
    if (initialize == nullptr || uninitialize == nullptr || create == nullptr || free == nullptr ||
        FAILED(initialize(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE))) {
        return std::string(MissingValueMarker);
    }
    const ScopeExit done([uninitialize] { uninitialize(); });
    ComObject<IFileOpenDialog> dialog;
    ComObject<IShellItem> chosen;
    wchar_t* path = nullptr;
    if (create(__uuidof(FileOpenDialog), nullptr, CLSCTX_INPROC_SERVER, __uuidof(IFileOpenDialog),
               dialog.Place()) != S_OK ||
        dialog->SetOptions(FOS_PICKFOLDERS | FOS_FORCEFILESYSTEM | FOS_NOCHANGEDIR) != S_OK) {
        return std::string(MissingValueMarker);
    }
    StartIn(*dialog.Get(), folder);
    if (dialog->Show(owner) != S_OK || dialog->GetResult(chosen.Out()) != S_OK ||
        chosen->GetDisplayName(SIGDN_FILESYSPATH, &path) != S_OK) {
        return std::string(MissingValueMarker);
    }
    std::string result = Narrow(path);
    free(path);
    return result;
}

}  // namespace tamarind
