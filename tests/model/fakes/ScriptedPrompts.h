#pragma once

#include <deque>
#include <string>
#include <vector>

#include "core/MissingValueMarker.h"
#include "model/UserPrompts.h"

namespace tamarind {

// Answers from a script and keeps what was asked. A file question beyond the script's end is
// cancelled.
class ScriptedPrompts final : public UserPrompts {
public:
    std::deque<std::string> filesToChoose;

    std::vector<std::string> messages;  // "!" or "X" for the icon, then the text
    std::vector<FileQuestion> questions;
    int beeps = 0;

    void ShowMessage(MessageIcon icon, const std::string& text) override {
        messages.push_back((icon == MessageIcon::Critical ? "X" : "!") + text);
    }

    std::string BrowseForOpen(const FileQuestion& question) override {
        questions.push_back(question);
        if (filesToChoose.empty()) {
            return std::string(MissingValueMarker);
        }
        const std::string chosen = filesToChoose.front();
        filesToChoose.pop_front();
        return chosen;
    }

    void Beep() override { ++beeps; }
};

}  // namespace tamarind
