#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "model/program/Favorites.h"

namespace tamarind {

// The copy of the favorites that the organize window works on until its changes are applied. It
// knows rows and the selected one, and touches neither the file nor the window.
class FavoritesOrganizer {
public:
    // Starts with these favorites: the first one is selected, and nothing is changed.
    void Fill(const std::vector<Favorite>& favorites);

    // Adds a favorite that was saved meanwhile, after the last row, and selects it.
    void Append(const Favorite& favorite);

    // Adds those favorites that another window has saved since, after the last row.
    void AppendUnknown(const std::vector<Favorite>& favorites);

    const std::vector<Favorite>& Rows() const { return m_rows; }
    std::optional<std::size_t> Selected() const { return m_selected; }
    // An invalid row changes nothing.
    void Select(std::size_t row);

    // Whether there is something to apply.
    bool IsChanged() const { return m_isChanged; }
    void SetApplied() { m_isChanged = false; }

    // Each changes the selected row and returns whether something changed. AddSeparator inserts
    // above it.
    bool MoveUp();
    bool MoveDown();
    bool Delete();
    bool AddSeparator();

    // Separators keep their caption, and an empty caption is not taken.
    bool CanRename(std::size_t row) const;
    bool Rename(std::size_t row, std::string caption);

private:
    bool ExchangeWith(std::size_t row);

    std::vector<Favorite> m_rows;
    std::vector<std::string> m_knownNames;  // also of rows that were deleted
    std::optional<std::size_t> m_selected;
    bool m_isChanged = false;
};

}  // namespace tamarind
