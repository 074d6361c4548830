#pragma once

#include <functional>
#include <string>
#include <vector>

#include "model/program/TotalCommander.h"

namespace tamarind {

// Keeps what was done to other programs, in order.
class FakePrograms final : public OtherPrograms {
public:
    bool isRunning = false;
    bool refusesToClose = false;
    std::vector<std::string> calls;
    std::function<void()> onWait = [] {};
    std::function<void()> onEnding = [] {};

    bool IsTotalCommanderRunning() override { return isRunning; }
    std::string path;  // of the one that runs; empty: nobody tells
    std::string TotalCommanderPath() override { return isRunning ? path : std::string(); }
    void BringTotalCommanderToFront() override { calls.emplace_back("front"); }
    void CloseTotalCommander() override {
        calls.emplace_back("close");
        isRunning = refusesToClose;
    }
    void WaitHalfSecond() override {
        calls.emplace_back("wait");
        onWait();
    }
    bool WaitForTotalCommanderEnd(int) override {
        onEnding();
        return !isRunning;
    }
    void OpenDocument(const std::string& path) override { calls.push_back("open " + path); }
    void Start(const std::string& path, const std::string& arguments) override {
        calls.push_back("start \"" + path + "\"" + arguments);
    }
};

}  // namespace tamarind
