#pragma once

#include <string>

#include "core/system/Registry.h"

namespace tamarind {

// Makes Windows open data files (".tmdf") with this program: for all users under HKEY_CLASSES_ROOT
// or, if that cannot be written, for the present user. `programPath` is the file of this program.
// Returns whether anything was written.
//
// Nothing is written if a copy with a greater version text is registered, or this version at this
// path. Versions compare as texts, so "10" comes before "9".
bool RegisterDataFileType(Registry& registry, const std::string& programPath,
                          const std::string& versionText);

}  // namespace tamarind
