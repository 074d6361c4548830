#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/ini/IniFiles.h"
#include "core/system/Environment.h"

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
        std::shared_ptr<const IniDocument> document;  // empty for a file that cannot be read
        FileError error = FileError::None;
        bool isSettled = true;  // as IniSnapshot has it
        // It could be read before and cannot be now: the document is that of before.
        bool isKept = false;
        bool IsGone() const {
            return isKept && (IsMissing(error) || error == FileError::Unreachable);
        }
    };

    SettingsFiles() = default;

    // Reads the settings file, and each of the others once.
    using Reader = std::function<IniSnapshot(const std::string& path)>;
    static SettingsFiles Read(const Reader& read, const Environment& environment,
                              const std::string& path);
    static SettingsFiles Read(IniFiles& files, const Environment& environment,
                              const std::string& path) {
        return Read([&](const std::string& file) { return files.Read(file); }, environment, path);
    }

    // The same files later. Those that cannot be read this time keep their documents.
    static SettingsFiles ReadAgain(const Reader& read, const Environment& environment,
                                   const SettingsFiles& before);

    // The settings file itself comes first.
    const std::vector<File>& Files() const { return m_files; }
    const File& Main() const { return m_files.front(); }
    bool IsEmpty() const { return m_files.empty(); }
    std::vector<std::string> Paths() const;
    const File* Find(const std::string& path) const;

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

    std::size_t Add(const Reader& read, const std::string& path, const SettingsFiles* before);
    static SettingsFiles Read(const Reader& read, const Environment& environment,
                              const std::string& path, const SettingsFiles* before);

    std::vector<File> m_files;
    std::vector<Redirection> m_redirections;
    std::vector<std::string> m_loops;
};

}  // namespace tamarind
