#include "ui/main/frmMain.h"

#include "core/text/Unicode.h"
#include "core/text/WideText_win32.h"
#include "model/program/StringTable.h"
#include "ui/main/ControlIds.h"
#include "ui/main/MainWindowPlacement.h"
#include "ui/toolkit/DarkMode.h"
#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/Palette.h"
#include "ui/toolkit/Pictures.h"
#include "ui/toolkit/RedrawLock.h"
#include "ui/toolkit/ScopeExit.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

// In pixels at 96 DPI.
constexpr int kToolbarMargin = 2;
constexpr const wchar_t* kClassName = L"frmMain";
constexpr UINT kCheckFiles = WM_APP + 1;
constexpr UINT kAnswerMs = 2000;
constexpr UINT kLookAgainMs = 500;
// The answer of a window that has come to the front: a number that no other window would return.
constexpr DWORD_PTR kIsForward = 0x54434631;

UINT BringForwardMessage() {
    static const UINT message = RegisterWindowMessageW(L"TamarindEditor.BringForward");
    return message;
}

// Has 32 bits, so that 32-bit and 64-bit copies of the program get the same number.
WPARAM MessageHash(const std::string& path) {
    return static_cast<std::uint32_t>(HashIgnoreCase(path));
}

ListLook ListLookOf(const MainLook& look) {
    return {look.foreground, look.background, look.border, look.font};
}

// A child window with this number, at any depth; null if there is none.
HWND FindChild(HWND parent, int id) {
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const HWND found = GetDlgCtrlID(child) == id ? child : FindChild(child, id);
        if (found != nullptr) {
            return found;
        }
    }
    return nullptr;
}

}  // namespace

frmMain::frmMain(EditorSession& session)
    : m_session(session),
      m_menu(session.Place(), session.Selection(), session.FavoriteKeys(), session.Recent(),
             session.States()),
      m_toolbar(session.Place(), session.States(), *this),
      m_panes(session, *this),
      m_statusBar(session, *this),
      m_commands(session, m_panes, m_dialogStyle) {
    m_dialogStyle.text = [this](std::uint16_t number) {
        return Widen(m_session.Place().Text(number));
    };
    m_dialogStyle.refresh = [this] { m_session.Place().RefreshLanguage(); };
}

frmMain::~frmMain() {
    m_session.Settings().Watchers().Remove(*this);
    m_session.Place().Watchers().Remove(*this);
}

bool frmMain::Create() {
    m_session.Place().LoadLanguage();
    ReadStyle();
    const WindowPlace place = RestoreMainWindowPlacement(m_session.Place().OwnSettings().Values());
    m_startsMaximized = place.isMaximized;
    m_caption = Widen(m_session.Caption());
    WindowParams params;
    params.className = kClassName;
    params.text = m_caption.c_str();
    params.style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    params.bounds = place.bounds;
    params.icon = ProgramIcon(ICON_BIG);
    params.smallIcon = ProgramIcon(ICON_SMALL);
    if (!CreateHandle(params)) {
        return false;
    }
    m_commands.SetOwner(Handle());
    m_session.Place().Watchers().Add(*this);
    m_session.Settings().Watchers().Add(*this);
    OnCommandsChanged();
    if (m_dialogStyle.isRightToLeft) {
        ApplyDirection();
    }
    Layout();
    return true;
}

void frmMain::ShowFirst(int showCommand) {
    ShowWindow(Handle(), m_startsMaximized ? SW_SHOWMAXIMIZED : showCommand);
    m_panes.StartFollowingSize();
    if (IsWindowVisible(Handle())) {
        m_panes.FocusTree();
    }
    UpdateWindow(Handle());
    m_followsFiles = true;
    if (m_session.Place().OwnSettings().Values().favoritesOrganizeVisible != 0) {
        m_commands.Organizer().Open(Handle(), SW_SHOWNA);
    }
}

bool frmMain::TranslateKey(MSG& message) {
    if (Dialog::TranslateDialogMessage(message)) {
        return true;
    }
    const HWND focus = GetFocus();
    const bool isEditingText = m_panes.Keys().IsEditing() ||
                               (focus != nullptr && (focus == m_panes.Description().Box() ||
                                                     focus == m_panes.Value().Field() ||
                                                     focus == m_panes.Keys().Filter().Field()));
    return TranslateAcceleratorW(Handle(), m_menu.Accelerators(isEditingText), &message) != 0;
}

LRESULT frmMain::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            return OnCreate() ? 0 : -1;
        case WM_DESTROY:
            OnDestroy();
            return 0;
        case WM_CLOSE:
            OnClose();
            return 0;
        case WM_QUERYENDSESSION:
            return OnQueryEndSession() ? TRUE : FALSE;
        case WM_ENDSESSION:
            ShutdownBlockReasonDestroy(Handle());
            if (wParam != 0) {
                StoreLayout();
            }
            return 0;
        case WM_SIZE:
            OnSize(static_cast<UINT>(wParam));
            return 0;
        case WM_GETMINMAXINFO: {
            auto& info = *reinterpret_cast<MINMAXINFO*>(lParam);
            const SIZE least = LeastMainWindowSize(m_look.dpi > 0 ? m_look.dpi : SystemDpi());
            info.ptMinTrackSize = {least.cx, least.cy};
            return 0;
        }
        case WM_COMMAND:
            // None comes between while another window waits for an answer, whoever sends it.
            if (IsWindowEnabled(Handle())) {
                m_commands.OnCommand(LOWORD(wParam));
            }
            return 0;
        case WM_INITMENUPOPUP:
            m_menu.Refresh(reinterpret_cast<HMENU>(wParam));
            ApplyPaletteToMenu(reinterpret_cast<HMENU>(wParam),
                               reinterpret_cast<HMENU>(wParam) == GetMenu(Handle()));
            return 0;
        case WM_NCPAINT:
        case WM_NCACTIVATE:
        case WM_SETTEXT:
        case WM_EXITMENULOOP:
        case WM_PAINT: {
            const LRESULT result = Window::HandleMessage(message, wParam, lParam);
            PaintMenuBarRest(Handle());
            return result;
        }
        case WM_ACTIVATE:
            OnActivate(LOWORD(wParam));
            return Window::HandleMessage(message, wParam, lParam);
        case WM_SETFOCUS:
            OnSetFocus();
            return 0;
        case WM_DPICHANGED:
            OnDpiChanged(LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
            return 0;
        case WM_SYSCOLORCHANGE:
            SendToDescendants(Handle(), WM_SYSCOLORCHANGE);
            OnLookChanged();
            return 0;
        case WM_THEMECHANGED:
        case WM_SETTINGCHANGE:
            OnLookChanged();
            return 0;
        case kCheckFiles:
            OnCheckFiles();
            return 0;
        default:
            return message == BringForwardMessage()
                       ? OnBringForward(wParam)
                       : Window::HandleMessage(message, wParam, lParam);
    }
}

Theme frmMain::ThemeOfSettings() const {
    return static_cast<Theme>(m_session.Place().OwnSettings().Values().theme);
}

bool frmMain::OnCreate() {
    UseTheme(ThemeOfSettings());
    m_look = MakeMainLook(m_session.Place().OwnSettings().Values(), WindowDpi(Handle()));
    m_commands.Organizer().ApplyLook(ListLookOf(m_look));
    const bool isMade = m_menu.Create(Handle()) && m_toolbar.Create(Handle(), m_look) &&
                        m_panes.Create(Handle(), m_look) && m_statusBar.Create(Handle(), m_look);
    if (isMade && IsDark()) {
        ShowPalette();
        m_panes.ApplyLook(m_look);  // the lists' colors are the user's again
    }
    return isMade;
}

// False while the question is already open, and while a save waits for Total Commander.
bool frmMain::AskWhetherToClose() {
    if (m_isAskingToClose || m_session.Place().IsBusy()) {
        return false;
    }
    m_isAskingToClose = true;
    const ScopeExit asked([this] { m_isAskingToClose = false; });
    return m_session.MayLeaveFiles();
}

// The session of Windows ends. If something is not saved, Windows shows the user why this program
// holds it up (Microsoft: ShutdownBlockReasonCreate). A question that is open now will not be
// answered any more: it is cancelled, and what it was about is not done.
bool frmMain::OnQueryEndSession() {
    const bool hasPending = m_session.Settings().IsModified() || m_session.DataFile().IsModified();
    if (hasPending) {
        ShutdownBlockReasonCreate(Handle(),
                                  Widen(m_session.Place().Text(text::kUnsavedChanges)).c_str());
    }
    const bool hasCancelled = m_session.Place().IsBusy() && Dialog::CancelModalDialogs();
    return hasCancelled ? !hasPending : AskWhetherToClose();
}

// The organize window is closed only after StoreLayout has noted that it is open. As an owned
// window it would be destroyed before WM_DESTROY arrives here.
void frmMain::OnClose() {
    if (AskWhetherToClose()) {
        StoreLayout();
        m_commands.Organizer().Close();
        DestroyWindow(Handle());
    }
}

void frmMain::OnDestroy() {
    if (!m_isLayoutStored) {
        StoreLayout();
    }
    PostQuitMessage(0);
}

void frmMain::StoreLayout() {
    m_isLayoutStored = true;
    OwnSettings& settings = m_session.Place().OwnSettings().Values();
    CaptureMainWindowPlacement(Handle(), settings);
    m_panes.StorePositions(settings);
    settings.favoritesOrganizeVisible = m_session.FavoriteKeys().IsOrganizerOpen() ? 1 : 0;
    m_session.Place().OwnSettings().SaveSettings();
}

// Not while a value is being typed, which must not be disturbed. If another program is still
// writing, this looks again half a second later.
void frmMain::OnCheckFiles() {
    m_lookAgain.Stop();
    if (IsWindowEnabled(Handle()) && !m_panes.Keys().IsEditing() &&
        m_session.Settings().CheckOutsideChanges() == OutsideCheck::LookAgain) {
        m_lookAgain.Start(Handle(), kLookAgainMs);
    }
}

// Each window of the program's class is asked by a registered message whether it shows this data
// file. Windows lets a process set the foreground window only if it was allowed to (Microsoft:
// AllowSetForegroundWindow); this process was started by the user and passes that right on.
bool frmMain::BringForward(const std::string& dataFile) {
    for (HWND other = FindWindowExW(nullptr, nullptr, kClassName, nullptr); other != nullptr;
         other = FindWindowExW(nullptr, other, kClassName, nullptr)) {
        DWORD process = 0;
        GetWindowThreadProcessId(other, &process);
        if (process == GetCurrentProcessId()) {
            continue;
        }
        AllowSetForegroundWindow(process);
        DWORD_PTR answer = 0;
        SendMessageTimeoutW(other, BringForwardMessage(), MessageHash(dataFile), 0,
                            SMTO_ABORTIFHUNG, kAnswerMs, &answer);
        if (answer == kIsForward) {
            return true;
        }
    }
    return false;
}

// 0 unless this window has the data file open and is shown.
LRESULT frmMain::OnBringForward(WPARAM dataFile) {
    if (!m_followsFiles || dataFile != MessageHash(m_session.DataFile().Path())) {
        return 0;
    }
    if (IsIconic(Handle())) {
        ShowWindow(Handle(), SW_RESTORE);
    }
    SetForegroundWindow(GetLastActivePopup(Handle()));
    return kIsForward;
}

void frmMain::OnActivate(UINT state) {
    if (state != WA_INACTIVE) {
        // At the first activation the files have just been read. The check is posted, so that it
        // does not run within the activation.
        if (m_followsFiles) {
            PostMessageW(Handle(), kCheckFiles, 0, 0);
        }
    } else {
        m_panes.Value().CloseChoices();
        const HWND focus = GetFocus();
        m_lastFocus = m_panes.Keys().IsPart(focus) ? m_panes.Keys().List() : focus;
    }
}

// The window itself has no use for the focus: it goes back to the control that had it, or to the
// tree.
void frmMain::OnSetFocus() {
    if (m_lastFocus != nullptr && IsWindowVisible(m_lastFocus) && IsWindowEnabled(m_lastFocus)) {
        SetFocus(m_lastFocus);
    } else {
        m_panes.FocusTree();
    }
}

void frmMain::OnSize(UINT kind) {
    if (kind == SIZE_MINIMIZED) {
        return;
    }
    Layout();
    if (m_dialogStyle.isRightToLeft) {
        // Not every system repaints all of a mirrored window that has changed its size.
        RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    }
}

// The toolbar at the top, the status bar at the bottom, and the panes in between.
void frmMain::Layout() {
    RECT area = ClientAreaOf(Handle());
    if (m_isToolbarShown) {
        const int margin = ScaledPixels(kToolbarMargin, m_look.dpi);
        const int bottom = margin + m_toolbar.IdealHeight();
        m_toolbar.SetBounds({margin, margin, area.right - margin, bottom});
        area.top = bottom + margin;
    }
    const LONG statusTop = area.bottom - m_statusBar.IdealHeight();
    m_statusBar.SetBounds({0, statusTop, area.right, area.bottom});
    m_panes.SetBounds({0, area.top, area.right, statusTop});
}

// Makes the look anew from the settings and gives it to all parts.
void frmMain::ApplyLook(int dpi) {
    const RedrawLock lock(Handle());
    if (UseTheme(ThemeOfSettings())) {
        ShowPalette();
    }
    MainLook look = MakeMainLook(m_session.Place().OwnSettings().Values(), dpi);
    m_toolbar.ApplyLook(look);
    m_panes.ApplyLook(look);
    m_statusBar.ApplyLook(look);
    m_commands.Organizer().ApplyLook(ListLookOf(look));
    // The former pictures may be destroyed only when no control uses them any more.
    m_look = std::move(look);
    Layout();
}

void frmMain::ShowPalette() {
    ApplyPaletteToProgram();
    ApplyPaletteToMenu(GetMenu(Handle()), true);
    DrawMenuBar(Handle());
}

void frmMain::OnDpiChanged(int dpi, const RECT& bounds) {
    ApplyLook(dpi);
    SetWindowBounds(Handle(), bounds);
}

void frmMain::OnLookChanged() {
    ApplyLook(m_look.dpi);
}

void frmMain::OnSettingsFileChanged() {
    ShowCaption();
}

void frmMain::ShowCaption() {
    std::wstring caption = Widen(m_session.Caption());
    if (caption != m_caption) {
        m_caption = std::move(caption);
        SetWindowTextW(Handle(), m_caption.c_str());
    }
}

void frmMain::OnCommandsChanged() {
    ShowCaption();
    const Workplace& workplace = m_session.Place();
    m_panes.ShowValueBar(workplace.IsVisible(WindowPart::ValueBar));
    m_panes.ShowFilterBar(workplace.IsVisible(WindowPart::FilterBar));
    m_panes.ShowDescriptionPane(workplace.IsVisible(WindowPart::Description));
    if (m_isToolbarShown != workplace.IsVisible(WindowPart::Toolbar)) {
        m_isToolbarShown = workplace.IsVisible(WindowPart::Toolbar);
        m_toolbar.Show(m_isToolbarShown);
        Layout();
    }
}

void frmMain::ReadStyle() {
    m_dialogStyle.isRightToLeft = m_session.Place().Texts().IsRightToLeft();
    m_dialogStyle.showsControlsBackColor =
        m_session.Place().OwnSettings().Values().showControlsBackColor != 0;
}

void frmMain::OnLanguageChanged() {
    const RedrawLock lock(Handle());
    ReadStyle();
    m_menu.Create(Handle());
    ApplyPaletteToMenu(GetMenu(Handle()), true);
    m_toolbar.ApplyLanguage();
    m_statusBar.ApplyLanguage();
    m_panes.Description().ApplyLanguage();
    m_panes.Keys().ApplyLanguage();
    m_panes.Tree().Fill();
    m_panes.Description().ShowDescription();
    m_commands.ApplyLanguage();
    ApplyDirection();
    Layout();
}

// Only some of the windows are mirrored: names and values of keys, descriptions and paths run from
// left to right in all languages.
void frmMain::ApplyDirection() {
    const bool isRightToLeft = m_dialogStyle.isRightToLeft;
    SetMirrored(Handle(), isRightToLeft);
    for (const int id : {kIdToolbar1, kIdToolbar2, kIdStatusBar1, kIdPicture1, kIdUpperPane,
                         kIdPicSpliterContainer, kIdFrame1, kIdFrame2, kIdTreeView1}) {
        SetMirrored(FindChild(Handle(), id), isRightToLeft);
    }
    m_panes.Keys().Filter().ApplyLanguage(isRightToLeft);
    m_panes.Value().ApplyLanguage(isRightToLeft);
}

void frmMain::ContinueWithNextKey() {
    m_panes.Keys().ContinueWithNextKey();
}

void frmMain::ExecuteButton(Command command) {
    m_panes.Keys().CloseInplaceEdit();
    m_commands.Execute(command);
}

void frmMain::ShowPopup(PopupMenu menu, POINT at) {
    m_menu.ShowPopup(Handle(), menu, at);
}

void frmMain::ShowDropDown(Command command, const RECT& button) {
    m_menu.ShowDropDown(Handle(), command, button);
}

}  // namespace tamarind
