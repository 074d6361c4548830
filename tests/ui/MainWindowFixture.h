#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "core/WideText_win32.h"
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
        INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_TREEVIEW_CLASSES |
                                                            ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES |
                                                            ICC_PROGRESS_CLASS};
        InitCommonControlsEx(&controls);
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

    HWND Find(int id) const { return FindIn(window->Handle(), id); }
    static HWND FindIn(HWND parent, int id) {
        for (HWND child = GetWindow(parent, GW_CHILD); child;
             child = GetWindow(child, GW_HWNDNEXT)) {
            const HWND found = GetDlgCtrlID(child) == id ? child : FindIn(child, id);
            if (found) {
                return found;
            }
        }
        return nullptr;
    }
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

    std::string Row(int row) const {
        wchar_t text[300] = L"";
        LVITEMW item{};
        item.pszText = text;
        item.cchTextMax = ARRAYSIZE(text);
        Send(kIdListView1, LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
             reinterpret_cast<LPARAM>(&item));
        return Narrow(item.pszText);
    }
    int RowCount() const { return static_cast<int>(Send(kIdListView1, LVM_GETITEMCOUNT)); }
    Strings Rows() const {
        Strings rows;
        for (int row = 0; row < RowCount(); ++row) {
            rows.push_back(Row(row));
        }
        return rows;
    }
    int SelectedRow() const {
        return static_cast<int>(
            Send(kIdListView1, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    }
    int Picture(int row) const {
        LVITEMW item{};
        item.mask = LVIF_IMAGE;
        item.iItem = row;
        Send(kIdListView1, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        return item.iImage;
    }
    Strings Nodes() const {
        Strings texts;
        auto item = Send(kIdTreeView1, TVM_GETNEXTITEM, TVGN_ROOT);
        while (item != 0) {
            wchar_t text[100] = L"";
            TVITEMW info{};
            info.mask = TVIF_TEXT;
            info.hItem = reinterpret_cast<HTREEITEM>(item);
            info.pszText = text;
            info.cchTextMax = ARRAYSIZE(text);
            Send(kIdTreeView1, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&info));
            texts.push_back(Narrow(text));
            item = Send(kIdTreeView1, TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, item);
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
    static std::vector<HWND> VisibleIn(HWND parent) {
        std::vector<HWND> children;
        for (HWND child = GetWindow(parent, GW_CHILD); child;
             child = GetWindow(child, GW_HWNDNEXT)) {
            if (IsWindowVisible(child)) {
                children.push_back(child);
            }
        }
        return children;
    }
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
        const std::vector<HWND> children = VisibleIn(parent);
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
    bool IsButton(tamarind::Command command, UINT question) const {
        return Send(kIdToolbar1, question, static_cast<WPARAM>(command)) != 0;
    }
    void SetSize(int width, int height) const {
        SetWindowPos(window->Handle(), nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
    }

    // Opens a dialog, which may be a modal one, does something in it, and closes it if that did
    // not.
    void Show(const wchar_t* className, const std::function<void()>& open,
              const std::function<void()>& actions) {
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

    SessionWorld world;
    std::unique_ptr<frmMain> window;
    HWND dialog = nullptr;  // the one that Show opened
};

}  // namespace tamarind
