#include "model/program/TotalCommander.h"

#include <utility>

#include "core/files/Paths.h"

namespace tamarind {
namespace {

constexpr int kEndingMs = 5000;  // how long it may take to end after it was asked to

}  // namespace

std::string TotalCommander::InstallFolder(const std::string& ownSettings) {
    std::string folder = m_environment.Variable("Commander_Path");
    if (folder.empty()) {
        const IniSnapshot settings = m_files.Read(ownSettings);
        const auto value = settings.document->FindValue("Common", "TCInstallDir");
        folder = value ? std::string(*value) : std::string();
    }
    return folder.empty() ? folder : AddBackslash(folder);
}

// If a folder has both programs, the 32-bit one; most folders today have the 64-bit one alone.
std::string TotalCommander::ProgramPath(const std::string& folder) const {
    const std::string program = folder + "Totalcmd.exe";
    const std::string program64 = folder + "TOTALCMD64.EXE";
    FileSystem& files = m_files.Files();
    return !FileExists(program, files) && FileExists(program64, files) ? program64 : program;
}

RestartResult TotalCommander::RestartTotalCommander(bool closeOnly, bool withArguments,
                                                    const std::string& switchText,
                                                    const std::string& settingsPath,
                                                    const std::string& ownSettings) {
    return closeOnly ? Close(ownSettings)
                     : Start(switchText, withArguments ? settingsPath : "", ownSettings);
}

RestartResult TotalCommander::Close(const std::string& ownSettings) {
    if (InstallFolder(ownSettings).empty()) {
        return {};
    }
    const bool wasRunning = m_programs.IsTotalCommanderRunning();
    m_closedPath.clear();
    if (wasRunning) {
        m_closedPath = m_programs.TotalCommanderPath();
        m_programs.BringTotalCommanderToFront();
        m_programs.CloseTotalCommander();
    }
    m_programs.WaitHalfSecond();
    RestartResult result;
    if (wasRunning) {
        // Its last write must come before ours.
        result.hasClosed = m_programs.WaitForTotalCommanderEnd(kEndingMs);
        result.stillRuns = !result.hasClosed;
    }
    return result;
}

RestartResult TotalCommander::Start(const std::string& switchText, const std::string& settingsPath,
                                    const std::string& ownSettings) {
    const std::string folder = InstallFolder(ownSettings);
    if (folder.empty()) {
        return {};
    }
    const std::string program =
        m_closedPath.empty() ? ProgramPath(folder) : std::exchange(m_closedPath, {});
    RestartResult result;
    for (const std::string& path : {program, settingsPath}) {
        // No file name contains a quotation mark. It would end the quoted path and turn the rest
        // into arguments.
        if (path.find('"') != std::string::npos) {
            result.refusedPath = path;
            return result;
        }
    }
    if (m_programs.IsTotalCommanderRunning()) {
        m_programs.BringTotalCommanderToFront();
    }
    m_programs.WaitHalfSecond();
    m_programs.Start(program, settingsPath.empty() ? "" : switchText + "\"" + settingsPath + "\"");
    return result;
}

}  // namespace tamarind
