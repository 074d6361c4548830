// A save is a sequence of rounds (IniTransaction). Each round locks all files, reads them, and
// brings the records up to date with what other programs have written. If something must be asked,
// the locks are released, and the answer begins a new round, which reads everything again. Only a
// round without questions writes. Changes that were saved in an earlier round are no longer
// pending, so a new round never writes them twice.

#include "model/files/SettingsWriter.h"

namespace tamarind {
SaveResult SettingsWriter::Save() {
    std::vector<std::string> paths = m_settings.Paths();
    Step step = Step::BeginAgain;
    while (step == Step::BeginAgain) {
        const FileError error = m_transaction.Begin(paths);
        if (error != FileError::None) {
            FailAll(error);
            break;
        }
        step = Prepare(paths);
        if (step == Step::GoOn) {
            step = WriteFiles();
        }
    }
    return m_result;
}

SettingsFiles SettingsWriter::ReadAll() {
    return SettingsFiles::ReadAgain(
        [this](const std::string& path) { return m_transaction.Read(path); }, m_environment,
        m_settings);
}

// Reads all files, brings the records up to date with them, and asks what must be asked.
SettingsWriter::Step SettingsWriter::Prepare(std::vector<std::string>& paths) {
    constexpr int kMaxLockings = 5;
    SettingsFiles now = ReadAll();
    if (!m_transaction.Holds(now.Paths()) && m_lockings < kMaxLockings) {
        // The redirections have changed: lock the files that they lead to now.
        ++m_lockings;
        paths = now.Paths();
        return Step::BeginAgain;
    }
    const SettingsFiles::File& main = now.Main();
    if (main.error != FileError::None && !IsMissing(main.error)) {
        // Without the settings file nobody knows which key is in which file.
        FailAll(main.error);
        return Step::Stop;
    }
    const Step asked = AskAboutGoneFiles(now);
    if (asked != Step::GoOn) {
        return asked;
    }
    TakeRecords(std::move(now), {});
    if (!m_questions.HasConflicts()) {
        return Step::GoOn;
    }
    m_transaction.Pause();
    if (m_questions.ResolveConflicts()) {
        return Step::BeginAgain;
    }
    m_result.isCancelled = true;
    return Step::Stop;
}

// Files that are gone are made again with what they held, not with the pending changes alone.
SettingsWriter::Step SettingsWriter::AskAboutGoneFiles(const SettingsFiles& now) {
    const auto pending = PendingKeysByFile(m_store, now);
    for (std::size_t at = 0; at < pending.size(); ++at) {
        const SettingsFiles::File& file = now.Files()[at];
        if (pending[at].empty() || !file.isKept || !IsMissing(file.error) ||
            m_made.contains(file.path)) {
            continue;
        }
        m_transaction.Pause();
        if (!m_questions.MayMakeAnew(file.path)) {
            m_result.isCancelled = true;
            return Step::Stop;
        }
        m_made.insert(file.path);
        m_transaction.MakeFrom(file.path, file.document->Bytes());
        return Step::BeginAgain;
    }
    return Step::GoOn;
}

SettingsWriter::Step SettingsWriter::WriteFiles() {
    const auto pending = PendingKeysByFile(m_store, m_settings);
    std::set<KeyNumber> saved;
    bool isAgain = false;
    for (std::size_t at = 0; at < pending.size() && !isAgain; ++at) {
        const std::string path = m_settings.Files()[at].path;
        if (pending[at].empty() || m_failed.contains(path)) {
            continue;
        }
        isAgain = WriteFile(path, pending[at]);
        if (!isAgain && !m_failed.contains(path)) {
            for (const KeyNumber key : pending[at]) {
                m_result.saved.push_back(key);
                m_store.ForEachTwin(key, [&](KeyNumber twin) {
                    m_store.SetSaved(twin);
                    saved.insert(twin);
                });
            }
        }
    }
    if (!saved.empty()) {
        TakeRecords(ReadAll(), saved);
    }
    return isAgain ? Step::BeginAgain : Step::Stop;
}

// Returns whether another round is needed. A failure is noted in the result.
bool SettingsWriter::WriteFile(const std::string& path, const std::vector<KeyNumber>& keys) {
    std::optional<KeyNumber> refused;
    const IniTransaction::Written written = m_transaction.Edit(path, [&](IniDocument& document) {
        for (const KeyNumber key : keys) {
            const IniEdit edit = ApplyPendingChange(document, m_store, key);
            if (IsRefused(edit)) {
                refused = key;
                return edit;
            }
        }
        return IniEdit::Changed;
    });
    if (!written.isAgain && !written.result.Succeeded()) {
        m_failed.insert(path);
        m_result.failures.push_back({path, written.result, refused});
    }
    m_result.hasBackup |= written.hasBackup;
    return written.isAgain;
}

// Sets the records to what was read or written. From now on this is what changes by other programs
// are measured against.
void SettingsWriter::TakeRecords(SettingsFiles now, const std::set<KeyNumber>& saved) {
    if (saved.empty() && now.IsSameAs(m_settings)) {
        return;
    }
    OutsideChanges changes = TakeOutsideChanges(m_store, m_settings, now);
    m_settings = std::move(now);
    std::erase_if(changes.changed, [&](KeyNumber key) { return saved.contains(key); });
    m_questions.OnRecordsChanged(changes, {saved.begin(), saved.end()});
}

// The same error for every file that has something to be written.
void SettingsWriter::FailAll(FileError error) {
    const auto pending = PendingKeysByFile(m_store, m_settings);
    for (std::size_t at = 0; at < pending.size(); ++at) {
        const std::string& path = m_settings.Files()[at].path;
        if (!pending[at].empty() && m_failed.insert(path).second) {
            m_result.failures.push_back(
                {path, {error, IniEdit::Unchanged, m_transaction.AsideOf(path)}, std::nullopt});
        }
    }
}

}  // namespace tamarind
