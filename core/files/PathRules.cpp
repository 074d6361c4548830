#include "core/files/PathRules.h"

#include <algorithm>
#include <iterator>

#include "core/text/Unicode.h"

namespace tamarind {
namespace {

constexpr std::string_view kSeparators = "\\/";
// Switches off the interpretation of the path (but this program applies the rules all the same).
constexpr std::string_view kLiteralPrefix = "\\\\?\\";
// The last three are the superscript digits 1 to 3, which count as digits here.
constexpr std::string_view kPortNumbers[] = {"0", "1", "2", "3",      "4",      "5",     "6",
                                             "7", "8", "9", "\u00B9", "\u00B2", "\u00B3"};

bool IsSeparator(char c) {
    return c == '\\' || c == '/';
}

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Whether a name is that of a device in whatever letter case. A device keeps its name with any
// extension and with blanks after it: "nul.txt" and "NUL .ini" are "NUL".
bool IsDevice(std::string_view name) {
    name = name.substr(0, name.find('.'));
    name = name.substr(0, name.find_last_not_of(' ') + 1);
    constexpr std::string_view kDevices[] = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
    const std::string_view port = name.substr(0, 3);
    const auto isName = [&](std::string_view device) { return EqualsIgnoreCase(device, name); };
    return std::ranges::any_of(kDevices, isName) ||
           ((EqualsIgnoreCase(port, "COM") || EqualsIgnoreCase(port, "LPT")) && name.size() > 3 &&
            std::ranges::find(kPortNumbers, name.substr(3)) != std::end(kPortNumbers));
}

// Control characters, and those with a meaning in searches, redirections and streams.
bool IsForbidden(char c) {
    return static_cast<unsigned char>(c) < ' ' ||
           std::string_view("*?<>\"|:").find(c) != std::string_view::npos;
}

}  // namespace

bool CanBeFile(std::string_view path) {
    if (path.starts_with(kLiteralPrefix)) {
        path.remove_prefix(kLiteralPrefix.size());
    } else if (path.size() > 3 && IsSeparator(path[0]) && IsSeparator(path[1]) && path[2] == '.' &&
               IsSeparator(path[3])) {
        return false;
    }
    if (path.size() > 1 && IsLetter(path[0]) && path[1] == ':') {
        path.remove_prefix(2);
    }
    if (std::ranges::any_of(path, IsForbidden)) {
        return false;
    }
    for (;;) {
        const std::size_t end = path.find_first_of(kSeparators);
        if (IsDevice(path.substr(0, end))) {
            return false;
        }
        if (end == std::string_view::npos) {
            return true;
        }
        path.remove_prefix(end + 1);
    }
}

}  // namespace tamarind
