#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/ini/IniDocument.h"

namespace tamarind {

// A backup of a file, and how far it differs from what the file is now.
struct BackupInfo {
    std::string path;
    std::string date;        // when it was made, in local time: "2026-11-21 06.45.12"
    std::uint64_t size = 0;  // bytes
    std::size_t differingKeys = 0;
};

// A key that differs between a backup and the file: its lines as an INI file has them, ";"
// included; empty where there is none.
struct BackupDifference {
    std::string key;  // with its section
    std::string inBackup;
    std::string now;
};

// The keys that differ between two INI files: first in the order of `now`, then those that only
// `backup` has. An active and a commented-out key of one name are two. Of a key that a section has
// twice, the first line counts.
std::vector<BackupDifference> CompareBackup(const IniDocument& backup, const IniDocument& now);

}  // namespace tamarind
