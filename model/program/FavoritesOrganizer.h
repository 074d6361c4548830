#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "model/program/Favorites.h"

namespace tamarind {

// The copy of the favorites that the organize window works on until its changes are applied.
class FavoritesOrganizer {
public:
    // Takes the favorites as they are; the first one is selected, nothing is changed.
    void Fill(const std::vector<Favorite>& favorites);

    // A favorite that was added meanwhile: behind the last row, and selected.
    void Append(const Favorite& favorite);

    // Favorites that another window has added since: behind the last row.
    void AppendUnknown(const std::vector<Favorite>& favorites);

    const std::vector<Favorite>& Rows() const { return m_rows; }
    std::optional<std::size_t> Selected() const { return m_selected; }
    void Select(std::size_t row);

    // Whether there is something to apply.
    bool IsChanged() const { return m_isChanged; }
    void SetApplied() { m_isChanged = false; }

    // Each returns whether something changed.
    bool MoveUp();
    bool MoveDown();
    bool Delete();
    bool AddSeparator();

    // Separators keep their caption. An empty caption is not taken.
    bool CanRename(std::size_t row) const;
    bool Rename(std::size_t row, std::string caption);

private:
    bool ExchangeWith(std::size_t row);

    std::vector<Favorite> m_rows;
    std::vector<std::string> m_knownNames;  // also of rows that are gone
    std::optional<std::size_t> m_selected;
    bool m_isChanged = false;
};

}  // namespace tamarind
