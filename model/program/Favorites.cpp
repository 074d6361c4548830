#include "model/program/Favorites.h"

#include <algorithm>

#include "core/ini/cProfile.h"
#include "core/text/Unicode.h"

namespace tamarind {
namespace {

constexpr std::string_view kSection = "FavoritesList";
constexpr std::size_t kFixedMenuEntries = 3;

// All names in the section. They are deleted one by one when the list is replaced: without its
// header, a second section of that name, which nobody has seen, would take its place.
std::vector<std::string> KeysOf(const IniDocument& file) {
    std::vector<std::string> names;
    if (const auto section = file.FindSection(kSection)) {
        for (auto line = file.FirstLine(*section); line != IniDocument::kNone;
             line = file.NextLine(line)) {
            if (file.Kind(line) == IniLineKind::Key) {
                names.emplace_back(file.KeyName(line));
            }
        }
    }
    return names;
}

// Whether the receive buffer takes the names of all favorites.
bool IsReadWhole(const IniDocument& file) {
    const auto section = file.FindSection(kSection);
    std::size_t count = 0;
    bool isWhole = true;
    if (section) {
        ForEachKey(file, *section, [&](IniDocument::LineId line, std::string_view name) {
            ++count;
            isWhole = isWhole && name.size() == file.KeyName(line).size();
        });
    }
    return isWhole && count == KeysOf(file).size();
}

}  // namespace

ShownNames::ShownNames(const KeyList& keys, const KeyStore& store) {
    m_names.reserve(keys.Size());
    for (std::size_t row = 0; row < keys.Size(); ++row) {
        m_names.push_back(ToUpperCase(store.KeyName(keys.KeyAt(row))));
    }
    std::ranges::sort(m_names);
}

bool ShownNames::HasNameFrom(std::string_view start) const {
    const std::string upper = ToUpperCase(start);
    const auto next = std::ranges::lower_bound(m_names, upper);
    return next != m_names.end() && next->starts_with(upper);
}

void Favorites::CreateFavoritesList() {
    m_items.clear();
    const IniSnapshot file = m_files.Read(m_settingsPath);
    m_isCut = !IsReadWhole(*file.document);
    const auto section = file.document->FindSection(kSection);
    if (!section) {
        return;
    }
    ForEachKey(*file.document, *section, [&](IniDocument::LineId, std::string_view name) {
        const auto line = file.document->FindKey(*section, name);
        const std::string_view caption =
            line ? CutToBuffer(file.document->Value(*line)) : std::string_view();
        m_items.push_back({std::string(name), std::string(caption)});
    });
}

bool Favorites::IsFull() const {
    // The index of the last entry in the menu, counted from 0.
    return kFixedMenuEntries + m_items.size() - 1 >= kMaxMenuBound;
}

bool Favorites::FavoriteExists(std::string_view name) const {
    name = name.substr(0, name.find('='));
    return std::ranges::any_of(
        m_items, [&](const Favorite& favorite) { return EqualsIgnoreCase(favorite.name, name); });
}

// Refuses an edit after which some names could no longer be read.
FavoritesChange Favorites::Edit(const std::function<IniEdit(IniDocument&)>& edit) {
    FavoritesChange change;
    change.saved = EditIniFile(m_files, m_settingsPath, [&](IniDocument& file) {
        const IniEdit done = edit(file);
        change.isTooLong = !IsRefused(done) && !IsReadWhole(file);
        return change.isTooLong ? IniEdit::TextNotStorable : done;
    });
    return change;
}

FavoritesChange Favorites::Add(const std::string& name, const std::string& caption) {
    return Edit([&](IniDocument& file) { return file.SetValue(kSection, name, caption); });
}

FavoritesChange Favorites::Replace(std::span<const Favorite> items) {
    return Edit([&](IniDocument& file) {
        IniEdit edit = IniEdit::Changed;
        for (const std::string& name : KeysOf(file)) {
            file.DeleteKey(kSection, name);
        }
        for (const Favorite& favorite : items) {
            edit =
                IsRefused(edit) ? edit : file.SetValue(kSection, favorite.name, favorite.caption);
        }
        return edit;
    });
}

}  // namespace tamarind
