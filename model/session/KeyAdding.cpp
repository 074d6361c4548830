#include "model/session/KeyAdding.h"

#include <algorithm>

#include "core/ini/IniParser.h"
#include "core/text/Unicode.h"
#include "model/program/StringTable.h"

namespace tamarind {
namespace {

void AddNew(std::vector<std::string>& sections, std::string_view name) {
    const bool isThere = std::ranges::any_of(
        sections, [&](const std::string& one) { return EqualsIgnoreCase(one, name); });
    if (!isThere && !name.empty()) {
        sections.emplace_back(name);
    }
}

}  // namespace

std::string KeyAdding::ProposedSection() const {
    const auto key = m_selection.Rows().CurrentKey();
    const NodeIndex node = m_selection.SelectedNode();
    if (key || node == kRootNode) {
        return key ? std::string(m_store.TargetSection(*key)) : std::string();
    }
    return std::string(
        m_store.SectionOf(m_selection.Categories()[static_cast<std::size_t>(node)].tag));
}

std::vector<std::string> KeyAdding::Sections() const {
    std::vector<std::string> sections;
    for (const CategoryNode& node : m_selection.Categories()) {
        AddNew(sections, m_store.SectionOf(node.tag));
    }
    if (!m_settings.Files().IsEmpty()) {
        const IniDocument& file = *m_settings.Files().Main().document;
        for (IniDocument::SectionId section = 0; section < file.SectionCount(); ++section) {
            AddNew(sections, file.SectionName(section));
        }
    }
    std::ranges::sort(sections, {}, [](const std::string& name) { return ToUpperCase(name); });
    return sections;
}

std::vector<std::string> KeyAdding::FormsIn(const std::string& section) const {
    return m_dataFile.Families().FormsIn(section);
}

std::string KeyAdding::FaultOf(const std::string& section, const std::string& name) const {
    constexpr std::string_view kLineBreaks = "\r\n";
    const std::string_view ownSection = TrimIniBlanks(section);
    const std::string_view ownName = TrimIniBlanks(name);
    if (ownSection.empty() || ownSection.find(']') != std::string_view::npos ||
        ownSection.find_first_of(kLineBreaks) != std::string_view::npos) {
        return m_workplace.Text(text::kBadSectionName);
    }
    if (ownName.empty()) {
        return m_workplace.Text(text::kEmptyKeyName);
    }
    if (ownName.find('=') != std::string_view::npos ||
        ownName.find_first_of(kLineBreaks) != std::string_view::npos) {
        return m_workplace.Text(text::kBadKeyName);
    }
    return ownName.front() == ';' || ownName.front() == '['
               ? m_workplace.Text(text::kBadKeyBeginning)
               : std::string();
}

void KeyAdding::Add(const std::string& section, const std::string& name) {
    const std::string ownSection(TrimIniBlanks(section));
    const std::string ownName(TrimIniBlanks(name));
    m_undescribed.LoadAll();
    auto key = m_store.Find(ownSection, ownName);
    if (!key) {
        key = m_undescribed.Add(ownSection, ownName);
    }
    m_undescribed.GoTo(*key);
}

}  // namespace tamarind
