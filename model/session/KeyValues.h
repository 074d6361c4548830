#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/keys/ColorKeys.h"
#include "model/keys/KeyStore.h"
#include "model/keys/ValueType.h"
#include "model/session/OpenDataFile.h"
#include "model/session/Workplace.h"

namespace tamarind {

// A value of a key as a list of choices shows it.
struct LabeledChoice {
    std::string value;
    std::string label;  // "3 = fitting unit"
    bool isDefault = false;
};

// What the values of keys are, may be and mean, told in the language of the program. The texts of
// choices come from the descriptions. All keys are of the open data file.
class KeyValues {
public:
    KeyValues(const Workplace& workplace, const KeyStore& store, OpenDataFile& dataFile)
        : m_workplace(workplace), m_store(store), m_dataFile(dataFile) {}

    // Whether the file of types has an entry for the key.
    bool HasEntry(KeyNumber key) const { return Entry(key).has_value(); }
    // That of the entry, or else what the description tells.
    ValueType TypeOf(KeyNumber key) const;
    // What a screen reader is told of a row beside its text: the state, whether it waits to be
    // saved, and what the value means.
    std::string SpokenFor(KeyNumber key) const;
    std::vector<LabeledChoice> ChoicesFor(KeyNumber key) const;

    // The value with its meaning, "3 = fitting unit", or "Windows color (-1)" for a color; the bare
    // value if it is none of the choices.
    std::string Labeled(KeyNumber key, std::string_view value) const;
    // The value that the user means by a text: that of a choice for its label, and what stands
    // before " = " where a number is asked for. Colors get the form of the present value.
    std::string ValueMeantBy(KeyNumber key, const std::string& text) const;

    // "set, same as default, changed".
    std::string StateOf(KeyNumber key) const;
    // "1 (fitting unit)", "60 s"; "not set" without a known default.
    std::string DefaultOf(KeyNumber key) const;
    // What the value in force means: that of the settings, or the default of a key that is not
    // active. Empty if nothing tells.
    std::string MeaningFor(KeyNumber key) const;
    // Behind a number: "px", "%", "days". Empty without one.
    std::string UnitOf(KeyNumber key) const;

    // One sentence about what a value should be; empty for one that the key can have.
    std::string ObjectionTo(KeyNumber key, std::string_view value) const;

    // A key's value as a color; nothing for a key that is none. An absent one has the system's.
    std::optional<ColorSample> ColorOf(KeyNumber key) const;

private:
    // With the change that waits, if any does, but without a word about it.
    std::string StateInFile(KeyNumber key) const;
    std::optional<ValueType> Entry(KeyNumber key) const;
    std::vector<DescribedValue> Lines(KeyNumber key) const;
    std::string InWords(const Expectation& expected) const;
    std::string InWords(const NumberRange& range) const;

    const Workplace& m_workplace;
    const KeyStore& m_store;
    OpenDataFile& m_dataFile;
};

}  // namespace tamarind
