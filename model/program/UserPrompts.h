#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tamarind {

enum class MessageIcon { Exclamation, Critical, Question, Information };
enum class Answer { Yes, No, Cancel };

// The file types that a file dialog offers, in the order of the filter table.
enum class FileFilter {
    AllFiles,
    WincmdIni,
    MainMenu,
    InternalCommands,
    Pictures,
    LanguageFile,
    AllFilesAndPrograms,
    DataFile,
    HotkeysDataFile,
    WcxFtpIni,
};

// What a file dialog starts with.
struct FileQuestion {
    std::string initialFolder;  // empty: the folder of the last choice
    std::string fileName;       // proposed
    FileFilter filter = FileFilter::AllFiles;
    std::string title;    // empty: the dialog's usual one
    std::string pattern;  // "*.dll;*.icl": offered before the filter; may be empty
};

struct FontChoice {
    std::string name;
    std::int32_t points = 0;
    std::int32_t style = 0;    // 1 bold, 2 italic, 4 strikethrough, 8 underline
    std::int32_t charset = 0;  // a Windows character set number
};

// A key that was changed here and by another program. Both lines are as a settings file has them,
// empty if there is none.
struct ValueConflict {
    std::string key;  // with its section
    std::string mine;
    std::string theirs;
    bool takesTheirs = false;
};

// What an import would do. A row is a key that the file has: its lines as the key list shows them,
// empty if there is none.
struct ImportRow {
    std::string key;  // with its section
    std::string now;
    std::string after;
    bool commentsOut = false;  // the file has it commented out
    bool isTaken = true;
};
struct ImportReview {
    std::vector<ImportRow> rows;   // those to be set, then those to be commented out
    std::size_t missingCount = 0;  // keys that the file does not have
    bool removesMissing = false;
};

// What the program asks and tells the user. All texts passed are complete and translated. Calls
// block until the user has answered, and other events are handled meanwhile. Tests answer by
// script.
class UserPrompts {
public:
    virtual ~UserPrompts() = default;

    // With the button OK. Returns when the user has closed the box.
    virtual void ShowMessage(MessageIcon icon, const std::string& text) = 0;

    // With the buttons Yes, No and Cancel and the question icon.
    virtual Answer Ask(const std::string& text) = 0;

    // With the buttons Yes and No, of which No is the default, and the question icon.
    virtual bool AskWhetherSure(const std::string& text) = 0;

    // The chosen path, or the MissingValueMarker if the user cancels. A file to save to may exist
    // already; the dialog does not ask about overwriting.
    virtual std::string BrowseForOpen(const FileQuestion& question) = 0;
    virtual std::string BrowseForSave(const FileQuestion& question) = 0;

    // The same for a folder. The dialog starts in `folder`.
    virtual std::string BrowseForFolder(const std::string& folder) = 0;

    // Starts with `font` and puts the user's choice into it. False if they cancel.
    virtual bool FontSelect(FontChoice& font) = 0;

    // The chosen color as a decimal number, or the MissingValueMarker if the user cancels. The
    // dialog starts with the color of StartColorAt, if that was called since the last time, or
    // else with the last choice.
    virtual std::string ColorSelect() = 0;
    // As the settings store it: a COLORREF, or a system color with the high bit set.
    virtual void StartColorAt(std::int32_t color) = 0;

    // Lets the user choose for each conflict. False if they cancel.
    virtual bool ResolveConflicts(std::vector<ValueConflict>& conflicts) = 0;

    // Lets the user choose what is imported. False if they cancel.
    virtual bool ReviewImport(ImportReview& review) = 0;

    // Puts a text on the clipboard.
    virtual void CopyText(const std::string& text) = 0;

    virtual void Beep() = 0;
};

}  // namespace tamarind
