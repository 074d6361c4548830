#pragma once

#include <string>
#include <vector>

#include "model/files/SettingsFiles.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// The keys of the settings that the store does not have. A key is what Total Commander would read:
// in the file that its section is kept in, the first section of a name, the first line of a name.
// ";name=value" without a blank behind the ";" is a key that is commented out, if its section has
// any that is not.
//
// Both functions are to be called after the states of the records were read from these settings.

// The sections that have such keys, in the order of the file.
std::vector<std::string> SectionsWithUndescribedKeys(const KeyStore& store,
                                                     const SettingsFiles& settings);

// Adds those of some sections to the store, behind all others, with what the settings say of them.
void AddUndescribedKeys(KeyStore& store, const SettingsFiles& settings,
                        const std::vector<std::string>& sections);

}  // namespace tamarind
