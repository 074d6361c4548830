#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/ini/IniFiles.h"
#include "core/system/Environment.h"
#include "model/program/OwnSettings.h"

namespace tamarind {

// Size of the screen in twips, for the place of the window at the first start.
struct ScreenSize {
    std::int32_t width = 0;
    std::int32_t height = 0;
};

// Reads the settings of the program from "tamarind editors.ini" and writes them back. The file
// stands beside the program or, if none can be made there, in the user's own folder for settings
// (APPDATA). Other programs of the family share the file, each with a section of its own. Which
// settings there are, with their keys and defaults, is one table in the source.
class OwnSettingsStore {
public:
    // The section of most settings, and of the list of recent files.
    static constexpr std::string_view kSection = "ConfigurationEditor";

    // `programFolder` ends with a backslash.
    OwnSettingsStore(IniFiles& files, const Environment& environment, std::string programFolder,
                     ScreenSize screen);

    // The settings may be changed directly; SaveSettings finds out which of them were.
    OwnSettings& Values() { return m_values; }
    const OwnSettings& Values() const { return m_values; }

    // Reads all settings. At the first start the file is made with the values for a new user; if it
    // cannot be made, these values hold for this run.
    void LoadSettings();
    // Whether LoadSettings found none and made their file: the first start of a new user.
    bool IsNew() const { return m_isNew; }

    // Reads the settings of the options dialog again. Nothing changes if the file cannot be read.
    void ReloadOptions();

    // False while colors and font are chosen but not applied: they are not written then. Reading
    // them again restores those of the file and sets it to true.
    void SetLookApplied(bool isApplied) { m_isLookApplied = isApplied; }

    // Takes a path as it is to be written, with its environment variables.
    void SetLanguageFile(const std::string& path);

    // Writes the settings that have changed since they were read or written, in one step. While the
    // window is maximized its size and position are not written, so that the former ones stay.
    WriteResult SaveSettings();

    // Sets one text and writes it at once. The MissingValueMarker is not written. A failure is not
    // reported: the text holds for this run.
    void WriteNow(std::string OwnSettings::*member, const std::string& value);

    // Writes the place of the organize window in the same way.
    void WriteFavoriteWindow();

    // The file that was found or made; beside the program before LoadSettings, and if none can be
    // made.
    const std::string& Path() const { return m_path; }

private:
    // Finds the file, or makes it. False if there is none and none can be made.
    bool Locate();
    bool MakeFile(const std::string& path);
    void SetFirstStartDefaults();
    // Works out what depends on other settings, and enforces limits.
    void Derive();
    std::string ReadDefault(std::size_t row) const;
    std::string TextOf(std::size_t row) const;
    void SetText(std::size_t row, const std::string& text);
    void RememberAll();
    void ReadRow(const IniDocument& file, std::size_t row);
    template <typename IsWritten>
    WriteResult WriteChanged(IsWritten isWritten);

    IniFiles& m_files;
    const Environment& m_environment;
    std::string m_programFolder;
    ScreenSize m_screen;
    std::string m_path;
    std::shared_ptr<const IniDocument> m_file;  // held for the other readers of the file at a start
    OwnSettings m_values;
    bool m_isNew = false;
    bool m_isLookApplied = true;
    std::vector<std::string> m_stored;  // each setting's text as read or last written
};

}  // namespace tamarind
