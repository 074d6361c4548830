#include "model/program/OwnSettingsStore.h"

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

constexpr std::string_view kEditor = OwnSettingsStore::kSection;
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

using Member = std::variant<std::int32_t OwnSettings::*, std::string OwnSettings::*>;

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
    {"FixedBorders", kEditor, &OwnSettings::fixedBorders, "1", "1", Written::OnSave},
    {"FlatUserInterface", kEditor, &OwnSettings::flatUserInterface, "0", "0", Written::OnSave},
    {"ForegroundColor", kEditor, &OwnSettings::foregroundColor, "-2147483640", "-2147483640",
     Written::OnSave},
    {"BackgroundColor", kEditor, &OwnSettings::backgroundColor, "-2147483643", "-2147483643",
     Written::OnSave},
    {"FontName", kEditor, &OwnSettings::fontName, "MS Sans Serif", "MS Sans Serif",
     Written::OnSave},
    {"FontScript", kEditor, &OwnSettings::fontScript, "1", "1", Written::OnSave},
    {"FontSize", kEditor, &OwnSettings::fontSize, "10", "10", Written::OnSave},
    {"FontStyle", kEditor, &OwnSettings::fontStyle, "0", "0", Written::OnSave},
    {"UseDefaultLanguage", kEditor, &OwnSettings::useDefaultLanguage, "1", "1", Written::OnSave},
    {"LanguageFile", kCommon, &OwnSettings::languageFile, MissingValueMarker, nullptr,
     Written::OnSave},
    {"MainWindowLeft", kEditor, &OwnSettings::mainWindowLeft, "0", "@",
     Written::OnSaveUnlessMaximized},
    {"MainWindowTop", kEditor, &OwnSettings::mainWindowTop, "0", "@",
     Written::OnSaveUnlessMaximized},
    {"MainWindowWidth", kEditor, &OwnSettings::mainWindowWidth, "8610", "9000",
     Written::OnSaveUnlessMaximized},
    {"MainWindowHeight", kEditor, &OwnSettings::mainWindowHeight, "7230", "7000",
     Written::OnSaveUnlessMaximized},
    {"MainWindowMaxmized", kEditor, &OwnSettings::mainWindowMaximized, "0", "0", Written::OnSave},
    {"ToolbarVisible", kEditor, &OwnSettings::toolbarVisible, "1", nullptr, Written::OnSave},
    {"NumberOfRecentFiles", kCommon, &OwnSettings::numberOfRecentFiles, "9", nullptr,
     Written::OnSave},
    {"AlwaysRestartTC", kEditor, &OwnSettings::alwaysRestartTC, "0", nullptr, Written::OnSave},
    {"CommandListShowLines", kEditor, &OwnSettings::commandListShowLines, "0", "0",
     Written::OnSave},
    {"ActiveKeyForeColor", kEditor, &OwnSettings::activeKeyForeColor, "16711680", "16711680",
     Written::OnSave},
    {"AutoSelectNextKey", kEditor, &OwnSettings::autoSelectNextKey, "0", "0", Written::OnSave},
    {"DescriptionPanelHeight", kEditor, &OwnSettings::descriptionPanelHeight, "4000", "4000",
     Written::OnSave},
    {"SplitPosition", kEditor, &OwnSettings::splitPosition, "4000", "4000", Written::OnSave},
    {"DescriptionVisible", kEditor, &OwnSettings::descriptionVisible, "1", nullptr,
     Written::OnSave},
    {"ValueBarVisible", kEditor, &OwnSettings::valueBarVisible, "1", nullptr, Written::OnSave},
    {"FilterBarVisible", kEditor, &OwnSettings::filterBarVisible, "1", nullptr, Written::OnSave},
    {"UndescribedVisible", kEditor, &OwnSettings::undescribedVisible, "1", nullptr,
     Written::OnSave},
    // Who had the program before keeps the colors that it had.
    {"Theme", kEditor, &OwnSettings::theme, "1", "0", Written::OnSave},
    {"RecentFilters", kEditor, &OwnSettings::recentFilters, "", nullptr, Written::OnSave},
    {"KeyListColumns", kEditor, &OwnSettings::keyListColumns, "", nullptr, Written::OnSave},
    {"FavoritesOroganizeVisible", kEditor, &OwnSettings::favoritesOrganizeVisible, "0", nullptr,
     Written::OnSave},
    {"WcxftpFile", kEditor, &OwnSettings::wcxFtpFile, "", nullptr, Written::OnSave, false},
    {"TCInstallDir", kCommon, &OwnSettings::totalCommanderFolder, "@", nullptr, Written::Never},
    {"ShowControlsBackColor", kCommon, &OwnSettings::showControlsBackColor, "0", nullptr,
     Written::Never},
    {"FavoriteWindowLeft", kEditor, &OwnSettings::favoriteWindowLeft, "0", nullptr,
     Written::WithFavoriteWindow},
    {"FavoriteWindowTop", kEditor, &OwnSettings::favoriteWindowTop, "0", nullptr,
     Written::WithFavoriteWindow},
    {"FavoriteWindowWidth", kEditor, &OwnSettings::favoriteWindowWidth, "2600", nullptr,
     Written::WithFavoriteWindow},
    {"FavoriteWindowHeight", kEditor, &OwnSettings::favoriteWindowHeight, "7020", nullptr,
     Written::WithFavoriteWindow},
    {"WincmdDataFile", kEditor, &OwnSettings::wincmdDataFile, "@", nullptr, Written::AtOnce},
    {"WcxftpDataFile", kEditor, &OwnSettings::wcxFtpDataFile, "@", nullptr, Written::AtOnce},
    {"StartUpIniFile", kEditor, &OwnSettings::startUpIniFile, "Wincmd", nullptr, Written::AtOnce},
    {"UserDefinedWincmd", kCommon, &OwnSettings::userDefinedWincmd, MissingValueMarker, nullptr,
     Written::AtOnce},
    {"UserDefinedWcxftp", kEditor, &OwnSettings::userDefinedWcxFtp, "", nullptr, Written::AtOnce},
};

bool IsMember(const SettingRow& row, const Member& member) {
    return row.member == member;
}

// Whether it is one of the settings that are held back while they are not applied.
bool IsLook(const SettingRow& row) {
    const Member look[] = {&OwnSettings::foregroundColor,    &OwnSettings::backgroundColor,
                           &OwnSettings::activeKeyForeColor, &OwnSettings::fontName,
                           &OwnSettings::fontScript,         &OwnSettings::fontSize,
                           &OwnSettings::fontStyle};
    return std::ranges::find(look, row.member) != std::end(look);
}

std::size_t RowOf(const Member& member) {
    const auto* const row = std::ranges::find(kRows, member, &SettingRow::member);
    return static_cast<std::size_t>(row - std::begin(kRows));
}

}  // namespace

OwnSettingsStore::OwnSettingsStore(IniFiles& files, const Environment& environment,
                                   std::string programFolder, ScreenSize screen)
    : m_files(files),
      m_environment(environment),
      m_programFolder(std::move(programFolder)),
      m_screen(screen),
      m_path(m_programFolder + std::string(kFileName)),
      m_stored(std::size(kRows)) {}

std::string OwnSettingsStore::TextOf(std::size_t row) const {
    if (const auto* number = std::get_if<std::int32_t OwnSettings::*>(&kRows[row].member)) {
        return std::to_string(m_values.**number);
    }
    return m_values.*std::get<std::string OwnSettings::*>(kRows[row].member);
}

void OwnSettingsStore::SetText(std::size_t row, const std::string& text) {
    if (const auto* number = std::get_if<std::int32_t OwnSettings::*>(&kRows[row].member)) {
        m_values.** number = LeadingInteger(text);
    } else {
        m_values.*std::get<std::string OwnSettings::*>(kRows[row].member) = text;
    }
}

std::string OwnSettingsStore::ReadDefault(std::size_t row) const {
    const SettingRow& setting = kRows[row];
    if (IsMember(setting, &OwnSettings::wincmdDataFile)) {
        return m_programFolder + "Data Files\\tc all keys english.tmdf";
    }
    if (IsMember(setting, &OwnSettings::wcxFtpDataFile)) {
        return m_programFolder + "Data Files\\tc wcx_ftp keys english.tmdf";
    }
    if (IsMember(setting, &OwnSettings::totalCommanderFolder)) {
        return m_environment.Variable("Commander_Path");
    }
    return std::string(setting.defaultWhenRead);
}

void OwnSettingsStore::SetFirstStartDefaults() {
    for (std::size_t row = 0; row < std::size(kRows); ++row) {
        SetText(row, kRows[row].firstStart != nullptr ? kRows[row].firstStart : ReadDefault(row));
    }
    m_values.mainWindowLeft = (m_screen.width - m_values.mainWindowWidth) / 2;
    m_values.mainWindowTop = (m_screen.height - m_values.mainWindowHeight) / 2;
}

// Also enforces the limits that hold whatever the file says.
void OwnSettingsStore::Derive() {
    m_values.expandedLanguageFile = ExpandPathVariables(m_values.languageFile, m_environment);
    m_values.numberOfRecentFiles = std::clamp(m_values.numberOfRecentFiles, 2, 16);
    m_values.splitPosition = std::max(m_values.splitPosition, 0);
    if (m_values.totalCommanderFolder.empty()) {
        m_values.totalCommanderFolder = m_environment.Variable("windir");
    }
    m_values.totalCommanderFolder = AddBackslash(m_values.totalCommanderFolder);
}

void OwnSettingsStore::RememberAll() {
    for (std::size_t row = 0; row < std::size(kRows); ++row) {
        m_stored[row] = TextOf(row);
    }
}

// Makes the file of a new user. False if that is not possible; Values() then has what it would
// hold.
bool OwnSettingsStore::MakeFile(const std::string& path) {
    SetFirstStartDefaults();
    ProfileTransaction transaction(m_files, path);
    for (std::size_t row = 0; row < std::size(kRows); ++row) {
        if (kRows[row].firstStart != nullptr) {
            transaction.SetValue(kRows[row].section, kRows[row].key, TextOf(row));
        }
    }
    m_isNew = transaction.Commit().Succeeded();
    return m_isNew;
}

// A file beside the program comes first, so that the program can run from a memory stick.
bool OwnSettingsStore::Locate() {
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

void OwnSettingsStore::LoadSettings() {
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

void OwnSettingsStore::ReadRow(const IniDocument& file, std::size_t row) {
    const auto value =
        kRows[row].isRead ? file.FindValue(kRows[row].section, kRows[row].key) : std::nullopt;
    SetText(row, value ? std::string(CutToBuffer(*value)) : ReadDefault(row));
}

void OwnSettingsStore::ReloadOptions() {
    const IniSnapshot snapshot = m_files.Read(m_path);
    if (snapshot.error != FileError::None) {
        return;
    }
    for (const Member member :
         {Member(&OwnSettings::commandListShowLines), Member(&OwnSettings::fixedBorders),
          Member(&OwnSettings::flatUserInterface), Member(&OwnSettings::foregroundColor),
          Member(&OwnSettings::backgroundColor), Member(&OwnSettings::activeKeyForeColor),
          Member(&OwnSettings::fontName), Member(&OwnSettings::fontScript),
          Member(&OwnSettings::fontSize), Member(&OwnSettings::fontStyle),
          Member(&OwnSettings::useDefaultLanguage), Member(&OwnSettings::languageFile),
          Member(&OwnSettings::alwaysRestartTC), Member(&OwnSettings::autoSelectNextKey),
          Member(&OwnSettings::theme)}) {
        const std::size_t row = RowOf(member);
        ReadRow(*snapshot.document, row);
        m_stored[row] = TextOf(row);
    }
    m_isLookApplied = true;
    Derive();
}

void OwnSettingsStore::SetLanguageFile(const std::string& path) {
    m_values.languageFile = path;
    Derive();
}

// Of those settings of which `isWritten` is true, in one step, those that changed since they were
// read or last written.
template <typename IsWritten>
WriteResult OwnSettingsStore::WriteChanged(IsWritten isWritten) {
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

WriteResult OwnSettingsStore::SaveSettings() {
    return WriteChanged([&](Written written) {
        return written == Written::OnSave ||
               (written == Written::OnSaveUnlessMaximized && m_values.mainWindowMaximized == 0);
    });
}

void OwnSettingsStore::WriteFavoriteWindow() {
    WriteChanged([](Written written) { return written == Written::WithFavoriteWindow; });
}

void OwnSettingsStore::WriteNow(std::string OwnSettings::*member, const std::string& value) {
    m_values.*member = value;
    const std::size_t row = RowOf(member);
    cProfile(m_files).WriteStringValue(kRows[row].section, kRows[row].key, value, m_path);
}

}  // namespace tamarind
