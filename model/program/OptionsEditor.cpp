#include "model/program/OptionsEditor.h"

#include <array>

#include "core/text/LeadingNumber.h"
#include "core/text/MissingValueMarker.h"

namespace tamarind {
namespace {

struct FlagRow {
    bool OptionsEditor::Choices::*choice;
    std::int32_t OwnSettings::*setting;
};
constexpr FlagRow kFlags[] = {
    {&OptionsEditor::Choices::showsGridLines, &OwnSettings::commandListShowLines},
    {&OptionsEditor::Choices::isFlat, &OwnSettings::flatUserInterface},
    {&OptionsEditor::Choices::hasFixedBorders, &OwnSettings::fixedBorders},
    {&OptionsEditor::Choices::restartsTotalCommander, &OwnSettings::alwaysRestartTC},
    {&OptionsEditor::Choices::selectsNextKey, &OwnSettings::autoSelectNextKey},
    {&OptionsEditor::Choices::usesDefaultLanguage, &OwnSettings::useDefaultLanguage},
};

constexpr std::int32_t kLightTheme = 1;
constexpr std::int32_t kDarkTheme = 2;

constexpr std::array<std::int32_t OwnSettings::*, 3> kColors = {
    &OwnSettings::foregroundColor, &OwnSettings::backgroundColor, &OwnSettings::activeKeyForeColor};

std::int32_t OwnSettings::*SettingOf(OptionsEditor::Color color) {
    return kColors[static_cast<std::size_t>(color)];
}

}  // namespace

OptionsEditor::OptionsEditor(OwnSettingsStore& settings, UserPrompts& prompts,
                             std::string languageFolder, OptionsListener& listener)
    : m_settings(settings),
      m_prompts(prompts),
      m_languageFolder(std::move(languageFolder)),
      m_listener(listener) {}

void OptionsEditor::Begin() {
    m_settings.ReloadOptions();
    const OwnSettings& settings = m_settings.Values();
    for (const FlagRow& row : kFlags) {
        m_choices.*row.choice = settings.*row.setting != 0;
    }
    m_choices.theme =
        settings.theme >= 0 && settings.theme <= kDarkTheme ? settings.theme : kLightTheme;
    m_choices.languageFile =
        settings.languageFile == MissingValueMarker ? std::string() : settings.languageFile;
    m_isChanged = false;
    m_listener.OnOptionsRead();
}

void OptionsEditor::SetFlag(bool Choices::*flag, bool isOn) {
    m_choices.*flag = isOn;
    m_isChanged = true;
}

void OptionsEditor::SetLanguageFile(const std::string& path) {
    m_choices.languageFile = path;
    m_isChanged = true;
}

void OptionsEditor::SetTheme(std::int32_t theme) {
    m_choices.theme = theme;
    m_isChanged = true;
}

bool OptionsEditor::BrowseLanguageFile() {
    FileQuestion question;
    question.initialFolder = m_languageFolder;
    question.filter = FileFilter::LanguageFile;
    const std::string path = m_prompts.BrowseForOpen(question);
    if (path == MissingValueMarker) {
        return false;
    }
    SetLanguageFile(path);
    return true;
}

bool OptionsEditor::SelectColor(Color color) {
    m_prompts.StartColorAt(ColorSetting(color));
    const std::string chosen = m_prompts.ColorSelect();
    if (chosen == MissingValueMarker) {
        return false;
    }
    m_settings.Values().*SettingOf(color) = LeadingInteger(chosen);
    m_settings.SetLookApplied(false);
    m_isChanged = true;
    return true;
}

bool OptionsEditor::SelectFont() {
    OwnSettings& settings = m_settings.Values();
    FontChoice font{settings.fontName, UsableFontSize(settings.fontSize), settings.fontStyle,
                    settings.fontScript};
    if (!m_prompts.FontSelect(font)) {
        return false;
    }
    settings.fontName = font.name;
    settings.fontSize = font.points;
    settings.fontStyle = font.style;
    settings.fontScript = font.charset;
    m_settings.SetLookApplied(false);
    m_isChanged = true;
    return true;
}

std::int32_t OptionsEditor::ColorSetting(Color color) const {
    return m_settings.Values().*SettingOf(color);
}

bool OptionsEditor::Apply() {
    OwnSettings& settings = m_settings.Values();
    for (const FlagRow& row : kFlags) {
        settings.*row.setting = m_choices.*row.choice ? 1 : 0;
    }
    settings.theme = m_choices.theme;
    // If no path was ever given, none is written.
    if (!m_choices.languageFile.empty() || settings.languageFile != MissingValueMarker) {
        m_settings.SetLanguageFile(m_choices.languageFile);
    }
    m_settings.SetLookApplied(true);
    const WriteResult saved = m_settings.SaveSettings();
    m_isChanged = !saved.Succeeded();
    m_listener.OnOptionsApplied(saved);
    return saved.Succeeded();
}

}  // namespace tamarind
