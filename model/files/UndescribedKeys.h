#pragma once

#include <string>
#include <vector>

#include "model/files/KeyFamilies.h"
#include "model/files/SettingsFiles.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// The keys of the settings that the data file does not have. A key is what Total Commander would
// read: in the file that its section is kept in, the first section of a name, the first line of a
// name. ";name=value" without a blank behind the ";" is a key that is commented out, if its section
// has any that is not.
//
// Some of them are siblings of keys that the data file has: further members of a family, and all
// keys of a section that is like one of the data file but for its numbers. The others have nothing
// but what the settings say.
//
// All functions are to be called after the states of the records were read from these settings.

// A section of the settings with keys that the store does not have yet.
struct MoreKeys {
    std::string section;
    bool isLike = false;       // it is like a section of the data file
    bool hasSiblings = false;  // further members of families
    bool hasOthers = false;
};

// These sections in the order of the file. One that is like a section of the data file is always
// among them, since it is shown with the keys that it does not have, too.
std::vector<MoreKeys> SectionsWithMoreKeys(const KeyStore& store, const SettingsFiles& settings,
                                           const KeyFamilies& families);

// Adds the keys of some sections to the store, behind all others, with what the settings say of
// them.
void AddMoreKeys(KeyStore& store, const SettingsFiles& settings, const KeyFamilies& families,
                 const std::vector<std::string>& sections);

}  // namespace tamarind
