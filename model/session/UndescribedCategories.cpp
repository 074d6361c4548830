#include "model/session/UndescribedCategories.h"

#include <algorithm>

#include "core/text/Unicode.h"
#include "model/files/UndescribedKeys.h"
#include "model/program/StringTable.h"

namespace tamarind {
namespace {

// Tags that no section of a data file has: they would be headings without a text.
constexpr std::string_view kLikeTag = "//";
constexpr std::string_view kOthersTag = "/";

}  // namespace

UndescribedCategories::UndescribedCategories(Workplace& workplace, KeyStore& store,
                                             KeySelection& selection, OpenDataFile& dataFile)
    : m_workplace(workplace), m_store(store), m_selection(selection), m_dataFile(dataFile) {
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

UndescribedCategories::Section& UndescribedCategories::SectionOf(const std::string& name) {
    const auto section = std::ranges::find_if(
        m_sections, [&](const Section& one) { return EqualsIgnoreCase(one.keys.section, name); });
    if (section != m_sections.end()) {
        return *section;
    }
    const std::string tag = "[" + name + "]";
    return m_sections.emplace_back(Section{{name}, tag, "[" + tag + "]"});
}

// Sections stay until other settings are opened, so that no node changes its place.
void UndescribedCategories::Take(const SettingsFiles& settings) {
    m_settings = &settings;
    std::vector<std::string> loaded;
    for (const Section& section : m_sections) {
        if (section.isLoaded) {
            loaded.push_back(section.keys.section);
        }
    }
    const KeyFamilies& families = m_dataFile.Families();
    AddMoreKeys(m_store, settings, families, loaded);
    for (const MoreKeys& keys : SectionsWithMoreKeys(m_store, settings, families)) {
        Section& section = SectionOf(keys.section);
        section.keys.isLike = keys.isLike;
        section.keys.hasSiblings |= keys.hasSiblings;
        section.keys.hasOthers |= keys.hasOthers;
    }
    Fill();
}

void UndescribedCategories::LoadSections(const std::function<bool(const Section&)>& isAsked) {
    std::vector<std::string> names;
    for (Section& section : m_sections) {
        if (!section.isLoaded && isAsked(section)) {
            section.isLoaded = true;
            names.push_back(section.keys.section);
        }
    }
    if (!names.empty()) {
        AddMoreKeys(m_store, *m_settings, m_dataFile.Families(), names);
    }
}

void UndescribedCategories::LoadAll() {
    LoadSections([](const Section&) { return true; });
}

// Whether a category or heading shows keys of a section, or counts them.
bool UndescribedCategories::IsShownBy(const Section& section, NodeIndex node) const {
    const std::vector<CategoryNode>& nodes = m_selection.Categories();
    auto at = static_cast<std::size_t>(node);
    const bool isHeading = nodes[at].IsHeading();
    at += isHeading ? 1 : 0;
    const auto isOfSection = [&](std::string_view tag) {
        return tag == section.othersTag || tag == section.likeTag ||
               (section.keys.hasSiblings &&
                EqualsIgnoreCase(m_store.SectionOf(tag), section.keys.section));
    };
    do {
        if (at < nodes.size() && isOfSection(nodes[at].tag)) {
            return true;
        }
        ++at;
    } while (isHeading && at < nodes.size() && !nodes[at].IsHeading());
    return false;
}

void UndescribedCategories::OnCategorySelected() {
    const NodeIndex node = m_selection.SelectedNode();
    if (node != kRootNode && m_settings != nullptr &&
        m_workplace.IsVisible(WindowPart::UndescribedKeys)) {
        LoadSections([&](const Section& section) { return IsShownBy(section, node); });
    }
}

KeyNumber UndescribedCategories::Add(const std::string& section, const std::string& name) {
    const std::string_view like = m_dataFile.Families().KeyLike(section, name);
    const auto model = like.empty() ? std::nullopt : m_store.Find(section, like);
    const KeyNumber key =
        model ? m_store.AddSibling(section, name, *model) : m_store.AddUndescribed(section, name);
    m_store.SetFromSettings(key, {});
    Section& own = SectionOf(section);
    (model ? own.keys.hasSiblings : own.keys.hasOthers) = true;
    own.isLoaded = true;
    Fill();
    return key;
}

void UndescribedCategories::Show(bool areVisible) {
    m_workplace.OwnSettings().Values().undescribedVisible = areVisible ? 1 : 0;
    Fill();
    if (m_selection.HasRanking()) {
        m_selection.ShowAgain();
    }
    m_workplace.TellCommandsChanged();
}

void UndescribedCategories::GoTo(KeyNumber key) {
    if (!m_store.IsDescribed(key) && !m_workplace.IsVisible(WindowPart::UndescribedKeys)) {
        Show(true);
    }
    m_selection.GoToKey(key);
}

void UndescribedCategories::Fill() {
    m_store.SetUndescribedTexts(
        m_workplace.Text(text::kUndescribed),
        [&families = m_dataFile.Families(), language = m_workplace.LanguageName()](
            std::string_view section, std::string_view name) {
            return families.EntryOf(section, name, language);
        });
    std::vector<CategoryNode> nodes;
    const auto add = [&](std::string_view heading, std::uint16_t number, auto categoryOf) {
        const std::size_t first = nodes.size();
        nodes.push_back({0, heading, m_workplace.Text(number)});
        for (const Section& section : m_sections) {
            if (auto category = categoryOf(section); !category.tag.empty()) {
                nodes.push_back(std::move(category));
            }
        }
        if (nodes.size() == first + 1) {
            nodes.pop_back();
        }
    };
    if (m_workplace.IsVisible(WindowPart::UndescribedKeys)) {
        add(kLikeTag, text::kOtherScreens, [](const Section& section) {
            return section.keys.isLike ? CategoryNode{0, section.likeTag, section.othersTag}
                                       : CategoryNode();
        });
        add(kOthersTag, text::kOnlyInThisFile, [this](const Section& section) {
            const bool isOther =
                section.keys.isLike || m_store.DescribesSection(section.keys.section);
            return section.keys.hasOthers
                       ? CategoryNode{0, section.othersTag,
                                      isOther ? m_workplace.Text(text::kOtherKeysOf,
                                                                 {section.keys.section})
                                              : section.othersTag}
                       : CategoryNode();
        });
    }
    m_selection.SetMoreCategories(std::move(nodes));
}

}  // namespace tamarind
