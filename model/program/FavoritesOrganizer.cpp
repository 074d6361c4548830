#include "model/program/FavoritesOrganizer.h"

#include <algorithm>
#include <utility>

#include "core/text/Unicode.h"

namespace tamarind {
namespace {

constexpr std::string_view kSeparatorPrefix = "Sp_";
constexpr const char* kSeparatorCaption = "-";

std::string SeparatorName(std::size_t number) {
    return std::string(kSeparatorPrefix) + std::to_string(number);
}

}  // namespace

void FavoritesOrganizer::Fill(const std::vector<Favorite>& favorites) {
    m_rows = favorites;
    m_knownNames.clear();
    for (const Favorite& favorite : favorites) {
        m_knownNames.push_back(favorite.name);
    }
    m_selected = m_rows.empty() ? std::nullopt : std::optional<std::size_t>(0);
    m_isChanged = false;
}

void FavoritesOrganizer::Append(const Favorite& favorite) {
    m_rows.push_back(favorite);
    m_knownNames.push_back(favorite.name);
    m_selected = m_rows.size() - 1;
}

void FavoritesOrganizer::AppendUnknown(const std::vector<Favorite>& favorites) {
    for (const Favorite& favorite : favorites) {
        const bool isKnown = std::ranges::any_of(m_knownNames, [&](const std::string& name) {
            return EqualsIgnoreCase(name, favorite.name);
        });
        if (!isKnown) {
            m_rows.push_back(favorite);
            m_knownNames.push_back(favorite.name);
        }
    }
}

void FavoritesOrganizer::Select(std::size_t row) {
    if (row < m_rows.size()) {
        m_selected = row;
    }
}

bool FavoritesOrganizer::ExchangeWith(std::size_t row) {
    std::swap(m_rows[*m_selected], m_rows[row]);
    m_selected = row;
    m_isChanged = true;
    return true;
}

bool FavoritesOrganizer::MoveUp() {
    return m_selected && *m_selected > 0 && ExchangeWith(*m_selected - 1);
}

bool FavoritesOrganizer::MoveDown() {
    return m_selected && *m_selected + 1 < m_rows.size() && ExchangeWith(*m_selected + 1);
}

bool FavoritesOrganizer::Delete() {
    if (!m_selected) {
        return false;
    }
    m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(*m_selected));
    if (m_rows.empty()) {
        m_selected.reset();
    } else {
        m_selected = std::min(*m_selected, m_rows.size() - 1);
    }
    m_isChanged = true;
    return true;
}

// Names of separators only have to differ. They are numbered again in the order of the list, and
// the new one takes the next number wherever it stands.
bool FavoritesOrganizer::AddSeparator() {
    if (!m_selected) {
        return false;
    }
    std::size_t count = 0;
    for (Favorite& row : m_rows) {
        if (row.IsSeparator()) {
            row.name = SeparatorName(++count);
        }
    }
    m_rows.insert(m_rows.begin() + static_cast<std::ptrdiff_t>(*m_selected),
                  {SeparatorName(count + 1), kSeparatorCaption});
    m_knownNames.push_back(SeparatorName(count + 1));
    m_isChanged = true;
    return true;
}

bool FavoritesOrganizer::CanRename(std::size_t row) const {
    const std::string_view name = m_rows[row].name;
    return !EqualsIgnoreCase(name.substr(0, kSeparatorPrefix.size()), kSeparatorPrefix);
}

bool FavoritesOrganizer::Rename(std::size_t row, std::string caption) {
    if (row >= m_rows.size() || caption.empty() || !CanRename(row)) {
        return false;
    }
    m_rows[row].caption = std::move(caption);
    m_isChanged = true;
    return true;
}

}  // namespace tamarind
