#include "model/session/Workplace.h"

#include <utility>

#include "core/files/Paths.h"
#include "model/program/StringTable.h"
#include "model/session/Messages.h"

namespace tamarind {

Workplace::Workplace(SessionServices services)
    : m_services(std::move(services)),
      m_settings(m_services.files, m_services.environment, m_services.programFolder,
                 m_services.screen),
      m_language(m_services.files, m_settings.Values()),
      m_options(m_settings, m_services.prompts, m_services.programFolder + "Languages\\", *this) {}

std::string Workplace::Text(std::uint16_t number, std::initializer_list<std::string> values) const {
    std::string text = Text(number);
    char place = '1';
    for (const std::string& value : values) {
        const std::size_t at = text.find({'%', place++});
        if (at != std::string::npos) {
            text.replace(at, 2, value);
        }
    }
    return text;
}

std::string Workplace::Label(std::uint16_t number) const {
    std::string text = Text(number);
    const std::size_t mark = text.find('&');
    if (mark == std::string::npos) {
        return text;
    }
    const bool isInBrackets = mark > 0 && text[mark - 1] == '(';
    return isInBrackets ? text.substr(0, mark - 1) : text.erase(mark, 1);
}

std::string Workplace::LanguageName() const {
    const tamarind::OwnSettings& settings = m_settings.Values();
    const std::string_view file = settings.useDefaultLanguage != 0
                                      ? std::string_view("English")
                                      : FileNameOfPath(settings.languageFile);
    return std::string(file.substr(0, file.rfind('.')));
}

void Workplace::LoadLanguage() {
    if (!m_language.Load()) {
        UseBuiltInLanguage();
    }
}

void Workplace::RefreshLanguage() {
    if (!m_language.Refresh()) {
        UseBuiltInLanguage();
        m_listeners.Tell(&WorkplaceListener::OnLanguageChanged);
    }
}

void Workplace::UseLanguage(const std::string& path) {
    m_settings.SetLanguageFile(path);
    m_settings.Values().useDefaultLanguage = 0;
    m_settings.SaveSettings();
    LoadLanguage();
    m_listeners.Tell(&WorkplaceListener::OnLanguageChanged);
}

// Until another one is chosen, or the program ends.
void Workplace::UseBuiltInLanguage() {
    auto& settings = m_settings.Values();
    settings.useDefaultLanguage = 1;
    m_missingLanguage = settings.languageFile;
    m_services.prompts.ShowMessage(MessageIcon::Critical, Text(text::kCannotFindLanguageFile));
}

// The file of the own settings still names the language that is missing, which was said already.
void Workplace::OnOptionsRead() {
    auto& settings = m_settings.Values();
    if (m_missingLanguage == settings.languageFile) {
        settings.useDefaultLanguage = 1;
    }
}

void Workplace::OnOptionsApplied(const WriteResult& saved) {
    m_missingLanguage.reset();
    m_listeners.Tell(&WorkplaceListener::OnLookChanged);
    if (!saved.Succeeded()) {
        Messages(*this).ReportFailure(text::kCannotSaveFile, m_settings.Path(), saved);
    }
}

// The settings may name another language although nobody chose one here: the dialog has read them
// again, and another copy of the program may have changed them.
void Workplace::OnOptionsEnd() {
    if (!m_language.IsThatOfSettings()) {
        LoadLanguage();
        m_listeners.Tell(&WorkplaceListener::OnLanguageChanged);
        m_listeners.Tell(&WorkplaceListener::OnLanguageChosen);
    }
}

std::int32_t OwnSettings::*Workplace::SettingOf(WindowPart part) {
    switch (part) {
        case WindowPart::Toolbar:
            return &OwnSettings::toolbarVisible;
        case WindowPart::Description:
            return &OwnSettings::descriptionVisible;
        case WindowPart::ValueBar:
            return &OwnSettings::valueBarVisible;
        case WindowPart::FilterBar:
            return &OwnSettings::filterBarVisible;
        default:
            return &OwnSettings::undescribedVisible;
    }
}

void Workplace::SetVisible(WindowPart part, bool isVisible) {
    m_settings.Values().*SettingOf(part) = isVisible ? 1 : 0;
    TellCommandsChanged();
}

void Workplace::ShowHelpTopics() {
    for (const char* const name : {"Readme.chm", "help\\index.html"}) {
        const std::string path = m_services.programFolder + name;
        if (FileExists(path, Disk())) {
            m_services.programs.OpenDocument(path);
            return;
        }
    }
    m_services.prompts.ShowMessage(MessageIcon::Critical, Text(text::kFileNotFound));
}

}  // namespace tamarind
