#include "ui/favorites/frmFavoriteAdd.h"

#include "core/text/WideText_win32.h"
#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr Twips kLeftOfOwner{1400};
constexpr Twips kTopOfOwner{1800};

// Below and to the right of the owner's corner, but on one monitor as a whole.
void PlaceNearOwner(HWND window) {
    const HWND owner = GetWindow(window, GW_OWNER);
    const RECT place = BoundsOf(owner);
    RECT bounds = BoundsOf(window);
    const LONG left = place.left + ToPixels(kLeftOfOwner, WindowDpi(owner)).value;
    const LONG top = place.top + ToPixels(kTopOfOwner, WindowDpi(owner)).value;
    OffsetRect(&bounds, static_cast<int>(left - bounds.left), static_cast<int>(top - bounds.top));
    const RECT at = MovedOntoMonitor(bounds);
    SetWindowPos(window, nullptr, static_cast<int>(at.left), static_cast<int>(at.top), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

std::optional<std::string> frmFavoriteAdd::Ask(HWND owner, const std::string& defaultName) {
    FavoriteDefaultName = defaultName;
    m_caption = defaultName;
    return ShowModal(owner) == IDOK ? std::optional(m_caption) : std::nullopt;
}

void frmFavoriteAdd::OnInit() {
    PlaceNearOwner(Handle());
    Text1.SetText(Widen(FavoriteDefaultName));
    Text1.SelectText();
    cmdOK.Enable(!FavoriteDefaultName.empty());
}

std::optional<LRESULT> frmFavoriteAdd::HandleMessage(UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_COMMAND:
            OnCommand(LOWORD(wParam), HIWORD(wParam));
            return 0;
        default:
            return std::nullopt;
    }
}

void frmFavoriteAdd::OnCommand(int id, int code) {
    switch (id) {
        case IDC_FAVORITEADD_TEXT1:
            if (code == EN_CHANGE) {
                m_caption = Narrow(Text1.Text());
                cmdOK.Enable(!m_caption.empty());
            }
            break;
        case IDOK:
            // The Enter key arrives here even while the button is disabled.
            if (!m_caption.empty()) {
                EndModal(IDOK);
            }
            break;
        case IDCANCEL:
            EndModal(IDCANCEL);
            break;
        default:
            break;
    }
}

}  // namespace tamarind
