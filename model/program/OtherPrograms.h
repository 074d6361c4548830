#pragma once

#include <string>

namespace tamarind {

// What this program sees of other programs and does to them. Tests replace it.
class OtherPrograms {
public:
    virtual ~OtherPrograms() = default;

    // Whether Total Commander's main window (class "TTOTAL_CMD") is there.
    virtual bool IsTotalCommanderRunning() = 0;
    // The full path of the program that owns that window; empty if there is none or Windows does
    // not say.
    virtual std::string TotalCommanderPath() = 0;
    // Does nothing if it does not run.
    virtual void BringTotalCommanderToFront() = 0;
    // Asks it to close, without waiting for an answer.
    virtual void CloseTotalCommander() = 0;
    // Handles window messages for half a second.
    virtual void WaitHalfSecond() = 0;
    // Handles window messages until the process that was asked to close has ended, for at most this
    // many milliseconds. False if it still runs then.
    virtual bool WaitForTotalCommanderEnd(int milliseconds) = 0;
    // Starts exactly the program at `path`, with a normal window. A failure is not reported.
    // `arguments` follow the quoted path on the command line and begin with a blank.
    virtual void Start(const std::string& path, const std::string& arguments) = 0;
    // Opens a file with the program that is registered for it. A failure is not reported.
    virtual void OpenDocument(const std::string& path) = 0;
};

}  // namespace tamarind
