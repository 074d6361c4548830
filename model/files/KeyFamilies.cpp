#include "model/files/KeyFamilies.h"

#include <initializer_list>
#include <optional>

#include "model/files/KeyPatterns.h"

namespace tamarind {
namespace {

constexpr std::string_view kCounted = "counted:";
constexpr std::string_view kEnglish = "english";

}  // namespace

std::string_view KeyFamilies::SectionLike(std::string_view section) const {
    const auto counted = m_file ? m_file->FindSection(kCounted) : std::nullopt;
    const auto line = counted ? FindKeyOrPattern(*m_file, *counted, section) : std::nullopt;
    return line ? m_file->Value(*line) : std::string_view();
}

std::string_view KeyFamilies::KeyLike(std::string_view section, std::string_view key) const {
    const auto counted =
        m_file ? m_file->FindSection(std::string(kCounted) + std::string(section)) : std::nullopt;
    const auto line = counted ? FindKeyOrPattern(*m_file, *counted, key) : std::nullopt;
    return line ? m_file->Value(*line) : std::string_view();
}

PatternEntry KeyFamilies::EntryOf(std::string_view section, std::string_view key,
                                  std::string_view language) const {
    for (const std::string_view one : {language, kEnglish}) {
        const auto id =
            m_file ? FindSectionOrPattern(*m_file, std::string(one) + ":", section) : std::nullopt;
        if (const auto line = id ? FindKeyOrPattern(*m_file, *id, key) : std::nullopt) {
            return {m_file->Value(*line), NameWithinPattern(m_file->KeyName(*line), key)};
        }
    }
    return {};
}

std::vector<std::string> KeyFamilies::FormsIn(std::string_view section) const {
    std::vector<std::string> forms;
    if (!m_file) {
        return forms;
    }
    const std::string named = std::string(kEnglish) + ":";
    for (const auto id : {m_file->FindSection(std::string(kCounted) + std::string(section)),
                          FindSectionOrPattern(*m_file, named, section)}) {
        for (auto line = id ? m_file->FirstLine(*id) : IniDocument::kNone;
             line != IniDocument::kNone; line = m_file->NextLine(line)) {
            if (m_file->Kind(line) == IniLineKind::Key) {
                forms.emplace_back(m_file->KeyName(line));
            }
        }
    }
    return forms;
}

}  // namespace tamarind
