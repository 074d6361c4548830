#include "model/session/KeyExchange.h"

#include <algorithm>

#include "core/text/MissingValueMarker.h"
#include "model/program/StringTable.h"
#include "model/session/Messages.h"

namespace tamarind {

KeyExchange::KeyExchange(Workplace& workplace, KeyStore& store, KeyEditor& editor,
                         KeySelection& selection, const OpenDataFile& dataFile,
                         const OpenSettings& settings)
    : m_workplace(workplace),
      m_store(store),
      m_editor(editor),
      m_selection(selection),
      m_dataFile(dataFile),
      m_settings(settings) {}

// Which file to exchange keys with: its name, or the MissingValueMarker.
std::string KeyExchange::AskFile(bool isExport) const {
    FileQuestion question;
    question.initialFolder = m_settings.Folder();
    question.filter = m_dataFile.Target() == SettingsTarget::Wincmd ? FileFilter::WincmdIni
                                                                    : FileFilter::WcxFtpIni;
    question.title = m_workplace.Text(isExport ? text::kExport : text::kImport);
    return isExport ? m_workplace.Prompts().BrowseForSave(question)
                    : m_workplace.Prompts().BrowseForOpen(question);
}

void KeyExchange::ExportSelectedDifferences() const {
    std::vector<KeyNumber> keys = m_selection.Rows().SelectedKeys();
    std::erase_if(keys, [this](KeyNumber key) { return !DiffersFromDefault(m_store.Record(key)); });
    Write(keys);
}

void KeyExchange::Write(const std::vector<KeyNumber>& keys) const {
    const std::string path = AskFile(true);
    if (path == MissingValueMarker) {
        return;
    }
    const WriteResult result = WriteExchangeFile(m_store, keys, m_workplace.Files(), path);
    if (!result.Succeeded()) {
        Messages(m_workplace).ReportFailure(text::kCannotSaveFile, path, result);
    } else if (!HasSetKey(keys, m_store)) {
        // Without a line to write no file is made.
        Messages(m_workplace).Show(MessageIcon::Information, text::kNothingExported);
    }
}

void KeyExchange::Import() {
    const std::string path = AskFile(false);
    if (path == MissingValueMarker) {
        return;
    }
    const IniSnapshot file = m_workplace.Files().Read(path);
    if (file.error != FileError::None) {
        Messages(m_workplace).ReportUnreadable(path, file.error);
        return;
    }
    ExchangeContent content =
        ReadExchangeFile(*file.document, m_selection.Rows().Keys().All(), m_store);
    if (!Review(content.changes)) {
        return;
    }
    m_editor.Change(StepKind::Import, content.changes);
    m_selection.ShowAgain();
    ReportSkipped(content.skipped);
}

// Leaves what the user has chosen: keys to be set come first, then those to be commented out. False
// if they cancel.
bool KeyExchange::Review(std::vector<KeyChange>& changes) const {
    const auto partition = [](auto begin, auto end, KeyState first) {
        return std::stable_partition(
            begin, end, [first](const KeyChange& change) { return change.state == first; });
    };
    const auto comments = partition(changes.begin(), changes.end(), KeyState::ValueSet);
    const auto missing = partition(comments, changes.end(), KeyState::ToBeCommented);
    ImportReview review;
    for (auto change = changes.begin(); change != missing; ++change) {
        review.rows.push_back(RowOf(*change));
    }
    review.missingCount = static_cast<std::size_t>(changes.end() - missing);
    {
        const Workplace::BusyTime busy(m_workplace);
        if (!m_workplace.Prompts().ReviewImport(review)) {
            return false;
        }
    }
    std::vector<KeyChange> taken;
    for (std::size_t at = 0; at < changes.size(); ++at) {
        if (at < review.rows.size() ? review.rows[at].isTaken : review.removesMissing) {
            taken.push_back(std::move(changes[at]));
        }
    }
    changes = std::move(taken);
    return true;
}

ImportRow KeyExchange::RowOf(const KeyChange& change) const {
    const KeyRecord record = m_store.Record(change.key);
    ImportRow row;
    row.key = NameWithSection(record);
    row.commentsOut = change.state == KeyState::ToBeCommented;
    row.now = LineOfState(record);
    row.after = (row.commentsOut ? ";" : "") + std::string(record.keyName) + "=" + change.value;
    return row;
}

void KeyExchange::ReportSkipped(const std::vector<KeyNumber>& skipped) const {
    if (skipped.empty()) {
        return;
    }
    std::string message = m_workplace.Text(text::kLongValuesSkipped) + "\n";
    for (const KeyNumber key : skipped) {
        message += "\n" + std::string(m_store.KeyName(key));
    }
    m_workplace.Prompts().ShowMessage(MessageIcon::Exclamation, message);
}

}  // namespace tamarind
