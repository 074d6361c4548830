#pragma once

#include <optional>
#include <string_view>

#include "core/ini/IniDocument.h"

namespace tamarind {

// The line for a key in a file that tells something about keys, where "#" in a name stands for one
// or more digits. An exact name goes before one with "#".
std::optional<IniDocument::LineId> FindKeyOrPattern(const IniDocument& file,
                                                    IniDocument::SectionId section,
                                                    std::string_view key);

}  // namespace tamarind
