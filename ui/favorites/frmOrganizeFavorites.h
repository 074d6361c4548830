#pragma once

#include <functional>

#include "model/session/FavoritesBook.h"
#include "ui/favorites/FavoritesIds.h"
#include "ui/toolkit/DialogControl.h"
#include "ui/toolkit/ListLook.h"
#include "ui/toolkit/VirtualList.h"

namespace tamarind {

// The window in which the user orders, renames and deletes favorites. It shows the session's
// organizer, whose rows become the favorites when they are applied.
class frmOrganizeFavorites final : public Dialog,
                                   private VirtualListSource,
                                   private FavoritesListener,
                                   private KeyListListener {
public:
    // `onDefinition` is called when a favorite's key is the current one. All arguments outlive the
    // window.
    frmOrganizeFavorites(Workplace& workplace, KeySelection& selection, FavoritesBook& favorites,
                         const DialogStyle& style, std::function<void()> onDefinition);
    ~frmOrganizeFavorites() override;

    // Fills the organizer and shows it where the window was last; one that is open already comes to
    // the front as it is. With SW_SHOWNA the focus stays where it is.
    void Open(HWND owner, int showCommand = SW_SHOW);
    // As the user does it, dropping what was not applied.
    void Close();

    // May be called before the window is made.
    void ApplyLook(const ListLook& look);

private:
    void OnFavoritesChanged() override;
    void OnKeyListChanged() override;
    void OnInit() override;
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnStretched(int clientWidth) override;
    void OnCommand(int id);
    void OnDefinition(bool beeps);
    void OnApply();

    std::wstring RowText(int row) const override;
    RowLook LookOfRow(int row) const override;
    void OnRowSelected(int row) override;
    void OnListMenu(POINT) override {}
    void OnRowActivated() override { OnDefinition(true); }
    bool OnListKey(WPARAM key) override;
    void OnListPressed() override {}
    void OnListPlaced() override {}
    bool OnRenameRow(int row) override;
    bool OnRowRenamed(int row, const std::wstring& text) override;

    const Favorite* FavoriteOf(int row) const;
    // Shows the organizer's rows and states as they are now.
    void Refresh();
    void ShowStates();
    void ShowLook();
    void Layout();
    LONG PlaceFrame(const SIZE& area) const;
    void RestorePlace();
    void StorePlace();
    SIZE LeastSize() const;

    Workplace& m_workplace;
    KeySelection& m_selection;
    FavoritesBook& m_favorites;
    std::function<void()> m_onDefinition;
    ListLook m_look;
    ShownNames m_namesInList;
    int m_dpi = 0;  // of what is shown
    int m_leastClientWidth = 0;
    VirtualList ListView1;
    DialogControl m_listControl{*this, IDC_ORGANIZE_LISTVIEW1};
    DialogControl Frame1{*this, IDC_ORGANIZE_FRAME1};
    DialogControl cmdUp{*this, IDC_ORGANIZE_CMDUP};
    DialogControl cmdDown{*this, IDC_ORGANIZE_CMDDOWN};
    DialogControl cmdDelete{*this, IDC_ORGANIZE_CMDDELETE};
    DialogControl cmdDefinition{*this, IDC_ORGANIZE_CMDDEFINITION};
    DialogControl cmdAddSeparator{*this, IDC_ORGANIZE_CMDADDSEPARATOR};
    DialogControl cmdApply{*this, IDC_ORGANIZE_CMDAPPLY};
};

}  // namespace tamarind
