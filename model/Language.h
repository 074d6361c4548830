#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/FileSystem.h"
#include "core/IniFiles.h"
#include "model/Settings.h"

namespace tamarind {

// The program's visible texts by number: those of the user's language file, and the built-in ones
// where it has none.
class Language {
public:
    Language(IniFiles& files, const Settings& settings) : m_files(files), m_settings(settings) {}

    std::string GetLanguageString(std::uint16_t number) const;

    // Whether the language is written from right to left.
    bool IsRightToLeft() const;

    // What is wrong with a file, as a sentence for the user.
    std::string Reason(FileError error) const;

private:
    std::string Entry(std::string_view key) const;

    IniFiles& m_files;
    const Settings& m_settings;
};

}  // namespace tamarind
