#pragma once

#include <functional>
#include <string>
#include <vector>

#include "model/files/SettingsFiles.h"
#include "model/keys/KeyHistory.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// Reads the current value and the state of every record from the settings and drops all pending
// changes. The store refers to the documents of the settings from then on. `advance` is called
// before each record.
void DeriveKeyStates(KeyStore& store, const SettingsFiles& settings,
                     const std::function<void()>& advance);
void DeriveKeyStates(KeyStore& store, SettingsFiles&& settings,
                     const std::function<void()>& advance) = delete;  // nobody would hold them

// The same for the records from one on that were added later; nothing is dropped.
void DeriveStatesFrom(KeyNumber first, KeyStore& store, const SettingsFiles& settings);

// What the changes of another program mean for the records.
struct OutsideChanges {
    std::vector<KeyNumber> changed;    // their rows say something else now
    std::vector<KeyNumber> conflicts;  // changed there, and pending here with something else: the
                                       // first of twins
};

// Brings the records from one state of the settings to another. Records without a pending change
// take what is in the settings now. The others keep their change and only note the new initial
// state.
OutsideChanges TakeOutsideChanges(KeyStore& store, const SettingsFiles& before,
                                  const SettingsFiles& now);

// How settings have these keys, for a step of the history; of twins the first given one.
std::vector<HistoryEntry> EntriesOf(const KeyStore& store, const std::vector<KeyNumber>& keys,
                                    const SettingsFiles& settings);

// The line that a key has in the settings, as the key list would show it (";" first if it is
// commented out, its value cut to the receive buffer); empty if there is none.
std::string LineInSettings(const KeyStore& store, KeyNumber key);

}  // namespace tamarind
