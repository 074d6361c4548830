#pragma once

#include <string>
#include <vector>

#include "core/ini/IniFiles.h"
#include "model/keys/KeyList.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// Writes the shown keys with their pending states into an INI file, which is read once and replaced
// once: an active key as its line, a commented-out one as that, and no line for any other. What
// else is in the file stays.
WriteResult WriteExchangeFile(const KeyStore& store, const KeyList& keys, IniFiles& files,
                              const std::string& path);

// Whether any of the shown keys has, or will have, a line: else there is nothing to write.
bool HasSetKey(const KeyList& keys, const KeyStore& store);

// Makes what the file says of each shown key that key's pending change: its value, that it is
// commented out, or, where the file has no line of it, that it is to be deleted. Gives the keys
// that were left as they are, since a value is longer than any reader's buffer.
std::vector<KeyNumber> ReadExchangeFile(const IniDocument& file, const KeyList& keys,
                                        KeyStore& store);

}  // namespace tamarind
