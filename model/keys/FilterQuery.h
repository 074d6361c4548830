#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/keys/ValueType.h"

namespace tamarind {

// Where a word of a filter is looked for.
enum class FilterField : std::uint8_t { Any, Name, Value, Section, Category, State, Type };
// What "is:" asks of a key.
enum class FilterState : std::uint8_t { Set, Commented, Absent, Changed, Modified, Undescribed };

// A word of a filter, or several between quotation marks.
struct FilterTerm {
    FilterField field = FilterField::Any;
    bool isExcluded = false;
    // Folded. They follow each other with any characters but blanks between; not of State and Type.
    std::vector<std::string> parts;
    FilterState state = FilterState::Set;  // of State
    ValueKind type = ValueKind::String;    // of Type

    bool operator==(const FilterTerm&) const = default;
};

// What the user types to see some keys only:
//
//   font size        both words, in any order, letter case and with any accents
//   "font size"      the words as they stand
//   thumb*size       with anything but blanks in between
//   -log             not this one
//   name:x  value:x  section:x  category:x    in one place
//   is:set  is:commented  is:absent  is:changed  is:modified  is:undescribed
//   type:color       and the other words of the file of types
//
// What is unfinished or not known, such as "is:" or "type:x", is a word like any other.
struct FilterQuery {
    std::vector<FilterTerm> terms;  // a key must pass all of them

    bool IsEmpty() const { return terms.empty(); }
    // The words one after the other if they are plain ones, two or more; else empty.
    std::string JoinedWords() const;
};
FilterQuery ParseFilter(std::string_view text);

// Where a term is in a folded text; npos if nowhere. `length` gets the length of the place, in
// bytes.
std::size_t FindTerm(std::string_view folded, const FilterTerm& term, std::size_t from,
                     std::size_t& length);

// A part of a text, in UTF-16 units.
struct TextPart {
    std::size_t start = 0;
    std::size_t length = 0;

    bool operator==(const TextPart&) const = default;
};
// What of a text to mark as hits: the places of the words that are looked for in that field, or
// anywhere. In their order; none touches another.
std::vector<TextPart> MarkedParts(std::string_view text, const FilterQuery& query,
                                  FilterField field);

// The word behind "is:".
std::string_view WordOf(FilterState state);

}  // namespace tamarind
