#pragma once

#include <string>
#include <vector>

#include "core/ini/IniFiles.h"
#include "model/keys/KeyEditor.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// Writes keys, with their pending changes, into an INI file: an active key as its line, a
// commented-out one as that, and no line for an absent one, so that reading gives the same values.
// Other keys of the file stay. The file is replaced once, or not at all on an error.
WriteResult WriteExchangeFile(const KeyStore& store, const std::vector<KeyNumber>& keys,
                              IniFiles& files, const std::string& path);

// Whether any of the keys has a line, or will have one; otherwise there is nothing to export.
bool HasSetKey(const std::vector<KeyNumber>& keys, const KeyStore& store);

// What a file says of keys: for each its value, that it is commented out, or, if the file does not
// have it, that it is to be deleted. Of twins only the first given one is read.
struct ExchangeContent {
    std::vector<KeyChange> changes;
    // Keys that cannot be changed because a value is longer than the receive buffer, here or in the
    // file.
    std::vector<KeyNumber> skipped;
};
ExchangeContent ReadExchangeFile(const IniDocument& file, const std::vector<KeyNumber>& keys,
                                 const KeyStore& store);

}  // namespace tamarind
