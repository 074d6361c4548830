#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/ini/IniFiles.h"
#include "core/system/Environment.h"

namespace tamarind {

// A settings file together with the files that its sections are kept in, as they stood at one
// moment. Total Commander reads a section with the key "RedirectSection" from the file that this
// key names:
//
//   RedirectSection=%COMMANDER_PATH%\user.ini    a path, with environment variables
//   RedirectSection=colors.ini                   a file beside the settings file
//   RedirectSection=1                            the file that "AlternateUserIni" names
//   RedirectSection=0, or empty                  no redirection
class SettingsFiles {
public:
    // Redirections to more files than this are ignored: their sections are read from the settings
    // file.
    static constexpr std::size_t kMaxFiles = 256;

    struct File {
        std::string path;
        std::shared_ptr<const IniDocument> document;  // empty for a file that cannot be read
        FileError error = FileError::None;
        bool isSettled = true;  // as IniSnapshot has it
        // It could be read before and cannot be read now; the document is the former one.
        bool isKept = false;
        // The file is missing or out of reach, rather than just in use.
        bool IsGone() const {
            return isKept && (IsMissing(error) || error == FileError::Unreachable);
        }
    };

    SettingsFiles() = default;

    // Reads the settings file, and each of the others once.
    using Reader = std::function<IniSnapshot(const std::string& path)>;
    // Reads the settings file, and each file that it redirects to once. A file that cannot be read
    // is in the result, with its error and an empty document.
    static SettingsFiles Read(const Reader& read, const Environment& environment,
                              const std::string& path);
    static SettingsFiles Read(IniFiles& files, const Environment& environment,
                              const std::string& path) {
        return Read([&](const std::string& file) { return files.Read(file); }, environment, path);
    }

    // The same files later. A file that cannot be read this time keeps its document (isKept).
    static SettingsFiles ReadAgain(const Reader& read, const Environment& environment,
                                   const SettingsFiles& before);

    // The settings file itself comes first. Never empty once it was read.
    const std::vector<File>& Files() const { return m_files; }
    const File& Main() const { return m_files.front(); }
    bool IsEmpty() const { return m_files.empty(); }
    std::vector<std::string> Paths() const;
    // By path, in any letter case; null if there is none.
    const File* Find(const std::string& path) const;

    // The index in Files() of the file in which a section is kept, or in which one key of it is
    // kept: some keys stay in the settings file even if their section is redirected.
    std::size_t FileOf(std::string_view section) const;
    static bool StaysInMainFile(std::string_view key);
    std::size_t FileOf(std::string_view section, std::string_view key) const {
        return StaysInMainFile(key) ? 0 : FileOf(section);
    }

    // Sections whose redirection leads back to the settings file. They are read from there.
    const std::vector<std::string>& Loops() const { return m_loops; }

    // Whether both hold the same files with the same content.
    bool IsSameAs(const SettingsFiles& other) const;

private:
    // A section that is kept in another file.
    struct Redirection {
        std::string section;
        std::size_t file;
    };

    // The index of a file, which is read if it is not known yet.
    std::size_t Add(const Reader& read, const std::string& path, const SettingsFiles* before);
    static SettingsFiles Read(const Reader& read, const Environment& environment,
                              const std::string& path, const SettingsFiles* before);

    std::vector<File> m_files;
    std::vector<Redirection> m_redirections;
    std::vector<std::string> m_loops;
};

}  // namespace tamarind
