#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/files/FileCalls.h"

namespace tamarind {

class Backups;
class FileSteps;

// The files that stand beside a file while it is replaced, and that a crash may leave behind.
enum class LeftoverKind {
    New,    // what is going to replace it
    Old,    // what is being replaced; in the folder of the backups if it becomes one
    Whole,  // the old content of a file with several hard links that is being overwritten
};

// The path of such a file. Its name carries the size and the hash of the `bytes` that it is to
// hold, so that a file that is half written, or that another program has changed, is told from a
// whole one. For "x.ini" with 1,234 bytes it is
//
//   x.ini.~old-1234-0123456789abcdef
//
// with "-2" and so on at its end for a `number` greater than 1, used where the plain name is taken.
std::string LeftoverPath(const std::string& path, LeftoverKind kind, std::string_view bytes,
                         int number = 1);

// Ends interrupted replacements of one file: puts the file back, and clears the leftovers away.
// Nothing is deleted unread: a leftover whose content is neither that of the file nor that of a
// backup becomes a backup.
class Leftovers {
public:
    // `path` is the final path. All arguments are kept by reference and must outlive this object.
    Leftovers(FileSteps& steps, const std::string& path, Backups& backups)
        : m_steps(steps), m_path(path), m_backups(backups) {}

    // Whether there are leftovers, or it cannot be found out. Takes no lock and changes nothing.
    bool MayExist();

    // To be called with the lock of the file held; `isMissing` says whether the file does not
    // exist. After an error the file is still missing or not whole; the next call tries again.
    CallError Finish(bool isMissing);

private:
    struct Leftover {
        std::string path;
        LeftoverKind kind = LeftoverKind::New;
        bool agrees = false;     // its bytes have the size and the hash in its name
        bool isPlanned = false;  // it was made to become the file, not one of the backups
        FileBytes content;
    };
    using List = std::vector<Leftover>;

    // The paths of all leftovers, whole or not.
    CallError Find(std::vector<std::string>& paths);
    // Reads all leftovers into `list`. An error if one of them may be the missing file itself and
    // cannot be read.
    CallError Read(bool isMissing, List& list);
    // Gives a leftover the name of the missing file. `present` gets the content of the file
    // afterwards.
    CallError PutBack(List& list, FileBytes& present);
    // Writes the old content back into a torn file with several hard links. `present` as above.
    CallError Mend(const List& list, FileBytes& present);
    // Whether the overwriting of the file, of which `whole` is the old content, stopped in the
    // middle.
    bool IsTorn(const List& list, const Leftover& whole, const FileBytes& present) const;
    // Deletes the leftovers or makes backups of them. `present` is the content of the file.
    void ClearAway(const List& list, const std::string& present);

    FileSteps& m_steps;
    const std::string& m_path;
    Backups& m_backups;
};

}  // namespace tamarind
