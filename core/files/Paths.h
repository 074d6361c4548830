#pragma once

#include <string>
#include <string_view>

#include "core/files/FileSystem.h"
#include "core/system/Environment.h"

namespace tamarind {

// Appends a backslash unless the text ends with one; an empty text becomes a single backslash.
std::string AddBackslash(std::string_view text);

// What follows the last backslash, or the whole path if there is none. A view into `path`.
std::string_view FileNameOfPath(std::string_view path);

// Everything up to and including the last backslash; empty if there is none. A view into `path`.
std::string_view FolderOfPath(std::string_view path);

// Whether the path begins with a drive or a separator. "C:x.ini" counts, although it depends on the
// current folder of drive C.
bool IsAbsolutePath(std::string_view path);

// Replaces each segment of the form %name% by the value of that environment variable:
//
//   %COMMANDER_PATH%\wincmd.ini    C:\totalcmd\wincmd.ini
//   %NO_SUCH%\wincmd.ini           unchanged: the variable is empty
//   C:\%half\wincmd.ini            C:\wincmd.ini: "%" at the start only drops the segment
//   C:\a%b%\wincmd.ini             unchanged: the segment does not begin with "%"
std::string ExpandPathVariables(const std::string& path, const Environment& environment);

// Whether there is a file, not a folder. With `isNetwork` only paths that begin with two
// backslashes are looked at, and all others give false without a look at the disk.
bool FileExists(const std::string& path, FileSystem& files, bool isNetwork = false);

// "5.01" for major 5, minor 0, revision 1 and an empty suffix: there is no dot between minor and
// revision.
std::string VersionText(int major, int minor, int revision, std::string_view suffix);

}  // namespace tamarind
