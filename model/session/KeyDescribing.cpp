#include "model/session/KeyDescribing.h"

#include "core/files/Paths.h"
#include "core/ini/cProfile.h"
#include "core/text/AccessKeys.h"
#include "core/text/MissingValueMarker.h"
#include "core/text/Unicode.h"
#include "model/program/StringTable.h"
#include "model/session/Messages.h"

namespace tamarind {

bool KeyDescribing::CanDescribe() const {
    const auto key = m_selection.Rows().EditableKey();
    return key && !m_store.IsDescribed(*key) &&
           (!m_store.HasDescription(*key) || m_store.OwnDescriptions().contains(*key));
}

std::size_t KeyDescribing::MaxUnits() {
    return cProfile::kBufferSize - kEntrySeparator.size() - 1;
}

bool KeyDescribing::IsDataFileOfProgram() const {
    const std::string folder = m_workplace.Services().programFolder + "Data Files\\";
    return EqualsIgnoreCase(FolderOfPath(m_dataFile.Path()), folder);
}

bool KeyDescribing::Prepare() {
    if (!IsDataFileOfProgram()) {
        return true;
    }
    const std::string name(FileNameOfPath(m_dataFile.Path()));
    const Answer answer = m_workplace.Prompts().Ask(m_workplace.Text(text::kCopyDataFile, {name}));
    return answer == Answer::No || (answer == Answer::Yes && CopyDataFile());
}

// The copy is opened with the same settings, and the key is the current one again.
bool KeyDescribing::CopyDataFile() {
    if (!m_settings.AskSaveSettings() || !m_dataFile.AskSaveDataFile()) {
        return false;
    }
    const KeyNumber key = *m_selection.Rows().EditableKey();
    const std::string section(m_store.TargetSection(key));
    const std::string keyName(m_store.KeyName(key));
    FileQuestion question;
    question.initialFolder = m_settings.Folder();
    question.fileName = FileNameOfPath(m_dataFile.Path());
    question.filter = FileFilter::DataFile;
    const std::string path = m_workplace.Prompts().BrowseForSave(question);
    if (!IsGivenPath(path)) {
        return false;
    }
    const FileContent content =
        m_workplace.Disk().Read(m_dataFile.Path(), FileSystem::kMaxFileBytes);
    if (content.error != FileError::None) {
        Messages(m_workplace).ReportUnreadable(m_dataFile.Path(), content.error);
        return false;
    }
    const WriteResult result = {
        m_workplace.Disk().Replace(path, content.bytes, Backup::No), IniEdit::Unchanged, {}};
    if (!result.Succeeded()) {
        Messages(m_workplace).ReportFailure(text::kCannotSaveFile, path, result);
        return false;
    }
    if (!m_dataFile.LoadDataFile(path)) {
        return false;
    }
    m_dataFile.Remember(path);
    const std::string settings = m_settings.Path();
    m_settings.Show(settings, m_settings.Read(settings));
    m_undescribed.LoadAll();
    const auto again = m_store.Find(section, keyName);
    if (again) {
        m_undescribed.GoTo(*again);
    }
    return again.has_value();
}

std::string KeyDescribing::LabelFor(std::string_view name) const {
    return m_workplace.Text(text::kDescriptionOf, {WithoutAccessKeys(std::string(name))});
}

void KeyDescribing::Describe(std::string_view text) {
    const auto key = m_selection.Rows().EditableKey();
    if (key && !text.empty()) {
        m_dataFile.Describe(*key, text);
        m_selection.Rows().ShowKeyDetails(m_selection.Rows().CurrentRow().value_or(0));
    }
}

}  // namespace tamarind
