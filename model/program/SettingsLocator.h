#pragma once

#include <string>
#include <string_view>

#include "core/files/FileSystem.h"
#include "core/system/Environment.h"
#include "core/system/Registry.h"
#include "model/program/Language.h"
#include "model/program/OwnSettingsStore.h"
#include "model/program/UserPrompts.h"

namespace tamarind {

// Finds the settings files of Total Commander: by its entries in the registry, or by the path that
// the user chose earlier, or by asking the user, in this order.
class SettingsLocator {
public:
    // All arguments are kept by reference and must outlive this object.
    SettingsLocator(FileSystem& files, Registry& registry, const Environment& environment,
                    OwnSettingsStore& settings, const Language& language, UserPrompts& prompts);

    // The path of Wincmd.ini; empty if the user cancels. An answer is stored in the own settings.
    std::string FindWincmdIni();

    // The path of Wcx_ftp.ini; the MissingValueMarker if the user cancels. Otherwise as above.
    std::string FindWcxFtpIni();

    // Whether a path as Total Commander stores it leads to a file, whose path goes into `found`;
    // otherwise `found` stays as it was.
    //
    //   .\wincmd.ini     in the folder of Total Commander
    //   D:\tc\my.ini     as it stands, as are paths that begin with two backslashes
    //   wincmd.ini       in the Windows folder
    bool ResolveSettingsPath(const std::string& path, std::string& found) const;

private:
    std::string RegistryCandidate(const std::string& valueName) const;
    // Shows the message, then a file dialog. The MissingValueMarker if the user cancels.
    std::string Ask(std::uint16_t message, std::string_view fileName, FileFilter filter);

    FileSystem& m_files;
    Registry& m_registry;
    const Environment& m_environment;
    OwnSettingsStore& m_settings;
    const Language& m_language;
    UserPrompts& m_prompts;
    std::string m_foundWincmd;
};

}  // namespace tamarind
