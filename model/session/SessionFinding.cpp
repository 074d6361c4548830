// The part of EditorSession that finds keys and keeps things for later: search, favorites, recent
// files, descriptions and exchange files.
#include "core/files/Paths.h"
#include "core/text/MissingValueMarker.h"
#include "core/text/Unicode.h"
#include "model/files/DescriptionWriter.h"
#include "model/files/ExchangeFile.h"
#include "model/program/StringTable.h"
#include "model/session/EditorSession.h"

namespace tamarind {
namespace {

constexpr std::string_view kRecentPrefix = "RecentFiles";

}  // namespace

void EditorSession::SetSearchText(const std::string& text) {
    m_search.SetText(text);
    m_listener->OnCommandsChanged();
}

void EditorSession::FindNextString() {
    if (!m_search.CanFind()) {
        m_services.prompts.Beep();
        return;
    }
    m_listener->OnBeforeChange();
    const auto hit = m_search.FindNext(m_store);
    if (hit) {
        GoToKey(hit->key);
        if (!m_search.SearchesNames()) {
            m_listener->OnDescriptionHit(hit->start, hit->length);
        }
    }
    // Behind a hit in the last key there is nothing more to come, which is said at once.
    if (!hit || hit->key >= m_keys.Size()) {
        m_services.prompts.ShowMessage(MessageIcon::Information,
                                       Text(text::kCannotFind) + " \"" + m_search.Text() + "\"");
    }
}

void EditorSession::CreateFavoritesList(bool updateOrganizer) {
    m_favorites.CreateFavoritesList();
    m_listener->OnFavoritesChanged();
    if (updateOrganizer && m_isOrganizerOpen && !m_favorites.Items().empty()) {
        m_organizer.Append(m_favorites.Items().back());
        m_listener->OnFavoriteAppended();
    }
}

std::optional<std::string> EditorSession::BeginAddFavorite() {
    if (m_favorites.IsFull()) {
        m_services.prompts.ShowMessage(MessageIcon::Information, Text(text::kTooManyFavorites));
        return std::nullopt;
    }
    if (m_currentKey == 0) {
        return std::nullopt;
    }
    std::string name(m_store.KeyName(m_currentKey));
    if (m_favorites.FavoriteExists(name)) {
        m_services.prompts.ShowMessage(MessageIcon::Critical, Text(text::kIsFavoriteAlready));
        return std::nullopt;
    }
    return name;
}

bool EditorSession::AddFavorite(const std::string& name, const std::string& caption) {
    const FavoritesChange change = m_favorites.Add(name, caption);
    if (!change.Succeeded()) {
        ReportFavorites(change);
        return false;
    }
    CreateFavoritesList(true);
    return true;
}

void EditorSession::ReportFavorites(const FavoritesChange& change) {
    if (change.isTooLong) {
        m_services.prompts.ShowMessage(MessageIcon::Exclamation, Text(text::kFavoritesTooLong));
    } else {
        ReportFailure(text::kCannotSaveFile, m_settings.Path(), change.saved);
    }
}

bool EditorSession::FavoriteDefinition(std::string_view name) {
    for (RowKey key = 1; key <= m_store.Size(); ++key) {
        if (EqualsIgnoreCase(m_store.KeyName(key), name)) {
            m_listener->OnBeforeChange();
            GoToKey(key);
            return true;
        }
    }
    m_services.prompts.ShowMessage(MessageIcon::Critical, Text(text::kFavoriteNotFound));
    return false;
}

void EditorSession::SetOrganizerOpen(bool isOpen) {
    m_isOrganizerOpen = isOpen;
    if (isOpen) {
        m_organizer.Fill(m_favorites.Items());
    }
}

bool EditorSession::OrganizerDefinition(bool beeps) {
    const auto row = m_organizer.Selected();
    if (!row) {
        return false;
    }
    const Favorite& favorite = m_organizer.Rows()[*row];
    if (beeps && favorite.IsSeparator()) {
        m_services.prompts.Beep();
        return false;
    }
    return FavoriteDefinition(favorite.name);
}

bool EditorSession::ApplyOrganizer() {
    m_favorites.CreateFavoritesList();
    FavoritesChange change;
    change.isTooLong = m_favorites.IsCut();
    if (!change.isTooLong) {
        m_organizer.AppendUnknown(m_favorites.Items());
        change = m_favorites.Replace(m_organizer.Rows());
    }
    if (!change.Succeeded()) {
        ReportFavorites(change);
        return false;
    }
    m_organizer.SetApplied();
    CreateFavoritesList();
    return true;
}

void EditorSession::StoreFavoriteWindow(std::int32_t left, std::int32_t top, std::int32_t width,
                                        std::int32_t height) {
    Settings& settings = m_settings.Values();
    settings.favoriteWindowLeft = left;
    settings.favoriteWindowTop = top;
    settings.favoriteWindowWidth = width;
    settings.favoriteWindowHeight = height;
    m_settings.WriteFavoriteWindow();
}

void EditorSession::LoadLanguage() {
    if (!m_language.Load()) {
        UseBuiltInLanguage();
    }
}

void EditorSession::RefreshLanguage() {
    if (!m_language.Refresh()) {
        UseBuiltInLanguage();
        ShowLanguage();
    }
}

// Until another one is chosen, or the program ends.
void EditorSession::UseBuiltInLanguage() {
    Settings& settings = m_settings.Values();
    settings.useDefaultLanguage = 1;
    m_missingLanguage = settings.languageFile;
    m_services.prompts.ShowMessage(MessageIcon::Critical, Text(text::kCannotFindLanguageFile));
}

void EditorSession::ShowLanguage() {
    m_store.SetNoDescription(Text(text::kNoDescription));
    m_listener->OnLanguageChanged();
    CreateFavoritesList();
}

void EditorSession::BeginOptions() {
    m_options.Begin();
    Settings& settings = m_settings.Values();
    // The file of settings still names the language that is missing, which was said already.
    if (m_missingLanguage == settings.languageFile) {
        settings.useDefaultLanguage = 1;
    }
}

bool EditorSession::ApplyOptions() {
    m_missingLanguage.reset();
    const WriteResult result = m_options.Apply();
    m_listener->OnLookChanged();
    if (!result.Succeeded()) {
        ReportFailure(text::kCannotSaveFile, m_settings.Path(), result);
    }
    return result.Succeeded();
}

// The settings may name another language although nobody chose one here: the dialog has read them
// again, and another copy of the program may have changed them.
void EditorSession::EndOptions() {
    if (!m_language.IsThatOfSettings()) {
        LoadLanguage();
        ShowLanguage();
    }
}

void EditorSession::ShowHelpTopics() {
    for (const char* const name : {"Readme.chm", "help\\index.html"}) {
        const std::string path = m_services.programFolder + name;
        if (FileExists(path, m_services.files.Files())) {
            m_services.programs.OpenDocument(path);
            return;
        }
    }
    m_services.prompts.ShowMessage(MessageIcon::Critical, Text(text::kFileNotFound));
}

void EditorSession::SetUpRecentFiles() {
    m_recentFiles.Setup(static_cast<std::int16_t>(m_settings.Values().numberOfRecentFiles));
    m_recentFiles.ReadList(m_settings.Path(), SettingsStore::kSection, kRecentPrefix);
}

void EditorSession::SaveRecentFiles() {
    m_recentFiles.SaveList(m_settings.Path(), SettingsStore::kSection, kRecentPrefix);
}

void EditorSession::OpenRecentFile(std::int16_t index) {
    const std::string& entry = m_recentFiles.ListItems(index);
    if (entry == MissingValueMarker) {
        return;
    }
    const std::string path = ExpandPathVariables(entry, m_services.environment);
    if (!FileExists(path, m_services.files.Files())) {
        m_services.prompts.ShowMessage(
            MessageIcon::Exclamation,
            Text(text::kCannotFindFile) + " " + path + "\n\n" + Text(text::kVerifyPath));
        RemoveRecentFile(std::string(entry));
        return;
    }
    m_listener->OnBeforeChange();
    if (MayLeaveFiles()) {
        OpenSettingsFile(path, true);
    }
}

// Another window may have changed the list meanwhile.
void EditorSession::AddRecentFile(const std::string& path) {
    SetUpRecentFiles();
    m_recentFiles.AddFile(path);
    SaveRecentFiles();
}

void EditorSession::RemoveRecentFile(const std::string& path) {
    SetUpRecentFiles();
    for (std::int16_t index = m_recentFiles.Max(); index > 0; --index) {
        if (m_recentFiles.ListItems(index) == path) {
            m_recentFiles.RemoveFile(index);
        }
    }
    SaveRecentFiles();
}

void EditorSession::ClearRecentFiles() {
    if (m_recentFiles.Clear()) {
        SaveRecentFiles();
    }
}

void EditorSession::ChangeDescription(std::string_view text) {
    if (MaxDescriptionUnits() == 0) {
        return;
    }
    m_store.SetDescription(m_currentKey, StoredDescription(text));
    if (!m_isDataFileModified) {
        m_isDataFileModified = true;
        m_listener->OnCommandsChanged();
    }
}

std::size_t EditorSession::MaxDescriptionUnits() const {
    return m_currentKey == 0 ? 0 : tamarind::MaxDescriptionUnits(m_store, m_currentKey);
}

bool EditorSession::SaveDataFile() {
    if (!m_isDataFileModified) {
        return true;
    }
    const DescriptionResult result =
        WriteDescriptions(m_store, m_services.files, m_dataFilePath, m_dataFileOnDisk, [this] {
            const std::string question = m_dataFilePath + "\n\n" + Text(text::kDataFileChanged);
            return m_services.prompts.Ask(question) == Answer::Yes;
        });
    if (!result.written.Succeeded()) {
        ReportFailure(text::kCannotSaveFile, m_dataFilePath, result.written);
    }
    if (!result.written.Succeeded() || result.isCancelled) {
        return false;
    }
    m_isDataFileModified = false;
    m_listener->OnCommandsChanged();
    return true;
}

bool EditorSession::AskSaveDataFile() {
    return !m_isDataFileModified ||
           AskToSave(Text(text::kSaveDataFile), &EditorSession::SaveDataFile);
}

bool EditorSession::MayLeaveFiles() {
    return AskSaveSettings() && AskSaveDataFile();
}

// Where settings files are asked for: Total Commander's folder, or else that of the present one.
std::string EditorSession::SettingsFolder() const {
    const std::string folder = m_services.environment.Variable("Commander_Path");
    if (!folder.empty()) {
        return AddBackslash(folder);
    }
    return std::string(IsGivenPath(m_settingsPath) ? FolderOfPath(m_settingsPath) : "");
}

// Which file to exchange keys with: its name, or the MissingValueMarker.
std::string EditorSession::AskExchangeFile(bool isExport) {
    m_listener->OnBeforeChange();
    FileQuestion question;
    question.initialFolder = SettingsFolder();
    question.filter =
        m_target == SettingsTarget::Wincmd ? FileFilter::WincmdIni : FileFilter::WcxFtpIni;
    question.title = Text(isExport ? text::kExport : text::kImport);
    return isExport ? m_services.prompts.BrowseForSave(question)
                    : m_services.prompts.BrowseForOpen(question);
}

void EditorSession::ExportKeys() {
    const std::string path = AskExchangeFile(true);
    if (path == MissingValueMarker) {
        return;
    }
    const WriteResult result = WriteExchangeFile(m_store, m_keys, m_services.files, path);
    if (!result.Succeeded()) {
        ReportFailure(text::kCannotSaveFile, path, result);
    } else if (!HasSetKey(m_keys, m_store)) {
        // Without a line to write no file is made.
        m_services.prompts.ShowMessage(MessageIcon::Information, Text(text::kNothingExported));
    }
}

void EditorSession::ImportKeys() {
    const std::string path = AskExchangeFile(false);
    if (path == MissingValueMarker) {
        return;
    }
    const IniSnapshot file = m_services.files.Read(path);
    // A file that is there but can not be read says nothing of any key.
    if (file.error != FileError::None && !IsMissing(file.error)) {
        ReportUnreadable(path, file.error);
        return;
    }
    const std::vector<RowKey> skipped = ReadExchangeFile(*file.document, m_keys, m_store);
    m_shownNode.reset();
    SelectCategory(m_selectedNode);
    m_listener->OnCommandsChanged();
    if (!skipped.empty()) {
        std::string message = Text(text::kLongValuesSkipped) + "\n";
        for (const RowKey key : skipped) {
            message += "\n" + std::string(m_store.KeyName(key));
        }
        m_services.prompts.ShowMessage(MessageIcon::Exclamation, message);
    }
}

void EditorSession::ReportFailure(std::uint16_t message, const std::string& path,
                                  const WriteResult& result) {
    m_services.prompts.ShowMessage(MessageIcon::Exclamation,
                                   Text(message) + " " + path + "\n\n" + Reason(result));
}

}  // namespace tamarind
