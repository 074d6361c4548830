#include "model/keys/FilterIndex.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "core/text/AsciiSearch.h"
#include "core/text/Folding.h"

namespace tamarind {
namespace {

// How well a word fits a key: the lower the better.
enum Fit : unsigned {
    kIsName,
    kBeginsName,
    kInName,
    kInCategory,    // or a heading or keyword
    kInMeaning,     // of a value
    kInDescription  // or in the value that is shown
};

// Ranks of keys whose names begin with all the words in one; others have one more than the sum of
// their fits.
constexpr unsigned kIsJoinedName = 0;
constexpr unsigned kBeginsAsJoined = 1;

bool Has(std::string_view folded, const FilterTerm& term) {
    std::size_t length = 0;
    return FindTerm(folded, term, 0, length) != std::string_view::npos;
}

// In which order to try the terms: states and types are quickly asked, and longer words are rarer.
std::vector<std::size_t> FewestHitsFirst(const std::vector<FilterTerm>& terms) {
    const auto length = [&](std::size_t term) {
        return terms[term].parts.empty() ? std::string::npos : terms[term].parts.front().size();
    };
    std::vector<std::size_t> order(terms.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, std::ranges::greater(), length);
    return order;
}

}  // namespace

FilterIndex::FilterIndex(const KeyStore& store, const FilterSources& sources)
    : m_store(store), m_typeOf(sources.typeOf) {
    m_texts.reserve(store.Size());
    for (KeyNumber key = 1; key <= store.Size(); ++key) {
        AddKey(key, sources);
    }
    m_text.shrink_to_fit();
}

void FilterIndex::AddKey(KeyNumber key, const FilterSources& sources) {
    const std::string_view category = m_store.Category(key);
    if (key == 1 || category != m_store.Category(key - 1)) {
        Run run{key, Folded(category), Folded(m_store.TargetSection(key))};
        run.category += '\n';
        AppendFolded(run.category, sources.headingOf(category));
        m_runs.push_back(std::move(run));
    }
    const auto end = [this] { return static_cast<std::uint32_t>(m_text.size()); };
    Texts texts{};
    texts.name = end();
    AppendFolded(m_text, m_store.KeyName(key));
    m_text += '\n';
    texts.keywords = end();
    AppendFolded(m_text, sources.keywordsOf(key));
    m_text += '\n';
    const std::string_view description =
        m_store.HasDescription(key) ? m_store.Record(key).description : std::string_view();
    texts.choices = end();
    AddLines(description, true);
    texts.description = end();
    AddLines(description, false);
    m_texts.push_back(texts);
}

// Those that tell what values mean, or all others.
void FilterIndex::AddLines(std::string_view description, bool areOfValues) {
    while (!description.empty()) {
        const std::string_view line = description.substr(0, description.find('@'));
        description.remove_prefix(std::min(description.size(), line.size() + 1));
        if (DescribedValueIn(line).has_value() == areOfValues) {
            AppendFolded(m_text, line);
            m_text += '\n';
        }
    }
}

std::string_view FilterIndex::NameOf(KeyNumber key) const {
    const Texts& texts = m_texts[key - 1];
    return std::string_view(m_text).substr(texts.name, texts.keywords - texts.name - 1);
}

std::string_view FilterIndex::TextOf(KeyNumber key) const {
    const std::size_t end = key < m_texts.size() ? m_texts[key].name : m_text.size();
    const std::size_t begin = m_texts[key - 1].name;
    return std::string_view(m_text).substr(begin, end - begin);
}

// A key with the value that is shown of it, which is looked up for the first term that needs it.
struct FilterIndex::Candidate {
    KeyNumber key;
    std::optional<std::string_view> value = std::nullopt;
    std::string folded = {};  // the value, if it has to be
};

std::vector<KeyNumber> FilterIndex::Find(const FilterQuery& query) {
    const std::vector<FilterTerm>& terms = query.terms;
    const std::vector<std::size_t> order = FewestHitsFirst(terms);
    LearnTypesFor(query);
    const std::string joined = query.JoinedWords();
    std::vector<Hit> hits;
    std::vector<RunFit> ofRun(terms.size());
    std::size_t nextRun = 0;
    for (KeyNumber key = 1; key <= m_texts.size(); ++key) {
        if (nextRun < m_runs.size() && m_runs[nextRun].first == key) {
            const Run& run = m_runs[nextRun++];
            std::ranges::transform(terms, ofRun.begin(), [&](const FilterTerm& term) {
                return term.parts.empty() ? RunFit{}
                                          : RunFit{Has(run.category, term), Has(run.section, term)};
            });
        }
        Candidate candidate{key};
        unsigned rank = kBeginsAsJoined + 1;
        bool passes = true;
        for (auto at = order.begin(); passes && at != order.end(); ++at) {
            const auto fit = FitOf(terms[*at], candidate, ofRun[*at]);
            passes = fit.has_value() != terms[*at].isExcluded;
            rank += fit.value_or(0);
        }
        if (passes && !joined.empty() && NameOf(key).starts_with(joined)) {
            rank = NameOf(key).size() == joined.size() ? kIsJoinedName : kBeginsAsJoined;
        }
        if (passes) {
            hits.push_back({key, rank});
        }
    }
    return InOrderOfRank(hits);
}

std::optional<unsigned> FilterIndex::FitOf(const FilterTerm& term, Candidate& candidate,
                                           const RunFit& ofRun) const {
    const auto fitIf = [](bool isIt, Fit fit) {
        return isIt ? std::optional<unsigned>(fit) : std::nullopt;
    };
    switch (term.field) {
        case FilterField::Any:
            return FitAnywhere(term, candidate, ofRun.isInCategory);
        case FilterField::Name: {
            const auto fit = FitAnywhere(term, candidate, false);
            return fit && *fit <= kInName ? fit : std::nullopt;
        }
        case FilterField::Value:
            return fitIf(IsInValue(term, candidate), kInDescription);
        case FilterField::Section:
            return fitIf(ofRun.isInSection, kInCategory);
        case FilterField::Category:
            return fitIf(ofRun.isInCategory, kInCategory);
        case FilterField::State:
            return fitIf(HasState(term.state, candidate.key), kIsName);
        case FilterField::Type:
            return fitIf(m_types[candidate.key - 1] == term.type, kIsName);
    }
    return std::nullopt;
}

// The texts of a key are in the order of their fits, so that the first place is the best one.
std::optional<unsigned> FilterIndex::FitAnywhere(const FilterTerm& term, Candidate& candidate,
                                                 bool isInCategory) const {
    const Texts& texts = m_texts[candidate.key - 1];
    std::size_t length = 0;
    const std::size_t place = FindTerm(TextOf(candidate.key), term, 0, length);
    const std::size_t at = place == std::string_view::npos ? place : place + texts.name;
    if (at < texts.keywords) {
        const bool isWhole = length == NameOf(candidate.key).size();
        return place > 0 ? kInName : isWhole ? kIsName : kBeginsName;
    }
    if (isInCategory || at < texts.choices) {
        return kInCategory;
    }
    if (at < texts.description) {
        return kInMeaning;
    }
    const bool isIn = place != std::string_view::npos || IsInValue(term, candidate);
    return isIn ? std::optional<unsigned>(kInDescription) : std::nullopt;
}

bool FilterIndex::IsInValue(const FilterTerm& term, Candidate& candidate) const {
    if (!candidate.value) {
        const bool isShown = !LooksOf(m_store.CurrentState(candidate.key), {}).isGhosted;
        const auto value = isShown ? m_store.CurrentValue(candidate.key) : std::nullopt;
        candidate.value = value.value_or(std::string_view());
        if (FindNonAscii(*candidate.value) != std::string_view::npos) {
            candidate.folded = Folded(*candidate.value);
            candidate.value = candidate.folded;
        }
    }
    return !candidate.value->empty() && Has(*candidate.value, term);
}

bool FilterIndex::HasState(FilterState state, KeyNumber key) const {
    const KeyLooks looks = LooksOf(m_store.CurrentState(key), {});
    switch (state) {
        case FilterState::Set:
            return looks.isChecked;
        case FilterState::Commented:
            return !looks.isChecked && !looks.isGhosted;
        case FilterState::Absent:
            return looks.isGhosted;
        case FilterState::Changed:
            return m_store.IsPending(key);
        case FilterState::Modified:
            return looks.isChecked && DiffersFromKnownDefault(m_store.Record(key));
        case FilterState::Undescribed:
            return !m_store.HasDescription(key);
    }
    return false;
}

// At the first search for a type.
void FilterIndex::LearnTypesFor(const FilterQuery& query) {
    const bool asksForType =
        std::ranges::find(query.terms, FilterField::Type, &FilterTerm::field) != query.terms.end();
    if (asksForType && m_types.empty()) {
        for (KeyNumber key = 1; key <= m_texts.size(); ++key) {
            m_types.push_back(m_typeOf(key));
        }
    }
}

// The best ones first; equally good ones stay in their order.
std::vector<KeyNumber> FilterIndex::InOrderOfRank(const std::vector<Hit>& hits) {
    std::vector<std::size_t> places;
    for (const Hit& hit : hits) {
        places.resize(std::max<std::size_t>(places.size(), hit.rank + 2));
        ++places[hit.rank + 1];
    }
    for (std::size_t rank = 1; rank < places.size(); ++rank) {
        places[rank] += places[rank - 1];
    }
    std::vector<KeyNumber> keys(hits.size());
    for (const Hit& hit : hits) {
        keys[places[hit.rank]++] = hit.key;
    }
    return keys;
}

std::size_t FilterIndex::Bytes() const {
    std::size_t bytes = m_text.capacity() + m_texts.capacity() * sizeof(Texts) + m_types.capacity();
    for (const Run& run : m_runs) {
        bytes += sizeof run + run.category.capacity() + run.section.capacity();
    }
    return bytes;
}

}  // namespace tamarind
