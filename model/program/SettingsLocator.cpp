#include "model/program/SettingsLocator.h"

#include "core/files/Paths.h"
#include "core/system/cRegistry.h"
#include "core/text/MissingValueMarker.h"
#include "model/program/StringTable.h"

namespace tamarind {

SettingsLocator::SettingsLocator(FileSystem& files, Registry& registry,
                                 const Environment& environment, OwnSettingsStore& settings,
                                 const Language& language, UserPrompts& prompts)
    : m_files(files),
      m_registry(registry),
      m_environment(environment),
      m_settings(settings),
      m_language(language),
      m_prompts(prompts) {}

bool SettingsLocator::ResolveSettingsPath(const std::string& path, std::string& found) const {
    std::string candidate = ExpandPathVariables(path, m_environment);
    if (candidate.starts_with(".\\")) {
        candidate = ExpandPathVariables(m_settings.Values().totalCommanderFolder, m_environment) +
                    candidate.substr(2);
    } else if (!candidate.starts_with("\\\\") &&
               (candidate.size() < 3 || candidate.substr(1, 2) != ":\\")) {
        candidate = AddBackslash(m_environment.Variable("windir")) + candidate;
    }
    if (!FileExists(candidate, m_files)) {
        return false;
    }
    found = candidate;
    return true;
}

// The path that the registry names; the MissingValueMarker if none. An entry of the user hides the
// entry of the machine even if its file is gone. A 32-bit Total Commander on 64-bit Windows writes
// its entry of the machine into the other view.
std::string SettingsLocator::RegistryCandidate(const std::string& valueName) const {
    constexpr struct {
        const char* root;
        RegistryView view;
    } kPlaces[] = {
        {"HKEY_CURRENT_USER", RegistryView::Native},
        {"HKEY_LOCAL_MACHINE", RegistryView::Native},
        {"HKEY_LOCAL_MACHINE", RegistryView::Other},
    };
    cRegistry registry(m_registry);
    std::string entry(MissingValueMarker);
    for (const auto& place : kPlaces) {
        if (entry == MissingValueMarker) {
            entry =
                registry.ReadValue(std::string(place.root) + "\\Software\\Ghisler\\Total Commander",
                                   valueName, place.view);
        }
    }
    return entry;
}

std::string SettingsLocator::Ask(std::uint16_t message, std::string_view fileName,
                                 FileFilter filter) {
    m_prompts.ShowMessage(MessageIcon::Exclamation, m_language.GetLanguageString(message));
    FileQuestion question;
    question.initialFolder = m_settings.Values().totalCommanderFolder;
    question.fileName = fileName;
    question.filter = filter;
    return m_prompts.BrowseForOpen(question);
}

std::string SettingsLocator::FindWincmdIni() {
    const std::string candidate = RegistryCandidate("IniFileName");
    if (candidate != MissingValueMarker && ResolveSettingsPath(candidate, m_foundWincmd)) {
        return m_foundWincmd;
    }
    std::string earlier = ExpandPathVariables(m_settings.Values().userDefinedWincmd, m_environment);
    if (FileExists(earlier, m_files)) {
        return earlier;
    }
    std::string chosen = Ask(text::kCannotFindWincmdIni, "Wincmd.ini", FileFilter::WincmdIni);
    m_settings.WriteNow(&OwnSettings::userDefinedWincmd, chosen);
    return chosen == MissingValueMarker ? std::string()
                                        : ExpandPathVariables(chosen, m_environment);
}

std::string SettingsLocator::FindWcxFtpIni() {
    std::string& found = m_settings.Values().wcxFtpFile;
    const std::string candidate = RegistryCandidate("FtpIniName");
    if (candidate != MissingValueMarker && ResolveSettingsPath(candidate, found)) {
        return found;
    }
    std::string earlier = ExpandPathVariables(m_settings.Values().userDefinedWcxFtp, m_environment);
    if (FileExists(earlier, m_files)) {
        return earlier;
    }
    std::string chosen = Ask(text::kCannotFindWcxFtpIni, "Wcx_ftp.ini", FileFilter::WcxFtpIni);
    m_settings.WriteNow(&OwnSettings::userDefinedWcxFtp, chosen);
    return chosen;
}

}  // namespace tamarind
