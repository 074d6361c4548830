#include "ui/main/DescriptionPane.h"

#include <algorithm>

#include "core/text/WideText_win32.h"
#include "ui/main/ControlIds.h"
#include "ui/toolkit/Colors.h"
#include "ui/toolkit/Lengths.h"

namespace tamarind {
namespace {

constexpr int kSavePicture = 1;  // its place among the toolbar's pictures
constexpr int kTextMargin = 4;   // pixels at 96 DPI
constexpr int kToolbarMargin = 2;
constexpr Twips kToolbarDistance{300};

}  // namespace

bool DescriptionPane::Create(HWND parent, const MainLook& look) {
    WindowParams params;
    params.className = L"TamarindDescriptionPane";
    params.style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    params.parent = parent;
    params.id = kIdDescriptionPane;
    if (!CreateHandle(params) || !txtDescriptionBox.Create(Handle(), kIdTxtDescriptionBox, *this) ||
        !Toolbar2.Create(Handle(), kIdToolbar2, *this)) {
        return false;
    }
    ApplyLook(look);
    ToolButton save;
    save.id = static_cast<int>(Command::FileSaveDataFile);
    save.picture = kSavePicture;
    save.text = Widen(m_session.Text(InfoOf(Command::FileSaveDataFile).textNumber));
    Toolbar2.AddButtons({&save, 1});
    Refresh();
    return true;
}

void DescriptionPane::ApplyLook(const MainLook& look) {
    m_dpi = look.dpi;
    const bool showsControlsBackColor =
        m_session.ProgramSettings().Values().showControlsBackColor != 0;
    txtDescriptionBox.SetColors(look.foreground,
                                showsControlsBackColor ? kControlsBackColor : look.background);
    txtDescriptionBox.SetBorder(look.border);
    ApplyUserFont(txtDescriptionBox, look.font, true, 0, look.dpi);
    txtDescriptionBox.SetMargins(ScaledPixels(kTextMargin, look.dpi));
    Toolbar2.SetImages(look.toolbarPictures.Get(), look.disabledToolbarPictures.Get());
    Layout();
}

void DescriptionPane::ApplyLanguage() {
    Toolbar2.SetText(static_cast<int>(Command::FileSaveDataFile),
                     Widen(m_session.Text(InfoOf(Command::FileSaveDataFile).textNumber)));
}

void DescriptionPane::ShowDescription() {
    m_isLoading = true;
    txtDescriptionBox.SetText(Widen(m_session.Description()));
    m_isLoading = false;
    txtDescriptionBox.SetMaxLength(m_session.MaxDescriptionUnits());
    txtDescriptionBox.Enable(m_session.CurrentKey() != 0);
}

// A text that is shown is not one that the user changed.
void DescriptionPane::OnTextChanged() {
    if (!m_isLoading) {
        m_session.ChangeDescription(Narrow(txtDescriptionBox.Text()));
    }
}

void DescriptionPane::Refresh() {
    Toolbar2.Show(m_session.IsDataFileModified());
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
    txtDescriptionBox.SetBounds(area);
    PlaceDescriptionToolbar(ToTwips(Pixels{static_cast<int>(area.bottom)}, m_dpi));
}

// In the corner below on the right, beside the scroll bar.
void DescriptionPane::PlaceDescriptionToolbar(Twips height) {
    RECT area{};
    GetClientRect(Handle(), &area);
    const SIZE size = Toolbar2.IdealSize();
    const LONG left =
        std::max<LONG>(area.right - size.cx - ToPixels(kToolbarDistance, m_dpi).value, 0);
    const LONG bottom = ToPixels(height, m_dpi).value - ScaledPixels(kToolbarMargin, m_dpi);
    Toolbar2.SetBounds({left, bottom - size.cy, left + size.cx, bottom});
    SetWindowPos(Toolbar2.Handle(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void DescriptionPane::OnToolbarButton(int id) {
    m_actions.Execute(static_cast<Command>(id));
}

}  // namespace tamarind
