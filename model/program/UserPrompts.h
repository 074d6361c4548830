#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tamarind {

enum class MessageIcon { Exclamation, Critical, Question, Information };
enum class Answer { Yes, No, Cancel };

// The file types that a file dialog offers, by their number in the program's filter table.
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

struct FileQuestion {
    std::string initialFolder;  // empty: the folder of the last choice
    std::string fileName;       // proposed
    FileFilter filter = FileFilter::AllFiles;
    std::string title;  // empty: the dialog's usual one
};

struct FontChoice {
    std::string name;
    std::int32_t points = 0;
    std::int32_t style = 0;    // 1 bold, 2 italic, 4 strikethrough, 8 underline
    std::int32_t charset = 0;  // a Windows character set number
};

// A key that was changed here and by another program: both lines as a settings file has them,
// empty for none.
struct ValueConflict {
    std::string key;  // with its section
    std::string mine;
    std::string theirs;
    bool takesTheirs = false;
};

// What the program asks the user and tells him. Texts are complete and translated.
class UserPrompts {
public:
    virtual ~UserPrompts() = default;

    virtual void ShowMessage(MessageIcon icon, const std::string& text) = 0;

    // With the buttons Yes, No and Cancel and the question icon.
    virtual Answer Ask(const std::string& text) = 0;

    // With the buttons Yes and No, of which No is the default, and the question icon.
    virtual bool AskWhetherSure(const std::string& text) = 0;

    // The chosen path, or the MissingValueMarker when the user cancels. A file to save to may
    // exist already; what is in it is not asked about.
    virtual std::string BrowseForOpen(const FileQuestion& question) = 0;
    virtual std::string BrowseForSave(const FileQuestion& question) = 0;

    // Takes the user's choice. False when he cancels.
    virtual bool FontSelect(FontChoice& font) = 0;

    // The chosen colour as a decimal number, or the MissingValueMarker. The dialog starts at the
    // colour that StartColorAt named since, or else at that of the last choice.
    virtual std::string ColorSelect() = 0;
    // As the settings have it: a COLORREF or a reference to a system colour.
    virtual void StartColorAt(std::int32_t color) = 0;

    // Lets the user choose for each conflict. False when he cancels.
    virtual bool ResolveConflicts(std::vector<ValueConflict>& conflicts) = 0;

    virtual void Beep() = 0;
};

}  // namespace tamarind
