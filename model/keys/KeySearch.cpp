// Decoding and lower-casing every text of a large data file would take long, so most of it is
// skipped. The longest part of the pattern that consists of ASCII characters is looked for in the
// bytes of the whole file at once (AsciiSearch), and only the keys whose lines contain it are
// compared properly. Descriptions that were changed are not in those bytes and are compared one by
// one. If the bytes cannot be used, for example in a UTF-16 file, every key is compared.

#include "model/keys/KeySearch.h"

#include <algorithm>
#include <utility>

#include "core/text/AsciiSearch.h"
#include "core/text/Unicode.h"

namespace tamarind {
namespace {

// The search text in the forms that the steps need.
struct Pattern {
    std::u16string units;   // lower case; between blanks for whole words
    std::string asciiPart;  // is in every text that holds the pattern; may be empty
    bool isBlank = false;   // no character is known that such a text must hold
    bool isWholeWord = false;
    bool isOfNames = false;
};

// Unit by unit, so that positions stay the same: a mapping of whole texts may change their length.
void LowerUnits(std::u16string& units) {
    for (char16_t& unit : units) {
        const bool isSurrogate = unit >= 0xD800 && unit <= 0xDFFF;
        unit = isSurrogate ? unit : static_cast<char16_t>(SimpleLowerCase(unit));
    }
}

// The longest run of characters that must occur in the bytes of a text that holds the pattern. A
// blank may match a line break, and a "k" the Kelvin sign, so runs end there.
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

// A text in the form that patterns are compared with. Each "@" becomes two blanks, as long as the
// line break that it stands for, so that positions are those of the displayed text.
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

// A hit in the name or the description of this key.
std::optional<SearchHit> FindInKey(const KeyStore& store, KeyNumber key, const Pattern& pattern) {
    const std::string_view text =
        pattern.isOfNames ? store.KeyName(key) : store.Record(key).description;
    const std::size_t place = Candidate(text, pattern.isWholeWord).find(pattern.units);
    if (place == std::u16string::npos) {
        return std::nullopt;
    }
    // The blank before the word may be one of the two that were put in front of the text.
    const std::size_t start = pattern.isWholeWord ? (place > 0 ? place - 1 : 0) : place;
    return SearchHit{key, start, pattern.units.size() - (pattern.isWholeWord ? 2 : 0)};
}

// Compares every key from `from` on.
std::optional<SearchHit> FindInEach(const KeyStore& store, KeyNumber from, const Pattern& pattern) {
    for (KeyNumber key = from; key <= store.DescribedCount(); ++key) {
        if (const auto hit = FindInKey(store, key, pattern)) {
            return hit;
        }
    }
    return std::nullopt;
}

// The next byte offset at which a text may hold the pattern: its ASCII part or, if it has none, any
// character beyond ASCII.
std::size_t NextPlace(std::string_view bytes, const Pattern& pattern, std::size_t from) {
    return pattern.asciiPart.empty() ? FindNonAscii(bytes, from)
                                     : FindAsciiIgnoreCase(bytes, pattern.asciiPart, from);
}

// Whether the bytes of the data file tell which keys may hold the pattern.
bool CanScanFile(const KeyStore& store, const Pattern& pattern) {
    const bool mayBeElsewhere = !pattern.isOfNames && NextPlace(store.NoDescription(), pattern,
                                                                0) != std::string_view::npos;
    return !pattern.isBlank && !mayBeElsewhere && store.IsInFileOrder() &&
           !store.DataFile().SearchableBytes().empty();
}

// One pass over the bytes of the file. Only keys whose line holds the ASCII part are compared.
std::optional<SearchHit> FindInFile(const KeyStore& store, KeyNumber from, const Pattern& pattern) {
    const IniDocument& file = store.DataFile();
    const std::string_view bytes = file.SearchableBytes();
    KeyNumber key = from;
    std::size_t at = file.OffsetOf(store.LineOf(key));
    while ((at = NextPlace(bytes, pattern, at)) != std::string_view::npos) {
        const IniDocument::LineId line = file.LineAt(at);
        key = store.KeyAtLine(line);
        if (key > store.DescribedCount()) {
            break;
        }
        if (store.LineOf(key) == line) {
            if (const auto hit = FindInKey(store, key, pattern)) {
                return hit;
            }
            ++key;
        }
        if (key > store.DescribedCount()) {
            break;
        }
        at = file.OffsetOf(store.LineOf(key));
    }
    return std::nullopt;
}

// Compares the descriptions that are not in the bytes of the file.
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

// Windows reports a click also when an option only gets the focus. That changes nothing.
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
    const auto count = static_cast<std::int32_t>(store.DescribedCount());
    const bool isWithin = m_searchStartPosition >= 1 && m_searchStartPosition <= count;
    const KeyNumber from = isWithin ? static_cast<KeyNumber>(m_searchStartPosition) : 1;
    const auto hit = count > 0 ? FindFrom(store, from, MakePattern(*this)) : std::nullopt;
    m_searchStartPosition = hit ? static_cast<std::int32_t>(hit->key) + 1 : -1;
    return hit;
}

}  // namespace tamarind
