#include "model/session/FavoritesBook.h"

#include "core/text/Unicode.h"
#include "model/program/StringTable.h"
#include "model/session/Messages.h"

namespace tamarind {

FavoritesBook::FavoritesBook(Workplace& workplace, KeySelection& selection)
    : m_workplace(workplace),
      m_selection(selection),
      m_favorites(workplace.Files(), workplace.OwnSettings().Path()) {
    m_workplace.Watchers().Add(*this);
    m_selection.CategoryWatchers().Add(*this);
}

FavoritesBook::~FavoritesBook() {
    m_selection.CategoryWatchers().Remove(*this);
    m_workplace.Watchers().Remove(*this);
}

void FavoritesBook::CreateFavoritesList(bool updateOrganizer) {
    m_favorites.CreateFavoritesList();
    if (updateOrganizer && m_isOrganizerOpen && !m_favorites.Items().empty()) {
        m_organizer.Append(m_favorites.Items().back());
    }
    m_listeners.Tell(&FavoritesListener::OnFavoritesChanged);
}

std::optional<std::string> FavoritesBook::BeginAddFavorite() const {
    const Messages messages(m_workplace);
    if (m_favorites.IsFull()) {
        messages.Show(MessageIcon::Information, text::kTooManyFavorites);
        return std::nullopt;
    }
    const auto key = m_selection.Rows().CurrentKey();
    if (!key) {
        return std::nullopt;
    }
    std::string name(m_selection.Rows().Store().KeyName(*key));
    if (m_favorites.FavoriteExists(name)) {
        messages.Show(MessageIcon::Critical, text::kIsFavoriteAlready);
        return std::nullopt;
    }
    return name;
}

bool FavoritesBook::AddFavorite(const std::string& name, const std::string& caption) {
    const FavoritesChange change = m_favorites.Add(name, caption);
    if (!change.Succeeded()) {
        Report(change);
        return false;
    }
    CreateFavoritesList(true);
    return true;
}

void FavoritesBook::Report(const FavoritesChange& change) const {
    const Messages messages(m_workplace);
    if (change.isTooLong) {
        messages.Show(MessageIcon::Exclamation, text::kFavoritesTooLong);
    } else {
        messages.ReportFailure(text::kCannotSaveFile, m_workplace.OwnSettings().Path(),
                               change.saved);
    }
}

bool FavoritesBook::FavoriteDefinition(std::string_view name) {
    const KeyStore& store = m_selection.Rows().Store();
    for (KeyNumber key = 1; key <= store.DescribedCount(); ++key) {
        if (EqualsIgnoreCase(store.KeyName(key), name)) {
            m_selection.GoToKey(key);
            return true;
        }
    }
    Messages(m_workplace).Show(MessageIcon::Critical, text::kFavoriteNotFound);
    return false;
}

void FavoritesBook::SetOrganizerOpen(bool isOpen) {
    m_isOrganizerOpen = isOpen;
    if (isOpen) {
        m_organizer.Fill(m_favorites.Items());
    }
}

bool FavoritesBook::OrganizerDefinition(bool beeps) {
    const auto row = m_organizer.Selected();
    if (!row) {
        return false;
    }
    const Favorite& favorite = m_organizer.Rows()[*row];
    if (beeps && favorite.IsSeparator()) {
        m_workplace.Prompts().Beep();
        return false;
    }
    return FavoriteDefinition(favorite.name);
}

bool FavoritesBook::ApplyOrganizer() {
    m_favorites.CreateFavoritesList();
    FavoritesChange change;
    change.isTooLong = m_favorites.IsCut();
    if (!change.isTooLong) {
        m_organizer.AppendUnknown(m_favorites.Items());
        change = m_favorites.Replace(m_organizer.Rows());
    }
    if (!change.Succeeded()) {
        Report(change);
        return false;
    }
    m_organizer.SetApplied();
    CreateFavoritesList();
    return true;
}

}  // namespace tamarind
