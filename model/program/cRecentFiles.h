#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/ini/IniFiles.h"
#include "model/program/Language.h"
#include "model/program/UserPrompts.h"

namespace tamarind {

// The files opened last, the newest in slot 1. Any text counts as a file. Menus show Entries()
// when they open.
class cRecentFiles {
public:
    cRecentFiles(IniFiles& files, const Language& language, UserPrompts& prompts)
        : m_files(files), m_language(language), m_prompts(prompts) {}

    // `vMax` empty slots.
    void Setup(std::int16_t vMax);

    // The keys are `KeyPrefix` and the slot's number. A missing key is an empty slot, also between
    // used ones; SaveList deletes the keys of empty slots.
    void ReadList(const std::string& FileName, std::string_view Section,
                  std::string_view KeyPrefix = {});
    WriteResult SaveList(const std::string& FileName, std::string_view Section,
                         std::string_view KeyPrefix = {}) const;

    // Puts a file into slot 1. It leaves the slot that it was in; without one the last slot's file
    // falls out.
    void AddFile(const std::string& file);
    void RemoveFile(std::int16_t Index);
    // Moves a slot's file to slot 1; those before it move down by one.
    void PutAsFirstItem(std::int16_t Index);
    // Empties all slots, after a question. False: the user did not mean it.
    bool Clear();

    // The file of a slot; the MissingValueMarker for an empty one or one that is none.
    const std::string& ListItems(std::int16_t Index) const;
    std::int16_t Max() const { return static_cast<std::int16_t>(m_slots.size()); }

    // A menu entry for each used slot: its number and caption.
    struct Entry {
        std::int16_t index = 0;
        std::string caption;
    };
    std::vector<Entry> Entries() const;
    std::string NoFilesText() const;
    std::string ClearText() const;

private:
    IniFiles& m_files;
    const Language& m_language;
    UserPrompts& m_prompts;
    std::vector<std::string> m_slots;
};

// A path as a menu shows it: whole up to 48 characters, else shortened in its middle.
std::string ShortenedPath(std::string_view path);

}  // namespace tamarind
