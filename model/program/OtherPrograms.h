#pragma once

#include <string>

namespace tamarind {

// Other programs: what this one sees of them and does to them.
class OtherPrograms {
public:
    virtual ~OtherPrograms() = default;

    // Whether Total Commander's main window (class "TTOTAL_CMD") is there.
    virtual bool IsTotalCommanderRunning() = 0;
    // The full path of the program behind that window; empty without one, or where Windows does not
    // tell.
    virtual std::string TotalCommanderPath() = 0;
    virtual void BringTotalCommanderToFront() = 0;
    // Asks it to close, without waiting for an answer.
    virtual void CloseTotalCommander() = 0;
    // Handles the window's events for half a second.
    virtual void WaitHalfSecond() = 0;
    // Handles the window's events until the process that was asked to close has ended, for up to so
    // many milliseconds. False: it still runs.
    virtual bool WaitForTotalCommanderEnd(int milliseconds) = 0;
    // Starts the program at `path`, and no other, with a normal window; a failure is not reported.
    // `arguments` follow the quoted path on the command line; they begin with a blank.
    virtual void Start(const std::string& path, const std::string& arguments) = 0;
    // Opens a file with the program that the user has for it; a failure is not reported.
    virtual void OpenDocument(const std::string& path) = 0;
};

}  // namespace tamarind
