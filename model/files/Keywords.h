#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/ini/IniDocument.h"

namespace tamarind {

// What people call keys: the file of keywords that stands beside a data file. It has a section for
// each language and section of the settings, and for each key words with commas between:
//
//   [english:Configuration]
//   ShowHiddenSystem=invisible, hide
//   [german:Colors]
//   ColorFilter#Color=Dateityp     a pattern, as KeyPatterns.h has them
class Keywords {
public:
    // Knows none.
    Keywords() = default;
    explicit Keywords(std::shared_ptr<const IniDocument> file);

    // Those of a key in all languages, one after the other; empty for a key without an entry.
    std::string Of(std::string_view section, std::string_view key) const;

private:
    std::shared_ptr<const IniDocument> m_file;
    std::vector<std::string> m_languages;  // each with its colon
    // The last section that was asked for, and those of the file for it: neighbours share it.
    mutable std::string m_section;
    mutable std::vector<IniDocument::SectionId> m_ofSection;
};

}  // namespace tamarind
