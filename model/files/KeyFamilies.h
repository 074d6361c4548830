#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/ini/IniDocument.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// Which keys of the settings are described by others. The file of types tells it, in sections with
// a colon in their names:
//
//   [counted:]                     sections that differ in their numbers hold the same keys:
//   #x# (#x#)=1920x1080 (8x16)     the data file has this one
//   [counted:Colors]               families that go on:
//   ColorFilter#=ColorFilter30     the data file has them as far as this key
//   [english:searches]             in each language, keys with a name of the user's, as in a data
//   *_SearchFor=///File masks ...  file; "{n}" and "{section}" stand for that name and its section
class KeyFamilies {
public:
    // Knows none.
    KeyFamilies() = default;
    explicit KeyFamilies(std::shared_ptr<const IniDocument> file) : m_file(std::move(file)) {}

    // The section of the data file that a section of the settings is like; empty if there is none.
    std::string_view SectionLike(std::string_view section) const;
    // The key of the data file that a key of the same section is like; empty if there is none.
    std::string_view KeyLike(std::string_view section, std::string_view key) const;

    // The entry of a key with a name of the user's, and that name. The language is the name of a
    // language file without its extension; English stands in for others.
    PatternEntry EntryOf(std::string_view section, std::string_view key,
                         std::string_view language) const;

    // The names that further keys of a section may have, with "#" and "*" in them.
    std::vector<std::string> FormsIn(std::string_view section) const;

private:
    std::shared_ptr<const IniDocument> m_file;
};

}  // namespace tamarind
