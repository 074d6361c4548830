#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "core/ini/IniFiles.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// The text of a description box as data files store it: in one line, with "@" for each CR and
// nothing for each LF.
std::string StoredDescription(std::string_view text);

// The greatest length in UTF-16 units of a description of this key, so that its entry can still be
// read as a whole; 0 if the entry cannot be rewritten.
std::size_t MaxDescriptionUnits(const KeyStore& store, KeyNumber key);

// What came of writing the descriptions. `isCancelled`: the user did not want to.
struct DescriptionResult {
    WriteResult written;
    bool isCancelled = false;
};
// Writes every description that waits into the data file, each with the default value that its
// entry was loaded with. On a failure the file stays as it was, and the descriptions still wait.
// `known` is the file as it was read or written last, and is brought up to date. If the file holds
// something else by now, `mayWrite` is called, without a lock; false cancels. A missing file is an
// error.
DescriptionResult WriteDescriptions(KeyStore& store, IniFiles& files, const std::string& path,
                                    std::shared_ptr<const IniDocument>& known,
                                    const std::function<bool()>& mayWrite);

}  // namespace tamarind
