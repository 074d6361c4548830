// Saves settings.ini in the present folder over and over, each time with other bytes, until it is
// killed or finds a file named "stop". It begins with reading what the one before it has left.
#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

#include "core/files/FileSystem.h"

namespace {

// A line with the number of the save and of the lines that follow, each of which repeats it.
std::string ContentOf(int save) {
    const int lines = 500 + save % 7 * 300;
    std::string content = std::to_string(save) + " " + std::to_string(lines) + "\n";
    for (int line = 0; line < lines; ++line) {
        content += std::to_string(save) + "\n";
    }
    return content;
}

}  // namespace

// With an argument it saves nothing and waits for the file "stop".
int main(int count, char**) {
    enum { kNotWhole = 3, kNotSaved, kMissing };
    const std::string path = "settings.ini";
    tamarind::DiskFileSystem disk;
    while (count > 1 && !disk.Stamp("stop")) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    if (count > 1) {
        return 0;
    }
    const tamarind::FileContent found = disk.Read(path, 1U << 20);
    int save = 0;
    if (found.error != tamarind::FileError::NotFound) {
        save = std::atoi(found.bytes.c_str());
        if (found.bytes != ContentOf(save)) {
            return kNotWhole;
        }
    } else if (!disk.ListBackups(path).empty()) {
        return kMissing;
    }
    do {
        if (disk.Replace(path, ContentOf(++save), tamarind::Backup::Yes) !=
            tamarind::FileError::None) {
            return kNotSaved;
        }
    } while (!disk.Stamp("stop"));
    return 0;
}
