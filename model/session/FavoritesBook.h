#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/program/Favorites.h"
#include "model/program/FavoritesOrganizer.h"
#include "model/session/KeySelection.h"
#include "model/session/Workplace.h"

namespace tamarind {

class FavoritesListener {
public:
    virtual ~FavoritesListener() = default;
    virtual void OnFavoritesChanged() {}  // those of the menu, and maybe the organizer's rows
};

// The favorites of the menu, and the organize window's copy of them.
class FavoritesBook final : private WorkplaceListener, private CategoryListener {
public:
    FavoritesBook(Workplace& workplace, KeySelection& selection);
    ~FavoritesBook() override;
    FavoritesBook(const FavoritesBook&) = delete;
    FavoritesBook& operator=(const FavoritesBook&) = delete;

    Listeners<FavoritesListener>& Watchers() { return m_listeners; }

    const std::vector<Favorite>& Items() const { return m_favorites.Items(); }
    // Reads them again; the organizer, if it is open, gets the last one as a new row when
    // `updateOrganizer`.
    void CreateFavoritesList(bool updateOrganizer = false);

    // The name of the current key to be added under a caption of the user's choice, or nothing
    // after a message that says why not.
    std::optional<std::string> BeginAddFavorite() const;
    bool AddFavorite(const std::string& name, const std::string& caption);
    // Shows the key of that name. False, after a message, when there is none.
    bool FavoriteDefinition(std::string_view name);

    // The organize window's rows; while it is open, new favorites appear in them.
    FavoritesOrganizer& Organizer() { return m_organizer; }
    bool IsOrganizerOpen() const { return m_isOrganizerOpen; }
    void SetOrganizerOpen(bool isOpen);
    // The definition of the organizer's selected row; a beep for a separator when `beeps`.
    bool OrganizerDefinition(bool beeps);
    // Makes the organizer's rows the favorites. False, after a message, when they cannot be
    // written.
    bool ApplyOrganizer();

private:
    void OnLanguageChanged() override { CreateFavoritesList(); }
    void OnCategoriesChanged() override { CreateFavoritesList(); }
    void Report(const FavoritesChange& change) const;

    Workplace& m_workplace;
    KeySelection& m_selection;
    Listeners<FavoritesListener> m_listeners;
    Favorites m_favorites;
    FavoritesOrganizer m_organizer;
    bool m_isOrganizerOpen = false;
};

}  // namespace tamarind
