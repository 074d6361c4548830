#pragma once

#include <string>
#include <string_view>

#include "core/files/FileSystem.h"
#include "core/system/Environment.h"

namespace tamarind {

// Appends a backslash unless the text ends with one; the empty text becomes a single backslash.
std::string AddBackslash(std::string_view text);

// What follows the last backslash; the whole path without one.
std::string_view FileNameOfPath(std::string_view path);

// Everything up to and with the last backslash; empty without one.
std::string_view FolderOfPath(std::string_view path);

// Whether it begins with a drive or at a root: it does not depend on the folder that it is said in.
bool IsAbsolutePath(std::string_view path);

// Replaces each path segment of the form %name% by the variable's value; a segment whose variable
// is empty stays. A segment that begins with "%" but does not end with it is dropped.
std::string ExpandPathVariables(const std::string& path, const Environment& environment);

// Whether the file's length can be read: false for folders. With the network flag only paths that
// begin with two backslashes are tested, all others give false.
bool FileExists(const std::string& path, FileSystem& files, bool isNetwork = false);

// "5.01" for major 5, minor 0, revision 1 and an empty suffix: minor and revision stand side by
// side.
std::string VersionText(int major, int minor, int revision, std::string_view suffix);

}  // namespace tamarind
