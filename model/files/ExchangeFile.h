#pragma once

#include <string>
#include <vector>

#include "core/ini/IniFiles.h"
#include "model/keys/KeyList.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// Writes the shown keys, with their pending changes, into an INI file: an active key as its line, a
// commented-out one as that, and no line for an absent one. Other keys of the file stay. The file
// is replaced once, or not at all on an error.
WriteResult WriteExchangeFile(const KeyStore& store, const KeyList& keys, IniFiles& files,
                              const std::string& path);

// Whether any of the shown keys has a line, or will have one; otherwise there is nothing to export.
bool HasSetKey(const KeyList& keys, const KeyStore& store);

// Makes what the file says of each shown key the pending change of that key: its value, that it is
// commented out, or, if the file does not have it, that it is to be deleted. Of twins only the
// first shown one is read. Returns the keys that were not changed because a value is longer than
// the receive buffer, here or in the file.
std::vector<KeyNumber> ReadExchangeFile(const IniDocument& file, const KeyList& keys,
                                        KeyStore& store);

}  // namespace tamarind
