#include "model/session/UndescribedCategories.h"

#include <algorithm>
#include <utility>

#include "core/text/Unicode.h"
#include "model/files/UndescribedKeys.h"
#include "model/program/StringTable.h"

namespace tamarind {
namespace {

// A tag that no section of a data file has: it would be a heading without a text.
constexpr std::string_view kHeadingTag = "/";

}  // namespace

UndescribedCategories::UndescribedCategories(Workplace& workplace, KeyStore& store,
                                             KeySelection& selection)
    : m_workplace(workplace), m_store(store), m_selection(selection) {
    m_workplace.Watchers().Add(*this);
    m_selection.CategoryWatchers().Add(*this);
}

UndescribedCategories::~UndescribedCategories() {
    m_selection.CategoryWatchers().Remove(*this);
    m_workplace.Watchers().Remove(*this);
}

void UndescribedCategories::Clear() {
    m_selection.SetMoreCategories({});
    if (m_store.Size() > m_store.DescribedCount()) {
        m_selection.Clear();  // a filter may show some of them
        m_store.DropUndescribed();
    }
    m_sections.clear();
    m_settings = nullptr;
}

// Sections stay until other settings are opened, so that no node changes its place.
void UndescribedCategories::Take(const SettingsFiles& settings) {
    m_settings = &settings;
    std::vector<std::string> loaded;
    for (const Section& section : m_sections) {
        if (section.isLoaded) {
            loaded.push_back(section.name);
        }
    }
    AddUndescribedKeys(m_store, settings, loaded);
    for (std::string& name : SectionsWithUndescribedKeys(m_store, settings)) {
        const bool isThere = std::ranges::any_of(m_sections, [&](const Section& section) {
            return EqualsIgnoreCase(section.name, name);
        });
        if (!isThere) {
            std::string tag = "[" + name + "]";
            m_sections.push_back({std::move(name), std::move(tag)});
        }
    }
    Fill();
}

void UndescribedCategories::LoadAll() {
    std::vector<std::string> names;
    for (Section& section : m_sections) {
        if (!std::exchange(section.isLoaded, true)) {
            names.push_back(section.name);
        }
    }
    if (!names.empty()) {
        AddUndescribedKeys(m_store, *m_settings, names);
    }
}

// The heading counts the keys of all.
void UndescribedCategories::OnCategorySelected() {
    const NodeIndex node = m_selection.SelectedNode();
    if (node == kRootNode || m_settings == nullptr) {
        return;
    }
    const std::string_view tag = m_selection.Categories()[static_cast<std::size_t>(node)].tag;
    const auto section =
        std::ranges::find_if(m_sections, [&](const Section& one) { return one.tag == tag; });
    if (tag == kHeadingTag) {
        LoadAll();
    } else if (section != m_sections.end() && !std::exchange(section->isLoaded, true)) {
        AddUndescribedKeys(m_store, *m_settings, {section->name});
    }
}

void UndescribedCategories::Show(bool areVisible) {
    m_workplace.OwnSettings().Values().undescribedVisible = areVisible ? 1 : 0;
    Fill();
    if (m_selection.HasRanking()) {
        m_selection.ShowAgain();
    }
    m_workplace.TellCommandsChanged();
}

void UndescribedCategories::Fill() {
    m_store.SetUndescribedText(m_workplace.Text(text::kUndescribed));
    std::vector<CategoryNode> nodes;
    if (m_workplace.AreUndescribedVisible() && !m_sections.empty()) {
        nodes.push_back({0, kHeadingTag, m_workplace.Text(text::kOnlyInThisFile)});
        for (const Section& section : m_sections) {
            nodes.push_back({0, section.tag,
                             m_store.DescribesSection(section.name)
                                 ? m_workplace.Text(text::kOtherKeysOf, {section.name})
                                 : section.tag});
        }
    }
    m_selection.SetMoreCategories(std::move(nodes));
}

}  // namespace tamarind
