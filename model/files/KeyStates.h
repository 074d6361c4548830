#pragma once

#include <functional>
#include <string>
#include <vector>

#include "model/files/SettingsFiles.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// Reads every record's current value and state from the settings, whose documents the store refers
// to from then on, and drops what was pending. `advance` is called before each record.
void DeriveKeyStates(KeyStore& store, const SettingsFiles& settings,
                     const std::function<void()>& advance);
void DeriveKeyStates(KeyStore& store, SettingsFiles&& settings,
                     const std::function<void()>& advance) = delete;  // nobody would hold them

// What another program's changes of the settings came to.
struct OutsideChanges {
    std::vector<KeyNumber> changed;    // their rows say something else now
    std::vector<KeyNumber> conflicts;  // changed there, and pending here with something else: the
                                       // first of twins
};

// Brings the records from one state of the settings to another: those without a pending change take
// what is there now; of the others only the initial state follows.
OutsideChanges TakeOutsideChanges(KeyStore& store, const SettingsFiles& before,
                                  const SettingsFiles& now);

// Drops the pending change of a record and its twins for what the settings say.
void TakeFromSettings(KeyStore& store, KeyNumber key, const SettingsFiles& settings);

// The line that a record's key has in the settings, as the key list would show it; empty without
// one.
std::string LineInSettings(const KeyStore& store, KeyNumber key, const SettingsFiles& settings);

}  // namespace tamarind
