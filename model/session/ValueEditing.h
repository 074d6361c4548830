#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "model/session/KeyCommands.h"
#include "model/session/KeySelection.h"
#include "model/session/KeyValues.h"
#include "model/session/Workplace.h"

namespace tamarind {

// What the value bar shows of the current key.
struct ValueField {
    KeyNumber key = 0;
    std::string name;
    std::string state;         // in words
    std::string text;          // of the value, with its meaning where it is a choice
    std::string unit;          // behind the text; may be empty
    std::string defaultValue;  // in words
    std::vector<LabeledChoice> choices;
    bool isSum = false;       // the choices are bits, several of which may be set
    bool isNumber = false;    // it goes up and down
    bool hasDialog = false;   // for files, fonts
    bool isReadOnly = false;  // it cannot be edited here
    std::optional<ColorSample> color;
};

// How the user chooses a value.
enum class ChoosingWay { Dialog, DropDown, Text };

// Editing the value of the current key by its type: the value bar and the commands behind it.
class ValueEditing {
public:
    ValueEditing(Workplace& workplace, const KeyStore& store, const KeySelection& selection,
                 const KeyValues& values, KeyCommands& commands)
        : m_workplace(workplace),
          m_store(store),
          m_selection(selection),
          m_values(values),
          m_commands(commands) {}

    // Nothing while no key can be edited.
    std::optional<ValueField> Field() const;
    // One sentence about a text that is no value of the key; empty for one that is.
    std::string ObjectionTo(const std::string& text) const;
    // Whether the text is the path of something that is not there. Asks the disk, except for places
    // in the network, which may take long to answer.
    bool NamesMissingPlace(const std::string& text) const;
    // The color that a text stands for, for a swatch.
    std::optional<ColorSample> ColorOf(const std::string& text) const;

    // The functions below change nothing but the text of the field. A choice is one of
    // Field().choices.
    std::string Stepped(const std::string& text, int steps) const;
    bool IsChecked(const std::string& text, std::size_t choice) const;
    std::string Toggled(const std::string& text, std::size_t choice) const;
    // The line that tells of bits that no choice stands for; empty if there are none.
    std::string OtherBitsOf(const std::string& text) const;

    // Makes the text, or a choice, the value. They return whether a value was stored, as those of
    // KeyCommands do.
    bool Store(const std::string& text);
    bool Choose(std::size_t choice);
    // Whether the key is on or off, and turning it; an absent one is what its default says.
    bool IsSwitch() const;
    bool ToggleSwitch();

    ChoosingWay WayToChoose() const;
    // Lets the user choose in a dialog: a color, a font, a file or folder by the entry of the key.
    // Without an entry keys of colors get the color dialog, all others that for files.
    bool Browse();

private:
    std::optional<KeyNumber> Key() const { return m_selection.Rows().EditableKey(); }
    std::string ValueInForce(KeyNumber key) const;
    bool BrowseColor(KeyNumber key);
    bool BrowseFont(KeyNumber key, const ValueType& type);
    bool BrowsePath(KeyNumber key, const ValueType& type);
    std::optional<KeyNumber> Neighbour(KeyNumber key, const std::string& name) const;
    std::string CommanderFolder() const;
    std::string Expanded(const std::string& path) const;
    std::optional<std::string> AskForForm(const std::string& path) const;

    Workplace& m_workplace;
    const KeyStore& m_store;
    const KeySelection& m_selection;
    const KeyValues& m_values;
    KeyCommands& m_commands;
};

}  // namespace tamarind
