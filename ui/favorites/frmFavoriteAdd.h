#pragma once

#include <optional>
#include <string>

#include "ui/favorites/FavoritesIds.h"
#include "ui/toolkit/DialogControl.h"

namespace tamarind {

// Asks for the caption under which a key becomes a favorite.
class frmFavoriteAdd final : public Dialog {
public:
    explicit frmFavoriteAdd(const DialogStyle& style)
        : Dialog(IDD_FRMFAVORITEADD, L"frmFavoriteAdd", style) {}

    // Shows the window near the upper left corner of its owner. Returns the caption, which is not
    // empty, or nothing if the user cancels.
    std::optional<std::string> Ask(HWND owner, const std::string& defaultName);

private:
    void OnInit() override;
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(int id, int code);

    std::string FavoriteDefaultName;
    std::string m_caption;
    DialogControl Text1{*this, IDC_FAVORITEADD_TEXT1};
    DialogControl cmdOK{*this, IDOK};
};

}  // namespace tamarind
