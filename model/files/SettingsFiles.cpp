#include "model/files/SettingsFiles.h"

#include <algorithm>

#include "core/files/Paths.h"
#include "core/text/Unicode.h"

namespace tamarind {
namespace {

constexpr std::string_view kRedirectKey = "RedirectSection";
constexpr std::string_view kStayingKeys[] = {kRedirectKey, "AlternateUserIni",
                                             "UseIniInProgramDir"};

// Turns values of redirections into paths. File names are relative to the folder of the settings.
class PathReader {
public:
    PathReader(const IniDocument& settings, const std::string& path, const Environment& environment)
        : m_settings(settings), m_folder(FolderOfPath(path)), m_environment(environment) {}

    // The path that a value of "RedirectSection" means; empty if it means no redirection.
    std::string FileOfValue(std::string_view value) const {
        if (value == "1") {
            const auto other = m_settings.FindValue("Configuration", "AlternateUserIni");
            value = other ? *other : std::string_view();
        }
        if (value.empty() || value == "0") {
            return {};
        }
        std::string expanded = ExpandPathVariables(std::string(value), m_environment);
        if (expanded.empty() || IsAbsolutePath(expanded)) {
            return expanded;
        }
        const bool isHere = expanded.starts_with(".\\");
        return m_folder + (isHere ? expanded.substr(2) : expanded);
    }

private:
    const IniDocument& m_settings;
    std::string m_folder;
    const Environment& m_environment;
};

}  // namespace

const SettingsFiles::File* SettingsFiles::Find(const std::string& path) const {
    const auto found = std::ranges::find_if(
        m_files, [&](const File& file) { return EqualsIgnoreCase(file.path, path); });
    return found == m_files.end() ? nullptr : &*found;
}

std::vector<std::string> SettingsFiles::Paths() const {
    std::vector<std::string> paths;
    for (const File& file : m_files) {
        paths.push_back(file.path);
    }
    return paths;
}

std::size_t SettingsFiles::Add(const Reader& read, const std::string& path,
                               const SettingsFiles* before) {
    if (const File* const known = Find(path)) {
        return static_cast<std::size_t>(known - m_files.data());
    }
    IniSnapshot snapshot = read(path);
    File file = {path, std::move(snapshot.document), snapshot.error, snapshot.isSettled, false};
    const File* const former = before != nullptr ? before->Find(path) : nullptr;
    const bool wasRead = former != nullptr && (former->error == FileError::None || former->isKept);
    if (file.error != FileError::None && wasRead) {
        file.document = former->document;
        file.isKept = true;
    }
    m_files.push_back(std::move(file));
    return m_files.size() - 1;
}

SettingsFiles SettingsFiles::Read(const Reader& read, const Environment& environment,
                                  const std::string& path) {
    return Read(read, environment, path, nullptr);
}

SettingsFiles SettingsFiles::ReadAgain(const Reader& read, const Environment& environment,
                                       const SettingsFiles& before) {
    return Read(read, environment, before.Main().path, &before);
}

SettingsFiles SettingsFiles::Read(const Reader& read, const Environment& environment,
                                  const std::string& path, const SettingsFiles* before) {
    SettingsFiles result;
    result.Add(read, path, before);
    const std::shared_ptr<const IniDocument> settings = result.Main().document;
    const PathReader paths(*settings, path, environment);
    for (const auto& [id, line] : settings->KeysNamed(kRedirectKey)) {
        const std::string section(settings->SectionName(id));
        // Of several sections with one name the first counts, and of several keys in it.
        if (settings->FindSection(section) != id || settings->IsRepeated(id, line)) {
            continue;
        }
        const std::string target = paths.FileOfValue(settings->Value(line));
        if (target.empty() || result.m_files.size() >= kMaxFiles) {
            continue;
        }
        const std::size_t file = result.Add(read, target, before);
        // A redirection is followed once. Where it would go from there matters only if that leads
        // back.
        const auto next = result.m_files[file].document->FindValue(section, kRedirectKey);
        const bool leadsBack =
            file == 0 || (next && EqualsIgnoreCase(paths.FileOfValue(*next), path));
        if (leadsBack) {
            result.m_loops.push_back(section);
        } else {
            result.m_redirections.push_back({section, file});
        }
    }
    return result;
}

std::size_t SettingsFiles::FileOf(std::string_view section) const {
    for (const Redirection& redirection : m_redirections) {
        if (EqualsIgnoreCase(redirection.section, section)) {
            return redirection.file;
        }
    }
    return 0;
}

bool SettingsFiles::StaysInMainFile(std::string_view key) {
    return std::ranges::any_of(kStayingKeys,
                               [&](std::string_view name) { return EqualsIgnoreCase(name, key); });
}

bool SettingsFiles::IsSameAs(const SettingsFiles& other) const {
    return std::ranges::equal(m_files, other.m_files, [](const File& left, const File& right) {
        return left.path == right.path && left.error == right.error &&
               (left.document == right.document ||
                left.document->Bytes() == right.document->Bytes());
    });
}

}  // namespace tamarind
