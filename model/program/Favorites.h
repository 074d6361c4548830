#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/ini/IniFiles.h"
#include "model/keys/KeyList.h"

namespace tamarind {

// A bookmark on a key, or a separator line among them.
struct Favorite {
    std::string name;     // the key's name, or "Sp_" and a number for a separator
    std::string caption;  // what the menu shows; "-" for a separator

    bool IsSeparator() const { return caption == "-"; }
};

// What a change of the list came to. Nothing was written unless it succeeded.
struct FavoritesChange {
    WriteResult saved;
    bool isTooLong = false;  // the names could not all be read again
    bool Succeeded() const { return saved.Succeeded() && !isTooLong; }
};

// The names of the rows that the key list shows, sorted: one look tells whether a favorite's key is
// among them. What is not there is grey in the menu and in the organize window.
class ShownNames {
public:
    ShownNames() = default;
    ShownNames(const KeyList& keys, const KeyStore& store);

    // Whether a name begins so, in any letter case.
    bool HasNameFrom(std::string_view start) const;

private:
    std::vector<std::string> m_names;  // in upper case
};

// The user's favorites as they stand in the program's settings file, in the order of the menu.
class Favorites {
public:
    // The menu takes no new favorite once it has this many entries, its three fixed ones included.
    static constexpr std::size_t kMaxMenuBound = 99;

    Favorites(IniFiles& files, const std::string& settingsPath)
        : m_files(files), m_settingsPath(settingsPath) {}

    // Reads the list again.
    void CreateFavoritesList();

    const std::vector<Favorite>& Items() const { return m_items; }
    bool IsFull() const;

    // Whether the file has names beyond those that were read; a change would lose them.
    bool IsCut() const { return m_isCut; }

    // Whether there is a favorite of that name; what follows a "=" does not count.
    bool FavoriteExists(std::string_view name) const;

    // Each writes to the file; the list is read again by CreateFavoritesList.
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
