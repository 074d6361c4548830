#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/ini/IniFiles.h"

namespace tamarind {

// Values and lists of INI files by path, with the limits of the Windows functions for INI files: a
// read goes through a receive buffer of a size in characters (UTF-16 code units), which cuts a
// value to size - 1 of them and a list to size - 2. The list operations fill the list that the
// function of the same name reads; it holds until the next such call. Code that has a document at
// hand uses the free functions below.
class cProfile {
public:
    static constexpr std::size_t kBufferSize = 4096;

    explicit cProfile(IniFiles& files) : m_files(files) {}

    // The value, or the default without its trailing spaces if file, section or key is missing.
    std::string ReadStringValue(std::string_view lpSectionName, std::string_view lpKeyName,
                                std::string_view lpDefaultValue, const std::string& lpFileName,
                                std::size_t lpMaxBufferSize = kBufferSize);

    // The LeadingNumber of what ReadStringValue returns.
    double ReadIntegerValue(std::string_view lpSectionName, std::string_view lpKeyName,
                            std::string_view lpDefaultValue, const std::string& lpFileName,
                            std::size_t lpMaxBufferSize = kBufferSize);

    // Writes the value without the spaces around it, in double quotes if `blnAddQuotation`. The
    // MissingValueMarker is not written, which counts as success.
    WriteResult WriteStringValue(std::string_view lpSectionName, std::string_view lpKeyName,
                                 std::string_view lpValue, const std::string& lpFileName,
                                 bool blnAddQuotation = false);

    // The number, or a text that holds one; the spaces around it are removed.
    WriteResult WriteIntegerValue(std::string_view lpSectionName, std::string_view lpKeyName,
                                  std::int32_t lpValue, const std::string& lpFileName);
    WriteResult WriteIntegerValue(std::string_view lpSectionName, std::string_view lpKeyName,
                                  std::string_view lpValue, const std::string& lpFileName);

    WriteResult DeleteSection(std::string_view lpSectionName, const std::string& lpFileName);

    // Removes the first line of that key.
    WriteResult DeleteValue(std::string_view lpSectionName, std::string_view lpKeyName,
                            const std::string& lpFileName);

    // Names of the sections; "name=value" of the keys of one section, without lines that begin with
    // ";"; and the names of its active keys. A missing file or section gives an empty list.
    void ReadFileSectionsName(const std::string& lpFileName,
                              std::size_t lpMaxBufferSize = kBufferSize);
    void ReadSectionKeysNameAndValue(std::string_view lpSectionName, const std::string& lpFileName,
                                     std::size_t lpMaxBufferSize = kBufferSize);
    void ReadSectionKeysNameOnly(std::string_view lpSectionName, const std::string& lpFileName,
                                 std::size_t lpMaxBufferSize = kBufferSize);

    // Entry `Index` of a list, from 0; one empty entry follows the last. Throws std::out_of_range
    // beyond it.
    const std::string& FileSectionsNameList(std::int32_t Index) const;
    const std::string& SectionKeysNameAndValueList(std::int32_t Index) const;
    const std::string& SectionKeysNameOnlyList(std::int32_t Index) const;

    // Ascending by UTF-16 code units, case-sensitive.
    void SortKeysNameOnlyList();

    // Index of the last entry, that is their number less one; -1 for an empty list.
    std::int32_t FileSectionsNameCount = -1;
    std::int32_t SectionKeysNameAndValueCount = -1;
    std::int32_t SectionKeysNameOnlyCount = -1;

private:
    IniFiles& m_files;
    std::vector<std::string> m_sectionNames;
    std::vector<std::string> m_keyLines;
    std::vector<std::string> m_keyNames;
};

// What a buffer of `bufferSize` characters takes of a value, and of the section names of a
// document. A list ends early when the buffer is full, and its last entry may be cut. The views
// belong to the argument.
std::string_view CutToBuffer(std::string_view value,
                             std::size_t bufferSize = cProfile::kBufferSize);
std::vector<std::string_view> SectionNames(const IniDocument& document,
                                           std::size_t bufferSize = cProfile::kBufferSize);

// Walks the active keys of a section as far as a buffer takes their names. Calls `visit(line,
// name)`; `name` is shorter than that of the line if the buffer ends within it.
template <typename Visit>
void ForEachKey(const IniDocument& document, IniDocument::SectionId section, Visit visit,
                std::size_t bufferSize = cProfile::kBufferSize);

// Measures what fits into a list buffer, entry by entry; it stores nothing.
class ListBuffer {
public:
    explicit ListBuffer(std::size_t bufferSize) : m_room(bufferSize > 2 ? bufferSize - 2 : 0) {}

    // The remaining entries would come out empty.
    bool IsFull() const { return m_room == 0; }
    // The part of the next entry that fits. `units` is the length of the entry in UTF-16 units.
    std::string_view Take(std::string_view entry, std::size_t units);

private:
    std::size_t m_room;
};

template <typename Visit>
void ForEachKey(const IniDocument& document, IniDocument::SectionId section, Visit visit,
                std::size_t bufferSize) {
    ListBuffer buffer(bufferSize);
    for (auto line = document.FirstLine(section); line != IniDocument::kNone && !buffer.IsFull();
         line = document.NextLine(line)) {
        if (document.Kind(line) == IniLineKind::Key) {
            visit(line, buffer.Take(document.KeyName(line), document.KeyNameUnits(line)));
        }
    }
}

}  // namespace tamarind
