#pragma once

#include <windows.h>

#include <string>

namespace tamarind {

// The system's dialog for choosing a folder, in front of `owner`, which may be null. It starts in
// `folder`, if that exists. The chosen path, or the MissingValueMarker if the user cancels or the
// dialog cannot be shown.
std::string ChooseFolder(HWND owner, const std::string& folder);

}  // namespace tamarind
