#include "model/keys/FilterQuery.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "core/text/AsciiSearch.h"
#include "core/text/Folding.h"

namespace tamarind {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

constexpr std::array<std::string_view, 6> kStates = {"set",     "commented", "absent",
                                                     "changed", "modified",  "undescribed"};

constexpr std::pair<std::string_view, FilterField> kFields[] = {
    {"name:", FilterField::Name},       {"value:", FilterField::Value},
    {"section:", FilterField::Section}, {"category:", FilterField::Category},
    {"is:", FilterField::State},        {"type:", FilterField::Type},
};

bool IsBlank(char c) {
    return static_cast<unsigned char>(c) <= ' ';
}

// What stands between stars; the stars themselves if nothing does.
std::vector<std::string> PartsOf(std::string_view folded) {
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin <= folded.size();) {
        const std::size_t end = std::min(folded.find('*', begin), folded.size());
        if (end > begin) {
            parts.emplace_back(folded.substr(begin, end - begin));
        }
        begin = end + 1;
    }
    if (parts.empty()) {
        parts.emplace_back(folded);
    }
    return parts;
}

// Takes what is between the first quotation mark and the next one, or the end.
std::string_view TakeQuoted(std::string_view& text) {
    text.remove_prefix(1);
    const std::size_t end = std::min(text.find('"'), text.size());
    const std::string_view quoted = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return quoted;
}

std::string_view TakeWord(std::string_view& text) {
    const auto end = static_cast<std::size_t>(std::ranges::find_if(text, IsBlank) - text.begin());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(end);
    return word;
}

// Takes "name:" and so on if something follows it that makes sense there.
FilterField TakeField(std::string_view& text) {
    for (const auto& [prefix, field] : kFields) {
        if (text.size() <= prefix.size() || IsBlank(text[prefix.size()]) ||
            Folded(text.substr(0, prefix.size())) != prefix) {
            continue;
        }
        std::string_view rest = text.substr(prefix.size());
        std::string_view after = rest;
        const std::string word = Folded(TakeWord(after));
        const bool isKnown = field == FilterField::State
                                 ? std::ranges::find(kStates, word) != kStates.end()
                                 : field != FilterField::Type || KindOfWord(word).has_value();
        if (isKnown) {
            text = rest;
            return field;
        }
    }
    return FilterField::Any;
}

// Takes the term at the beginning, where there is no blank. It may be without parts: `""`.
FilterTerm TakeTerm(std::string_view& text) {
    FilterTerm term;
    if (text.size() > 1 && text[0] == '-' && !IsBlank(text[1])) {
        term.isExcluded = true;
        text.remove_prefix(1);
    }
    term.field = TakeField(text);
    if (term.field == FilterField::State) {
        const std::string word = Folded(TakeWord(text));
        term.state = static_cast<FilterState>(std::ranges::find(kStates, word) - kStates.begin());
    } else if (term.field == FilterField::Type) {
        term.type = *KindOfWord(Folded(TakeWord(text)));
    } else if (text.front() == '"') {
        if (std::string quoted = Folded(TakeQuoted(text)); !quoted.empty()) {
            term.parts = {std::move(quoted)};
        }
    } else if (const std::string word = Folded(TakeWord(text)); !word.empty()) {
        term.parts = PartsOf(word);
    }
    return term;
}

bool HasParts(FilterField field) {
    return field != FilterField::State && field != FilterField::Type;
}

}  // namespace

std::string_view WordOf(FilterState state) {
    return kStates[static_cast<std::size_t>(state)];
}

FilterQuery ParseFilter(std::string_view text) {
    FilterQuery query;
    while (true) {
        while (!text.empty() && IsBlank(text.front())) {
            text.remove_prefix(1);
        }
        if (text.empty()) {
            return query;
        }
        FilterTerm term = TakeTerm(text);
        const bool isEmpty = HasParts(term.field) && term.parts.empty();
        if (!isEmpty && std::ranges::find(query.terms, term) == query.terms.end()) {
            query.terms.push_back(std::move(term));
        }
    }
}

std::string FilterQuery::JoinedWords() const {
    std::string joined;
    for (const FilterTerm& term : terms) {
        if (term.field != FilterField::Any || term.isExcluded || term.parts.size() != 1) {
            return {};
        }
        joined += term.parts.front();
    }
    return terms.size() > 1 ? joined : std::string();
}

std::size_t FindTerm(std::string_view folded, const FilterTerm& term, std::size_t from,
                     std::size_t& length) {
    for (std::size_t at = FindAsciiIgnoreCase(folded, term.parts[0], from); at != kNone;
         at = FindAsciiIgnoreCase(folded, term.parts[0], at + 1)) {
        std::size_t end = at + term.parts[0].size();
        bool isHere = true;
        for (std::size_t part = 1; isHere && part < term.parts.size(); ++part) {
            const std::size_t next = FindAsciiIgnoreCase(folded, term.parts[part], end);
            if (next == kNone) {
                return kNone;
            }
            isHere = std::ranges::none_of(folded.substr(end, next - end), IsBlank);
            end = next + term.parts[part].size();
        }
        if (isHere) {
            length = end - at;
            return at;
        }
    }
    return kNone;
}

std::vector<TextPart> MarkedParts(std::string_view text, const FilterQuery& query,
                                  FilterField field) {
    std::vector<TextPart> parts;
    const FoldedText folded = FoldedWithUnits(text);
    for (const FilterTerm& term : query.terms) {
        const bool isHere = term.field == field || term.field == FilterField::Any;
        std::size_t length = 0;
        std::size_t at =
            isHere && !term.isExcluded ? FindTerm(folded.text, term, 0, length) : kNone;
        for (; at != kNone; at = FindTerm(folded.text, term, at + length, length)) {
            // A character may have become several bytes, of which the term has the first ones.
            const std::uint32_t last = folded.units[at + length - 1];
            const auto end = std::upper_bound(folded.units.begin(), folded.units.end(), last);
            const std::size_t start = folded.units[at];
            parts.push_back({start, (end == folded.units.end() ? last + 1 : *end) - start});
        }
    }
    std::ranges::sort(parts, {}, &TextPart::start);
    std::vector<TextPart> merged;
    for (const TextPart& part : parts) {
        if (!merged.empty() && part.start <= merged.back().start + merged.back().length) {
            merged.back().length =
                std::max(merged.back().length, part.start + part.length - merged.back().start);
        } else {
            merged.push_back(part);
        }
    }
    return merged;
}

}  // namespace tamarind
