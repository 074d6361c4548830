#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/ini/IniFiles.h"
#include "core/system/Environment.h"
#include "model/program/Settings.h"

namespace tamarind {

// Size of the screen in twips, for the window's place at the first start.
struct ScreenSize {
    std::int32_t width = 0;
    std::int32_t height = 0;
};

// Reads the program's settings from "tamarind editors.ini" and writes them back. The file stands
// beside the program or, where none can be made there, in the user's own folder for settings. Other
// programs of the family share the file, each in a section of its own.
class SettingsStore {
public:
    // The section of most of them, and of the list of recent files.
    static constexpr std::string_view kSection = "ConfigurationEditor";

    // `programFolder` ends with a backslash.
    SettingsStore(IniFiles& files, const Environment& environment, std::string programFolder,
                  ScreenSize screen);

    Settings& Values() { return m_values; }
    const Settings& Values() const { return m_values; }

    // Reads all settings. At the first start the file is made, with the values for a new user;
    // where it can not be made, these values hold for this run.
    void LoadSettings();

    // Reads the settings that the options dialog edits again.
    void ReloadOptions();

    // Whether colours and font are written: not while they were chosen but not applied. Read again
    // they are those of the file.
    void SetLookApplied(bool isApplied) { m_isLookApplied = isApplied; }

    // Takes a path as it is to be written.
    void SetLanguageFile(const std::string& path);

    // Writes the settings that changed since they were read or last written, in one step. Of a
    // maximized window only that it is maximized is stored, so that its former place stays.
    WriteResult SaveSettings();

    // Writes one text at once: section kSection, or "Common" for what the family
    // shares. A text equal to the MissingValueMarker is not written. A failure is not reported:
    // the text holds for this run.
    void WriteNow(std::string Settings::*member, const std::string& value);

    // The same for the organize window's place; a failure is not reported.
    void WriteFavoriteWindow();

    const std::string& Path() const { return m_path; }

private:
    bool Locate();
    bool MakeFile(const std::string& path);
    void SetFirstStartDefaults();
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
    Settings m_values;
    bool m_isLookApplied = true;
    std::vector<std::string> m_stored;  // each setting's text as read or last written
};

}  // namespace tamarind
