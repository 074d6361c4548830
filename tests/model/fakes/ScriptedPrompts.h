#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "core/text/MissingValueMarker.h"
#include "model/program/UserPrompts.h"

namespace tamarind {

// Answers from a script and keeps what was asked. A file question beyond the script's end is
// cancelled.
class ScriptedPrompts final : public UserPrompts {
public:
    std::deque<std::string> filesToChoose;
    std::deque<std::string> colorsToChoose;
    std::vector<std::int32_t> startColors;
    std::deque<FontChoice> fontsToChoose;
    std::vector<FontChoice> fontsShown;  // that a choice began with
    std::deque<Answer> answers;          // Cancel beyond its end

    std::vector<std::string> messages;  // "!", "X", "i" or "?" for the icon, then the text
    std::vector<FileQuestion> questions;
    std::deque<bool> conflictsToTake;  // the file's value; one's own beyond its end
    bool cancelsConflicts = false;
    std::function<void()> onConflicts;  // while the question is open
    std::vector<std::string> asked;
    std::function<bool(ImportReview& review)> onImport;
    std::string copied;
    int beeps = 0;

    void ShowMessage(MessageIcon icon, const std::string& text) override {
        const bool isCritical = icon == MessageIcon::Critical;
        const bool isInformation = icon == MessageIcon::Information;
        messages.push_back((isCritical ? "X" : isInformation ? "i" : "!") + text);
    }

    Answer Ask(const std::string& text) override {
        messages.push_back("?" + text);
        return Next(answers, Answer::Cancel);
    }

    bool AskWhetherSure(const std::string& text) override { return Ask(text) == Answer::Yes; }

    std::string BrowseForSave(const FileQuestion& question) override {
        return BrowseForOpen(question);
    }

    std::string BrowseForOpen(const FileQuestion& question) override {
        questions.push_back(question);
        return Next(filesToChoose, std::string(MissingValueMarker));
    }

    std::string BrowseForFolder(const std::string& folder) override {
        return BrowseForOpen({folder, "(folder)", FileFilter::AllFiles, "", ""});
    }

    std::string ColorSelect() override {
        return Next(colorsToChoose, std::string(MissingValueMarker));
    }

    void StartColorAt(std::int32_t color) override { startColors.push_back(color); }

    bool FontSelect(FontChoice& font) override {
        const bool isChosen = !fontsToChoose.empty();
        fontsShown.push_back(font);
        font = Next(fontsToChoose, font);
        return isChosen;
    }

    bool ResolveConflicts(std::vector<ValueConflict>& conflicts) override {
        for (ValueConflict& conflict : conflicts) {
            asked.push_back(conflict.key + ": " + conflict.mine + " | " + conflict.theirs);
            conflict.takesTheirs = Next(conflictsToTake, false);
        }
        if (onConflicts) {
            onConflicts();
        }
        return !cancelsConflicts;
    }

    // Takes all that the file says, and what it lacks as well, unless the script does otherwise.
    bool ReviewImport(ImportReview& review) override {
        review.removesMissing = true;
        return !onImport || onImport(review);
    }

    void CopyText(const std::string& text) override { copied = text; }

    void Beep() override { ++beeps; }

private:
    template <typename T>
    static T Next(std::deque<T>& script, T otherwise) {
        if (script.empty()) {
            return otherwise;
        }
        T next = script.front();
        script.pop_front();
        return next;
    }
};

}  // namespace tamarind
