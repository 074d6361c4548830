#pragma once

#include <cstdint>
#include <string>

#include "model/keys/KeyEditor.h"
#include "model/keys/KeyStore.h"
#include "model/program/SettingsLocator.h"
#include "model/session/CommandStates.h"
#include "model/session/FavoritesBook.h"
#include "model/session/IgnoredLinesEditor.h"
#include "model/session/KeyAdding.h"
#include "model/session/KeyColumns.h"
#include "model/session/KeyCommands.h"
#include "model/session/KeyDescribing.h"
#include "model/session/KeyExchange.h"
#include "model/session/KeySelection.h"
#include "model/session/KeyValues.h"
#include "model/session/LanguageOffer.h"
#include "model/session/OpenDataFile.h"
#include "model/session/OpenSettings.h"
#include "model/session/PendingChanges.h"
#include "model/session/RecentSettings.h"
#include "model/session/TextFilter.h"
#include "model/session/ValueEditing.h"
#include "model/session/Workplace.h"

namespace tamarind {

// Owns the parts of a session, which windows talk to, and what needs several of them: starting,
// opening files, closing.
class EditorSession final : private WorkplaceListener {
public:
    explicit EditorSession(SessionServices services);
    ~EditorSession() override;
    EditorSession(const EditorSession&) = delete;
    EditorSession& operator=(const EditorSession&) = delete;

    Workplace& Place() { return m_workplace; }
    const Workplace& Place() const { return m_workplace; }
    KeySelection& Selection() { return m_selection; }
    KeyFinding& Finding() { return m_finding; }
    OpenDataFile& DataFile() { return m_dataFile; }
    OpenSettings& Settings() { return m_settings; }
    UndescribedCategories& Undescribed() { return m_undescribed; }
    KeyCommands& Commands() { return m_commands; }
    const KeyValues& Values() const { return m_values; }
    ValueEditing& Editing() { return m_editing; }
    KeyColumns& Columns() { return m_columns; }
    PendingChanges& Pending() { return m_pending; }
    KeyExchange& Exchange() { return m_exchange; }
    TextFilter& Filter() { return m_filter; }
    KeyAdding& Adding() { return m_adding; }
    KeyDescribing& Describing() { return m_describing; }
    IgnoredLinesEditor& IgnoredLines() { return m_ignoredLines; }
    FavoritesBook& FavoriteKeys() { return m_favorites; }
    RecentSettings& Recent() { return m_recent; }
    const CommandStates& States() const { return m_states; }

    static constexpr const char* kProgramName = "Tamarind Configuration Editor";
    // The main window's title; behind the path a mark says that changes wait to be saved.
    std::string Caption() const;

    // The program's settings, before any window is made. Asks nothing and tells nothing.
    void LoadSettings();
    // Chooses and loads the data file and makes its settings file current. Returns false when the
    // user gives no data file: the program ends.
    bool Activate(const std::string& commandLine);

    // File > Open and File > Open Data File, each with its question.
    void AskOpenSettingsFile();
    void AskOpenDataFile();
    // The data file for the other kind of settings, with their file.
    void OpenOtherDataFile();

    // Makes a settings file current; opens the other data file first if this one does not
    // describe it. With `addToRecent` it becomes the first of the recent files. False, after a
    // message: that data file cannot be read, and all stays as it was.
    bool OpenSettingsFile(const std::string& path, bool addToRecent);
    // What choosing one of the recent files does.
    void OpenRecentFile(std::int16_t index);

    // Asks whether to save what is pending. False: the open files must stay.
    bool MayLeaveFiles();

private:
    void OnLanguageChosen() override;
    std::string ChooseDataFile(const std::string& commandLine);
    std::string AskForStartUpDataFile() const;
    std::string LocateTarget();
    void ShowTarget();

    Workplace m_workplace;
    KeyStore m_store;
    KeyEditor m_editor{m_store};
    KeySelection m_selection{m_workplace, m_store};
    KeyFinding m_finding{m_workplace, m_selection};
    OpenDataFile m_dataFile{m_workplace, m_store, m_selection};
    UndescribedCategories m_undescribed{m_workplace, m_store, m_selection, m_dataFile};
    OpenSettings m_settings{m_workplace, m_store, m_editor, m_selection, m_dataFile, m_undescribed};
    KeyCommands m_commands{m_workplace, m_store, m_editor, m_selection, m_dataFile};
    KeyValues m_values{m_workplace, m_store, m_dataFile};
    ValueEditing m_editing{m_workplace, m_store, m_selection, m_values, m_commands};
    PendingChanges m_pending{m_workplace, m_store, m_editor, m_selection, m_settings};
    KeyExchange m_exchange{m_workplace, m_store, m_editor, m_selection, m_dataFile, m_settings};
    TextFilter m_filter{m_workplace, m_store, m_selection, m_dataFile, m_values, m_undescribed};
    KeyAdding m_adding{m_workplace, m_store, m_selection, m_dataFile, m_settings, m_undescribed};
    KeyDescribing m_describing{m_workplace, m_store,    m_selection,
                               m_dataFile,  m_settings, m_undescribed};
    IgnoredLinesEditor m_ignoredLines{m_workplace, m_store, m_settings, m_undescribed};
    FavoritesBook m_favorites{m_workplace, m_selection};
    RecentSettings m_recent{m_workplace};
    KeyColumns m_columns{m_workplace, m_store, m_values};
    CommandStates m_states{m_workplace, m_selection, m_finding, m_commands,
                           m_dataFile,  m_settings,  m_columns, m_describing};
    LanguageOffer m_offer{m_workplace, m_dataFile};
    SettingsLocator m_locator;
};

}  // namespace tamarind
