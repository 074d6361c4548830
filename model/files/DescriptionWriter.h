#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "core/ini/IniFiles.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// The text of a description box in the form that data files have it in: one line, each CR a "@".
std::string StoredDescription(std::string_view text);

// How long a key's description may become for its entry to be read as a whole again, in UTF-16
// units; 0 for a key whose entry can not be rewritten.
std::size_t MaxDescriptionUnits(const KeyStore& store, KeyNumber key);

// Writes every description that waits into the data file, each with the default value that its
// entry was loaded with. On a failure the file stays as it was and they still wait. `known` is the
// file as it was read or written last, and is brought up to date; where it holds something else by
// now, `mayWrite` is asked, with no file held. A missing file is not made.
struct DescriptionResult {
    WriteResult written;
    bool isCancelled = false;
};
DescriptionResult WriteDescriptions(KeyStore& store, IniFiles& files, const std::string& path,
                                    std::shared_ptr<const IniDocument>& known,
                                    const std::function<bool()>& mayWrite);

}  // namespace tamarind
