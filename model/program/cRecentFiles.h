#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/ini/IniFiles.h"
#include "model/program/Language.h"
#include "model/program/UserPrompts.h"

namespace tamarind {

// The files that were opened last, the newest in slot 1. Any text counts as a file; nothing looks
// at the disk. The menu of recent files shows Entries() whenever it opens.
class cRecentFiles {
public:
    cRecentFiles(IniFiles& files, const Language& language, UserPrompts& prompts)
        : m_files(files), m_language(language), m_prompts(prompts) {}

    // Makes `vMax` empty slots.
    void Setup(std::int16_t vMax);

    // Slot n is the key `KeyPrefix` + n of the section. A missing key is an empty slot, also
    // between used ones; SaveList deletes the keys of empty slots.
    void ReadList(const std::string& FileName, std::string_view Section,
                  std::string_view KeyPrefix = {});
    WriteResult SaveList(const std::string& FileName, std::string_view Section,
                         std::string_view KeyPrefix = {}) const;

    // Puts a file into slot 1. It leaves the slot in which it was; if it was in none, the file in
    // the last slot drops out. Names compare in any letter case.
    void AddFile(const std::string& file);
    // Later slots move up by one.
    void RemoveFile(std::int16_t Index);
    // Moves the file of a slot to slot 1; those before it move down by one.
    void PutAsFirstItem(std::int16_t Index);
    // Asks the user and then empties all slots. False if they said no.
    bool Clear();

    // The file of a slot, from 1 on; the MissingValueMarker for an empty slot or an invalid index.
    const std::string& ListItems(std::int16_t Index) const;
    std::int16_t Max() const { return static_cast<std::int16_t>(m_slots.size()); }

    // A menu entry for a used slot. The caption is ready for a menu: "&1 " and the shortened path.
    struct Entry {
        std::int16_t index = 0;
        std::string caption;
    };
    // The used slots in their order, and the texts that the menu shows for an empty list and for
    // the command that empties it.
    std::vector<Entry> Entries() const;
    std::string NoFilesText() const;
    std::string ClearText() const;

private:
    IniFiles& m_files;
    const Language& m_language;
    UserPrompts& m_prompts;
    std::vector<std::string> m_slots;
};

// A path as a menu shows it: whole up to 48 characters (UTF-16 units), otherwise shortened in its
// middle by the number of its parts:
//
//   2 parts       C:\<first 16>......<last 16>
//   3 parts       C:\<first 16>\...\<last 16>
//   4 or 5        C:\first\...\last
//   more          C:\first\...\last but one\last
//   1 part        empty
std::string ShortenedPath(std::string_view path);

}  // namespace tamarind
