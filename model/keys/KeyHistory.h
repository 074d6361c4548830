#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/keys/KeyStore.h"

namespace tamarind {

// How a key was before a change.
struct HistoryEntry {
    enum class Kind : std::uint8_t {
        Value,   // Its value. An empty one stands for no value, too, so that undoing a change of
                 // "A=" marks the key for deletion. The state is not recorded.
        Toggle,  // The other of "commented out" and "active".
        Whole,   // Its value and its state, as they were.
    };
    Kind kind = Kind::Value;
    KeyNumber key = 0;
    std::string value;
    KeyState state = KeyState::Absent;  // of Whole, as the next one
    bool keepsSpaces = false;
};

// What the user did in one step, for its name in the menu.
enum class StepKind : std::uint8_t { Value, Comment, Delete, Reset, Import, Discard, Restore };

// What is undone and redone together. Each of the keys occurs once.
struct HistoryStep {
    StepKind kind = StepKind::Value;
    std::vector<HistoryEntry> entries;
};

// How a key is now, to be brought back as it is.
HistoryEntry WholeEntry(const KeyStore& store, KeyNumber key);

// What can be undone and redone, without a limit. Steps are plain data; KeyEditor records them.
class KeyHistory {
public:
    // Adds a step, unless it has no entries. What was undone before can no longer be redone.
    void Record(HistoryStep step);
    void Clear();

    // Drops the entries of keys whose values are no longer those that the steps began from, and the
    // steps that have no others.
    void Forget(const std::vector<KeyNumber>& keys);

    // The step that is next to be undone or redone; null if there is none.
    const HistoryStep* NextUndo() const { return Next(m_undo); }
    const HistoryStep* NextRedo() const { return Next(m_redo); }

    // Applies the newest step of one list to the store and puts its inverse into the other list.
    // Returns the keys that changed. By Value and Toggle a key always gets a pending state, even if
    // its value is then the one in the settings.
    std::vector<KeyNumber> Undo(KeyStore& store) { return Replay(m_undo, m_redo, store); }
    std::vector<KeyNumber> Redo(KeyStore& store) { return Replay(m_redo, m_undo, store); }

private:
    using Steps = std::vector<HistoryStep>;
    static const HistoryStep* Next(const Steps& steps) {
        return steps.empty() ? nullptr : &steps.back();
    }
    static std::vector<KeyNumber> Replay(Steps& from, Steps& to, KeyStore& store);

    Steps m_undo;
    Steps m_redo;
};

}  // namespace tamarind
