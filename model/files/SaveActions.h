#pragma once

#include <optional>
#include <vector>

#include "core/ini/IniDocument.h"
#include "core/ini/ShownValue.h"
#include "model/files/SettingsFiles.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// What a save does for one key in its file.
struct SaveAction {
    bool deletesActive = false;
    bool deletesCommented = false;
    std::optional<KeyForm> writes;
};

// What a save does by the two states of a key; nothing if no change is pending.
//
//   current         initial: Absent    Active                       Commented
//   ToBeDeleted     -                  delete A=                    delete ;A=
//   ValueSet        write A=           write A=                     write A=, delete ;A=
//   ToBeCommented   write ;A=          write ;A=, delete A=         write ;A=
std::optional<SaveAction> SaveActionOf(KeyState currentState, KeyState initialState);

// Does to a file what a save does for a key with a pending change.
IniEdit ApplyPendingChange(IniDocument& file, const KeyStore& store, KeyNumber key);

// For each file of the settings, the keys with pending changes: of twins the first one, in the
// order of the data file.
std::vector<std::vector<KeyNumber>> PendingKeysByFile(const KeyStore& store,
                                                      const SettingsFiles& settings);

}  // namespace tamarind
