#pragma once

#include <gtest/gtest.h>
#include <algorithm>

#include <functional>
#include <memory>
#include <span>
#include <string>

#include "core/text/WideText_win32.h"
#include "tests/model/fakes/SessionWorld.h"
#include "tests/ui/WindowDriver.h"
#include "ui/main/ControlIds.h"
#include "ui/main/WindowPrompts.h"
#include "ui/main/frmMain.h"
#include "ui/toolkit/ControlKind.h"
#include "ui/toolkit/Handles.h"
#include "ui/toolkit/Timer.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {

// The whole window over a session in memory.
class MainWindowTest : public testing::Test {
protected:
    void SetUp() override {
        InitCommonControls();
        // The window of a test before may have ended the loop, and a dialog's loop ends with it.
        MSG message{};
        PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
        world.PutUsualFiles("[Configuration]\r\nPanelsVertical=1\r\n;ShowHidden=0\r\n[Colors]\r\n");
    }

    void Start(int showCommand = SW_SHOW) {
        window.reset();  // before the session that it shows
        world.session = std::make_unique<EditorSession>(world.Services());
        world.session->LoadSettings();
        window = std::make_unique<frmMain>(*world.session);
        ASSERT_TRUE(window->Create());
        EXPECT_FALSE(IsWindowVisible(Main()));
        ASSERT_TRUE(world.session->Activate(""));
        window->ShowFirst(showCommand);
        prompts.SetOwner(Main());
        prompts.SetStyle(window->Style());
    }
    void PutOwnSettings(const std::string& lines) {
        world.disk.Put(SessionWorld::kOwnSettings, "[ConfigurationEditor]\r\n" + lines);
        world.disk.Wait(10);
    }
    // More keys than the list has room for: K0 to K99.
    void PutManyKeys() {
        std::string keys = "[Panels]\r\nCategoryTargetSection=Configuration\r\n";
        for (int key = 0; key < 100; ++key) {
            keys += "K" + std::to_string(key) + "=1///\r\n";
        }
        world.disk.Put(SessionWorld::kWincmdData, keys);
    }
    std::string StoredSettings() const { return world.disk.BytesOf(SessionWorld::kOwnSettings); }
    Strings OwnSettings(const Strings& keys) {
        Strings values;
        for (const std::string& key : keys) {
            values.push_back(world.OwnSetting("ConfigurationEditor", key));
        }
        return values;
    }

    HWND Main() const { return window->Handle(); }
    HWND Find(int id) const { return FindControl(Main(), id); }
    LRESULT Send(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessageW(Find(id), message, wParam, lParam);
    }
    // The text with which a control answers a message.
    std::string Told(int id, UINT message, WPARAM which) const {
        wchar_t text[300] = L"";
        Send(id, message, which, reinterpret_cast<LPARAM>(text));
        return Narrow(text);
    }
    void Do(int command) const {
        SendMessageW(Main(), WM_COMMAND, static_cast<WPARAM>(command), 0);
    }
    void Do(Command command) const { Do(static_cast<int>(command)); }
    void Press(int id, WPARAM key) const {
        Send(id, WM_KEYDOWN, key);
        Send(id, WM_KEYUP, key);
    }
    Strings Rows() const { return RowsIn(Find(kIdListView1)); }
    int SelectedRow() const { return SelectedIn(Find(kIdListView1)); }
    Strings Nodes() const { return NodesIn(Find(kIdTreeView1)); }
    static void Resize(HWND window, LONG width, LONG height) {
        SetWindowPos(window, nullptr, 0, 0, static_cast<int>(width), static_cast<int>(height),
                     SWP_NOMOVE | SWP_NOZORDER);
    }
    void SetDpi(int dpi, const RECT& bounds) const {
        SendMessageW(Main(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi),
                     reinterpret_cast<LPARAM>(&bounds));
    }

    static bool IsInside(const RECT& inner, const RECT& outer) {
        RECT common{};
        return IntersectRect(&common, &inner, &outer) && EqualRect(&common, &inner);
    }
    // Groups and tabs have other controls inside of them.
    static bool Holds(HWND container, HWND window) {
        return (KindOf(container) == ControlKind::Frame || ClassOf(container) == WC_TABCONTROLA) &&
               IsInside(BoundsOf(window), BoundsOf(container));
    }
    // All that is in a window is inside of it and beside the others.
    static void ExpectNoOverlaps(HWND parent) {
        RECT area = ClientAreaOf(parent);
        MapWindowPoints(parent, nullptr, reinterpret_cast<POINT*>(&area), 2);
        std::vector<HWND> children = ChildrenOf(parent);
        std::erase_if(children, [](HWND child) { return !IsWindowVisible(child); });
        for (std::size_t at = 0; at < children.size(); ++at) {
            const HWND child = children[at];
            SCOPED_TRACE(std::to_string(GetDlgCtrlID(child)) + " " + TextOf(child));
            const RECT bounds = BoundsOf(child);
            EXPECT_TRUE(IsInside(bounds, area)) << area.right << " " << area.bottom;
            for (const HWND other : std::span(children).first(at)) {
                const RECT otherBounds = BoundsOf(other);
                RECT common{};
                EXPECT_TRUE(Holds(child, other) || Holds(other, child) ||
                            !IntersectRect(&common, &bounds, &otherBounds))
                    << TextOf(other);
            }
            ExpectNoOverlaps(child);
        }
    }

    // Which part of a control's client area is bright as it is painted, from 0 to 1.
    static double BrightShareOf(HWND control) {
        RedrawWindow(control, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        const SIZE size = ClientSizeOf(control);
        const ScreenDC dc(control);
        int seen = 0;
        int bright = 0;
        // A grid of points is enough, and each costs a call.
        for (LONG y = 1; y < size.cy; y += std::max<LONG>(1, size.cy / 12)) {
            for (LONG x = 1; x < size.cx; x += std::max<LONG>(1, size.cx / 24)) {
                const COLORREF color = GetPixel(dc.Get(), static_cast<int>(x), static_cast<int>(y));
                if (color != CLR_INVALID) {
                    ++seen;
                    bright += GetRValue(color) + GetGValue(color) + GetBValue(color) > 3 * 140;
                }
            }
        }
        return seen == 0 ? 0 : static_cast<double>(bright) / seen;
    }
    // Of each control most is dark; the rest is text. Buttons that show a color have any.
    void ExpectDark(HWND shown) const {
        if (!IsWindowVisible(shown) || KindOf(shown) == ControlKind::DrawnButton) {
            return;
        }
        EXPECT_LT(BrightShareOf(shown), 0.4) << ClassOf(shown) << " " << TextOf(shown);
        for (const HWND child : ChildrenOf(shown)) {
            ExpectDark(child);
        }
    }

    // Opens a copy of the data file that does not belong to the program.
    void UseOwnDataFile() {
        constexpr const char* kOwn = "C:\\TC\\own.tmdf";
        world.disk.Put(kOwn, world.disk.BytesOf(SessionWorld::kWincmdData));
        world.session->DataFile().LoadDataFile(kOwn);
        world.session->OpenSettingsFile(SessionWorld::kWincmd, false);
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
        timer.Start(Main(), 10);
        open();
        visit();
        EXPECT_TRUE(isDone);
        EXPECT_TRUE(IsWindowEnabled(Main()));
    }

    // What is in the dialog.
    HWND In(int id) const { return FindControl(dialog, id); }
    bool IsOn(int id) const { return IsWindowEnabled(In(id)); }
    bool IsChecked(int id) const { return SendMessageW(In(id), BM_GETCHECK, 0, 0) == BST_CHECKED; }
    void Click(int id) const { SendMessageW(In(id), BM_CLICK, 0, 0); }
    static void SelectRow(HWND list, int row) {
        constexpr UINT kChosen = LVIS_SELECTED | LVIS_FOCUSED;
        ListView_SetItemState(list, row, kChosen, kChosen);
    }
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
    WindowPrompts prompts{L"Test"};
    std::unique_ptr<frmMain> window;
    HWND dialog = nullptr;  // the one that Show opened last
};

}  // namespace tamarind
