#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/Environment.h"
#include "core/IniFiles.h"

namespace tamarind {

// A settings file and the files that its sections are kept in, as they stood at one moment. A
// section with the key "RedirectSection" lives in the file that this names: a path, which may hold
// environment variables, a file name beside the settings file, or "1" for the file that
// "AlternateUserIni" names. "0" and an empty name are none.
class SettingsFiles {
public:
    // More files than this are not told apart; further sections are read from the settings file.
    static constexpr std::size_t kMaxFiles = 256;

    struct File {
        std::string path;
        std::shared_ptr<const IniDocument> document;  // empty for a file that can not be read
        FileError error = FileError::None;
    };

    SettingsFiles() = default;

    // Reads the settings file, and each of the others once.
    static SettingsFiles Read(IniFiles& files, const Environment& environment,
                              const std::string& path);

    // The settings file itself comes first.
    const std::vector<File>& Files() const { return m_files; }
    const File& Main() const { return m_files.front(); }
    bool IsEmpty() const { return m_files.empty(); }

    // The number of the file in which a section is kept, and that of one key of it: some keys stay
    // in the settings file whatever their section does.
    std::size_t FileOf(std::string_view section) const;
    static bool StaysInMainFile(std::string_view key);
    std::size_t FileOf(std::string_view section, std::string_view key) const {
        return StaysInMainFile(key) ? 0 : FileOf(section);
    }

    // Sections whose redirection leads back to the settings file: they are read from that.
    const std::vector<std::string>& Loops() const { return m_loops; }

    // Whether both hold the same files with the same content.
    bool IsSameAs(const SettingsFiles& other) const;

private:
    struct Redirection {
        std::string section;
        std::size_t file;
    };

    std::size_t Add(IniFiles& files, const std::string& path);

    std::vector<File> m_files;
    std::vector<Redirection> m_redirections;
    std::vector<std::string> m_loops;
};

}  // namespace tamarind
