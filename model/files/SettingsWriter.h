#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/ini/IniTransaction.h"
#include "model/files/KeyStates.h"
#include "model/files/SaveActions.h"
#include "model/files/SettingsFiles.h"
#include "model/keys/KeyStore.h"

namespace tamarind {

// What came of a save: the files that could not be written, and why.
struct SaveResult {
    struct Failure {
        std::string path;
        WriteResult result;
        std::optional<KeyNumber> refusedKey;  // the key whose edit was refused
    };
    std::vector<Failure> failures;
    bool isCancelled = false;      // by the user, in a question
    std::vector<KeyNumber> saved;  // the keys that were written; of twins the first one
    bool hasBackup = false;        // of a file that was written
    bool Succeeded() const { return failures.empty() && !isCancelled; }
};

// What a save tells and asks. No file is locked while a question is open, so the answer may take
// any time.
class SaveQuestions {
public:
    virtual ~SaveQuestions() = default;

    // The records have been set to the settings as they are now: because other programs have
    // changed them, with `changes.conflicts` to be decided by the user, or because the keys `saved`
    // were written.
    virtual void OnRecordsChanged(const OutsideChanges& changes,
                                  const std::vector<KeyNumber>& saved) = 0;

    // Whether a conflict is still undecided.
    virtual bool HasConflicts() = 0;
    // Asks the user. False if they cancel, and with it the save.
    virtual bool ResolveConflicts() = 0;

    // Whether a settings file that is gone may be made again.
    virtual bool MayMakeAnew(const std::string& path) = 0;
};

// Saves the pending changes, each into the file of the settings that its key is in. All files are
// read, and all conflicts decided, before the first file is replaced. If a file cannot be written,
// it and the pending changes of its keys stay as they are; all other records show what was written.
// An object is made for one save.
class SettingsWriter {
public:
    // `settings` is the state of the files that the records follow; it is brought up to date with
    // them. All arguments are kept by reference.
    SettingsWriter(KeyStore& store, IniFiles& files, const Environment& environment,
                   SettingsFiles& settings, SaveQuestions& questions)
        : m_store(store),
          m_environment(environment),
          m_settings(settings),
          m_questions(questions),
          m_transaction(files, Backup::Yes) {}

    // Blocks, and calls the questions from within. To be called once.
    SaveResult Save();

private:
    // What comes next in a round of the transaction.
    enum class Step { GoOn, BeginAgain, Stop };

    Step Prepare(std::vector<std::string>& paths);
    Step AskAboutGoneFiles(const SettingsFiles& now);
    Step WriteFiles();
    bool WriteFile(const std::string& path, const std::vector<KeyNumber>& keys);
    void TakeRecords(SettingsFiles now, const std::set<KeyNumber>& saved);
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
    // How often a round began again because the files that the settings consist of had changed.
    int m_lockings = 0;
};

}  // namespace tamarind
