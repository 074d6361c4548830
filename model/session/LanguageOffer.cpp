#include "model/session/LanguageOffer.h"

#include <algorithm>
#include <iterator>

#include "core/files/Paths.h"
#include "core/text/Unicode.h"
#include "model/program/StringTable.h"

namespace tamarind {
namespace {

constexpr DescribedLanguage kLanguages[] = {
    {0x07, "German.lng", "german", "German", "Deutsch"},
};

constexpr SettingsTarget kTargets[] = {SettingsTarget::Wincmd, SettingsTarget::WcxFtp};

std::string NameOfDataFile(SettingsTarget target, const std::string& language) {
    return (target == SettingsTarget::Wincmd ? "tc all keys " : "tc wcx_ftp keys ") + language +
           ".tmdf";
}

}  // namespace

std::uint64_t HashOfShippedFile(SettingsTarget target) {
    return target == SettingsTarget::Wincmd ? 15540208388091417298U : 17692104877844136851U;
}

// The text in that language, whichever the program speaks now.
std::string LanguageOffer::Translated(const DescribedLanguage& language,
                                      std::uint16_t number) const {
    const std::string path =
        m_workplace.Services().programFolder + "Languages\\" + language.languageFile;
    const IniSnapshot file = m_workplace.Files().Read(path);
    const auto found = file.document->FindValue("UserLanguage", std::to_string(number));
    std::string text(found.value_or(std::string_view()));
    if (const std::size_t at = text.find("%1"); at != std::string::npos) {
        text.replace(at, 2, language.nativeName);
    }
    return text;
}

// The data file in the language, where the English one that came with the program is in use as it
// came.
std::optional<std::string> LanguageOffer::Counterpart(const DescribedLanguage& language,
                                                      SettingsTarget target) const {
    const std::string folder = m_workplace.Services().programFolder + "Data Files\\";
    const std::string english = folder + NameOfDataFile(target, "english");
    const std::string other = folder + NameOfDataFile(target, language.word);
    FileSystem& disk = m_workplace.Disk();
    if (!EqualsIgnoreCase(m_dataFile.PathFor(target), english) || !FileExists(other, disk)) {
        return std::nullopt;
    }
    const FileContent content = disk.Read(english, FileSystem::kMaxFileBytes);
    const bool isAsShipped =
        content.error == FileError::None && HashBytes(content.bytes) == HashOfShippedFile(target);
    return isAsShipped ? std::optional(other) : std::nullopt;
}

void LanguageOffer::StoreDataFiles(const DescribedLanguage& language) const {
    for (const SettingsTarget target : kTargets) {
        if (const auto path = Counterpart(language, target)) {
            m_dataFile.Remember(*path);
        }
    }
}

void LanguageOffer::AtFirstStart(const std::string& commandLine) {
    const SessionServices& services = m_workplace.Services();
    const auto* const language =
        std::ranges::find(kLanguages, services.systemLanguage, &DescribedLanguage::systemLanguage);
    if (!commandLine.empty() || !m_workplace.OwnSettings().IsNew() ||
        language == std::end(kLanguages) || !Counterpart(*language, SettingsTarget::Wincmd)) {
        return;
    }
    const std::string translated = Translated(*language, text::kOfferLanguage);
    const std::string question = m_workplace.Text(text::kOfferLanguage, {language->name});
    if (!translated.empty() &&
        m_workplace.Prompts().AskWhetherSure(translated + "\n\n" + question)) {
        StoreDataFiles(*language);
        m_workplace.UseLanguage(services.programFolder + "Languages\\" + language->languageFile);
    }
}

std::optional<std::string> LanguageOffer::DataFileForLanguage() {
    const OwnSettings& settings = m_workplace.OwnSettings().Values();
    const std::string_view file = FileNameOfPath(settings.expandedLanguageFile);
    const auto* const language =
        std::ranges::find_if(kLanguages, [file](const DescribedLanguage& known) {
            return EqualsIgnoreCase(known.languageFile, file);
        });
    if (settings.useDefaultLanguage != 0 || language == std::end(kLanguages)) {
        return std::nullopt;
    }
    auto path = Counterpart(*language, m_dataFile.Target());
    if (!path || !EqualsIgnoreCase(m_dataFile.Path(), m_dataFile.PathFor(m_dataFile.Target())) ||
        !m_workplace.Prompts().AskWhetherSure(
            m_workplace.Text(text::kOfferDescriptions, {language->nativeName}))) {
        return std::nullopt;
    }
    StoreDataFiles(*language);
    return path;
}

}  // namespace tamarind
