#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/ini/IniTransaction.h"
#include "core/ini/ShownValue.h"
#include "model/files/KeyStates.h"
#include "model/files/SettingsFiles.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// What a save does for one key, by where it stood in the file and what is pending.
struct SaveAction {
    bool deletesActive = false;
    bool deletesCommented = false;
    std::optional<KeyForm> writes;
};

// Nothing where nothing is pending.
std::optional<SaveAction> SaveActionOf(KeyState currentState, KeyState initialState);

struct SaveResult {
    struct Failure {
        std::string path;
        WriteResult result;
        std::optional<KeyNumber> refusedKey;  // the key whose edit was refused
    };
    std::vector<Failure> failures;
    bool isCancelled = false;  // by the user, in a question
    bool Succeeded() const { return failures.empty() && !isCancelled; }
};

// What a save tells, and asks the user. No file is held while a question is open.
class SaveQuestions {
public:
    virtual ~SaveQuestions() = default;

    // The records follow the settings as they are now: because of other programs, whose conflicts
    // are to be decided, and where something was `saved`.
    virtual void OnRecordsChanged(const OutsideChanges& changes,
                                  const std::vector<KeyNumber>& saved) = 0;

    // Whether a key is to be decided about. ResolveConflicts: false where the user cancels.
    virtual bool HasConflicts() = 0;
    virtual bool ResolveConflicts() = 0;

    // Whether a settings file that is gone may be made anew.
    virtual bool MayMakeAnew(const std::string& path) = 0;
};

// Writes every pending change into the file of the settings that its key is in. Before the first
// file is replaced all are read, and all conflicts decided. Where a file cannot be written, it and
// the pending changes of its keys stay as they are; all other records are set from what was
// written.
class SettingsWriter {
public:
    // `settings` is what the records say now, and is brought up to date with them.
    SettingsWriter(KeyStore& store, IniFiles& files, const Environment& environment,
                   SettingsFiles& settings, SaveQuestions& questions)
        : m_store(store),
          m_environment(environment),
          m_settings(settings),
          m_questions(questions),
          m_transaction(files, Backup::Yes) {}

    SaveResult Save();

private:
    enum class Step { GoOn, BeginAgain, Stop };

    Step Prepare(std::vector<std::string>& paths);
    Step AskAboutGoneFiles(const SettingsFiles& now);
    Step WriteFiles();
    bool WriteFile(const std::string& path, const std::vector<KeyNumber>& keys);
    void TakeRecords(SettingsFiles now, const std::set<KeyNumber>& saved);
    std::vector<std::vector<KeyNumber>> PendingKeys(const SettingsFiles& settings) const;
    void FailAll(FileError error);
    SettingsFiles ReadAll();

    KeyStore& m_store;
    const Environment& m_environment;
    SettingsFiles& m_settings;
    SaveQuestions& m_questions;
    IniTransaction m_transaction;
    SaveResult m_result;
    std::set<std::string> m_failed;  // paths that are not tried again
    std::set<std::string> m_made;    // paths that may be made anew
    int m_lockings = 0;
};

}  // namespace tamarind
