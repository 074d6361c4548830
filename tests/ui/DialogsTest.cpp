#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "tests/ui/WindowDriver.h"
#include "ui/shell/RealOtherPrograms.h"
#include "ui/shell/cCommonDialog.h"
#include "ui/shell/cFontDlg.h"
#include "ui/toolkit/LateFunction.h"
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

TEST(OtherPrograms, TheWaitHandlesMessagesAndPutsTheEndBack) {
    TakeWaitingMessages();
    static int ticks = 0;
    const UINT_PTR timer = SetTimer(nullptr, 0, 50, [](HWND, UINT, UINT_PTR, DWORD) { ++ticks; });
    const ULONGLONG start = GetTickCount64();
    RealOtherPrograms programs;
    programs.WaitHalfSecond();
    EXPECT_GT(ticks, 1);
    KillTimer(nullptr, timer);
    PostQuitMessage(7);
    programs.WaitHalfSecond();
    EXPECT_GE(GetTickCount64() - start, 960U);
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(message.wParam, 7U);
}

}  // namespace
}  // namespace tamarind
