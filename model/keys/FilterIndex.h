#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/keys/FilterQuery.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// What an index takes from elsewhere than the store. Types are asked for at the first search for
// one, the rest while the index is made.
struct FilterSources {
    std::function<std::string(std::string_view category)> headingOf;
    std::function<std::string(KeyNumber key)> keywordsOf;
    std::function<ValueKind(KeyNumber key)> typeOf;
};

// The texts of all keys in the form in which filters compare them, so that each stroke of a key
// finds its hits at once. Names, keywords and descriptions are those of the moment when the index
// is made; values and states are looked up in the store at each search.
class FilterIndex {
public:
    // The store must outlive the index.
    FilterIndex(const KeyStore& store, const FilterSources& sources);

    // The keys that pass all terms. The best ones come first: those with the words in their name,
    // then in category, heading or keywords, then in the meanings of values, then in the rest of
    // the description or in the value; equally good ones in the order of the store.
    std::vector<KeyNumber> Find(const FilterQuery& query);

    // How much memory the texts take.
    std::size_t Bytes() const;

private:
    // Where the texts of a key begin; its name first.
    struct Texts {
        std::uint32_t name;
        std::uint32_t keywords;
        std::uint32_t choices;
        std::uint32_t description;
    };
    // Keys of one category that follow one another.
    struct Run {
        KeyNumber first;
        std::string category;  // and its heading
        std::string section;
    };

    struct Hit {
        KeyNumber key;
        unsigned rank;
    };
    struct Candidate;
    // Where a term is among the texts that the keys of a run share.
    struct RunFit {
        bool isInCategory = false;
        bool isInSection = false;
    };

    void AddKey(KeyNumber key, const FilterSources& sources);
    void AddLines(std::string_view description, bool areOfValues);
    // How well a key fits a term; nothing if it does not.
    std::optional<unsigned> FitOf(const FilterTerm& term, Candidate& candidate,
                                  const RunFit& ofRun) const;
    std::optional<unsigned> FitAnywhere(const FilterTerm& term, Candidate& candidate,
                                        bool isInCategory) const;
    bool IsInValue(const FilterTerm& term, Candidate& candidate) const;
    bool HasState(FilterState state, KeyNumber key) const;
    void LearnTypesFor(const FilterQuery& query);
    static std::vector<KeyNumber> InOrderOfRank(const std::vector<Hit>& hits);

    // The name without the line break behind it, and all texts of a key.
    std::string_view NameOf(KeyNumber key) const;
    std::string_view TextOf(KeyNumber key) const;

    const KeyStore& m_store;
    std::function<ValueKind(KeyNumber)> m_typeOf;
    std::string m_text;  // that of all keys; each part ends with a line break
    std::vector<Texts> m_texts;
    std::vector<Run> m_runs;
    std::vector<ValueKind> m_types;  // of all keys, from the first search for one on
};

}  // namespace tamarind
