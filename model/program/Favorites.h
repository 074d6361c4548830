#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/ini/IniFiles.h"
#include "model/keys/KeyList.h"

namespace tamarind {

// A bookmark for a key, or a separator line between bookmarks.
struct Favorite {
    std::string name;     // the key's name, or "Sp_" and a number for a separator
    std::string caption;  // what the menu shows; "-" for a separator

    bool IsSeparator() const { return caption == "-"; }
};

// What came of a change of the list. Unless it succeeded, nothing was written.
struct FavoritesChange {
    WriteResult saved;
    bool isTooLong = false;  // the names could not all be read again
    bool Succeeded() const { return saved.Succeeded() && !isTooLong; }
};

// The names of the rows that the key list shows, sorted, so that a look-up tells whether the key of
// a favorite is among them. Favorites whose key is not are gray in the menu and in the organize
// window.
class ShownNames {
public:
    ShownNames() = default;
    // Sorts the names of all rows once: for a list of 32,000 keys, looking up each favorite in the
    // rows would be slow.
    ShownNames(const KeyList& keys, const KeyStore& store);

    // Whether any name begins with `start`, in any letter case.
    bool HasNameFrom(std::string_view start) const;

private:
    std::vector<std::string> m_names;  // in upper case
};

// The user's favorites in the order of the menu, as they are in the settings file of the program:
//
//   [FavoritesList]
//   ButtonBar=Show the button bar    the key's name and the caption
//   Sp_1=-                           a separator
class Favorites {
public:
    // The menu takes no new favorite once its last entry has this index, counted from 0. Three
    // fixed entries come before the favorites.
    static constexpr std::size_t kMaxMenuBound = 99;

    Favorites(IniFiles& files, const std::string& settingsPath)
        // `settingsPath` is kept by reference, because it is known only after the settings were
        // located.
        : m_files(files), m_settingsPath(settingsPath) {}

    // Reads the list from the file.
    void CreateFavoritesList();

    const std::vector<Favorite>& Items() const { return m_items; }
    // Whether the menu has no room for another favorite.
    bool IsFull() const;

    // Whether the file has names beyond those that were read. Replace would lose them.
    bool IsCut() const { return m_isCut; }

    // Whether there is a favorite of that name. What follows a "=" in `name` does not count.
    bool FavoriteExists(std::string_view name) const;

    // Both write to the file but leave Items() as it is until CreateFavoritesList.
    FavoritesChange Add(const std::string& name, const std::string& caption);
    FavoritesChange Replace(std::span<const Favorite> items);

private:
    FavoritesChange Edit(const std::function<IniEdit(IniDocument&)>& edit);

    IniFiles& m_files;
    const std::string& m_settingsPath;
    std::vector<Favorite> m_items;
    bool m_isCut = false;
};

}  // namespace tamarind
