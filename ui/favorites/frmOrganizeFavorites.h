#pragma once

#include <functional>

#include "model/session/FavoritesBook.h"
#include "ui/favorites/FavoritesIds.h"
#include "ui/toolkit/DialogControl.h"
#include "ui/toolkit/ListLook.h"
#include "ui/toolkit/VirtualList.h"

namespace tamarind {

// The window in which the user orders, renames and deletes favorites. It shows the
// FavoritesOrganizer of the book, whose rows become the favorites only when the user presses Apply.
// It is modeless and stores its place in the own settings when it closes.
class frmOrganizeFavorites final : public Dialog,
                                   private VirtualListSource,
                                   private FavoritesListener,
                                   private KeyListListener {
public:
    // `onDefinition` is called after a favorite's key has become the current one. All other
    // arguments are kept by reference and must outlive the window.
    frmOrganizeFavorites(Workplace& workplace, KeySelection& selection, FavoritesBook& favorites,
                         const DialogStyle& style, std::function<void()> onDefinition);
    ~frmOrganizeFavorites() override;

    // Fills the organizer and shows it at the window's last place. If it is open already, it is
    // brought to the front as it is. With SW_SHOWNA the focus stays where it is.
    void Open(HWND owner, int showCommand = SW_SHOW);
    // As if the user closed it: changes that were not applied are lost.
    void Close();

    // May be called before the window exists.
    void ApplyLook(const ListLook& look);

private:
    void OnFavoritesChanged() override;
    void OnKeyListChanged() override;
    void OnInit() override;
    std::optional<LRESULT> HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnStretched(int clientWidth) override;
    void OnCommand(int id);
    // Makes the key of the selected favorite the current one. `beeps`: audibly if it is not in the
    // list.
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
    // Shows the rows and states of the organizer as they are now.
    void Refresh();
    // Enables the buttons that can be used.
    void ShowStates();
    void ShowLook();
    void Layout();
    LONG PlaceFrame(const SIZE& area) const;
    void RestorePlace();
    void StorePlace();
    // The smallest size of the window in pixels.
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
