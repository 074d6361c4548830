#include <gtest/gtest.h>

#include "ui/shell/RealOtherPrograms.h"
#include "ui/shell/cCommonDialog.h"
#include "ui/shell/cFontDlg.h"

namespace tamarind {
namespace {

TEST(CommonDialog, FiltersAreWhatTheDialogsTake) {
    EXPECT_EQ(FilterForDialog(FileFilter::Pictures),
              std::wstring(L"Picture File (*.ico;*.bmp)\0*.ico;*.bmp\0", 39));
}

TEST(FontDialog, TranslatesItsValuesBothWays) {
    cFontDlg dialog;
    dialog.mvarFontName = "Microsoft Sans Serif";
    dialog.mvarFontSize = 12;
    dialog.mvarFontStyle = 1 | 4;
    dialog.mvarFontScript = RUSSIAN_CHARSET;
    LOGFONTW font = dialog.LogicalFont(144);
    EXPECT_EQ(font.lfHeight, -24);
    EXPECT_EQ(font.lfWeight, 700);
    EXPECT_FALSE(font.lfItalic);
    EXPECT_TRUE(font.lfStrikeOut);
    EXPECT_EQ(font.lfCharSet, RUSSIAN_CHARSET);
    CHOOSEFONTW record = dialog.DialogRecord(font, nullptr);
    EXPECT_EQ(record.iPointSize, 120);

    font.lfWeight = 400;
    font.lfItalic = font.lfUnderline = TRUE;
    font.lfStrikeOut = FALSE;
    record.iPointSize = 90;
    dialog.TakeChoice(font, record);
    EXPECT_EQ(dialog.mvarFontStyle, 2 | 8);
    EXPECT_EQ(dialog.mvarFontSize, 9);
}

TEST(OtherPrograms, TheWaitHandlesMessagesAndPutsTheEndBack) {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        // Windows of other tests ended their loops.
    }
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
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(message.wParam, 7U);
}

}  // namespace
}  // namespace tamarind
