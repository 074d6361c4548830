#include "ui/toolkit/Dialog.h"

#include <string_view>

#include "ui/toolkit/CallbackGuard.h"
#include "ui/toolkit/Colors.h"
#include "ui/toolkit/Control.h"
#include "ui/toolkit/DarkMode.h"
#include "ui/toolkit/DialogTemplate.h"
#include "ui/toolkit/Handles.h"
#include "ui/toolkit/ModalLock.h"
#include "ui/toolkit/Pictures.h"
#include "ui/toolkit/RedrawLock.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

// For these messages the result of a dialog procedure is the answer itself. The answers to all
// others are stored in the window (Microsoft: DialogProc).
bool IsAnsweredDirectly(UINT message) {
    switch (message) {
        case WM_CTLCOLORMSGBOX:
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX:
        case WM_CTLCOLORBTN:
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSCROLLBAR:
        case WM_CTLCOLORSTATIC:
        case WM_COMPAREITEM:
        case WM_VKEYTOITEM:
        case WM_CHARTOITEM:
        case WM_QUERYDRAGICON:
            return true;
        default:
            return false;
    }
}

// Message boxes and the common dialogs have this class.
bool IsSystemDialog(HWND window) {
    constexpr std::wstring_view kClass = L"#32770";
    wchar_t name[16] = L"";
    GetClassNameW(window, name, ARRAYSIZE(name));
    return name == kClass;
}

}  // namespace

Dialog::~Dialog() {
    if (m_window != nullptr) {
        DestroyWindow(m_window);
    }
}

// The class is that of all dialogs under another name.
bool Dialog::Register() const {
    const HINSTANCE program = GetModuleHandleW(nullptr);
    WNDCLASSEXW info{};
    info.cbSize = sizeof(info);
    if (GetClassInfoExW(program, m_className, &info)) {
        return true;
    }
    if (!GetClassInfoExW(nullptr, WC_DIALOG, &info)) {
        return false;
    }
    info.cbSize = sizeof(info);
    info.style &= ~UINT{CS_GLOBALCLASS};
    info.hInstance = program;
    info.lpszClassName = m_className;
    return RegisterClassExW(&info) != 0;
}

void Dialog::RefreshLanguage() const {
    if (m_style.refresh) {
        m_style.refresh();
    }
}

bool Dialog::Create(HWND owner) {
    m_isModal = false;
    RefreshLanguage();
    if (Register()) {
        const DialogTemplate parts(m_templateId, owner);
        CreateDialogIndirectParamW(GetModuleHandleW(nullptr), parts.Get(), owner, Procedure,
                                   reinterpret_cast<LPARAM>(this));
    }
    return m_window != nullptr;
}

INT_PTR Dialog::ShowModal(HWND owner) {
    m_isModal = true;
    RefreshLanguage();
    if (!Register()) {
        return -1;
    }
    const ModalLock lock(owner);
    const UniqueHook keys(
        SetWindowsHookExW(WH_MSGFILTER, FilterMessage, nullptr, GetCurrentThreadId()));
    const DialogTemplate parts(m_templateId, owner);
    return DialogBoxIndirectParamW(GetModuleHandleW(nullptr), parts.Get(), owner, Procedure,
                                   reinterpret_cast<LPARAM>(this));
}

// The dialog of ours that a window is a part of, or null.
Dialog* Dialog::FromDescendant(HWND window) {
    const HWND root = GetAncestor(window, GA_ROOT);
    const bool isOurs = root != nullptr && GetWindowLongPtrW(root, DWLP_DLGPROC) ==
                                               reinterpret_cast<LONG_PTR>(Procedure);
    return isOurs ? static_cast<Dialog*>(FromHandle(root)) : nullptr;
}

bool Dialog::TranslateDialogMessage(MSG& message) {
    const Dialog* const dialog = FromDescendant(message.hwnd);
    return dialog != nullptr && IsDialogMessageW(dialog->m_window, &message);
}

// A dialog of the system is always modal: a call waits for its end.
BOOL CALLBACK Dialog::CancelIfModal(HWND window, LPARAM hasCancelled) {
    const Dialog* const dialog = FromDescendant(window);
    const bool isModal = dialog != nullptr ? dialog->m_isModal : IsSystemDialog(window);
    if (isModal && IsWindowVisible(window)) {
        *reinterpret_cast<bool*>(hasCancelled) = true;
        SendMessageW(window, WM_COMMAND, IDCANCEL, 0);
        // A box without a Cancel button ignores the command.
        if (IsWindowVisible(window)) {
            EndDialog(window, IDCANCEL);
        }
    }
    return TRUE;
}

bool Dialog::CancelModalDialogs() {
    bool hasCancelled = false;
    EnumThreadWindows(GetCurrentThreadId(), CancelIfModal, reinterpret_cast<LPARAM>(&hasCancelled));
    return hasCancelled;
}

// Windows calls this hook with every message that the loop of a modal dialog or a menu gets.
LRESULT CALLBACK Dialog::FilterMessage(int code, WPARAM wParam, LPARAM lParam) {
    const auto* const message = reinterpret_cast<const MSG*>(lParam);
    if (code == MSGF_DIALOGBOX && message->message == WM_KEYDOWN) {
        Dialog* const dialog = FromDescendant(message->hwnd);
        if (dialog != nullptr && Guarded(false, [&] { return dialog->OnKey(message->wParam); })) {
            return TRUE;
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

INT_PTR CALLBACK Dialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        return Initialize(window, *reinterpret_cast<Dialog*>(lParam)) ? TRUE : FALSE;
    }
    auto* const self = static_cast<Dialog*>(FromHandle(window));
    if (self == nullptr) {
        return FALSE;
    }
    const auto answer =
        Guarded(std::optional<LRESULT>(0), [&] { return self->Answer(message, wParam, lParam); });
    if (message == WM_NCDESTROY) {
        Unbind(window);
        self->m_window = nullptr;
    }
    if (!answer) {
        return FALSE;
    }
    if (IsAnsweredDirectly(message)) {
        return *answer;
    }
    SetWindowLongPtrW(window, DWLP_MSGRESULT, *answer);
    return TRUE;
}

// Windows must not set the focus if the dialog has set it, or if it is modeless: a hidden dialog
// takes no focus.
bool Dialog::Initialize(HWND window, Dialog& dialog) {
    dialog.m_window = window;
    dialog.Bind(window);
    for (const WPARAM size : {ICON_SMALL, ICON_BIG}) {
        SendMessageW(window, WM_SETICON, size, reinterpret_cast<LPARAM>(ProgramIcon(size)));
    }
    const bool isReady = Guarded(false, [&] {
        dialog.m_texts.Read(window);
        dialog.ApplyLanguage();
        dialog.OnInit();
        ApplyPalette(window);
        return true;
    });
    if (!isReady && dialog.m_isModal) {
        EndDialog(window, -1);
    } else if (!isReady) {
        DestroyWindow(window);
    }
    return isReady && dialog.m_isModal && !IsChild(window, GetFocus());
}

std::optional<LRESULT> Dialog::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
    if (const auto answer = Control::Reflect(message, wParam, lParam)) {
        return answer;
    }
    if (const auto answer = HandleMessage(message, wParam, lParam)) {
        return answer;
    }
    switch (message) {
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
        case WM_CTLCOLOREDIT:
            if (const auto colors =
                    OnColors(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam))) {
                return colors;
            }
            break;
        case WM_SYSCOLORCHANGE:
            SendToDescendants(m_window, WM_SYSCOLORCHANGE);
            return std::nullopt;
        default:
            break;
    }
    return AnswerPaletteMessage(m_window, message, wParam, lParam);
}

std::optional<LRESULT> Dialog::HandleMessage(UINT, WPARAM, LPARAM) {
    return std::nullopt;
}

std::optional<LRESULT> Dialog::OnColors(HDC dc, HWND control) const {
    if (!m_style.showsControlsBackColor) {
        return std::nullopt;
    }
    switch (KindOf(control)) {
        case ControlKind::Label:
        case ControlKind::CheckBox:
        case ControlKind::OptionButton:
        case ControlKind::TextBox:
            SetBkColor(dc, kControlsBackColor);
            SetDCBrushColor(dc, kControlsBackColor);
            return reinterpret_cast<LRESULT>(GetStockObject(DC_BRUSH));
        default:
            return std::nullopt;
    }
}

bool Dialog::OnKey(WPARAM) {
    return false;
}

void Dialog::ApplyLanguage() {
    if (m_window == nullptr) {
        return;
    }
    const RedrawLock lock(m_window);
    m_texts.Set(m_style.text);
    SetDirection(m_style.isRightToLeft);
    StretchTo(0);
}

// Mirrors the coordinates of the dialog. Its controls move when they are placed the next time.
void Dialog::SetDirection(bool isRightToLeft) const {
    SetMirrored(m_window, isRightToLeft);
    for (HWND child = GetWindow(m_window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        SetDirectionOf(child, isRightToLeft);
    }
}

void Dialog::SetDirectionOf(HWND control, bool isRightToLeft) const {
    const bool isMirrored = isRightToLeft && IsMirrored(control);
    SetMirrored(control, isMirrored);
    if (KindOf(control) == ControlKind::List) {
        SetMirrored(ListView_GetHeader(control), isMirrored);
    }
}

bool Dialog::IsMirrored(HWND control) const {
    const ControlKind kind = KindOf(control);
    return HasCaption(kind) || kind == ControlKind::List;
}

void Dialog::OnStretched(int clientWidth) {
    RECT bounds = BoundsOf(m_window);
    bounds.right += clientWidth - ClientSizeOf(m_window).cx;
    const RECT at = MovedOntoMonitor(bounds);
    SetWindowBounds(m_window, {at.left, at.top, at.left + (bounds.right - bounds.left),
                               at.top + (bounds.bottom - bounds.top)});
}

}  // namespace tamarind
