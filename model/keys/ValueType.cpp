#include "model/keys/ValueType.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <limits>

#include "core/text/LeadingNumber.h"
#include "core/text/Unicode.h"
#include "model/keys/ColorKeys.h"

namespace tamarind {
namespace {

using Words = std::vector<std::string_view>;

constexpr std::string_view kHistory = "history";
constexpr std::string_view kRangeMark = "..";

// In the order of ValueKind and PathKind.
constexpr std::array<std::string_view, 9> kKinds = {"string", "bool", "enum", "flags", "int",
                                                    "color",  "font", "path", "list"};
constexpr std::array<std::string_view, 4> kPathKinds = {"file", "folder", "program", "command"};
constexpr std::array<std::string_view, 11> kUnits = {
    "px", "percent", "bytes", "KB", "MB", "ms", "s", "min", "days", "lines", "chars"};
constexpr std::array<std::string_view, 4> kSeparators = {"blank", "comma", "bar", "semicolon"};

Words Split(std::string_view text, char separator) {
    Words parts;
    while (true) {
        const std::size_t end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return parts;
        }
        text.remove_prefix(end + 1);
    }
}

template <std::size_t Count>
std::optional<std::size_t> PlaceIn(const std::array<std::string_view, Count>& names,
                                   std::string_view name) {
    const auto* const found = std::ranges::find(names, name);
    return found == names.end() ? std::nullopt
                                : std::optional(static_cast<std::size_t>(found - names.begin()));
}

// "8..256", "0.." or "..100"; nothing for a word that is no range.
std::optional<NumberRange> RangeOf(std::string_view word) {
    const std::size_t mark = word.find(kRangeMark);
    if (mark == std::string_view::npos || word.size() == kRangeMark.size()) {
        return std::nullopt;
    }
    const std::string_view least = word.substr(0, mark);
    const std::string_view most = word.substr(mark + kRangeMark.size());
    const NumberRange range = {WholeNumber(least), WholeNumber(most)};
    const bool isRange = range.least.has_value() != least.empty() &&
                         range.most.has_value() != most.empty() &&
                         (!range.least || !range.most || *range.least < *range.most);
    return isRange ? std::optional(range) : std::nullopt;
}

std::uint64_t MaskOf(const std::vector<std::uint64_t>& group) {
    std::uint64_t mask = 0;
    for (const std::uint64_t number : group) {
        mask |= number;
    }
    return mask;
}

std::uint64_t ListedBits(const ValueType& type) {
    std::uint64_t bits = 0;
    for (const auto& group : type.groups) {
        bits |= MaskOf(group);
    }
    return bits;
}

// 0 for a text that is no sum.
std::uint64_t SumOf(std::string_view value) {
    return static_cast<std::uint64_t>(std::max<std::int64_t>(0, WholeNumber(value).value_or(0)));
}

// Whether a value is the one that a word of an enum names, or one of those that it stands for.
bool IsMeantBy(std::string_view word, std::string_view value) {
    const auto range = RangeOf(word);
    const auto number = WholeNumber(value);
    return word == value || (range && number && range->Holds(*number));
}

bool IsSingle(const ValueType& type, std::string_view value) {
    return std::ranges::find(type.values, value) != type.values.end();
}

// The functions below read the arguments of one kind each. False: an unknown word.
bool ReadSingles(ValueType& type, const Words& words) {
    type.values.assign(words.begin(), words.end());
    return std::ranges::all_of(words, [](auto word) { return WholeNumber(word).has_value(); });
}

bool ReadEnum(ValueType& type, const Words& words) {
    type.values.assign(words.begin(), words.end());
    return !words.empty() && std::ranges::all_of(words, [](std::string_view word) {
        return word.find(kRangeMark) == std::string_view::npos || RangeOf(word).has_value();
    });
}

bool ReadFlags(ValueType& type, const Words& words) {
    std::uint64_t bits = 0;
    for (const std::string_view word : words) {
        if (WholeNumber(word).value_or(0) < 0) {
            type.values.emplace_back(word);
            continue;
        }
        std::vector<std::uint64_t> group;
        for (const std::string_view part : Split(word, '|')) {
            group.push_back(SumOf(part));
        }
        const std::uint64_t mask = MaskOf(group);
        if (std::ranges::find(group, 0U) != group.end() || (bits & mask) != 0) {
            return false;
        }
        bits |= mask;
        type.groups.push_back(std::move(group));
    }
    return !type.groups.empty();
}

bool ReadInt(ValueType& type, const Words& words) {
    auto word = words.begin();
    if (word != words.end() && word->find(kRangeMark) != std::string_view::npos) {
        const auto range = RangeOf(*word++);
        if (!range) {
            return false;
        }
        type.range = *range;
    }
    if (word != words.end() && PlaceIn(kUnits, *word)) {
        type.unit = *word++;
    }
    return ReadSingles(type, {word, words.end()});
}

bool ReadPath(ValueType& type, const Words& words) {
    const auto place = words.empty() ? std::nullopt : PlaceIn(kPathKinds, words[0]);
    if (!place) {
        return false;
    }
    type.path = static_cast<PathKind>(*place);
    const bool takesPattern = type.path == PathKind::File || type.path == PathKind::Program;
    if (words.size() == 2 && takesPattern && words[1].starts_with("*.")) {
        type.pattern = words[1];
    }
    return words.size() == (type.pattern.empty() ? 1U : 2U);
}

bool ReadArguments(ValueType& type, const Words& words) {
    constexpr std::size_t kMostCompanions = 3;
    switch (type.kind) {
        case ValueKind::String:
        case ValueKind::Bool:
            return words.empty();
        case ValueKind::Enum:
            return ReadEnum(type, words);
        case ValueKind::Flags:
            return ReadFlags(type, words);
        case ValueKind::Int:
            return ReadInt(type, words);
        case ValueKind::Color:
            return ReadSingles(type, words);
        case ValueKind::Font:
            type.companions.assign(words.begin(), words.end());
            return !words.empty() && words.size() <= kMostCompanions;
        case ValueKind::Path:
            return ReadPath(type, words);
        case ValueKind::List:
            return words.size() == 1 && PlaceIn(kSeparators, words[0]);
    }
    return false;
}

std::string_view TextOf(const std::vector<DescribedValue>& lines, std::string_view value) {
    const auto line = std::ranges::find(lines, value, &DescribedValue::value);
    return line == lines.end() ? std::string_view() : line->text;
}

std::vector<std::string> TextsOf(const std::vector<std::uint64_t>& numbers) {
    std::vector<std::string> texts;
    std::ranges::transform(numbers, std::back_inserter(texts),
                           [](std::uint64_t number) { return std::to_string(number); });
    return texts;
}

bool HasGroupBits(const std::vector<std::uint64_t>& group, std::uint64_t sum, std::uint64_t bits) {
    return (sum & MaskOf(group)) == bits;
}

const std::vector<std::uint64_t>* GroupWith(const ValueType& type, std::uint64_t bits) {
    const auto group = std::ranges::find_if(type.groups, [bits](const auto& numbers) {
        return std::ranges::find(numbers, bits) != numbers.end();
    });
    return group == type.groups.end() ? nullptr : &*group;
}

std::optional<Expectation> ExpectedOfSum(const ValueType& type,
                                         const std::vector<DescribedValue>& lines,
                                         std::string_view value) {
    using Form = Expectation::Form;
    const auto number = WholeNumber(value);
    std::uint64_t known = ListedBits(type);
    for (const DescribedValue& line : lines) {
        known |= SumOf(line.value);
    }
    const std::uint64_t sum = SumOf(value);
    if (!number || *number < 0 || (sum & ~known) != 0) {
        Expectation expected = {Form::Sum, {}, {}, type.values};
        for (const auto& group : type.groups) {
            std::ranges::move(TextsOf(group), std::back_inserter(expected.values));
        }
        return expected;
    }
    for (const auto& group : type.groups) {
        const std::uint64_t part = sum & MaskOf(group);
        if (part != 0 && std::ranges::find(group, part) == group.end()) {
            return Expectation{Form::OneInSum, TextsOf(group), {}, {}};
        }
    }
    return std::nullopt;
}

}  // namespace

bool NumberRange::Holds(std::int64_t number) const {
    return (!least || number >= *least) && (!most || number <= *most);
}

std::string_view WordOf(ValueKind kind) {
    return kKinds[static_cast<std::size_t>(kind)];
}

std::optional<ValueKind> KindOfWord(std::string_view word) {
    const auto place = PlaceIn(kKinds, word);
    return place ? std::optional(static_cast<ValueKind>(*place)) : std::nullopt;
}

std::optional<DescribedValue> DescribedValueIn(std::string_view line) {
    constexpr std::string_view kEquals = " = ";
    const std::size_t equals = line.find(kEquals);
    const std::string_view value = line.substr(0, equals);
    const bool isOne = equals != std::string_view::npos && !value.empty() &&
                       value.find(' ') == std::string_view::npos;
    return isOne ? std::optional(DescribedValue{value, line.substr(equals + kEquals.size())})
                 : std::nullopt;
}

std::vector<DescribedValue> DescribedValues(std::string_view description) {
    std::vector<DescribedValue> lines;
    for (const std::string_view line : Split(description, '@')) {
        if (const auto described = DescribedValueIn(line)) {
            lines.push_back(*described);
        }
    }
    return lines;
}

ValueType ParseValueType(std::string_view words) {
    Words parts = Split(words, ' ');
    if (parts.size() > 1 && parts.back() == kHistory) {
        parts.pop_back();
    }
    ValueType type;
    const auto kind = KindOfWord(parts[0]);
    if (kind) {
        type.kind = *kind;
        parts.erase(parts.begin());
    }
    return kind && ReadArguments(type, parts) ? type : ValueType();
}

ValueType TypeOfDescription(const std::vector<DescribedValue>& lines) {
    ValueType type;
    for (const DescribedValue& line : lines) {
        if (WholeNumber(line.value)) {
            type.values.emplace_back(line.value);
        }
    }
    if (type.values.size() < 2) {
        return {};
    }
    const bool isBool = type.values.size() == 2 && IsSingle(type, "0") && IsSingle(type, "1");
    return isBool ? ValueType{ValueKind::Bool, {}, {}, {}, {}, {}, {}, {}}
                  : ValueType{ValueKind::Enum, std::move(type.values), {}, {}, {}, {}, {}, {}};
}

std::vector<ValueChoice> ChoicesOf(const ValueType& type,
                                   const std::vector<DescribedValue>& lines) {
    std::vector<std::string> values = type.values;
    if (type.kind == ValueKind::Bool) {
        values = {"0", "1"};
    } else if (type.kind == ValueKind::Flags) {
        std::vector<std::string> bits;
        for (const auto& group : type.groups) {
            std::ranges::move(TextsOf(group), std::back_inserter(bits));
        }
        values.insert(values.begin(), bits.begin(), bits.end());
    }
    std::vector<ValueChoice> choices;
    for (const std::string& word : values) {
        const auto range = RangeOf(word);
        const std::int64_t limit = range ? range->least.value_or(range->most.value_or(0)) : 0;
        choices.push_back({range ? std::to_string(limit) : word, TextOf(lines, word)});
    }
    return choices;
}

std::string MeaningOf(const ValueType& type, const std::vector<DescribedValue>& lines,
                      std::string_view value) {
    if (type.kind == ValueKind::Flags && SumOf(value) != 0) {
        std::string meaning;
        for (const ValueChoice& choice : ChoicesOf(type, lines)) {
            if (HasBits(type, value, choice.value) && !choice.text.empty()) {
                meaning.append(meaning.empty() ? "" : "; ").append(choice.text);
            }
        }
        return meaning;
    }
    const auto line = std::ranges::find_if(
        lines, [&](const DescribedValue& known) { return IsMeantBy(known.value, value); });
    const bool isKnown = type.kind == ValueKind::Bool || type.kind == ValueKind::Flags ||
                         std::ranges::any_of(type.values, [&](const std::string& word) {
                             return IsMeantBy(word, value);
                         });
    return line != lines.end() && isKnown ? std::string(line->text) : std::string();
}

std::optional<Expectation> WhatIsExpected(const ValueType& type,
                                          const std::vector<DescribedValue>& lines,
                                          std::string_view value) {
    using Form = Expectation::Form;
    if (value.empty() || (type.kind != ValueKind::Enum && IsSingle(type, value))) {
        return std::nullopt;
    }
    const auto number = WholeNumber(value);
    switch (type.kind) {
        case ValueKind::Bool:
            return value == "0" || value == "1"
                       ? std::nullopt
                       : std::optional(Expectation{Form::OneOf, {"0", "1"}, {}, {}});
        case ValueKind::Enum:
            return std::ranges::any_of(
                       type.values,
                       [value](const std::string& word) { return IsMeantBy(word, value); })
                       ? std::nullopt
                       : std::optional(Expectation{Form::OneOf, type.values, {}, {}});
        case ValueKind::Flags:
            return ExpectedOfSum(type, lines, value);
        case ValueKind::Int:
            return number && type.range.Holds(*number)
                       ? std::nullopt
                       : std::optional(Expectation{Form::Number, {}, type.range, type.values});
        case ValueKind::Color:
            return ParseColor(value) ? std::nullopt
                                     : std::optional(Expectation{Form::Color, {}, {}, type.values});
        case ValueKind::String:
        case ValueKind::Font:
        case ValueKind::Path:
        case ValueKind::List:
            break;
    }
    return std::nullopt;
}

bool HasBits(const ValueType& type, std::string_view value, std::string_view choice) {
    if (IsSingle(type, choice)) {
        return value == choice;
    }
    const auto* const group = GroupWith(type, SumOf(choice));
    return group != nullptr && HasGroupBits(*group, SumOf(value), SumOf(choice));
}

std::string WithBitsToggled(const ValueType& type, std::string_view value,
                            std::string_view choice) {
    if (IsSingle(type, choice)) {
        return value == choice ? "0" : std::string(choice);
    }
    std::uint64_t sum = SumOf(value);
    if (const auto* const group = GroupWith(type, SumOf(choice))) {
        const bool wasSet = HasGroupBits(*group, sum, SumOf(choice));
        sum = (sum & ~MaskOf(*group)) | (wasSet ? 0 : SumOf(choice));
    }
    return std::to_string(sum);
}

std::uint64_t OtherBits(const ValueType& type, std::string_view value) {
    return SumOf(value) & ~ListedBits(type);
}

std::string Stepped(const ValueType& type, std::string_view value, int steps) {
    constexpr std::int64_t kFarthest = std::numeric_limits<std::int32_t>::max();
    const std::int64_t least = type.range.least.value_or(-kFarthest);
    const std::int64_t most = type.range.most.value_or(kFarthest);
    const auto number = WholeNumber(value);
    const std::int64_t former = std::clamp(number.value_or(0), -kFarthest, kFarthest);
    return std::to_string(std::max(least, std::min(number ? former + steps : former, most)));
}

}  // namespace tamarind
