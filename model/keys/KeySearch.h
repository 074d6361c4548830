#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "model/keys/KeyStore.h"

namespace tamarind {

// Where a search text was found: in a key's name or in its description as it is displayed, in
// UTF-16 units.
struct SearchHit {
    KeyNumber key = 0;
    std::size_t start = 0;
    std::size_t length = 0;
};

// What the search dialog is set to, and how far the search has come. Any change of the settings
// starts again at the first key.
class KeySearch {
public:
    const std::string& Text() const { return m_text; }
    void SetText(std::string text);
    // Whether key names are searched, else descriptions.
    bool SearchesNames() const { return m_searchesNames; }
    void SetSearchesNames(bool searchesNames);
    // Whether hits stand between blanks, line breaks, or the ends of the text.
    bool MatchesWholeWord() const { return m_matchesWholeWord; }
    void SetMatchesWholeWord(bool matchesWholeWord);

    // Without a text there is nothing to find.
    bool CanFind() const { return !m_text.empty(); }
    void Restart() { m_searchStartPosition = 0; }

    // One step: from where the last one ended to the last key, never around. The next step goes
    // on behind the hit, or starts again where there was none.
    std::optional<SearchHit> FindNext(const KeyStore& store);

private:
    std::string m_text;
    bool m_searchesNames = true;
    bool m_matchesWholeWord = false;
    // The number of the key at which the next step begins, counted from 1; 0 for the first, -1
    // after a step without a hit. Behind a hit in the last key it is one more than there are.
    std::int32_t m_searchStartPosition = 0;
};

}  // namespace tamarind
