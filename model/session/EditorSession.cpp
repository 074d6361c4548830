#include "model/session/EditorSession.h"

#include <optional>
#include <utility>

#include "core/files/Paths.h"
#include "core/text/MissingValueMarker.h"
#include "model/program/StringTable.h"
#include "model/session/Messages.h"

namespace tamarind {
namespace {

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
    : m_workplace(std::move(services)),
      m_locator(m_workplace.Disk(), m_workplace.Services().registry,
                m_workplace.Services().environment, m_workplace.OwnSettings(), m_workplace.Texts(),
                m_workplace.Prompts()) {
    m_workplace.Watchers().Add(*this);
}

EditorSession::~EditorSession() {
    m_workplace.Watchers().Remove(*this);
}

// The descriptions may be there in that language, too.
void EditorSession::OnLanguageChosen() {
    if (m_settings.IsModified() || m_dataFile.IsModified()) {
        return;  // nothing of that must be lost, or asked about in the middle of a choice
    }
    const auto path = m_offer.DataFileForLanguage();
    if (path && m_dataFile.LoadDataFile(*path)) {
        const std::string settings = m_settings.Path();
        m_settings.Show(settings, m_settings.Read(settings));
    }
}

std::string EditorSession::Caption() const {
    const std::string title = std::string(kProgramName) + " " + m_workplace.Services().versionText;
    const std::string mark = m_settings.IsModified() ? " *" : "";
    return IsGivenPath(m_settings.Path()) ? title + " - " + m_settings.Path() + mark : title;
}

void EditorSession::LoadSettings() {
    m_workplace.OwnSettings().LoadSettings();
    m_recent.Read();
}

bool EditorSession::Activate(const std::string& commandLine) {
    m_offer.AtFirstStart(commandLine);
    std::string path = ChooseDataFile(commandLine);
    while (IsGivenPath(path) && !m_dataFile.LoadDataFile(path)) {
        path = AskForStartUpDataFile();
    }
    if (!IsGivenPath(path)) {
        return false;
    }
    if (!OpenSettingsFile(LocateTarget(), false)) {
        OpenSettingsFile({}, false);  // its keys can be looked at all the same
    }
    return true;
}

std::string EditorSession::ChooseDataFile(const std::string& commandLine) {
    std::string path = m_dataFile.StartUpPath(commandLine);
    if (FileExists(path, m_workplace.Disk())) {
        return path;
    }
    Messages(m_workplace).Show(MessageIcon::Critical, text::kCannotFindDataFile);
    return AskForStartUpDataFile();
}

std::string EditorSession::AskForStartUpDataFile() const {
    std::string path = m_dataFile.AskForPath("tc all keys english.tmdf");
    if (IsGivenPath(path)) {
        m_dataFile.Remember(path);
    }
    return path;
}

std::string EditorSession::LocateTarget() {
    return m_dataFile.Target() == SettingsTarget::Wincmd ? m_locator.FindWincmdIni()
                                                         : m_locator.FindWcxFtpIni();
}

void EditorSession::AskOpenSettingsFile() {
    if (!MayLeaveFiles()) {
        return;
    }
    FileQuestion question;
    question.initialFolder = m_settings.Folder();
    question.fileName = "Wincmd.ini";
    question.filter = FileFilter::WincmdIni;
    const std::string path = m_workplace.Prompts().BrowseForOpen(question);
    if (IsGivenPath(path)) {
        OpenSettingsFile(path, true);
    }
}

void EditorSession::AskOpenDataFile() {
    if (!MayLeaveFiles()) {
        return;
    }
    const std::string path = m_dataFile.AskForPath(std::string(FileNameOfPath(m_dataFile.Path())));
    if (IsGivenPath(path) && m_dataFile.LoadDataFile(path)) {
        m_dataFile.Remember(path);
        ShowTarget();
    }
}

void EditorSession::OpenOtherDataFile() {
    const SettingsTarget other = OtherTarget(m_dataFile.Target());
    if (MayLeaveFiles() && m_dataFile.LoadDataFile(m_dataFile.PathFor(other))) {
        ShowTarget();
    }
}

// The settings that the data file describes.
void EditorSession::ShowTarget() {
    m_workplace.OwnSettings().WriteNow(&OwnSettings::startUpIniFile,
                                       NameOfTarget(m_dataFile.Target()));
    const std::string target = LocateTarget();
    m_settings.Show(target, m_settings.Read(target));
}

// Everything is read first: where the data file for this kind of settings file cannot be read, all
// stays as it was, or keys would be written into a file that does not have them.
bool EditorSession::OpenSettingsFile(const std::string& path, bool addToRecent) {
    SettingsFiles settings = m_settings.Read(path);
    const auto kind = KindOfSettingsFile(settings.Main());
    if (kind && *kind != m_dataFile.Target() &&
        !m_dataFile.LoadDataFile(m_dataFile.PathFor(*kind))) {
        return false;
    }
    if (kind) {
        m_workplace.OwnSettings().WriteNow(&OwnSettings::startUpIniFile, NameOfTarget(*kind));
    }
    m_settings.Show(path, std::move(settings));
    if (addToRecent) {
        m_recent.Add(path);
    }
    return true;
}

void EditorSession::OpenRecentFile(std::int16_t index) {
    const auto path = m_recent.PathOf(index);
    if (path && MayLeaveFiles()) {
        OpenSettingsFile(*path, true);
    }
}

bool EditorSession::MayLeaveFiles() {
    return m_settings.AskSaveSettings() && m_dataFile.AskSaveDataFile();
}

}  // namespace tamarind
