#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tamarind {

enum class ValueKind : std::uint8_t { String, Bool, Enum, Flags, Int, Color, Font, Path, List };
enum class PathKind : std::uint8_t { File, Folder, Program, Command };

// Whole numbers from one to another, both included; on a side without a limit all.
struct NumberRange {
    std::optional<std::int64_t> least;
    std::optional<std::int64_t> most;

    bool Holds(std::int64_t number) const;
};

// What the value of a key may be. It forbids nothing: any text can be stored.
struct ValueType {
    ValueKind kind = ValueKind::String;
    // Enum: all values as the type has them; "3.." stands for 3 and above. Flags, Int and Color:
    // single values with a meaning of their own, such as "-1".
    std::vector<std::string> values;
    NumberRange range;  // Int
    // Flags: of each group at most one number is in the sum. They may share bits: of 1, 2 and 3 the
    // part of the sum with the bits 1 and 2 is one of them, or 0.
    std::vector<std::vector<std::uint64_t>> groups;
    std::string unit;                     // Int: "px", "percent", "days"...; may be empty
    PathKind path = PathKind::File;       // Path
    std::string pattern;                  // Path: "*.dll;*.icl"; may be empty
    std::vector<std::string> companions;  // Font: the keys for size, weight and character set
};

// A line "value = text" of a description.
struct DescribedValue {
    std::string_view value;
    std::string_view text;
};

// The word for a kind in the file of types, such as "color", and the kind of a word.
std::string_view WordOf(ValueKind kind);
std::optional<ValueKind> KindOfWord(std::string_view word);

// What a line of a description tells of a value; nothing if it tells no meaning.
std::optional<DescribedValue> DescribedValueIn(std::string_view line);
// The lines of a stored description ("@" for a line break) that tell what a value means.
std::vector<DescribedValue> DescribedValues(std::string_view description);

// The type that the words of an entry name, as in "int 8..256 px -1". Unknown words make it a
// String.
ValueType ParseValueType(std::string_view words);

// The type of a key without an entry: Bool if 0 and 1 are described and nothing else, Enum for two
// or more whole numbers, else String.
ValueType TypeOfDescription(const std::vector<DescribedValue>& lines);

// A value that a key may have, with its place in the type.
struct ValueChoice {
    std::string value;
    std::string_view text;  // what it means; empty if nothing tells
};

// What can be chosen: the values of a Bool or Enum, the bits of Flags, else single values.
std::vector<ValueChoice> ChoicesOf(const ValueType& type, const std::vector<DescribedValue>& lines);

// What a value means: its line, or that of the open value which it belongs to; of Flags all parts
// of the sum, with "; " between. Empty if nothing tells.
std::string MeaningOf(const ValueType& type, const std::vector<DescribedValue>& lines,
                      std::string_view value);

// What a value that is outside its type should have been.
struct Expectation {
    enum class Form { OneOf, Sum, OneInSum, Number, Color };
    Form form = Form::OneOf;
    std::vector<std::string> values;  // OneOf, Sum, OneInSum: which
    NumberRange range;                // Number
    std::vector<std::string> orElse;  // single values that are fine, too
};

// Nothing for a value of the type and for an empty one, which stands for "not set". Bits that have
// a line, though the type does not list them, are reserved and fine.
std::optional<Expectation> WhatIsExpected(const ValueType& type,
                                          const std::vector<DescribedValue>& lines,
                                          std::string_view value);

// Sums. `choice` is a value of ChoicesOf; what is no sum counts as 0, and bits that the type does
// not list are kept.
bool HasBits(const ValueType& type, std::string_view value, std::string_view choice);
std::string WithBitsToggled(const ValueType& type, std::string_view value, std::string_view choice);
// The part of the sum that is not listed.
std::uint64_t OtherBits(const ValueType& type, std::string_view value);

// The next number up or down by `steps`, kept within the range. What is no number counts as the
// limit of the range that is nearest to 0.
std::string Stepped(const ValueType& type, std::string_view value, int steps);

}  // namespace tamarind
