#include "model/session/RecentSettings.h"

#include "core/files/Paths.h"
#include "core/text/MissingValueMarker.h"
#include "model/program/StringTable.h"

namespace tamarind {
namespace {

constexpr std::string_view kPrefix = "RecentFiles";

}  // namespace

RecentSettings::RecentSettings(Workplace& workplace)
    : m_workplace(workplace), m_files(workplace.Files(), workplace.Texts(), workplace.Prompts()) {}

void RecentSettings::Read() {
    const OwnSettingsStore& settings = m_workplace.OwnSettings();
    m_files.Setup(static_cast<std::int16_t>(settings.Values().numberOfRecentFiles));
    m_files.ReadList(settings.Path(), OwnSettingsStore::kSection, kPrefix);
}

void RecentSettings::Save() {
    m_files.SaveList(m_workplace.OwnSettings().Path(), OwnSettingsStore::kSection, kPrefix);
}

void RecentSettings::Add(const std::string& path) {
    Read();
    m_files.AddFile(path);
    Save();
}

void RecentSettings::Remove(const std::string& path) {
    Read();
    for (std::int16_t index = m_files.Max(); index > 0; --index) {
        if (m_files.ListItems(index) == path) {
            m_files.RemoveFile(index);
        }
    }
    Save();
}

void RecentSettings::Clear() {
    if (m_files.Clear()) {
        Save();
    }
}

std::optional<std::string> RecentSettings::PathOf(std::int16_t index) {
    const std::string entry = m_files.ListItems(index);
    if (entry == MissingValueMarker) {
        return std::nullopt;
    }
    std::string path = ExpandPathVariables(entry, m_workplace.Services().environment);
    if (!FileExists(path, m_workplace.Disk())) {
        m_workplace.Prompts().ShowMessage(MessageIcon::Exclamation,
                                          m_workplace.Text(text::kCannotFindFile) + " " + path +
                                              "\n\n" + m_workplace.Text(text::kVerifyPath));
        Remove(entry);
        return std::nullopt;
    }
    return path;
}

}  // namespace tamarind
