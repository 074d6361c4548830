#pragma once

#include <optional>
#include <string>

#include "core/IniFiles.h"
#include "core/ShownValue.h"
#include "model/KeyStore.h"

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
    FileError error = FileError::None;
    IniEdit refused = IniEdit::Unchanged;
    RowKey refusedKey = 0;  // the key whose edit was refused
    bool Succeeded() const { return error == FileError::None && refused == IniEdit::Unchanged; }
};

// Writes every pending change into the settings file, which is read once and replaced once, and
// re-bases the states. On a failure the file and the store stay as they were.
SaveResult WriteChanges(KeyStore& store, IniFiles& files, const std::string& path);

}  // namespace tamarind
