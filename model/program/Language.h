#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "core/files/FileSystem.h"
#include "core/ini/IniFiles.h"
#include "model/program/OwnSettings.h"

namespace tamarind {

// The visible texts of the program by number: those of the user's language file, and the built-in
// English ones where it has none. Only Load and Refresh read the file, so that all texts between
// two calls come from one language, whatever happens to the file and the settings.
class Language {
public:
    // Has the built-in texts until it is loaded. `settings` is kept by reference.
    Language(IniFiles& files, const OwnSettings& settings) : m_files(files), m_settings(settings) {}

    // Switches to the language that the settings name now. False if its file is missing; all texts
    // are then the built-in ones.
    bool Load();

    // Reads the file again if it has changed. False if it is missing now; all texts are then the
    // built-in ones, and later calls return true.
    bool Refresh();

    // Whether the settings still name the language that was loaded last.
    bool IsThatOfSettings() const;

    // The text of a number in UTF-8; empty if neither language has it.
    std::string GetLanguageString(std::uint16_t number) const;

    // Whether the language is written from right to left.
    bool IsRightToLeft() const;

    // What is wrong with a file, as a sentence for the user.
    std::string Reason(FileError error) const;

private:
    std::string Entry(std::string_view key) const;

    IniFiles& m_files;
    const OwnSettings& m_settings;
    std::shared_ptr<const IniDocument> m_file;  // null: only built-in texts
    std::string m_path;                         // as the settings have it
    std::string m_expandedPath;
    CodePage m_codePage{};
};

}  // namespace tamarind
