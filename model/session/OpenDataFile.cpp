#include "model/session/OpenDataFile.h"

#include "core/files/Paths.h"
#include "core/text/MissingValueMarker.h"
#include "core/text/Unicode.h"
#include "model/files/DescriptionWriter.h"
#include "model/program/StringTable.h"

namespace tamarind {
namespace {

std::string OwnSettings::*DataFileSetting(SettingsTarget target) {
    return target == SettingsTarget::Wincmd ? &OwnSettings::wincmdDataFile
                                            : &OwnSettings::wcxFtpDataFile;
}

}  // namespace

OpenDataFile::OpenDataFile(Workplace& workplace, KeyStore& store, KeySelection& selection)
    : m_workplace(workplace), m_store(store), m_selection(selection) {
    m_workplace.Watchers().Add(*this);
}

void OpenDataFile::OnLanguageChanged() {
    m_store.SetNoDescription(m_workplace.Text(text::kNoDescription));
}

std::string OpenDataFile::Panel() const {
    return m_workplace.Text(text::kDataFile) + "  " + std::string(FileNameOfPath(m_path));
}

const ValueTypes& OpenDataFile::Types() {
    if (!m_types) {
        const auto file = Companion(m_target, ".types");
        m_types.emplace(file ? ValueTypes(file) : ValueTypes());
        m_families = file ? KeyFamilies(file) : KeyFamilies();
    }
    return *m_types;
}

const KeyFamilies& OpenDataFile::Families() {
    Types();
    return m_families;
}

ValueTypes OpenDataFile::TypesFor(SettingsTarget target) const {
    const auto file = Companion(target, ".types");
    return file ? ValueTypes(file) : ValueTypes();
}

Keywords OpenDataFile::KeywordsFor(SettingsTarget target) const {
    const auto file = Companion(target, ".keywords");
    return file ? Keywords(file) : Keywords();
}

// A file that tells more about the keys: the one beside the data file, or else the one that comes
// with the program; null if there is none.
std::shared_ptr<const IniDocument> OpenDataFile::Companion(SettingsTarget target,
                                                           std::string_view extension) const {
    const std::string name =
        (target == SettingsTarget::Wincmd ? "Wincmd" : "Wcx_ftp") + std::string(extension);
    const std::string ownFolder = m_workplace.Services().programFolder + "Data Files\\";
    for (const std::string& folder : {std::string(FolderOfPath(m_path)), ownFolder}) {
        const IniSnapshot file = m_workplace.Files().Read(folder + name);
        if (file.error == FileError::None) {
            return file.document;
        }
    }
    return nullptr;
}

std::string OpenDataFile::StartUpPath(const std::string& commandLine) const {
    // The file association puts the path in double quotes, and nothing else is looked for: a "%" in
    // it is no more than a character.
    if (!commandLine.empty()) {
        return m_workplace.Services().environment.FullPath(
            commandLine.size() < 2 ? std::string() : commandLine.substr(1, commandLine.size() - 2));
    }
    const bool isWincmd =
        EqualsIgnoreCase(m_workplace.OwnSettings().Values().startUpIniFile, "Wincmd");
    return PathFor(isWincmd ? SettingsTarget::Wincmd : SettingsTarget::WcxFtp);
}

// Relative paths are those below the program's folder.
std::string OpenDataFile::PathFor(SettingsTarget target) const {
    const SessionServices& services = m_workplace.Services();
    const std::string expanded = ExpandPathVariables(
        m_workplace.OwnSettings().Values().*DataFileSetting(target), services.environment);
    return expanded.empty() || IsAbsolutePath(expanded) ? expanded
                                                        : services.programFolder + expanded;
}

std::string OpenDataFile::AskForPath(const std::string& fileName) const {
    FileQuestion question;
    question.initialFolder = m_workplace.Services().programFolder + "Data Files";
    question.fileName = fileName;
    question.filter = FileFilter::DataFile;
    return m_workplace.Prompts().BrowseForOpen(question);
}

void OpenDataFile::Remember(const std::string& path) const {
    const IniSnapshot file = m_workplace.Files().Read(path);
    m_workplace.OwnSettings().WriteNow(DataFileSetting(GetDataFileTarget(*file.document)), path);
}

bool OpenDataFile::LoadDataFile(const std::string& path) {
    const IniSnapshot file = m_workplace.Files().Read(path);
    if (file.error != FileError::None) {
        Messages(m_workplace).ReportUnreadable(path, file.error);
        return false;
    }
    m_document = file.document;
    m_onDisk = file.document;
    m_path = path;
    m_target = GetDataFileTarget(*m_document);
    m_types.reset();
    m_areKeysRead = false;
    m_listeners.Tell(&DataFileListener::OnDataFileChanged);
    return true;
}

void OpenDataFile::ReadKeys(const std::function<void()>& advance) {
    m_areKeysRead = true;
    m_hasNewKeys = false;
    m_isModified = false;
    m_selection.Clear();
    const bool fits = tamarind::LoadDataFile(m_document, m_workplace.Text(text::kNoDescription),
                                             advance, m_store);
    m_selection.SetCategories(ReadCategories(*m_document));
    if (!fits) {
        Messages(m_workplace).Show(MessageIcon::Exclamation, text::kTooManyKeys);
    }
}

void OpenDataFile::ChangeDescription(std::string_view text) {
    const auto key = m_selection.Rows().CurrentKey();
    if (!key || MaxDescriptionUnits() == 0) {
        return;
    }
    Describe(*key, text);
}

void OpenDataFile::Describe(KeyNumber key, std::string_view text) {
    m_store.SetDescription(key, StoredDescription(text));
    m_hasNewKeys |= !m_store.IsDescribed(key);
    if (!m_isModified) {
        m_isModified = true;
        m_workplace.TellCommandsChanged();
    }
}

std::size_t OpenDataFile::MaxDescriptionUnits() const {
    const auto key = m_selection.Rows().CurrentKey();
    return key ? tamarind::MaxDescriptionUnits(m_store, *key) : 0;
}

bool OpenDataFile::SaveDataFile() {
    if (!m_isModified) {
        return true;
    }
    const DescriptionResult result =
        WriteDescriptions(m_store, m_workplace.Files(), m_path, m_onDisk, [this] {
            return m_workplace.Prompts().Ask(
                       m_path + "\n\n" + m_workplace.Text(text::kDataFileChanged)) == Answer::Yes;
        });
    if (!result.written.Succeeded()) {
        Messages(m_workplace).ReportFailure(text::kCannotSaveFile, m_path, result.written);
    }
    if (!result.written.Succeeded() || result.isCancelled) {
        return false;
    }
    m_isModified = false;
    // Keys that were described are lines of the file now: with the next settings it is read again.
    m_document = m_onDisk;
    m_areKeysRead = m_areKeysRead && !m_hasNewKeys;
    m_hasNewKeys = false;
    m_workplace.TellCommandsChanged();
    return true;
}

bool OpenDataFile::AskSaveDataFile() {
    return !m_isModified ||
           Messages(m_workplace).AskToSave(m_workplace.Text(text::kSaveDataFile), [this] {
               return SaveDataFile();
           });
}

}  // namespace tamarind
