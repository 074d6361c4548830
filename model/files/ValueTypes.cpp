#include "model/files/ValueTypes.h"

#include "model/files/KeyPatterns.h"

namespace tamarind {
namespace {

constexpr std::string_view kHistory = "history";
}  // namespace

std::string_view ValueTypes::WordsOf(std::string_view section, std::string_view key) const {
    const auto id = m_file ? FindSectionOrPattern(*m_file, "", section) : std::nullopt;
    const auto line = id ? FindKeyOrPattern(*m_file, *id, key) : std::nullopt;
    return line ? m_file->Value(*line) : std::string_view();
}

std::optional<ValueType> ValueTypes::TypeOf(std::string_view section, std::string_view key) const {
    const std::string_view words = WordsOf(section, key);
    return words.empty() ? std::nullopt : std::optional(ParseValueType(words));
}

bool ValueTypes::IsHistory(std::string_view section, std::string_view key) const {
    const std::string_view words = WordsOf(section, key);
    return words.ends_with(kHistory) &&
           (words.size() == kHistory.size() || words[words.size() - kHistory.size() - 1] == ' ');
}

}  // namespace tamarind
