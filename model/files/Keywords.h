#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/ini/IniDocument.h"

namespace tamarind {

// What people call keys: the file of keywords that stands beside a data file. It has a section for
// each language and section of the settings, and for each key words with commas between:
//
//   [english:Configuration]
//   ShowHiddenSystem=invisible, hide
//   [german:Colors]
//   ColorFilter#Color=Dateityp     "#" stands for one or more digits
class Keywords {
public:
    // Knows none.
    Keywords() = default;
    explicit Keywords(std::shared_ptr<const IniDocument> file);

    // Those of a key in all languages, one after the other; empty for a key without an entry.
    std::string Of(std::string_view section, std::string_view key) const;

private:
    std::shared_ptr<const IniDocument> m_file;
    // The sections of the file by that of the settings, in capital letters; in their order.
    std::vector<std::pair<std::string, IniDocument::SectionId>> m_sections;
};

}  // namespace tamarind
