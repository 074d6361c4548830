#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "model/keys/KeyStore.h"

namespace tamarind {

// Where a search text was found, in UTF-16 units: in the name of a key, or in its description as it
// is displayed, where a line break takes two.
struct SearchHit {
    KeyNumber key = 0;
    std::size_t start = 0;
    std::size_t length = 0;
};

// The settings of the search dialog, and how far the search has come. Any change of the settings
// starts again at the first key.
class KeySearch {
public:
    const std::string& Text() const { return m_text; }
    void SetText(std::string text);
    // Whether the names of the keys are searched, or their descriptions.
    bool SearchesNames() const { return m_searchesNames; }
    void SetSearchesNames(bool searchesNames);
    // Whether a hit must have blanks, line breaks or the ends of the text on both sides.
    bool MatchesWholeWord() const { return m_matchesWholeWord; }
    void SetMatchesWholeWord(bool matchesWholeWord);

    // Without a text there is nothing to find.
    bool CanFind() const { return !m_text.empty(); }
    void Restart() { m_searchStartPosition = 0; }

    // Finds the next key with a hit, from where the last step ended to the last key, never beyond
    // it. The next step goes on with the key after the hit, or with the first key if there was
    // none.
    std::optional<SearchHit> FindNext(const KeyStore& store);

private:
    std::string m_text;
    bool m_searchesNames = true;
    bool m_matchesWholeWord = false;
    // The number of the key at which the next step begins, counted from 1; 0 for the first key, -1
    // after a step without a hit. After a hit in the last key it is greater than the number of
    // keys.
    std::int32_t m_searchStartPosition = 0;
};

}  // namespace tamarind
