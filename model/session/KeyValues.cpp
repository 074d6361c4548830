#include "model/session/KeyValues.h"

#include <algorithm>
#include <utility>

#include "core/text/LeadingNumber.h"
#include "model/program/StringTable.h"

namespace tamarind {
namespace {

constexpr std::string_view kEquals = " = ";

std::string Joined(const std::vector<std::string>& values) {
    std::string text;
    for (const std::string& value : values) {
        text.append(text.empty() ? "" : ", ").append(value);
    }
    return text;
}

bool HasNumbers(ValueKind kind) {
    return kind == ValueKind::Bool || kind == ValueKind::Enum || kind == ValueKind::Int;
}

// A value and what it means.
std::string WithText(ValueKind kind, std::string_view value, std::string_view text) {
    if (text.empty()) {
        return std::string(value);
    }
    return kind == ValueKind::Color ? std::string(text) + " (" + std::string(value) + ")"
                                    : std::string(value) + std::string(kEquals) + std::string(text);
}

}  // namespace

std::optional<ValueType> KeyValues::Entry(KeyNumber key) const {
    const KeyNumber model = m_store.ModelOf(key);
    return m_dataFile.Types().TypeOf(m_store.TargetSection(model), m_store.KeyName(model));
}

std::vector<DescribedValue> KeyValues::Lines(KeyNumber key) const {
    return DescribedValues(m_store.Record(key).description);
}

ValueType KeyValues::TypeOf(KeyNumber key) const {
    const auto entry = Entry(key);
    return entry ? *entry : TypeOfDescription(Lines(key));
}

std::vector<LabeledChoice> KeyValues::ChoicesFor(KeyNumber key) const {
    const ValueType type = TypeOf(key);
    const std::string_view defaultValue = m_store.Record(key).defaultValue;
    std::vector<LabeledChoice> choices;
    if (defaultValue.empty() && (type.kind == ValueKind::Bool || type.kind == ValueKind::Enum)) {
        choices.push_back({"", m_workplace.Text(text::kChoiceNotSet), false});
    }
    for (const ValueChoice& choice : ChoicesOf(type, Lines(key))) {
        const std::string label = WithText(type.kind, choice.value, choice.text);
        const bool isDefault =
            type.kind != ValueKind::Flags && IsSameValue(choice.value, defaultValue);
        choices.push_back({choice.value, label, isDefault});
    }
    return choices;
}

std::string KeyValues::Labeled(KeyNumber key, std::string_view value) const {
    const ValueType type = TypeOf(key);
    const std::string meaning =
        type.kind == ValueKind::Flags ? std::string() : MeaningOf(type, Lines(key), value);
    return WithText(type.kind, value, meaning);
}

std::string KeyValues::ValueMeantBy(KeyNumber key, const std::string& text) const {
    for (const LabeledChoice& choice : ChoicesFor(key)) {
        if (text == choice.label) {
            return choice.value;
        }
    }
    const ValueType type = TypeOf(key);
    const std::size_t equals = text.find(kEquals);
    if (HasNumbers(type.kind) && equals != std::string::npos) {
        return text.substr(0, equals);
    }
    const auto color = type.kind == ValueKind::Color ? ParseColor(text) : std::nullopt;
    if (!color) {
        return text;
    }
    const KeyRecord record = m_store.Record(key);
    return FormatColor(*color, record.Looks().isGhosted
                                   ? record.defaultValue
                                   : record.currentValue.value_or(std::string_view()));
}

std::string KeyValues::SpokenFor(KeyNumber key) const {
    std::string spoken = StateInFile(key);
    if (m_store.IsPending(key)) {
        spoken += ", " + m_workplace.Text(text::kNotSaved);
    }
    const std::string meaning = MeaningFor(key);
    return meaning.empty() ? spoken : spoken + ", " + meaning;
}

std::string KeyValues::StateInFile(KeyNumber key) const {
    const KeyRecord record = m_store.Record(key);
    const KeyLooks looks = record.Looks();
    const std::uint16_t number = looks.isGhosted              ? text::kNotSet
                                 : !looks.isChecked           ? text::kCommentedOut
                                 : DiffersFromDefault(record) ? text::kSet
                                                              : text::kSetToDefault;
    return m_workplace.Text(number);
}

std::string KeyValues::StateOf(KeyNumber key) const {
    std::string state = StateInFile(key);
    return m_store.IsPending(key) ? m_workplace.Text(text::kChanged, {std::move(state)}) : state;
}

std::string KeyValues::DefaultOf(KeyNumber key) const {
    const std::string_view value = m_store.Record(key).defaultValue;
    if (value.empty()) {
        return m_workplace.Text(text::kNotSet);
    }
    const ValueType type = TypeOf(key);
    // All bits of a sum would be too many words.
    const bool isSum = type.kind == ValueKind::Flags && value != "0";
    const std::string meaning = isSum ? std::string() : MeaningOf(type, Lines(key), value);
    if (!meaning.empty()) {
        return std::string(value) + " (" + meaning + ")";
    }
    const std::string unit = UnitOf(key);
    return std::string(value) + (unit.empty() ? "" : " " + unit);
}

std::string KeyValues::MeaningFor(KeyNumber key) const {
    const KeyRecord record = m_store.Record(key);
    const bool isInForce = record.Looks().isChecked && record.currentValue.has_value();
    return MeaningOf(TypeOf(key), Lines(key),
                     isInForce ? *record.currentValue : record.defaultValue);
}

std::string KeyValues::UnitOf(KeyNumber key) const {
    const std::string unit = TypeOf(key).unit;
    const std::pair<std::string_view, std::uint16_t> words[] = {{"bytes", text::kUnitBytes},
                                                                {"days", text::kUnitDays},
                                                                {"lines", text::kUnitLines},
                                                                {"chars", text::kUnitCharacters}};
    for (const auto& [name, number] : words) {
        if (unit == name) {
            return m_workplace.Text(number);
        }
    }
    return unit == "percent" ? "%" : unit;
}

std::string KeyValues::ObjectionTo(KeyNumber key, std::string_view value) const {
    const auto expected = WhatIsExpected(TypeOf(key), Lines(key), value);
    return expected ? m_workplace.Text(text::kExpected, {InWords(*expected)}) : std::string();
}

std::string KeyValues::InWords(const Expectation& expected) const {
    using Form = Expectation::Form;
    const std::string values = Joined(expected.values);
    std::string words;
    switch (expected.form) {
        case Form::OneOf:
            words = m_workplace.Text(text::kExpectOneOf, {values});
            break;
        case Form::Sum:
            words = m_workplace.Text(text::kExpectSum, {values});
            break;
        case Form::OneInSum:
            words = m_workplace.Text(text::kExpectOneInSum, {values});
            break;
        case Form::Number:
            words = InWords(expected.range);
            break;
        case Form::Color:
            words = m_workplace.Text(text::kExpectColor);
            break;
    }
    return expected.orElse.empty()
               ? words
               : m_workplace.Text(text::kExpectEither, {words, Joined(expected.orElse)});
}

std::string KeyValues::InWords(const NumberRange& range) const {
    const auto limit = [](const std::optional<std::int64_t>& number) {
        return std::to_string(number.value_or(0));
    };
    if (range.least && range.most) {
        return m_workplace.Text(text::kExpectNumberBetween,
                                {limit(range.least), limit(range.most)});
    }
    if (range.least) {
        return m_workplace.Text(text::kExpectNumberFrom, {limit(range.least)});
    }
    return range.most ? m_workplace.Text(text::kExpectNumberUpTo, {limit(range.most)})
                      : m_workplace.Text(text::kExpectNumber);
}

std::optional<ColorSample> KeyValues::ColorOf(KeyNumber key) const {
    const auto entry = Entry(key);
    const KeyRecord record = m_store.Record(key);
    if (entry ? entry->kind != ValueKind::Color : !HasColor(record)) {
        return std::nullopt;
    }
    ColorSample sample = ColorOfValue(m_store.CurrentValue(key));
    const bool isNone = entry && !ParseColor(record.currentValue.value_or(std::string_view()));
    sample.isSystemColor |= isNone || record.Looks().isGhosted;
    return sample;
}

}  // namespace tamarind
