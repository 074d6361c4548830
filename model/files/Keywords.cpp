#include "model/files/Keywords.h"

#include <algorithm>

#include "core/text/Unicode.h"
#include "model/files/KeyPatterns.h"

namespace tamarind {

Keywords::Keywords(std::shared_ptr<const IniDocument> file) : m_file(std::move(file)) {
    for (IniDocument::SectionId id = 0; id < m_file->SectionCount(); ++id) {
        const std::string_view name = m_file->SectionName(id);
        if (const std::size_t colon = name.find(':'); colon != std::string_view::npos) {
            m_sections.emplace_back(ToUpperCase(name.substr(colon + 1)), id);
        }
    }
    std::ranges::sort(m_sections);
}

std::string Keywords::Of(std::string_view section, std::string_view key) const {
    std::string words;
    const std::string name = m_sections.empty() ? std::string() : ToUpperCase(section);
    auto at = std::ranges::lower_bound(m_sections, name, {},
                                       [](const auto& one) { return std::string_view(one.first); });
    for (; at != m_sections.end() && at->first == name; ++at) {
        if (const auto line = FindKeyOrPattern(*m_file, at->second, key)) {
            words.append(words.empty() ? "" : ", ").append(m_file->Value(*line));
        }
    }
    return words;
}

}  // namespace tamarind
