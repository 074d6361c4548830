#include "model/files/Keywords.h"

#include <algorithm>
#include <utility>

#include "model/files/KeyPatterns.h"

namespace tamarind {

Keywords::Keywords(std::shared_ptr<const IniDocument> file) : m_file(std::move(file)) {
    for (IniDocument::SectionId id = 0; id < m_file->SectionCount(); ++id) {
        const std::string_view name = m_file->SectionName(id);
        const std::size_t colon = name.find(':');
        const std::string_view language = name.substr(0, colon + 1);
        if (colon != std::string_view::npos &&
            std::ranges::find(m_languages, language) == m_languages.end()) {
            m_languages.emplace_back(language);
        }
    }
}

std::string Keywords::Of(std::string_view section, std::string_view key) const {
    if (section != m_section) {
        m_section = section;
        m_ofSection.clear();
        for (const std::string& language : m_languages) {
            if (const auto id = FindSectionOrPattern(*m_file, language, section)) {
                m_ofSection.push_back(*id);
            }
        }
    }
    std::string words;
    for (const IniDocument::SectionId id : m_ofSection) {
        if (const auto line = FindKeyOrPattern(*m_file, id, key)) {
            words.append(words.empty() ? "" : ", ").append(m_file->Value(*line));
        }
    }
    return words;
}

}  // namespace tamarind
