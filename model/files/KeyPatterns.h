#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/ini/IniDocument.h"

namespace tamarind {

// Names with patterns among them, as files have them that tell something about keys. "#" stands for
// one or more digits. "*" stands for a name that the user gave: for what is before the last "_",
// for what is behind a "_", "+" or "|", or for a whole name. An exact name goes before one with
// "#", that before one with "*", and of those the one that says more.

// The line for a key.
std::optional<IniDocument::LineId> FindKeyOrPattern(const IniDocument& file,
                                                    IniDocument::SectionId section,
                                                    std::string_view key);

// The section for a section of the settings, behind a prefix that all sections of a kind have.
std::optional<IniDocument::SectionId> FindSectionOrPattern(const IniDocument& file,
                                                           std::string_view prefix,
                                                           std::string_view section);

// What "*" stands for in the pattern that a name fits, or the digits that "#" stands for; the whole
// name if the pattern has neither.
std::string_view NameWithinPattern(std::string_view pattern, std::string_view name);

}  // namespace tamarind
