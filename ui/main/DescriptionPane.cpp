#include "ui/main/DescriptionPane.h"

#include <algorithm>

#include "core/WideText_win32.h"
#include "ui/main/ControlIds.h"
#include "ui/toolkit/Lengths.h"

namespace tamarind {
namespace {

constexpr int kSavePicture = 1;  // its place among the toolbar's pictures
constexpr int kTextMargin = 4;   // pixels at 96 DPI

}  // namespace

bool DescriptionPane::Create(HWND parent, const MainLook& look) {
    WindowParams params;
    params.className = L"TamarindDescriptionPane";
    params.style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    params.parent = parent;
    params.id = kIdDescriptionPane;
    if (!CreateHandle(params) || !txtDescriptionBox.Create(Handle(), kIdTxtDescriptionBox) ||
        !Toolbar2.Create(Handle(), kIdToolbar2, *this)) {
        return false;
    }
    txtDescriptionBox.SetReadOnly(true);
    ApplyLook(look);
    ToolButton save;
    save.id = static_cast<int>(Command::FileSaveDataFile);
    save.picture = kSavePicture;
    save.text = Widen(m_session.Text(InfoOf(Command::FileSaveDataFile).textNumber));
    Toolbar2.AddButtons({&save, 1});
    Toolbar2.Show(true);
    Refresh();
    return true;
}

void DescriptionPane::ApplyLook(const MainLook& look) {
    txtDescriptionBox.SetColors(look.foreground, look.background);
    txtDescriptionBox.SetBorder(look.border);
    ApplyUserFont(txtDescriptionBox, look.font, true, 0, look.dpi);
    txtDescriptionBox.SetMargins(ScaledPixels(kTextMargin, look.dpi));
    Toolbar2.SetImages(look.toolbarPictures.Get(), look.disabledToolbarPictures.Get());
    Layout();
}

void DescriptionPane::ShowDescription() {
    txtDescriptionBox.SetText(Widen(m_session.Description()));
    txtDescriptionBox.Enable(m_session.CurrentKey() != 0);
}

void DescriptionPane::Refresh() {
    Toolbar2.SetEnabled(static_cast<int>(Command::FileSaveDataFile),
                        m_session.IsEnabled(Command::FileSaveDataFile));
}

LRESULT DescriptionPane::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            Layout();
            return 0;
        default:
            return Window::HandleMessage(message, wParam, lParam);
    }
}

void DescriptionPane::Layout() {
    RECT area{};
    GetClientRect(Handle(), &area);
    const LONG width = std::min<LONG>(Toolbar2.IdealSize().cx, area.right);
    Toolbar2.SetBounds({area.right - width, 0, area.right, area.bottom});
    txtDescriptionBox.SetBounds({0, 0, area.right - width, area.bottom});
}

void DescriptionPane::OnToolbarButton(int id) {
    m_actions.Execute(static_cast<Command>(id));
}

}  // namespace tamarind
