#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/files/SaveActions.h"

namespace tamarind {

// A line of a file that a save changes.
struct PreviewLine {
    enum class Kind : std::uint8_t {
        Same,     // near a change; to find one's way
        Removed,  // will be gone, or replaced by the next added lines
        Added,
        Skipped,  // stands for lines that stay, and has no text
    };
    Kind kind = Kind::Same;
    std::string text;  // without the line end
};

// What a save would do to one file.
struct FilePreview {
    std::string path;
    std::vector<PreviewLine> lines;  // none if it stays as it is
    // The key whose change the file cannot take, so that nothing is written, and why.
    std::optional<KeyNumber> refusedKey;
    IniEdit refused = IniEdit::Unchanged;
};

// What a save would do now, if no other program writes the files meanwhile.
struct SavePreview {
    std::vector<FilePreview> files;      // that have keys with pending changes
    std::vector<KeyNumber> withoutEdit;  // such keys for which nothing would change, ascending
};

// The changes are made to copies by the code that saves. `settings` is what the records follow.
SavePreview PreviewSave(const KeyStore& store, const SettingsFiles& settings);

// The edits of a document as lines, with up to two lines around each that stay. `before` are the
// bytes that the document was parsed from.
std::vector<PreviewLine> LinesOfEdits(const IniDocument& edited, std::string_view before);

}  // namespace tamarind
