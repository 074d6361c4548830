#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "core/text/WideText_win32.h"
#include "tests/model/fakes/SessionWorld.h"
#include "ui/main/ControlIds.h"
#include "ui/main/frmMain.h"
#include "ui/toolkit/ControlKind.h"
#include "ui/toolkit/Timer.h"

namespace tamarind {

using Strings = std::vector<std::string>;

inline constexpr const char* kWincmd =
    "[Configuration]\r\nPanelsVertical=1\r\n;ShowHidden=0\r\n[Colors]\r\n";

// The whole window over a session in memory.
class MainWindowTest : public testing::Test {
protected:
    void SetUp() override {
        InitCommonControls();
        // The window of a test before may have ended the loop, and a dialog's loop ends with it.
        MSG message{};
        PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
        world.PutUsualFiles(kWincmd);
    }

    void Start(int showCommand = SW_SHOW) {
        window.reset();  // before the session that it shows
        world.session = std::make_unique<EditorSession>(world.Services());
        world.session->LoadSettings();
        window = std::make_unique<frmMain>(*world.session);
        ASSERT_TRUE(window->Create());
        EXPECT_FALSE(IsWindowVisible(window->Handle()));
        ASSERT_TRUE(world.session->Activate(""));
        window->ShowFirst(showCommand);
    }

    void PutOwnSettings(const std::string& lines) {
        world.disk.Put(SessionWorld::kOwnSettings, "[ConfigurationEditor]\r\n" + lines);
        world.disk.Wait(10);
    }

    static std::vector<HWND> ChildrenOf(HWND parent) {
        std::vector<HWND> children;
        for (HWND child = GetWindow(parent, GW_CHILD); child;
             child = GetWindow(child, GW_HWNDNEXT)) {
            children.push_back(child);
        }
        return children;
    }
    static HWND FindIn(HWND parent, int id) {
        for (const HWND child : ChildrenOf(parent)) {
            if (const HWND found = GetDlgCtrlID(child) == id ? child : FindIn(child, id)) {
                return found;
            }
        }
        return nullptr;
    }
    HWND Find(int id) const { return FindIn(window->Handle(), id); }
    LRESULT Send(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessageW(Find(id), message, wParam, lParam);
    }
    void Command(tamarind::Command command) const {
        SendMessageW(window->Handle(), WM_COMMAND, static_cast<WPARAM>(command), 0);
    }
    void Press(int id, WPARAM key) const {
        Send(id, WM_KEYDOWN, key);
        Send(id, WM_KEYUP, key);
    }

    static std::string CellIn(HWND list, int row, int column) {
        wchar_t text[300] = L"";
        ListView_GetItemText(list, row, column, text, ARRAYSIZE(text));
        return Narrow(text);
    }
    static Strings RowsIn(HWND list) {
        Strings rows;
        for (int row = 0; row < ListView_GetItemCount(list); ++row) {
            rows.push_back(CellIn(list, row, 0));
        }
        return rows;
    }
    Strings Rows() const { return RowsIn(Find(kIdListView1)); }
    static int SelectedIn(HWND list) { return ListView_GetNextItem(list, -1, LVNI_SELECTED); }
    int SelectedRow() const { return SelectedIn(Find(kIdListView1)); }
    Strings Nodes() const {
        Strings texts;
        const HWND tree = Find(kIdTreeView1);
        for (HTREEITEM node = TreeView_GetRoot(tree); node != nullptr;
             node = TreeView_GetNextVisible(tree, node)) {
            wchar_t text[100] = L"";
            TVITEMW item{};
            item.mask = TVIF_TEXT;
            item.hItem = node;
            item.pszText = text;
            item.cchTextMax = ARRAYSIZE(text);
            TreeView_GetItem(tree, &item);
            texts.push_back(Narrow(text));
        }
        return texts;
    }
    std::string Status(int part) const {
        wchar_t text[300] = L"";
        Send(kIdStatusBar1, SB_GETTEXTW, static_cast<WPARAM>(part), reinterpret_cast<LPARAM>(text));
        return Narrow(text);
    }
    static std::string TextOf(HWND handle) {
        wchar_t text[300] = L"";
        GetWindowTextW(handle, text, ARRAYSIZE(text));
        return Narrow(text);
    }
    static RECT BoundsOf(HWND handle) {
        RECT bounds{};
        GetWindowRect(handle, &bounds);
        return bounds;
    }
    static LONG HeightOf(HWND handle) { return BoundsOf(handle).bottom - BoundsOf(handle).top; }
    static bool IsInside(const RECT& inner, const RECT& outer) {
        RECT common{};
        return IntersectRect(&common, &inner, &outer) && EqualRect(&common, &inner);
    }
    // Groups and tabs have other controls inside of them.
    static bool Holds(HWND container, HWND window) {
        wchar_t name[32] = L"";
        GetClassNameW(container, name, ARRAYSIZE(name));
        return (KindOf(container) == ControlKind::Frame || Narrow(name) == WC_TABCONTROLA) &&
               IsInside(BoundsOf(window), BoundsOf(container));
    }
    // All that is in a window is inside of it and beside the others.
    static void ExpectNoOverlaps(HWND parent) {
        RECT area{};
        GetClientRect(parent, &area);
        MapWindowPoints(parent, nullptr, reinterpret_cast<POINT*>(&area), 2);
        std::vector<HWND> children = ChildrenOf(parent);
        std::erase_if(children, [](HWND child) { return !IsWindowVisible(child); });
        for (std::size_t at = 0; at < children.size(); ++at) {
            const HWND child = children[at];
            SCOPED_TRACE(std::to_string(GetDlgCtrlID(child)) + " " + TextOf(child));
            EXPECT_TRUE(IsInside(BoundsOf(child), area)) << area.right << " " << area.bottom;
            for (const HWND other : std::span(children).first(at)) {
                const RECT bounds[] = {BoundsOf(child), BoundsOf(other)};
                RECT common{};
                EXPECT_TRUE(Holds(child, other) || Holds(other, child) ||
                            !IntersectRect(&common, &bounds[0], &bounds[1]))
                    << TextOf(other);
            }
            ExpectNoOverlaps(child);
        }
    }
    void SetSize(int width, int height) const {
        SetWindowPos(window->Handle(), nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
    }

    void SetDpi(int dpi, const RECT& bounds) const {
        SendMessageW(window->Handle(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi),
                     reinterpret_cast<LPARAM>(&bounds));
    }
    Strings OwnSettings(const Strings& keys) {
        Strings values;
        for (const std::string& key : keys) {
            values.push_back(world.OwnSetting("ConfigurationEditor", key));
        }
        return values;
    }

    // Does something in the dialog that `open` opens, which may be a modal one, and closes it if
    // that did not.
    void Show(const wchar_t* className, const std::function<void()>& actions,
              const std::function<void()>& open) {
        bool isDone = false;
        const auto visit = [&] {
            const HWND found = FindWindowW(className, nullptr);
            if (!isDone && IsWindowVisible(found)) {
                isDone = true;
                dialog = found;
                actions();
                PostMessageW(found, WM_CLOSE, 0, 0);
            }
        };
        Timer timer(visit);
        timer.Start(window->Handle(), 10);
        open();
        visit();
        EXPECT_TRUE(isDone);
        EXPECT_TRUE(IsWindowEnabled(window->Handle()));
    }

    // Handles what is posted, timers too, until `condition` holds.
    static bool PumpUntil(const std::function<bool()>& condition) {
        const ULONGLONG end = GetTickCount64() + 5000;
        while (!condition() && GetTickCount64() < end) {
            for (MSG message{}; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
                DispatchMessageW(&message);
            }
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        }
        return condition();
    }

    // What is in the dialog.
    HWND In(int id) const { return FindIn(dialog, id); }
    bool IsOn(int id) const { return IsWindowEnabled(In(id)); }
    bool IsChecked(int id) const { return SendMessageW(In(id), BM_GETCHECK, 0, 0) == BST_CHECKED; }
    void Click(int id) const { SendMessageW(In(id), BM_CLICK, 0, 0); }
    // As the loops treat a key for the window with the focus. It handles nothing else: the window
    // manager might take the focus meanwhile.
    static void PressKey(WPARAM key, UINT kind = WM_KEYDOWN) {
        MSG message{};
        message.hwnd = GetFocus();
        message.message = kind;
        message.wParam = key;
        message.lParam = 1;
        if (!Dialog::TranslateDialogMessage(message)) {
            DispatchMessageW(&message);
        }
    }

    SessionWorld world;
    std::unique_ptr<frmMain> window;
    HWND dialog = nullptr;  // the one that Show opened last
};

}  // namespace tamarind
