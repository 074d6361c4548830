#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "tests/ui/WindowDriver.h"
#include "ui/main/ValueBarLayout.h"
#include "ui/shell/RealOtherPrograms.h"
#include "ui/shell/cCommonDialog.h"
#include "ui/shell/cFontDlg.h"
#include "ui/shell/cSplitter.h"
#include "ui/toolkit/LateFunction.h"
#include "ui/toolkit/Pane.h"
#include "ui/toolkit/Timer.h"
#include "ui/toolkit/Window.h"

namespace tamarind {
namespace {

// Windows of other tests have ended their loops, and every loop after that would end at once.
void TakeWaitingMessages() {
    for (MSG message{}; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
    }
}

TEST(CommonDialog, FiltersAreWhatTheDialogsTake) {
    EXPECT_EQ(FilterForDialog(FileFilter::Pictures),
              std::wstring(L"Picture File (*.ico;*.bmp)\0*.ico;*.bmp\0", 39));
}

TEST(FontDialog, TranslatesItsValuesBothWays) {
    for (const bool isHeavy : {true, false}) {
        cFontDlg dialog;
        dialog.mvarFontSize = 12;
        dialog.mvarFontStyle = isHeavy ? 1 | 4 : 2 | 8;
        dialog.mvarFontScript = RUSSIAN_CHARSET;
        LOGFONTW font = dialog.LogicalFont(144);
        EXPECT_EQ(font.lfHeight, -24);
        EXPECT_EQ(font.lfWeight, isHeavy ? 700 : 400);
        EXPECT_EQ(font.lfStrikeOut != 0, isHeavy);
        EXPECT_EQ(font.lfItalic != 0, !isHeavy);
        CHOOSEFONTW record = dialog.DialogRecord(font, nullptr);
        EXPECT_EQ(record.iPointSize, 120);
        record.iPointSize = 90;
        cFontDlg other;
        other.TakeChoice(font, record);
        EXPECT_EQ(other.mvarFontSize, 9);
        EXPECT_EQ(other.mvarFontStyle, dialog.mvarFontStyle);
        EXPECT_EQ(other.mvarFontScript, RUSSIAN_CHARSET);
    }
}

struct FailingWindow final : Window {
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_APP) {
            throw std::bad_alloc();
        }
        if (message == WM_APP + 1) {
            throw std::runtime_error("of any kind");
        }
        return Window::HandleMessage(message, wParam, lParam);
    }
    using Window::CreateHandle;
};

TEST(Window, AnExceptionIsToldAndEndsNothing) {
    TakeWaitingMessages();
    FailingWindow window;
    WindowParams params;
    params.className = L"TamarindFailingWindow";
    params.style = WS_POPUP;
    ASSERT_TRUE(window.CreateHandle(params));
    Strings told;
    Timer answer([&] {
        if (const HWND box = FindWindowW(L"#32770", L"Tamarind Configuration Editor")) {
            constexpr int kMessageText = 0xFFFF;
            told.push_back(TextOf(GetDlgItem(box, kMessageText)));
            SendMessageW(box, WM_COMMAND, IDOK, 0);
        }
    });
    answer.Start(window.Handle(), 10);
    for (const UINT message : {WM_APP, WM_APP + 1}) {
        EXPECT_EQ(SendMessageW(window.Handle(), message, 0, 0), 0);
    }
    EXPECT_EQ(told,
              (Strings{"There is not enough memory. What was being done was not finished.",
                       "An unexpected error occurred. What was being done was not finished."}));
    SetWindowTextW(window.Handle(), L"alive");
    EXPECT_EQ(TextOf(window.Handle()), "alive");
}

// Somebody put a library where Windows looks for one before it looks into its own folder.
TEST(LateFunction, LibrariesComeFromTheSystemsFolder) {
    constexpr const wchar_t* kPlanted = L"tamarind planted.dll";
    wchar_t folder[MAX_PATH] = L"";
    GetSystemDirectoryW(folder, ARRAYSIZE(folder));
    ASSERT_TRUE(CopyFileW((std::wstring(folder) + L"\\version.dll").c_str(), kPlanted, FALSE));
    const auto isFound = [&] {
        const HMODULE found = LoadLibraryW(kPlanted);
        return found != nullptr && FreeLibrary(found);
    };
    EXPECT_TRUE(isFound());
    EXPECT_EQ(SystemLibrary(kPlanted), nullptr);
    SearchSystemFolderOnly();
    EXPECT_FALSE(isFound());
    EXPECT_NE(LateFunction<FARPROC>(L"version.dll", "VerQueryValueW"), nullptr);
    EXPECT_TRUE(DeleteFileW(kPlanted));
}

int g_ticks = 0;

void CALLBACK CountTick(HWND, UINT, UINT_PTR, DWORD) {
    ++g_ticks;
}

TEST(OtherPrograms, TheWaitHandlesMessagesAndPutsTheEndBack) {
    TakeWaitingMessages();
    const UINT_PTR timer = SetTimer(nullptr, 0, 50, CountTick);
    const ULONGLONG start = GetTickCount64();
    RealOtherPrograms programs;
    programs.WaitHalfSecond();
    EXPECT_GT(g_ticks, 1);
    KillTimer(nullptr, timer);
    PostQuitMessage(7);
    programs.WaitHalfSecond();
    EXPECT_GE(GetTickCount64() - start, 960U);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(message.wParam, 7U);
}

TEST(SplitterLayout, PlacesBarAndPanes) {
    const struct {
        const char* what;
        int length, across, position, margin;
        int first, bar, second, end;  // where each begins on the line on which the bar moves
    } cases[] = {
        {"as wanted, with margins", 9000, 5000, 2000, 100, 100, 2000, 2045, 8900},
        {"the second pane keeps its smallest size", 5000, 900, 4000, 0, 0, 2900, 2945, 5000},
        {"so does the first, before the second", 3000, 900, -50, 0, 0, 1200, 1245, 3000},
        {"no room for either", 1000, 900, 4000, 0, 0, 955, 1000, 1000},
        {"no room at all", 0, 0, 4000, 0, 0, 0, 45, 45},
    };
    for (const bool isVertical : {true, false}) {
        for (const auto& c : cases) {
            SCOPED_TRACE(testing::Message() << c.what << ", vertical: " << isVertical);
            SplitterGeometry geometry;
            geometry.direction = isVertical ? SplitDirection::Vertical : SplitDirection::Horizontal;
            geometry.containerWidth = {isVertical ? c.length : c.across};
            geometry.containerHeight = {isVertical ? c.across : c.length};
            geometry.splitterSize = {45};
            geometry.minFirst = {1200};
            geometry.minSecond = {2100};
            geometry.leftMargin = geometry.topMargin = {c.margin};
            geometry.rightMargin = geometry.bottomMargin = {c.margin};
            const auto between = [&](Twips from, Twips to) {
                const Twips acrossEnd{c.across - c.margin};
                return isVertical ? TwipsRect{from, {c.margin}, to, acrossEnd}
                                  : TwipsRect{{c.margin}, from, acrossEnd, to};
            };
            const SplitterPlaces places = LayOutSplitter(geometry, {c.position});
            EXPECT_TRUE(places.first == between({c.first}, {c.bar}));
            EXPECT_TRUE(places.bar == between({c.bar}, {c.second}));
            EXPECT_TRUE(places.second == between({c.second}, {c.end}));
            // A drag stops before it makes a pane smaller than that.
            EXPECT_FALSE(AcceptsDrag(geometry, geometry.minFirst));
        }
    }
}

TEST(ValueBarLayout, PartsGiveWayInTheirOrder) {
    const struct {
        int width;
        bool isWarning;
        int name, field, note, reset;
    } cases[] = {
        {1000, true, 80, 100, 60, 25}, {265, true, 80, 40, 60, 25}, {264, false, 80, 40, 59, 25},
        {264, true, 50, 69, 60, 25},   {235, true, 50, 40, 60, 25}, {234, true, 50, 69, 60, 0},
        {205, true, 50, 40, 60, 0},    {204, true, 50, 40, 59, 0},  {165, true, 50, 40, 20, 0},
        {164, true, 50, 64, 0, 0},     {140, true, 50, 40, 0, 0},   {139, true, 49, 40, 0, 0},
        {110, true, 20, 40, 0, 0},     {109, true, 20, 39, 0, 0},   {50, true, 20, 0, 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.width);
        const ValueBarWidths widths =
            ShareValueBar({50, 80, 20, 40, 100, 30, 60, 20, c.isWarning, 25, 5}, c.width);
        EXPECT_EQ(widths.name, c.name);
        EXPECT_EQ(widths.showsState, c.name == 80);
        EXPECT_EQ(widths.field, c.field);
        EXPECT_EQ(widths.note, c.note);
        EXPECT_EQ(widths.reset, c.reset);
    }
}

TEST(Splitter, SwapsHidesAndMovesPanes) {
    Pane container;
    Pane first;
    Pane second;
    SplitterBar bar;
    ASSERT_TRUE(container.Create(GetDesktopWindow(), 1) && first.Create(container.Handle(), 2) &&
                second.Create(container.Handle(), 3) && bar.Create(container.Handle(), 4));
    container.SetBounds({0, 0, 600, 400});
    const auto rightOf = [](const Window& pane) { return BoundsInParent(pane.Handle()).right; };
    const auto isShown = [](const Window& window) {
        return (GetWindowLongPtrW(window.Handle(), GWL_STYLE) & WS_VISIBLE) != 0;
    };
    cSplitter splitter;
    SplitterOptions options;
    options.SplitterStartPos = {3000};  // 200 pixels
    options.SplitterSize = {45};
    splitter.CreateSplitter(container.Handle(), bar, first.Handle(), second.Handle(), options,
                            kDesignDpi);
    splitter.SetSplitPosition({4500});
    EXPECT_EQ(rightOf(first), 200) << "it waits for the next layout";
    splitter.Resize({6000}, {9000});
    EXPECT_EQ(rightOf(first), 300);
    splitter.SwapPanels();
    EXPECT_EQ(rightOf(second), 300);
    splitter.SetRightPanelVisible(false);
    EXPECT_EQ(rightOf(second), 600);
    splitter.SetLeftPanelVisible(false);
    EXPECT_FALSE(isShown(container) || isShown(bar) || isShown(first));
    splitter.SetRightPanelVisible(true);
    splitter.SetLeftPanelVisible(true);
    EXPECT_EQ(rightOf(second), 300);
    EXPECT_TRUE(isShown(container) && isShown(bar) && isShown(first));
}

}  // namespace
}  // namespace tamarind
