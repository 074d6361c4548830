#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/ini/IniFiles.h"
#include "core/system/Environment.h"
#include "core/system/Registry.h"
#include "model/files/BackupDifferences.h"
#include "model/files/DataFile.h"
#include "model/files/SettingsWriter.h"
#include "model/keys/ColorKeys.h"
#include "model/keys/KeyEditor.h"
#include "model/keys/KeyList.h"
#include "model/keys/KeySearch.h"
#include "model/keys/KeyStore.h"
#include "model/program/Commands.h"
#include "model/program/Favorites.h"
#include "model/program/FavoritesOrganizer.h"
#include "model/program/Language.h"
#include "model/program/OptionsEditor.h"
#include "model/program/ProgressMeter.h"
#include "model/program/SettingsLocator.h"
#include "model/program/SettingsStore.h"
#include "model/program/TotalCommander.h"
#include "model/program/UserPrompts.h"
#include "model/program/cRecentFiles.h"

namespace tamarind {

// Hears what changed in the session, right after it changed.
class SessionListener {
public:
    virtual ~SessionListener() = default;
    virtual void OnTargetChanged() {}      // the settings file, and with it the caption
    virtual void OnDataFileChanged() {}    // the status bar's data file panel
    virtual void OnCategoriesChanged() {}  // the tree holds other nodes
    virtual void OnCategorySelected() {}   // another node is the selected one
    virtual void OnKeyListChanged() {}     // the list holds other rows
    virtual void OnKeyShown() {}           // another row is current, or none: details, target
    virtual void OnWentToKey() {}          // a search or a favorite led to the current row
    virtual void OnTargetShown() {}        // the file of the current key's section
    virtual void OnKeyChanged(RowKey) {}   // its row, if shown, looks different now
    virtual void OnBeforeChange() {}       // the edit box closes without storing anything
    virtual void OnCommandsChanged() {}    // enabled or checked states
    virtual void OnLookChanged() {}        // colours, fonts and borders of the settings
    virtual void OnLanguageChanged() {}    // all texts, and the direction of writing
    virtual void OnFavoritesChanged() {}   // the favorites of the menu
    virtual void OnFavoriteAppended() {}   // the organizer's last row is a new one
    // The hit of a search in the shown description, in UTF-16 units.
    virtual void OnDescriptionHit(std::size_t /*start*/, std::size_t /*length*/) {}
    virtual void OnProgress(const ProgressMeter&) {}
    virtual void OnProgressEnd() {}
};

// What the session needs of the world outside.
struct SessionServices {
    IniFiles& files;
    Registry& registry;
    const Environment& environment;
    UserPrompts& prompts;
    OtherPrograms& programs;
    std::string programFolder;  // with a closing backslash
    std::string versionText;
    ScreenSize screen;
};

// A node of the category tree: the root, or a category by its place in Categories().
using NodeIndex = std::int32_t;
inline constexpr NodeIndex kRootNode = -1;

// What came of a look at the files.
enum class OutsideCheck {
    Taken,      // the records are as the files are
    PutOff,     // the user wants to decide about a conflict later
    LookAgain,  // another program is still writing: to be asked again in half a second
};

// The open data file and settings file, and what the window shows of them. Windows read it, tell
// it what the user does, and redraw what its listener hears of.
class EditorSession : private SaveQuestions {
public:
    explicit EditorSession(SessionServices services);

    // Null: nobody listens.
    void SetListener(SessionListener* listener);

    // The program's settings, before any window is made. Asks nothing and tells nothing.
    void LoadSettings();
    // The language that the settings name, before a text of it is asked for. The built-in one
    // takes the place of one whose file is missing, after a message.
    void LoadLanguage();
    // The same for one whose file has vanished since; whenever a window is about to show its texts.
    void RefreshLanguage();
    SettingsStore& ProgramSettings() { return m_settings; }
    const Language& Texts() const { return m_language; }
    std::string Text(std::uint16_t number) const { return m_language.GetLanguageString(number); }

    // The data file that the program starts with, if there is such a file: that of the command
    // line, which is what follows the program's name on it, or else that of the settings.
    std::string StartUpDataFile(const std::string& commandLine) const;
    // Chooses and loads the data file and makes its settings file current. Returns false when the
    // user gives no data file: the program ends.
    bool Activate(const std::string& commandLine);

    // File > Open and File > Open Data File, each with its question.
    void AskOpenSettingsFile();
    void AskOpenDataFile();

    // Makes a settings file current; opens the other data file first if this one does not
    // describe it. With `addToRecent` it becomes the first of the recent files. False, after a
    // message: that data file cannot be read, and all stays as it was.
    bool OpenSettingsFile(const std::string& path, bool addToRecent);

    // The recent files, and what choosing one of them or their clear entry does.
    const cRecentFiles& RecentFiles() const { return m_recentFiles; }
    void OpenRecentFile(std::int16_t index);
    void ClearRecentFiles();

    static constexpr const char* kProgramName = "Tamarind Configuration Editor";
    const std::string& VersionText() const { return m_services.versionText; }
    std::string Caption() const;
    const std::string& DataFilePath() const { return m_dataFilePath; }
    // Empty or the MissingValueMarker: none.
    const std::string& SettingsPath() const { return m_settingsPath; }
    SettingsTarget DataFileTarget() const { return m_target; }

    // The three texts of the status bar.
    std::string DataFilePanel() const;
    std::string TargetPanel() const;
    std::string CounterPanel() const;

    std::string RootText() const;
    const std::vector<CategoryNode>& Categories() const { return m_categories; }
    NodeIndex SelectedNode() const { return m_selectedNode; }

    // The tree's selection moved to a node: fills the key list with its keys, unless it shows them.
    void SelectCategory(NodeIndex node);

    // Whether the category shown is a heading, for which the commands on keys are off.
    bool ShowsHeading() const;

    KeyFilter Filter() const { return m_filter; }
    void SetKeyFilter(KeyFilter filter);

    // Shows every key and makes one of them the current one.
    void GoToKey(RowKey key);

    const KeyList& Keys() const { return m_keys; }
    KeyRecord Record(RowKey key) const { return m_store.Record(key); }
    const KeyStore& Store() const { return m_store; }

    // Makes a shown row the current one: its description and target section.
    void ShowKeyDetails(std::size_t row);
    // 0 while the list is empty.
    RowKey CurrentKey() const { return m_currentKey; }
    // With line breaks (CR LF); empty without a current row.
    std::string Description() const;

    // The text that the user typed in place of the current key's description, with any kind of
    // line break. Every CR becomes a line break of the stored form, an LF nothing.
    void ChangeDescription(std::string_view text);
    // How long that text may be, in UTF-16 units; 0: it can not be edited.
    std::size_t MaxDescriptionUnits() const;

    // Whether descriptions wait for SaveDataFile, which writes them into the data file. On a
    // failure, which a message explains, they still wait.
    bool IsDataFileModified() const { return m_isDataFileModified; }
    bool SaveDataFile();
    // As AskSaveSettings, for what waits to be written into the data file.
    bool AskSaveDataFile();

    // The search. Steps show what they find; without a hit, or behind the last one, a message
    // says so.
    const KeySearch& Search() const { return m_search; }
    void BeginSearch() { m_search.Restart(); }
    void SetSearchText(const std::string& text);
    void SetSearchesNames(bool searchesNames) { m_search.SetSearchesNames(searchesNames); }
    void SetMatchesWholeWord(bool isOn) { m_search.SetMatchesWholeWord(isOn); }
    void FindNextString();

    // The favorites of the menu. BeginAddFavorite gives the name of the current key to be added
    // under a caption of the user's choice, or nothing after a message that says why not.
    const std::vector<Favorite>& FavoriteItems() const { return m_favorites.Items(); }
    void CreateFavoritesList(bool updateOrganizer = false);
    // Of the rows as they are now.
    ShownNames NamesInList() const { return {m_keys, m_store}; }
    std::optional<std::string> BeginAddFavorite();
    bool AddFavorite(const std::string& name, const std::string& caption);
    // Shows the key of that name. False, after a message, when there is none.
    bool FavoriteDefinition(std::string_view name);

    // The organize window's rows; while it is open, new favorites appear in them.
    FavoritesOrganizer& Organizer() { return m_organizer; }
    bool IsOrganizerOpen() const { return m_isOrganizerOpen; }
    void SetOrganizerOpen(bool isOpen);
    // Remembers where the organize window was, in twips.
    void StoreFavoriteWindow(std::int32_t left, std::int32_t top, std::int32_t width,
                             std::int32_t height);
    // The definition of the organizer's selected row; a beep for a separator when `beeps`.
    bool OrganizerDefinition(bool beeps);
    // Makes the organizer's rows the favorites. False, after a message, when they can not be
    // written.
    bool ApplyOrganizer();

    // The options dialog: what it is set to, and its steps. After ApplyOptions all windows show the
    // new look; EndOptions, after the dialog is gone, brings the new language if another was
    // chosen.
    OptionsEditor& Options() { return m_options; }
    void BeginOptions();
    bool ApplyOptions();
    void EndOptions();

    // Opens the help that stands beside the program: the compiled one or else its pages.
    void ShowHelpTopics();

    // Writes the rows of the key list with their pending states into a file of the user's choice,
    // or makes all that such a file says of them pending. Import makes no undo entries.
    void ExportKeys();
    void ImportKeys();

    bool IsToolbarVisible() const { return m_settings.Values().toolbarVisible != 0; }
    bool IsDescriptionVisible() const { return m_settings.Values().descriptionVisible != 0; }
    void SetToolbarVisible(bool isVisible);
    void SetDescriptionVisible(bool isVisible);

    // What the edit box opens with on the current row, and the selected part of it: from that
    // UTF-16 unit to the end. Nothing, after a beep, where nothing can be edited.
    struct EditStart {
        std::string text;
        std::size_t selectionStart = 0;
    };
    std::optional<EditStart> BeginInplaceEdit();

    // Takes the edit box's text for the current row. Returns false, after a message, for a value
    // that is too long; the box stays open then. After a stored value the next key's turn comes
    // when the settings say so.
    bool StoreEditedValue(const std::string& text);
    bool SelectsNextKey() const { return m_settings.Values().autoSelectNextKey != 0; }

    // Makes the row behind the current one the current one. False on the last row.
    bool SelectNextKey();

    // The other commands on the current key; each does nothing where it is not enabled. SetValue,
    // BrowseValue return whether a value was stored. The colour dialog starts at the key's colour.
    bool SetValue(const std::string& value);
    bool BrowseValue();
    void CommentKey();
    void DeleteKey();
    void Undo() { Replay(true); }
    void Redo() { Replay(false); }

    // What the current key's value is as a colour; nothing for a key that is none. One that is
    // absent or to be deleted has the system's.
    std::optional<ColorSample> CurrentColor() const;

    // Whether a key waits to be saved: one whose state is pending, whatever it comes to.
    bool IsModified() const { return m_store.HasPending(); }

    // Writes all pending changes, and restarts Total Commander if the settings ask for it. On a
    // failure, which a message explains, everything is still pending.
    bool SaveToSettingsFile() { return Save(m_settings.Values().alwaysRestartTC != 0); }
    bool SaveAndRestart() { return Save(true); }

    // Asks whether to save what is pending, if anything is. False: the user cancelled, or the save
    // failed; what was about to happen must not.
    bool AskSaveSettings();

    // Takes what other programs have changed in the settings meanwhile. What waits to be saved
    // stays; where both changed a key the user chooses. What is gone is told once, and its keys
    // stay until it is there again.
    OutsideCheck CheckOutsideChanges();

    // The files that have backups, or may have: the settings' and the data file. Of one of them:
    // its backups, the newest first, what a backup says of its keys, and how to bring one back;
    // the file that it replaces is backed up first. False, after a message: it stays as it is.
    std::vector<std::string> BackedUpFiles() const;
    std::vector<BackupInfo> Backups(const std::string& file) const;
    std::vector<BackupDifference> BackupDifferences(const std::string& file,
                                                    const std::string& backup) const;
    bool RestoreBackup(const std::string& file, const std::string& backup);

    // While a save waits for Total Commander or asks something, the windows refuse commands and
    // closing.
    bool IsBusy() const { return m_isBusy; }

    bool IsEnabled(Command command) const;
    bool IsChecked(Command command) const;

private:
    std::string ChooseDataFile(const std::string& commandLine);
    std::string AskForDataFile(const std::string& fileName);
    void RememberDataFile(const std::string& path);
    bool LoadDataFile(const std::string& path);
    void FillStore();
    std::string LocateTarget();
    void ShowSettings(SettingsFiles settings);
    void ShowCategory(NodeIndex node);
    void ReportUnreadable(const std::string& path, FileError error);
    std::string ResolvedPath(const std::string& path) const;
    void AdvanceProgress();
    CommandState State() const;
    bool CanEditKey() const;
    void ChangeKey(bool (KeyEditor::*change)(RowKey key));
    void ShowChange(RowKey key);
    bool AskToSave(const std::string& question, bool (EditorSession::*save)());
    void Replay(bool isUndo);
    bool CanEditValue();
    bool Save(bool restarts);
    SaveResult WriteSettings();
    SettingsFiles ReadSettings(const std::string& path) const;
    void ReportLoops();
    void ReportUnwritable(const std::string& path);
    SettingsFiles ReadSettingsAgain() const;
    void TakeOutsideChanges(SettingsFiles now);
    void ReportGone();
    void OnRecordsChanged(const OutsideChanges& changes, const std::vector<RowKey>& saved) override;
    bool HasConflicts() override;
    bool ResolveConflicts() override;
    bool MayMakeAnew(const std::string& path) override;
    void ReportUnsaved(const SaveResult& result);
    std::string Reason(const WriteResult& result) const;
    void ReportFailure(std::uint16_t message, const std::string& path, const WriteResult& result);
    void ReportFavorites(const FavoritesChange& change);
    void SetUpRecentFiles();
    void SaveRecentFiles();
    void AddRecentFile(const std::string& path);
    void RemoveRecentFile(const std::string& path);
    void UseBuiltInLanguage();
    void ShowLanguage();
    bool MayLeaveFiles();
    std::string AskExchangeFile(bool isExport);
    std::string SettingsFolder() const;

    SessionServices m_services;
    SettingsStore m_settings;
    Language m_language;
    SettingsLocator m_locator;
    SessionListener* m_listener;
    KeyStore m_store;
    KeyEditor m_editor;
    TotalCommander m_totalCommander;
    bool m_isBusy = false;
    bool m_isDataFileModified = false;
    bool m_isOrganizerOpen = false;
    OptionsEditor m_options;
    std::optional<std::string> m_missingLanguage;  // that the built-in one took the place of
    KeySearch m_search;
    Favorites m_favorites;
    FavoritesOrganizer m_organizer;
    cRecentFiles m_recentFiles;
    std::shared_ptr<const IniDocument> m_dataFile;
    std::shared_ptr<const IniDocument> m_dataFileOnDisk;  // as it was last read or written
    std::vector<CategoryNode> m_categories;
    std::string m_dataFilePath;
    std::string m_settingsPath;
    SettingsFiles m_settingsFiles;    // as last read or written
    std::vector<RowKey> m_conflicts;  // still to be decided
    bool m_isGoneTold = false;
    SettingsTarget m_target = SettingsTarget::Wincmd;
    NodeIndex m_selectedNode = kRootNode;
    std::optional<NodeIndex> m_shownNode;
    bool m_isDataFileRead = false;
    KeyFilter m_filter = KeyFilter::ShowAll;
    KeyList m_keys;
    RowKey m_currentKey = 0;
    ProgressMeter m_progress;
    std::uint64_t m_nextProgressTicks = 0;
};

}  // namespace tamarind
