#include "model/program/SettingsStore.h"

#include <algorithm>
#include <iterator>
#include <variant>

#include "core/files/Paths.h"
#include "core/ini/IniParser.h"
#include "core/ini/cProfile.h"
#include "core/text/LeadingNumber.h"
#include "core/text/MissingValueMarker.h"

namespace tamarind {
namespace {

constexpr std::string_view kEditor = SettingsStore::kSection;
constexpr std::string_view kCommon = "Common";
constexpr std::string_view kFileName = "tamarind editors.ini";
constexpr std::string_view kUserFolder = "Tamarind Editors";

// When a setting is written to the file.
enum class Written {
    OnSave,
    OnSaveUnlessMaximized,
    WithFavoriteWindow,
    AtOnce,  // by WriteNow
    Never,   // set by hand only
};

using Member = std::variant<std::int32_t Settings::*, std::string Settings::*>;

struct SettingRow {
    std::string_view key;
    std::string_view section;
    Member member;
    std::string_view defaultWhenRead;
    // For a new user; nothing (null) leaves the setting out of the new file.
    const char* firstStart;
    Written written;
    bool isRead = true;
};

// One row for each setting, in the order in which a new file lists them. The default "@" means that
// ReadDefault works it out. The misspelt names "MainWindowMaxmized" and "FavoritesOroganizeVisible"
// are those of existing files.
constexpr SettingRow kRows[] = {
    {"FixedBorders", kEditor, &Settings::fixedBorders, "1", "1", Written::OnSave},
    {"FlatUserInterface", kEditor, &Settings::flatUserInterface, "0", "0", Written::OnSave},
    {"ForegroundColor", kEditor, &Settings::foregroundColor, "-2147483640", "-2147483640",
     Written::OnSave},
    {"BackgroundColor", kEditor, &Settings::backgroundColor, "-2147483643", "-2147483643",
     Written::OnSave},
    {"FontName", kEditor, &Settings::fontName, "MS Sans Serif", "MS Sans Serif", Written::OnSave},
    {"FontScript", kEditor, &Settings::fontScript, "1", "1", Written::OnSave},
    {"FontSize", kEditor, &Settings::fontSize, "10", "10", Written::OnSave},
    {"FontStyle", kEditor, &Settings::fontStyle, "0", "0", Written::OnSave},
    {"UseDefaultLanguage", kEditor, &Settings::useDefaultLanguage, "1", "1", Written::OnSave},
    {"LanguageFile", kCommon, &Settings::languageFile, MissingValueMarker, nullptr,
     Written::OnSave},
    {"MainWindowLeft", kEditor, &Settings::mainWindowLeft, "0", "@",
     Written::OnSaveUnlessMaximized},
    {"MainWindowTop", kEditor, &Settings::mainWindowTop, "0", "@", Written::OnSaveUnlessMaximized},
    {"MainWindowWidth", kEditor, &Settings::mainWindowWidth, "8610", "9000",
     Written::OnSaveUnlessMaximized},
    {"MainWindowHeight", kEditor, &Settings::mainWindowHeight, "7230", "7000",
     Written::OnSaveUnlessMaximized},
    {"MainWindowMaxmized", kEditor, &Settings::mainWindowMaximized, "0", "0", Written::OnSave},
    {"ToolbarVisible", kEditor, &Settings::toolbarVisible, "1", nullptr, Written::OnSave},
    {"NumberOfRecentFiles", kCommon, &Settings::numberOfRecentFiles, "9", nullptr, Written::OnSave},
    {"AlwaysRestartTC", kEditor, &Settings::alwaysRestartTC, "0", nullptr, Written::OnSave},
    {"CommandListShowLines", kEditor, &Settings::commandListShowLines, "0", "0", Written::OnSave},
    {"ActiveKeyForeColor", kEditor, &Settings::activeKeyForeColor, "16711680", "16711680",
     Written::OnSave},
    {"AutoSelectNextKey", kEditor, &Settings::autoSelectNextKey, "0", "0", Written::OnSave},
    {"DescriptionPanelHeight", kEditor, &Settings::descriptionPanelHeight, "4000", "4000",
     Written::OnSave},
    {"SplitPosition", kEditor, &Settings::splitPosition, "4000", "4000", Written::OnSave},
    {"DescriptionVisible", kEditor, &Settings::descriptionVisible, "1", nullptr, Written::OnSave},
    {"FavoritesOroganizeVisible", kEditor, &Settings::favoritesOrganizeVisible, "0", nullptr,
     Written::OnSave},
    {"WcxftpFile", kEditor, &Settings::wcxFtpFile, "", nullptr, Written::OnSave, false},
    {"TCInstallDir", kCommon, &Settings::totalCommanderFolder, "@", nullptr, Written::Never},
    {"ShowControlsBackColor", kCommon, &Settings::showControlsBackColor, "0", nullptr,
     Written::Never},
    {"FavoriteWindowLeft", kEditor, &Settings::favoriteWindowLeft, "0", nullptr,
     Written::WithFavoriteWindow},
    {"FavoriteWindowTop", kEditor, &Settings::favoriteWindowTop, "0", nullptr,
     Written::WithFavoriteWindow},
    {"FavoriteWindowWidth", kEditor, &Settings::favoriteWindowWidth, "2600", nullptr,
     Written::WithFavoriteWindow},
    {"FavoriteWindowHeight", kEditor, &Settings::favoriteWindowHeight, "7020", nullptr,
     Written::WithFavoriteWindow},
    {"WincmdDataFile", kEditor, &Settings::wincmdDataFile, "@", nullptr, Written::AtOnce},
    {"WcxftpDataFile", kEditor, &Settings::wcxFtpDataFile, "@", nullptr, Written::AtOnce},
    {"StartUpIniFile", kEditor, &Settings::startUpIniFile, "Wincmd", nullptr, Written::AtOnce},
    {"UserDefinedWincmd", kCommon, &Settings::userDefinedWincmd, MissingValueMarker, nullptr,
     Written::AtOnce},
    {"UserDefinedWcxftp", kEditor, &Settings::userDefinedWcxFtp, "", nullptr, Written::AtOnce},
};

bool IsMember(const SettingRow& row, const Member& member) {
    return row.member == member;
}

// Whether it is one of the settings that are held back while they are not applied.
bool IsLook(const SettingRow& row) {
    const Member look[] = {&Settings::foregroundColor,    &Settings::backgroundColor,
                           &Settings::activeKeyForeColor, &Settings::fontName,
                           &Settings::fontScript,         &Settings::fontSize,
                           &Settings::fontStyle};
    return std::ranges::find(look, row.member) != std::end(look);
}

std::size_t RowOf(const Member& member) {
    const auto* const row = std::ranges::find(kRows, member, &SettingRow::member);
    return static_cast<std::size_t>(row - std::begin(kRows));
}

}  // namespace

SettingsStore::SettingsStore(IniFiles& files, const Environment& environment,
                             std::string programFolder, ScreenSize screen)
    : m_files(files),
      m_environment(environment),
      m_programFolder(std::move(programFolder)),
      m_screen(screen),
      m_path(m_programFolder + std::string(kFileName)),
      m_stored(std::size(kRows)) {}

std::string SettingsStore::TextOf(std::size_t row) const {
    if (const auto* number = std::get_if<std::int32_t Settings::*>(&kRows[row].member)) {
        return std::to_string(m_values.**number);
    }
    return m_values.*std::get<std::string Settings::*>(kRows[row].member);
}

void SettingsStore::SetText(std::size_t row, const std::string& text) {
    if (const auto* number = std::get_if<std::int32_t Settings::*>(&kRows[row].member)) {
        m_values.** number = LeadingInteger(text);
    } else {
        m_values.*std::get<std::string Settings::*>(kRows[row].member) = text;
    }
}

std::string SettingsStore::ReadDefault(std::size_t row) const {
    const SettingRow& setting = kRows[row];
    if (IsMember(setting, &Settings::wincmdDataFile)) {
        return m_programFolder + "Data Files\\tc all keys english.tmdf";
    }
    if (IsMember(setting, &Settings::wcxFtpDataFile)) {
        return m_programFolder + "Data Files\\tc wcx_ftp keys english.tmdf";
    }
    if (IsMember(setting, &Settings::totalCommanderFolder)) {
        return m_environment.Variable("Commander_Path");
    }
    return std::string(setting.defaultWhenRead);
}

void SettingsStore::SetFirstStartDefaults() {
    for (std::size_t row = 0; row < std::size(kRows); ++row) {
        SetText(row, kRows[row].firstStart != nullptr ? kRows[row].firstStart : ReadDefault(row));
    }
    m_values.mainWindowLeft = (m_screen.width - m_values.mainWindowWidth) / 2;
    m_values.mainWindowTop = (m_screen.height - m_values.mainWindowHeight) / 2;
}

// Also enforces the limits that hold whatever the file says.
void SettingsStore::Derive() {
    m_values.expandedLanguageFile = ExpandPathVariables(m_values.languageFile, m_environment);
    m_values.numberOfRecentFiles = std::clamp(m_values.numberOfRecentFiles, 2, 16);
    m_values.splitPosition = std::max(m_values.splitPosition, 0);
    if (m_values.totalCommanderFolder.empty()) {
        m_values.totalCommanderFolder = m_environment.Variable("windir");
    }
    m_values.totalCommanderFolder = AddBackslash(m_values.totalCommanderFolder);
}

void SettingsStore::RememberAll() {
    for (std::size_t row = 0; row < std::size(kRows); ++row) {
        m_stored[row] = TextOf(row);
    }
}

// Makes the file of a new user. False if that is not possible; Values() then has what it would
// hold.
bool SettingsStore::MakeFile(const std::string& path) {
    SetFirstStartDefaults();
    ProfileTransaction transaction(m_files, path);
    for (std::size_t row = 0; row < std::size(kRows); ++row) {
        if (kRows[row].firstStart != nullptr) {
            transaction.SetValue(kRows[row].section, kRows[row].key, TextOf(row));
        }
    }
    return transaction.Commit().Succeeded();
}

// A file beside the program comes first, so that the program can run from a memory stick.
bool SettingsStore::Locate() {
    m_path = m_programFolder + std::string(kFileName);
    FileSystem& disk = m_files.Files();
    if (FileExists(m_path, disk) || MakeFile(m_path)) {
        return true;
    }
    const std::string userFolder = m_environment.Variable("APPDATA");
    if (userFolder.empty()) {
        return false;
    }
    const std::string folder = AddBackslash(userFolder) + std::string(kUserFolder);
    const std::string path = AddBackslash(folder) + std::string(kFileName);
    if (!FileExists(path, disk)) {
        disk.MakeFolder(folder);
        if (!MakeFile(path)) {
            return false;
        }
    }
    m_path = path;
    return true;
}

void SettingsStore::LoadSettings() {
    if (!Locate()) {
        Derive();
        RememberAll();
        return;
    }
    m_file = m_files.Read(m_path).document;
    for (std::size_t row = 0; row < std::size(kRows); ++row) {
        ReadRow(*m_file, row);
    }
    Derive();
    RememberAll();
}

void SettingsStore::ReadRow(const IniDocument& file, std::size_t row) {
    const auto value =
        kRows[row].isRead ? file.FindValue(kRows[row].section, kRows[row].key) : std::nullopt;
    SetText(row, value ? std::string(CutToBuffer(*value)) : ReadDefault(row));
}

void SettingsStore::ReloadOptions() {
    const IniSnapshot snapshot = m_files.Read(m_path);
    if (snapshot.error != FileError::None) {
        return;
    }
    for (const Member member :
         {Member(&Settings::commandListShowLines), Member(&Settings::fixedBorders),
          Member(&Settings::flatUserInterface), Member(&Settings::foregroundColor),
          Member(&Settings::backgroundColor), Member(&Settings::activeKeyForeColor),
          Member(&Settings::fontName), Member(&Settings::fontScript), Member(&Settings::fontSize),
          Member(&Settings::fontStyle), Member(&Settings::useDefaultLanguage),
          Member(&Settings::languageFile), Member(&Settings::alwaysRestartTC),
          Member(&Settings::autoSelectNextKey)}) {
        const std::size_t row = RowOf(member);
        ReadRow(*snapshot.document, row);
        m_stored[row] = TextOf(row);
    }
    m_isLookApplied = true;
    Derive();
}

void SettingsStore::SetLanguageFile(const std::string& path) {
    m_values.languageFile = path;
    Derive();
}

// Of those settings of which `isWritten` is true, in one step, those that changed since they were
// read or last written.
template <typename IsWritten>
// Writes the settings that have changed and of which `isWritten` is true, all in one step.
WriteResult SettingsStore::WriteChanged(IsWritten isWritten) {
    ProfileTransaction transaction(m_files, m_path);
    std::vector<std::string> texts = m_stored;
    for (std::size_t row = 0; row < std::size(kRows); ++row) {
        std::string text(TrimIniSpaces(TextOf(row)));
        const bool isHeldBack = !m_isLookApplied && IsLook(kRows[row]);
        if (isWritten(kRows[row].written) && !isHeldBack && text != m_stored[row] &&
            text != MissingValueMarker) {
            transaction.SetValue(kRows[row].section, kRows[row].key, text);
            texts[row] = std::move(text);
        }
    }
    WriteResult saved = transaction.IsEmpty() ? WriteResult() : transaction.Commit();
    if (saved.Succeeded()) {
        m_stored = std::move(texts);
    }
    return saved;
}

WriteResult SettingsStore::SaveSettings() {
    return WriteChanged([&](Written written) {
        return written == Written::OnSave ||
               (written == Written::OnSaveUnlessMaximized && m_values.mainWindowMaximized == 0);
    });
}

void SettingsStore::WriteFavoriteWindow() {
    WriteChanged([](Written written) { return written == Written::WithFavoriteWindow; });
}

void SettingsStore::WriteNow(std::string Settings::*member, const std::string& value) {
    m_values.*member = value;
    const std::size_t row = RowOf(member);
    cProfile(m_files).WriteStringValue(kRows[row].section, kRows[row].key, value, m_path);
}

}  // namespace tamarind
