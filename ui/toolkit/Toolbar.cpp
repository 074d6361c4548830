#include "ui/toolkit/Toolbar.h"

#include <vector>

#include "ui/toolkit/Palette.h"

namespace tamarind {
namespace {

// "Save &As" becomes "Save As", and "A && B" becomes "A & B".
std::wstring WithoutAccessKey(const std::wstring& text) {
    std::wstring plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        // A doubled mark stands for the character itself.
        if (text[at] == L'&' && ++at == text.size()) {
            break;
        }
        plain += text[at];
    }
    return plain;
}

}  // namespace

bool Toolbar::Create(HWND parent, int id, ToolbarListener& listener) {
    m_listener = &listener;
    constexpr DWORD kStyle = TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | TBSTYLE_LIST | CCS_NOPARENTALIGN |
                             CCS_NORESIZE | CCS_NODIVIDER;
    if (!CreateControl(TOOLBARCLASSNAMEW, parent, id, kStyle)) {
        return false;
    }
    Send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
    // With TBSTYLE_EX_MIXEDBUTTONS the text of a button is not shown beside it but as its tooltip.
    constexpr DWORD kExtended =
        TBSTYLE_EX_MIXEDBUTTONS | TBSTYLE_EX_DRAWDDARROWS | TBSTYLE_EX_DOUBLEBUFFER;
    Send(TB_SETEXTENDEDSTYLE, 0, kExtended);
    return true;
}

void Toolbar::SetImages(HIMAGELIST images, HIMAGELIST disabledImages) {
    // Buttons grow with their pictures but would not shrink with them.
    Send(TB_SETBUTTONSIZE, 0, 0);
    Send(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images));
    Send(TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(disabledImages));
    Send(TB_AUTOSIZE);
}

void Toolbar::AddButtons(std::span<const ToolButton> buttons) {
    std::vector<std::wstring> texts;
    for (const ToolButton& button : buttons) {
        texts.push_back(WithoutAccessKey(button.text));
    }
    std::vector<TBBUTTON> all;
    for (const ToolButton& button : buttons) {
        const std::wstring& text = texts[all.size()];
        TBBUTTON added{};
        added.iBitmap = button.picture;
        added.idCommand = button.id;
        added.fsState = TBSTATE_ENABLED;
        added.fsStyle = button.style;
        added.iString = text.empty() ? -1 : reinterpret_cast<INT_PTR>(text.c_str());
        all.push_back(added);
    }
    // All at once: the toolbar lays itself out after each message.
    Send(TB_ADDBUTTONSW, all.size(), reinterpret_cast<LPARAM>(all.data()));
    Send(TB_AUTOSIZE);
}

void Toolbar::SetText(int id, const std::wstring& text) {
    std::wstring plain = WithoutAccessKey(text);
    TBBUTTONINFOW info{};
    info.cbSize = sizeof(info);
    info.dwMask = TBIF_TEXT;
    info.pszText = plain.data();
    Send(TB_SETBUTTONINFOW, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(&info));
}

void Toolbar::SetEnabled(int id, bool isEnabled) {
    if ((Send(TB_ISBUTTONENABLED, static_cast<WPARAM>(id)) != 0) != isEnabled) {
        Send(TB_ENABLEBUTTON, static_cast<WPARAM>(id), MAKELPARAM(isEnabled, 0));
    }
}

void Toolbar::SetPressed(int id, bool isPressed) {
    if ((Send(TB_ISBUTTONCHECKED, static_cast<WPARAM>(id)) != 0) != isPressed) {
        Send(TB_CHECKBUTTON, static_cast<WPARAM>(id), MAKELPARAM(isPressed, 0));
    }
}

SIZE Toolbar::IdealSize() const {
    SIZE size{};
    Send(TB_GETMAXSIZE, 0, reinterpret_cast<LPARAM>(&size));
    return size;
}

namespace {

// Windows draws a toolbar in the colors of its own theme.
LRESULT DrawDark(const NMTBCUSTOMDRAW& draw) {
    const HDC dc = draw.nmcd.hdc;
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) {
        FillRect(dc, &draw.nmcd.rc, PaletteBrush(COLOR_BTNFACE));
        return CDRF_NOTIFYITEMDRAW;
    }
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) {
        return CDRF_DODEFAULT;
    }
    const UINT state = draw.nmcd.uItemState;
    if ((state & (CDIS_HOT | CDIS_SELECTED | CDIS_CHECKED)) != 0) {
        FillRect(dc, &draw.nmcd.rc,
                 PaletteBrush((state & CDIS_SELECTED) != 0 ? COLOR_BTNSHADOW : COLOR_3DLIGHT));
        FrameRect(dc, &draw.nmcd.rc, PaletteBrush(COLOR_BTNSHADOW));
    }
    return TBCDRF_NOEDGES | TBCDRF_NOBACKGROUND | TBCDRF_NOOFFSET;
}

}  // namespace

std::optional<LRESULT> Toolbar::OnNotify(NMHDR& header) {
    if (header.code == NM_CUSTOMDRAW && IsDark()) {
        return DrawDark(reinterpret_cast<const NMTBCUSTOMDRAW&>(header));
    }
    if (header.code != TBN_DROPDOWN) {
        return std::nullopt;
    }
    DropDown(reinterpret_cast<const NMTOOLBARW&>(header).iItem);
    return TBDDRET_DEFAULT;
}

// Enter and the space bar press the hot button.
void Toolbar::MoveHotButton(int from, int step) {
    const int count = static_cast<int>(Send(TB_BUTTONCOUNT));
    for (int at = from + step; at >= 0 && at < count; at += step) {
        TBBUTTON button{};
        Send(TB_GETBUTTON, static_cast<WPARAM>(at), reinterpret_cast<LPARAM>(&button));
        if ((button.fsStyle & BTNS_SEP) == 0 && (button.fsState & TBSTATE_ENABLED) != 0) {
            Send(TB_SETHOTITEM, static_cast<WPARAM>(at));
            return;
        }
    }
}

bool Toolbar::OnKey(WPARAM key) {
    const int hot = static_cast<int>(Send(TB_GETHOTITEM));
    TBBUTTON button{};
    Send(TB_GETBUTTON, static_cast<WPARAM>(hot), reinterpret_cast<LPARAM>(&button));
    switch (key) {
        case VK_LEFT:
        case VK_RIGHT:
            MoveHotButton(hot, key == VK_LEFT ? -1 : 1);
            return true;
        case VK_RETURN:
        case VK_SPACE:
            if (hot >= 0) {
                m_listener->OnToolbarButton(button.idCommand);
            }
            return true;
        case VK_DOWN:
            if (hot >= 0 && (button.fsStyle & BTNS_DROPDOWN) != 0) {
                DropDown(button.idCommand);
            }
            return true;
        case VK_ESCAPE:
            SetFocus(GetAncestor(Handle(), GA_ROOT));
            return true;
        default:
            return false;
    }
}

std::optional<LRESULT> Toolbar::OnMessage(UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_SETFOCUS:
            MoveHotButton(-1, 1);
            return std::nullopt;
        case WM_KILLFOCUS:
            Send(TB_SETHOTITEM, static_cast<WPARAM>(-1));
            return std::nullopt;
        case WM_KEYDOWN:
            return OnKey(wParam) ? std::optional<LRESULT>(0) : std::nullopt;
        default:
            return std::nullopt;
    }
}

void Toolbar::DropDown(int id) {
    RECT button{};
    Send(TB_GETRECT, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(&button));
    MapWindowPoints(Handle(), nullptr, reinterpret_cast<POINT*>(&button), 2);
    m_listener->OnToolbarDropDown(id, button);
}

std::optional<LRESULT> Toolbar::OnCommand(int id, int) {
    m_listener->OnToolbarButton(id);
    return 0;
}

}  // namespace tamarind
