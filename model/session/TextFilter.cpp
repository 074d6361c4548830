#include "model/session/TextFilter.h"

#include <algorithm>
#include <utility>

#include "core/files/Paths.h"
#include "core/ini/IniParser.h"
#include "core/text/Unicode.h"
#include "model/program/StringTable.h"

namespace tamarind {
namespace {

constexpr std::size_t kMostRecent = 10;
constexpr char kSeparator = '\t';  // between the texts in the own settings

constexpr std::pair<std::string_view, std::uint16_t> kWords[] = {
    {"font size", text::kBothWords},    {"\"font size\"", text::kWordsAsTheyStand},
    {"f*size", text::kAnythingBetween}, {"-font", text::kNotThisWord},
    {"name:", text::kInName},           {"value:", text::kInValue},
    {"section:", text::kInSection},     {"category:", text::kInCategory},
    {"is:set", text::kIsSet},           {"is:commented", text::kIsCommented},
    {"is:absent", text::kIsAbsent},     {"is:changed", text::kIsChanged},
    {"is:modified", text::kIsModified}, {"is:undescribed", text::kIsUndescribed},
    {"type:bool", text::kIsBool},       {"type:enum", text::kIsEnum},
    {"type:flags", text::kIsFlags},     {"type:int", text::kIsInt},
    {"type:color", text::kIsColor},     {"type:font", text::kIsFont},
    {"type:path", text::kIsPath},       {"type:list", text::kIsList},
    {"type:string", text::kIsString},
};

std::string HeadingAbove(const std::vector<CategoryNode>& categories, std::string_view tag) {
    std::string_view heading;
    for (const CategoryNode& node : categories) {
        if (node.tag == tag) {
            break;
        }
        heading = node.IsHeading() ? node.Text() : heading;
    }
    return std::string(heading);
}

}  // namespace

TextFilter::TextFilter(Workplace& workplace, const KeyStore& store, KeySelection& selection,
                       OpenDataFile& dataFile, const KeyValues& values,
                       UndescribedCategories& undescribed)
    : m_workplace(workplace),
      m_store(store),
      m_selection(selection),
      m_dataFile(dataFile),
      m_values(values),
      m_undescribed(undescribed) {}

void TextFilter::SetText(const std::string& text) {
    if (text == m_text) {
        return;
    }
    FilterQuery query = ParseFilter(text);
    if (query.IsEmpty()) {
        Clear();
        m_text = text;
    } else {
        m_text = text;
        m_query = std::move(query);
        m_selection.SetRanking(*this);
    }
    m_listeners.Tell(&TextFilterListener::OnFilterChanged);
}

void TextFilter::Clear() {
    if (IsOn()) {
        m_selection.EndRanking();
    } else if (!m_text.empty()) {
        OnRankingDropped();
    }
}

void TextFilter::ApplyAgain() {
    if (IsOn()) {
        m_selection.ShowAgain();
    }
}

void TextFilter::OnRankingDropped() {
    m_text.clear();
    m_query = {};
    m_other.reset();
    m_listeners.Tell(&TextFilterListener::OnFilterChanged);
}

std::vector<KeyNumber> TextFilter::RankedKeys() {
    if (m_workplace.IsVisible(WindowPart::UndescribedKeys)) {
        m_undescribed.LoadAll();
    }
    if (!m_index || m_indexedTexts != m_store.TextVersion()) {
        m_index.emplace(MakeIndex(m_store, m_selection.Categories(), m_dataFile.Target(),
                                  [this](KeyNumber key) { return m_values.TypeOf(key).kind; }));
        m_indexedTexts = m_store.TextVersion();
    }
    std::vector<KeyNumber> keys = m_index->Find(m_query);
    if (!m_workplace.IsVisible(WindowPart::UndescribedKeys)) {
        std::erase_if(keys, [this](KeyNumber key) { return !m_store.IsDescribed(key); });
    }
    return keys;
}

FilterIndex TextFilter::MakeIndex(const KeyStore& store,
                                  const std::vector<CategoryNode>& categories,
                                  SettingsTarget target,
                                  std::function<ValueKind(KeyNumber)> typeOf) const {
    const Keywords keywords = m_dataFile.KeywordsFor(target);
    FilterSources sources;
    sources.headingOf = [&](std::string_view tag) { return HeadingAbove(categories, tag); };
    sources.keywordsOf = [&](KeyNumber key) {
        const KeyNumber model = store.ModelOf(key);
        return keywords.Of(store.TargetSection(model), store.KeyName(model));
    };
    sources.typeOf = std::move(typeOf);
    return {store, sources};
}

std::vector<TextPart> TextFilter::MarksIn(std::string_view text, FilterField field) const {
    return IsOn() ? MarkedParts(text, m_query, field) : std::vector<TextPart>();
}

std::string TextFilter::EmptyText() const {
    if (!IsOn() || m_selection.Rows().Keys().Size() > 0) {
        return {};
    }
    if (std::string hidden = m_texts.HiddenHits(); !hidden.empty()) {
        return hidden;
    }
    const std::size_t elsewhere = m_selection.HitsOf(kRootNode).value_or(0);
    return elsewhere == 0
               ? m_workplace.Text(text::kNoKeyContains, {m_text})
               : m_workplace.Text(text::kHitsIn, {std::to_string(elsewhere), m_texts.Root()});
}

std::string TextFilter::OtherHits() {
    if (m_selection.HitsOf(kRootNode) != std::size_t{0}) {
        return {};
    }
    ReadOtherKeys();
    const std::size_t count = m_other->index ? m_other->index->Find(m_query).size() : 0;
    const bool isOther = m_dataFile.Target() == SettingsTarget::Wincmd;
    return count == 0 ? std::string()
                      : m_workplace.Text(text::kHitsIn,
                                         {std::to_string(count), isOther ? "Wcx_ftp" : "Wincmd"});
}

// Once for a filter: whoever finds nothing goes on typing.
void TextFilter::ReadOtherKeys() {
    const SettingsTarget target = OtherTarget(m_dataFile.Target());
    const std::string path = m_dataFile.PathFor(target);
    if (m_other && m_other->path == path) {
        return;
    }
    m_other = std::make_unique<OtherKeys>();
    m_other->path = path;
    const IniSnapshot file = m_workplace.Files().Read(path);
    if (file.error != FileError::None || GetDataFileTarget(*file.document) != target) {
        return;
    }
    KeyStore& store = m_other->store;
    LoadDataFile(
        file.document, {}, [] {}, store);
    m_other->types = m_dataFile.TypesFor(target);
    m_other->index.emplace(MakeIndex(
        store, ReadCategories(*file.document), target, [other = m_other.get()](KeyNumber key) {
            const KeyRecord record = other->store.Record(key);
            const auto type = other->types.TypeOf(record.targetSection, record.keyName);
            return type ? type->kind : TypeOfDescription(DescribedValues(record.description)).kind;
        }));
}

std::vector<std::string> TextFilter::RecentTexts() const {
    std::vector<std::string> texts;
    const std::string& stored = m_workplace.OwnSettings().Values().recentFilters;
    for (std::size_t begin = 0; begin < stored.size() && texts.size() < kMostRecent;) {
        const std::size_t end = std::min(stored.find(kSeparator, begin), stored.size());
        if (end > begin) {
            texts.push_back(stored.substr(begin, end - begin));
        }
        begin = end + 1;
    }
    return texts;
}

void TextFilter::RememberText() {
    std::string text(TrimIniSpaces(m_text));
    std::ranges::replace(text, kSeparator, ' ');
    if (!IsOn() || text.empty()) {
        return;
    }
    std::vector<std::string> texts = RecentTexts();
    std::erase_if(texts, [&](const std::string& one) { return EqualsIgnoreCase(one, text); });
    texts.insert(texts.begin(), text);
    texts.resize(std::min(texts.size(), kMostRecent));
    std::string stored;
    for (const std::string& one : texts) {
        stored.append(stored.empty() ? "" : std::string(1, kSeparator)).append(one);
    }
    // Read again, a value loses a pair of quotation marks around it. The last one of a text may be
    // missing: the quoted words end with the text then.
    if (stored.starts_with('"') && stored.ends_with('"')) {
        stored.pop_back();
    }
    m_workplace.OwnSettings().Values().recentFilters = stored;
}

std::vector<TextFilter::Word> TextFilter::Words() const {
    std::vector<Word> words;
    for (const auto& [word, meaning] : kWords) {
        words.push_back({std::string(word), m_workplace.Text(meaning)});
    }
    return words;
}

}  // namespace tamarind
