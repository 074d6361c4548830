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

// What stands beside a file while it is replaced, and what a crash may leave there.
enum class LeftoverKind {
    New,    // what is going to replace it
    Old,    // what is being replaced; in the folder of the backups if it becomes one
    Whole,  // the old content of a file with several hard links that is being overwritten
};

// A name bears the size and the hash of the bytes that the file is to have, so that half a file, or
// one that another program has written into, is told from a whole one: for "x.ini" it is
// "x.ini.~old-1234-0123456789abcdef", with "-2" and so on behind it where that is taken.
std::string LeftoverPath(const std::string& path, LeftoverKind kind, std::string_view bytes,
                         int number = 1);

// Of one file: puts it back where a replacement was interrupted, and clears away the rest. Nothing
// is deleted unread: what is neither the file's content nor that of a backup becomes a backup.
class Leftovers {
public:
    // `path` is the final one. All arguments are kept by reference.
    Leftovers(FileSteps& steps, const std::string& path, Backups& backups)
        : m_steps(steps), m_path(path), m_backups(backups) {}

    // Whether there are any, or nobody can tell.
    bool MayExist();

    // Under the file's lock; `isMissing` says whether the file is there. An error: it is missing or
    // not whole, and could not be put back.
    CallError Finish(bool isMissing);

private:
    struct Leftover {
        std::string path;
        LeftoverKind kind = LeftoverKind::New;
        bool agrees = false;     // its bytes with its name
        bool isPlanned = false;  // it is or was to become the file, not one of the backups
        FileBytes content;
    };
    using List = std::vector<Leftover>;

    CallError Find(std::vector<std::string>& paths);
    CallError Read(bool isMissing, List& list);
    CallError PutBack(List& list, FileBytes& present);
    CallError Mend(const List& list, FileBytes& present);
    bool IsTorn(const List& list, const Leftover& whole, const FileBytes& present) const;
    void ClearAway(const List& list, const std::string& present);

    FileSteps& m_steps;
    const std::string& m_path;
    Backups& m_backups;
};

}  // namespace tamarind
