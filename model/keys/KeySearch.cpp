#include "model/keys/KeySearch.h"

#include <algorithm>
#include <utility>

#include "core/text/AsciiSearch.h"
#include "core/text/Unicode.h"

namespace tamarind {
namespace {

// What is looked for, in the forms that the steps need.
struct Pattern {
    std::u16string units;   // lower case; between blanks for whole words
    std::string asciiPart;  // stands in every text that holds the pattern; may be empty
    bool isBlank = false;   // there is no character that such a text must hold
    bool isWholeWord = false;
    bool isOfNames = false;
};

// Unit by unit, so that positions stay the same.
void LowerUnits(std::u16string& units) {
    for (char16_t& unit : units) {
        const bool isSurrogate = unit >= 0xD800 && unit <= 0xDFFF;
        unit = isSurrogate ? unit : static_cast<char16_t>(SimpleLowerCase(unit));
    }
}

// The longest run of characters that have no other form in a text. Blanks stand for line breaks,
// too, and the Kelvin sign is a "k" in lower case.
std::string LongestAsciiPart(std::u16string_view units) {
    std::string longest;
    std::string run;
    for (const char16_t unit : units) {
        if (unit > ' ' && unit < 0x7F && unit != 'k') {
            run += static_cast<char>(unit);
        } else {
            run.clear();
        }
        if (run.size() > longest.size()) {
            longest = run;
        }
    }
    return longest;
}

Pattern MakePattern(const KeySearch& search) {
    Pattern pattern;
    pattern.isOfNames = search.SearchesNames();
    pattern.isWholeWord = search.MatchesWholeWord();
    pattern.units = Utf16FromUtf8(search.Text());
    LowerUnits(pattern.units);
    pattern.asciiPart = LongestAsciiPart(pattern.units);
    const bool isBeyondAscii =
        std::ranges::any_of(pattern.units, [](char16_t unit) { return unit >= 0x80; });
    pattern.isBlank = pattern.asciiPart.empty() && !isBeyondAscii;
    if (pattern.isWholeWord) {
        pattern.units = u' ' + pattern.units + u' ';
    }
    return pattern;
}

// Each "@" is as long as the line break that it stands for.
std::u16string Candidate(std::string_view text, bool isWholeWord) {
    std::u16string units = Utf16FromUtf8(text);
    LowerUnits(units);
    std::u16string candidate(isWholeWord ? 2 : 0, u' ');
    candidate.reserve(units.size() + 16);
    for (const char16_t unit : units) {
        candidate.append(unit == u'@' ? 2 : 1, unit == u'@' ? u' ' : unit);
    }
    candidate.append(isWholeWord ? 2 : 0, u' ');
    return candidate;
}

std::optional<SearchHit> FindInKey(const KeyStore& store, KeyNumber key, const Pattern& pattern) {
    const std::string_view text =
        pattern.isOfNames ? store.KeyName(key) : store.Record(key).description;
    const std::size_t place = Candidate(text, pattern.isWholeWord).find(pattern.units);
    if (place == std::u16string::npos) {
        return std::nullopt;
    }
    // A word's leading blank may be one of the two in front of the text.
    const std::size_t start = pattern.isWholeWord ? (place > 0 ? place - 1 : 0) : place;
    return SearchHit{key, start, pattern.units.size() - (pattern.isWholeWord ? 2 : 0)};
}

std::optional<SearchHit> FindInEach(const KeyStore& store, KeyNumber from, const Pattern& pattern) {
    for (KeyNumber key = from; key <= store.Size(); ++key) {
        if (const auto hit = FindInKey(store, key, pattern)) {
            return hit;
        }
    }
    return std::nullopt;
}

// The next place where a text may hold the pattern: its part, or for a pattern without one any
// character beyond ASCII.
std::size_t NextPlace(std::string_view bytes, const Pattern& pattern, std::size_t from) {
    return pattern.asciiPart.empty() ? FindNonAscii(bytes, from)
                                     : FindAsciiIgnoreCase(bytes, pattern.asciiPart, from);
}

// Whether the data file's bytes show which keys may hold the pattern.
bool CanScanFile(const KeyStore& store, const Pattern& pattern) {
    const bool mayBeElsewhere = !pattern.isOfNames && NextPlace(store.NoDescription(), pattern,
                                                                0) != std::string_view::npos;
    return !pattern.isBlank && !mayBeElsewhere && store.IsInFileOrder() &&
           !store.DataFile().SearchableBytes().empty();
}

// One pass over the file's bytes; only keys whose line holds the pattern's part are looked at.
std::optional<SearchHit> FindInFile(const KeyStore& store, KeyNumber from, const Pattern& pattern) {
    const IniDocument& file = store.DataFile();
    const std::string_view bytes = file.SearchableBytes();
    KeyNumber key = from;
    std::size_t at = file.OffsetOf(store.LineOf(key));
    while ((at = NextPlace(bytes, pattern, at)) != std::string_view::npos) {
        const IniDocument::LineId line = file.LineAt(at);
        key = store.KeyAtLine(line);
        if (key > store.Size()) {
            break;
        }
        if (store.LineOf(key) == line) {
            if (const auto hit = FindInKey(store, key, pattern)) {
                return hit;
            }
            ++key;
        }
        if (key > store.Size()) {
            break;
        }
        at = file.OffsetOf(store.LineOf(key));
    }
    return std::nullopt;
}

std::optional<SearchHit> FindInOwnDescriptions(const KeyStore& store, KeyNumber from,
                                               const Pattern& pattern) {
    const auto& own = store.OwnDescriptions();
    for (auto entry = own.lower_bound(from); entry != own.end(); ++entry) {
        if (const auto hit = FindInKey(store, entry->first, pattern)) {
            return hit;
        }
    }
    return std::nullopt;
}

std::optional<SearchHit> FindFrom(const KeyStore& store, KeyNumber from, const Pattern& pattern) {
    if (!CanScanFile(store, pattern)) {
        return FindInEach(store, from, pattern);
    }
    const auto hit = FindInFile(store, from, pattern);
    const auto ownHit =
        pattern.isOfNames ? std::nullopt : FindInOwnDescriptions(store, from, pattern);
    const bool isOwnFirst = ownHit && (!hit || ownHit->key < hit->key);
    return isOwnFirst ? ownHit : hit;
}

}  // namespace

void KeySearch::SetText(std::string text) {
    m_text = std::move(text);
    Restart();
}

// Windows reports a click also where an option only gets the focus: that changes nothing.
void KeySearch::SetSearchesNames(bool searchesNames) {
    if (std::exchange(m_searchesNames, searchesNames) != searchesNames) {
        Restart();
    }
}

void KeySearch::SetMatchesWholeWord(bool matchesWholeWord) {
    if (std::exchange(m_matchesWholeWord, matchesWholeWord) != matchesWholeWord) {
        Restart();
    }
}

std::optional<SearchHit> KeySearch::FindNext(const KeyStore& store) {
    const auto count = static_cast<std::int32_t>(store.Size());
    const bool isWithin = m_searchStartPosition >= 1 && m_searchStartPosition <= count;
    const KeyNumber from = isWithin ? static_cast<KeyNumber>(m_searchStartPosition) : 1;
    const auto hit = count > 0 ? FindFrom(store, from, MakePattern(*this)) : std::nullopt;
    m_searchStartPosition = hit ? static_cast<std::int32_t>(hit->key) + 1 : -1;
    return hit;
}

}  // namespace tamarind
