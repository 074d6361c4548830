#pragma once

#include <optional>
#include <string>

namespace tamarind {

enum class MessageIcon { Exclamation, Critical, Question };
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

// What the program asks the user and tells him. Texts are complete and translated.
class UserPrompts {
public:
    virtual ~UserPrompts() = default;

    virtual void ShowMessage(MessageIcon icon, const std::string& text) = 0;

    // With the buttons Yes, No and Cancel and the question icon.
    virtual Answer Ask(const std::string& text) = 0;

    // The chosen path, or the MissingValueMarker when the user cancels.
    virtual std::string BrowseForOpen(const FileQuestion& question) = 0;

    // The chosen colour as a decimal number, or the MissingValueMarker.
    virtual std::string ColorSelect() = 0;

    virtual void Beep() = 0;
};

}  // namespace tamarind
