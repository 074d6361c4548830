#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "core/files/FileSystem.h"
#include "core/ini/IniFiles.h"
#include "model/program/Settings.h"

namespace tamarind {

// The program's visible texts by number: those of the user's language file, and the built-in ones
// where it has none. The file is read by Load and Refresh only, so that all texts between two of
// them come from one language, whatever becomes of the file and the settings.
class Language {
public:
    // Has the built-in texts until it is loaded.
    Language(IniFiles& files, const Settings& settings) : m_files(files), m_settings(settings) {}

    // Takes the language that the settings name now. False: its file is missing, and all texts are
    // the built-in ones.
    bool Load();

    // Reads the file again if it has changed. False, once: it is missing now, and all texts are the
    // built-in ones.
    bool Refresh();

    // Whether the settings name the language that was loaded last.
    bool IsThatOfSettings() const;

    std::string GetLanguageString(std::uint16_t number) const;

    // Whether the language is written from right to left.
    bool IsRightToLeft() const;

    // What is wrong with a file, as a sentence for the user.
    std::string Reason(FileError error) const;

private:
    std::string Entry(std::string_view key) const;

    IniFiles& m_files;
    const Settings& m_settings;
    std::shared_ptr<const IniDocument> m_file;  // null: only built-in texts
    std::string m_path;                         // as the settings have it
    std::string m_expandedPath;
    CodePage m_codePage{};
};

}  // namespace tamarind
