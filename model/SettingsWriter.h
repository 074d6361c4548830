#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/IniFiles.h"
#include "core/ShownValue.h"
#include "model/KeyStore.h"
#include "model/SettingsFiles.h"

namespace tamarind {

// What a save does for one key, by where it stood in the file and what is pending.
struct SaveAction {
    bool deletesActive = false;
    bool deletesCommented = false;
    std::optional<KeyForm> writes;
    KeyState newState = KeyState::Absent;  // both states afterwards
};

// Nothing where nothing is pending.
std::optional<SaveAction> SaveActionOf(KeyState currentState, KeyState initialState);

struct SaveResult {
    struct Failure {
        std::string path;
        FileError error = FileError::None;
        IniEdit refused = IniEdit::Unchanged;
        RowKey refusedKey = 0;  // the key whose edit was refused
    };
    std::vector<Failure> failures;
    bool Succeeded() const { return failures.empty(); }
};

// Writes every pending change into the file of the settings that its key is in. Each file is read
// once and replaced once; where that fails, it and the pending changes of its keys stay as they
// were. The states of all others are re-based.
SaveResult WriteChanges(KeyStore& store, IniFiles& files, const SettingsFiles& settings);

}  // namespace tamarind
