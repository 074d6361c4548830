#pragma once

#include <string>
#include <string_view>

#include "core/files/FileSystem.h"
#include "core/system/Environment.h"
#include "core/system/Registry.h"
#include "model/program/Language.h"
#include "model/program/SettingsStore.h"
#include "model/program/UserPrompts.h"

namespace tamarind {

// Finds Total Commander's settings files: by its registry entries, else by the path that the user
// chose earlier, else by asking.
class SettingsLocator {
public:
    SettingsLocator(FileSystem& files, Registry& registry, const Environment& environment,
                    SettingsStore& settings, const Language& language, UserPrompts& prompts);

    // The path of Wincmd.ini, or the empty text when the user gives none.
    std::string FindWincmdIni();

    // The path of Wcx_ftp.ini, or the MissingValueMarker when the user gives none.
    std::string FindWcxFtpIni();

    // Whether a path as Total Commander stores it leads to a file: relative to its folder for
    // ".\", as it stands with a drive letter, else relative to the Windows folder. The file's path
    // goes into `found`; it stays as it was where there is none.
    bool ResolveSettingsPath(const std::string& path, std::string& found) const;

private:
    std::string RegistryCandidate(const std::string& valueName) const;
    std::string Ask(std::uint16_t message, std::string_view fileName, FileFilter filter);

    FileSystem& m_files;
    Registry& m_registry;
    const Environment& m_environment;
    SettingsStore& m_settings;
    const Language& m_language;
    UserPrompts& m_prompts;
    std::string m_foundWincmd;
};

}  // namespace tamarind
