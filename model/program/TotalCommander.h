#pragma once

#include <string>

#include "core/ini/IniFiles.h"
#include "core/system/Environment.h"
#include "model/program/OtherPrograms.h"

namespace tamarind {

// What came of closing or starting Total Commander.
struct RestartResult {
    bool hasClosed = false;   // it ran, was asked to close and did
    bool stillRuns = false;   // it ran, was asked to close and did not
    std::string refusedPath;  // not started because of a quotation mark in this path
};

// Closes Total Commander before a save and starts it again after it. It keeps its settings in
// memory and writes them when it closes, which would undo the save.
class TotalCommander {
public:
    // All arguments are kept by reference and must outlive this object.
    TotalCommander(OtherPrograms& programs, IniFiles& files, const Environment& environment)
        : m_programs(programs), m_files(files), m_environment(environment) {}

    bool IsRunning() const { return m_programs.IsTotalCommanderRunning(); }

    // With `closeOnly` as Close, otherwise as Start; `settingsPath` is used only if
    // `withArguments`. Does nothing if the folder of Total Commander is known neither to the
    // environment (Commander_Path) nor to the program's own settings file `ownSettings`.
    RestartResult RestartTotalCommander(bool closeOnly, bool withArguments,
                                        const std::string& switchText,
                                        const std::string& settingsPath,
                                        const std::string& ownSettings);

    // Asks a running one to close and waits up to some seconds until it has. Its path is kept, so
    // that Start starts the same program again, be it the 32-bit or the 64-bit one.
    RestartResult Close(const std::string& ownSettings);

    // Brings one that still runs to the front, waits, and starts the program. `switchText` (/i= or
    // /f= after a blank) comes before the quoted `settingsPath`; an empty path starts it without
    // arguments.
    RestartResult Start(const std::string& switchText, const std::string& settingsPath,
                        const std::string& ownSettings);

private:
    std::string InstallFolder(const std::string& ownSettings);
    std::string ProgramPath(const std::string& folder) const;

    OtherPrograms& m_programs;
    IniFiles& m_files;
    const Environment& m_environment;
    std::string m_closedPath;  // of the program that was closed; empty where it is not known
};

}  // namespace tamarind
