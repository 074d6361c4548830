#include "core/files/Paths.h"

namespace tamarind {

std::string AddBackslash(std::string_view text) {
    std::string path(text);
    if (!path.ends_with('\\')) {
        path += '\\';
    }
    return path;
}

std::string_view FileNameOfPath(std::string_view path) {
    const std::size_t last = path.rfind('\\');
    return last == std::string_view::npos ? path : path.substr(last + 1);
}

std::string_view FolderOfPath(std::string_view path) {
    const std::size_t last = path.rfind('\\');
    return last == std::string_view::npos ? std::string_view() : path.substr(0, last + 1);
}

bool IsAbsolutePath(std::string_view path) {
    const bool hasDrive = path.size() > 1 && path[1] == ':';
    return hasDrive || path.starts_with('\\') || path.starts_with('/');
}

std::string ExpandPathVariables(const std::string& path, const Environment& environment) {
    if (path.find('%') == std::string::npos) {
        return path;
    }
    std::string result;
    std::string_view rest = path;
    while (true) {
        const std::size_t end = rest.find('\\');
        const std::string_view segment = rest.substr(0, end);
        if (!segment.starts_with('%')) {
            result.append(1, '\\').append(segment);
        } else if (segment.ends_with('%')) {
            const std::string name(segment.size() > 2 ? segment.substr(1, segment.size() - 2) : "");
            const std::string value = name.empty() ? name : environment.Variable(name);
            result.append(1, '\\').append(value.empty() ? segment : value);
        }
        if (end == std::string_view::npos) {
            break;
        }
        rest.remove_prefix(end + 1);
    }
    return result.empty() ? result : result.substr(1);
}

bool FileExists(const std::string& path, FileSystem& files, bool isNetwork) {
    if (isNetwork && !path.starts_with("\\\\")) {
        return false;
    }
    return files.Stamp(path).has_value();
}

std::string VersionText(int major, int minor, int revision, std::string_view suffix) {
    return std::to_string(major) + "." + std::to_string(minor) + std::to_string(revision) +
           std::string(suffix);
}

}  // namespace tamarind
