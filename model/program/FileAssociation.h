#pragma once

#include <string>

#include "core/system/Registry.h"

namespace tamarind {

// Makes Windows open data files (".tmdf") with this program: under HKEY_CLASSES_ROOT or, where that
// can not be written, for the present user. A copy with a greater version text that registered
// itself before stays registered; one with the same version does if it stands where it stood.
// `programPath` is this program's file. Returns whether anything was written.
bool RegisterDataFileType(Registry& registry, const std::string& programPath,
                          const std::string& versionText);

}  // namespace tamarind
