#include "model/session/EditorSession.h"

#include "core/files/Paths.h"
#include "core/text/MissingValueMarker.h"
#include "core/text/Unicode.h"
#include "model/files/KeyStates.h"
#include "model/program/StringTable.h"

namespace tamarind {
namespace {

SessionListener silentListener;

constexpr std::uint64_t kProgressTicks = 500'000;  // 50 ms
constexpr int kProgressStride = 256;               // keys between two looks at the clock

// Which settings file this is, as far as its content tells.
std::optional<SettingsTarget> KindOfSettingsFile(const SettingsFiles::File& settings) {
    if (settings.error != FileError::None || settings.document->SectionCount() == 0) {
        return std::nullopt;
    }
    return settings.document->FindSection("Configuration") ? SettingsTarget::Wincmd
                                                           : SettingsTarget::WcxFtp;
}

std::string NameOfTarget(SettingsTarget target) {
    return target == SettingsTarget::Wincmd ? "Wincmd" : "Wcxftp";
}

}  // namespace

EditorSession::EditorSession(SessionServices services)
    : m_services(std::move(services)),
      m_settings(m_services.files, m_services.environment, m_services.programFolder,
                 m_services.screen),
      m_language(m_services.files, m_settings.Values()),
      m_locator(m_services.files.Files(), m_services.registry, m_services.environment, m_settings,
                m_language, m_services.prompts),
      m_listener(&silentListener),
      m_editor(m_store),
      m_totalCommander(m_services.programs, m_services.files, m_services.environment),
      m_options(m_settings, m_services.prompts, m_services.programFolder + "Languages\\"),
      m_favorites(m_services.files, m_settings.Path()),
      m_recentFiles(m_services.files, m_language, m_services.prompts) {}

void EditorSession::LoadSettings() {
    m_settings.LoadSettings();
    SetUpRecentFiles();
}

void EditorSession::SetListener(SessionListener* listener) {
    m_listener = listener != nullptr ? listener : &silentListener;
}

bool EditorSession::Activate(const std::string& commandLine) {
    std::string path = ChooseDataFile(commandLine);
    while (IsGivenPath(path) && !LoadDataFile(path)) {
        path = AskForDataFile("tc all keys english.tmdf");
        if (IsGivenPath(path)) {
            RememberDataFile(path);
        }
    }
    if (!IsGivenPath(path)) {
        return false;
    }
    if (!OpenSettingsFile(LocateTarget(), false)) {
        OpenSettingsFile({}, false);  // its keys can be looked at all the same
    }
    return true;
}

std::string EditorSession::StartUpDataFile(const std::string& commandLine) const {
    // The file association puts the path in double quotes, and nothing else is looked for: a "%" in
    // it is no more than a character.
    if (!commandLine.empty()) {
        return m_services.environment.FullPath(
            commandLine.size() < 2 ? std::string() : commandLine.substr(1, commandLine.size() - 2));
    }
    const Settings& settings = m_settings.Values();
    const bool isWincmd = EqualsIgnoreCase(settings.startUpIniFile, "Wincmd");
    return ResolvedPath(isWincmd ? settings.wincmdDataFile : settings.wcxFtpDataFile);
}

std::string EditorSession::ChooseDataFile(const std::string& commandLine) {
    std::string path = StartUpDataFile(commandLine);
    if (FileExists(path, m_services.files.Files())) {
        return path;
    }
    m_services.prompts.ShowMessage(MessageIcon::Critical, Text(text::kCannotFindDataFile));
    path = AskForDataFile("tc all keys english.tmdf");
    if (IsGivenPath(path)) {
        RememberDataFile(path);
    }
    return path;
}

std::string EditorSession::AskForDataFile(const std::string& fileName) {
    FileQuestion question;
    question.initialFolder = m_services.programFolder + "Data Files";
    question.fileName = fileName;
    question.filter = FileFilter::DataFile;
    return m_services.prompts.BrowseForOpen(question);
}

void EditorSession::RememberDataFile(const std::string& path) {
    const IniSnapshot file = m_services.files.Read(path);
    const bool isWincmd = GetDataFileTarget(*file.document) == SettingsTarget::Wincmd;
    m_settings.WriteNow(isWincmd ? &Settings::wincmdDataFile : &Settings::wcxFtpDataFile, path);
}

void EditorSession::AskOpenSettingsFile() {
    m_listener->OnBeforeChange();
    if (!MayLeaveFiles()) {
        return;
    }
    FileQuestion question;
    question.initialFolder = SettingsFolder();
    question.fileName = "Wincmd.ini";
    question.filter = FileFilter::WincmdIni;
    const std::string path = m_services.prompts.BrowseForOpen(question);
    if (IsGivenPath(path)) {
        OpenSettingsFile(path, true);
    }
}

void EditorSession::AskOpenDataFile() {
    m_listener->OnBeforeChange();
    if (!MayLeaveFiles()) {
        return;
    }
    const std::string path = AskForDataFile(std::string(FileNameOfPath(m_dataFilePath)));
    if (!IsGivenPath(path) || !LoadDataFile(path)) {
        return;
    }
    RememberDataFile(path);
    m_settings.WriteNow(&Settings::startUpIniFile, NameOfTarget(m_target));
    m_settingsPath = LocateTarget();
    m_listener->OnTargetChanged();
    ShowSettings(ReadSettings(m_settingsPath));
    CreateFavoritesList();
}

// Reads the file first: one that can not be read leaves everything as it was.
bool EditorSession::LoadDataFile(const std::string& path) {
    const IniSnapshot file = m_services.files.Read(path);
    if (file.error != FileError::None) {
        ReportUnreadable(path, file.error);
        return false;
    }
    m_dataFile = file.document;
    m_dataFileOnDisk = file.document;
    m_dataFilePath = path;
    m_target = GetDataFileTarget(*m_dataFile);
    m_isDataFileRead = false;
    m_listener->OnDataFileChanged();
    return true;
}

// The keys and categories of the data file; the states that the settings file gives them follow.
void EditorSession::FillStore() {
    m_isDataFileRead = true;
    m_isDataFileModified = false;
    m_keys.Clear();
    m_currentKey = 0;
    const bool fits = tamarind::LoadDataFile(
        m_dataFile, Text(text::kNoDescription), [this] { AdvanceProgress(); }, m_store);
    m_categories = ReadCategories(*m_dataFile);
    m_shownNode.reset();
    m_selectedNode = kRootNode;
    m_listener->OnKeyListChanged();
    m_listener->OnCategoriesChanged();
    if (!fits) {
        m_services.prompts.ShowMessage(MessageIcon::Exclamation, Text(text::kTooManyKeys));
    }
}

std::string EditorSession::LocateTarget() {
    return m_target == SettingsTarget::Wincmd ? m_locator.FindWincmdIni()
                                              : m_locator.FindWcxFtpIni();
}

// Everything is read first: where the data file for this kind of settings file cannot be read, all
// stays as it was, or keys would be written into a file that does not have them.
bool EditorSession::OpenSettingsFile(const std::string& path, bool addToRecent) {
    SettingsFiles settings = ReadSettings(path);
    const auto kind = KindOfSettingsFile(settings.Main());
    if (kind && *kind != m_target) {
        const Settings& values = m_settings.Values();
        if (!LoadDataFile(ResolvedPath(*kind == SettingsTarget::Wincmd ? values.wincmdDataFile
                                                                       : values.wcxFtpDataFile))) {
            return false;
        }
    }
    if (kind) {
        m_settings.WriteNow(&Settings::startUpIniFile, NameOfTarget(*kind));
    }
    m_settingsPath = path;
    m_listener->OnTargetChanged();
    const bool isOtherDataFile = !m_isDataFileRead;
    ShowSettings(std::move(settings));
    if (isOtherDataFile) {
        CreateFavoritesList();
    }
    if (addToRecent) {
        AddRecentFile(path);
    }
    return true;
}

// Brings every record up to date with the settings file and shows the root.
void EditorSession::ShowSettings(SettingsFiles settings) {
    m_settingsFiles = std::move(settings);
    m_conflicts.clear();
    m_editor.ClearHistory();
    m_isGoneTold = false;
    m_progress.Restart();
    m_nextProgressTicks = m_services.files.Files().NowTicks() + kProgressTicks;
    if (!m_isDataFileRead) {
        FillStore();
    }
    DeriveKeyStates(m_store, m_settingsFiles, [this] { AdvanceProgress(); });
    m_listener->OnProgressEnd();
    m_shownNode.reset();
    SelectCategory(kRootNode);
    for (const SettingsFiles::File& file : m_settingsFiles.Files()) {
        if (file.error != FileError::None && !IsMissing(file.error) && IsGivenPath(file.path)) {
            ReportUnreadable(file.path, file.error);
        } else if (file.error == FileError::None) {
            ReportUnwritable(file.path);
        }
    }
    ReportLoops();
}

void EditorSession::ReportUnreadable(const std::string& path, FileError error) {
    m_services.prompts.ShowMessage(
        MessageIcon::Exclamation,
        Text(text::kCannotReadFile) + " " + path + "\n\n" + m_language.Reason(error));
}

void EditorSession::SelectCategory(NodeIndex node) {
    if (m_selectedNode != node) {
        m_selectedNode = node;
        m_listener->OnCategorySelected();
    }
    ShowCategory(node);
}

void EditorSession::ShowCategory(NodeIndex node) {
    if (m_shownNode == node) {
        return;
    }
    m_shownNode = node;
    const bool isRoot = node == kRootNode;
    const std::size_t found = m_keys.Fill(
        m_store, isRoot,
        isRoot ? std::string_view() : m_categories[static_cast<std::size_t>(node)].tag, m_filter);
    m_currentKey = m_keys.Size() > 0 ? m_keys.KeyAt(0) : 0;
    m_listener->OnKeyListChanged();
    m_listener->OnKeyShown();
    m_listener->OnCommandsChanged();
    if (found == 0 && !ShowsHeading()) {
        m_services.prompts.ShowMessage(MessageIcon::Critical, Text(text::kCategoryWithoutKeys));
    }
}

bool EditorSession::ShowsHeading() const {
    return m_shownNode && *m_shownNode != kRootNode &&
           m_categories[static_cast<std::size_t>(*m_shownNode)].IsHeading();
}

void EditorSession::SetKeyFilter(KeyFilter filter) {
    if (ShowsHeading()) {
        m_services.prompts.Beep();
        m_listener->OnCommandsChanged();
        return;
    }
    m_filter = filter;
    m_shownNode.reset();
    ShowCategory(m_selectedNode);
}

void EditorSession::GoToKey(RowKey key) {
    SelectCategory(kRootNode);
    if (m_filter != KeyFilter::ShowAll) {
        SetKeyFilter(KeyFilter::ShowAll);
    }
    const std::size_t row = m_keys.RowOf(key);
    if (row < m_keys.Size()) {
        ShowKeyDetails(row);
        m_listener->OnWentToKey();
    }
}

void EditorSession::ShowKeyDetails(std::size_t row) {
    m_currentKey = m_keys.KeyAt(row);
    m_listener->OnKeyShown();
    m_listener->OnCommandsChanged();
}

std::string EditorSession::Description() const {
    return m_currentKey == 0 ? std::string()
                             : DescriptionForDisplay(Record(m_currentKey).description);
}

std::string EditorSession::Caption() const {
    const std::string title = std::string(kProgramName) + " " + m_services.versionText;
    return IsGivenPath(m_settingsPath) ? title + " - " + m_settingsPath : title;
}

std::string EditorSession::DataFilePanel() const {
    return Text(text::kDataFile) + "  " + std::string(FileNameOfPath(m_dataFilePath));
}

std::string EditorSession::TargetPanel() const {
    if (m_currentKey == 0) {
        return {};
    }
    const std::string_view section = m_store.TargetSection(m_currentKey);
    std::string panel = Text(text::kTargetSection) + "  [" + std::string(section) + "]";
    const std::size_t file = m_settingsFiles.FileOf(section, m_store.KeyName(m_currentKey));
    if (file != 0) {
        panel += "  " + std::string(FileNameOfPath(m_settingsFiles.Files()[file].path));
    }
    return panel;
}

std::string EditorSession::CounterPanel() const {
    return std::to_string(m_keys.Size()) + "  " + Text(text::kKeys);
}

std::string EditorSession::RootText() const {
    return Text(text::kRootCategory);
}

void EditorSession::SetToolbarVisible(bool isVisible) {
    m_settings.Values().toolbarVisible = isVisible ? 1 : 0;
    m_listener->OnCommandsChanged();
}

void EditorSession::SetDescriptionVisible(bool isVisible) {
    m_settings.Values().descriptionVisible = isVisible ? 1 : 0;
    m_listener->OnCommandsChanged();
}

CommandState EditorSession::State() const {
    CommandState state;
    state.isToolbarVisible = IsToolbarVisible();
    state.isDescriptionVisible = IsDescriptionVisible();
    state.hasKey = CanEditKey();
    if (state.hasKey) {
        const KeyLooks looks = LooksOf(m_store.CurrentState(m_currentKey), {});
        state.isKeyPresent = !looks.isGhosted;
        state.isKeyActive = looks.isChecked;
    }
    state.hasRow = m_currentKey != 0;
    state.isDataFileModified = m_isDataFileModified;
    state.canFind = m_search.CanFind();
    state.isModified = IsModified();
    state.canUndo = m_editor.CanUndo() && !ShowsHeading();
    state.canRedo = m_editor.CanRedo() && !ShowsHeading();
    state.showsAllKeys = m_filter == KeyFilter::ShowAll;
    state.showsActiveKeys = m_filter == KeyFilter::ShowActive;
    state.showsInactiveKeys = m_filter == KeyFilter::ShowInactive;
    return state;
}

bool EditorSession::IsEnabled(Command command) const {
    if (m_isBusy) {
        return false;
    }
    CommandState state = State();
    // Looking for another program's window takes longer than all the rest.
    state.isTotalCommanderRunning =
        command == Command::FileSaveAndRestart && m_totalCommander.IsRunning();
    return InfoOf(command).isEnabled(state);
}

bool EditorSession::IsChecked(Command command) const {
    return InfoOf(command).isChecked(State());
}

// Paths of data files are relative to the program's folder.
std::string EditorSession::ResolvedPath(const std::string& path) const {
    const std::string expanded = ExpandPathVariables(path, m_services.environment);
    return expanded.empty() || IsAbsolutePath(expanded) ? expanded
                                                        : m_services.programFolder + expanded;
}

void EditorSession::AdvanceProgress() {
    m_progress.Advance();
    if (m_progress.Count() % kProgressStride != 0) {
        return;
    }
    const std::uint64_t now = m_services.files.Files().NowTicks();
    if (now >= m_nextProgressTicks) {
        m_nextProgressTicks = now + kProgressTicks;
        m_listener->OnProgress(m_progress);
    }
}

}  // namespace tamarind
