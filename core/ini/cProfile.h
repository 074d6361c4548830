#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/ini/IniFiles.h"

namespace tamarind {

// The program's way to every INI file. Reads go through a receive buffer of a size in characters
// (UTF-16 code units): a value is cut to size - 1 of them, a list to size - 2. The list operations
// fill the list that the property of the same name reads; it holds until the next such call.
class cProfile {
public:
    static constexpr std::size_t kBufferSize = 4096;

    explicit cProfile(IniFiles& files) : m_files(files) {}

    // The value, or the default with its trailing spaces cut where file, section or key are
    // missing.
    std::string ReadStringValue(std::string_view lpSectionName, std::string_view lpKeyName,
                                std::string_view lpDefaultValue, const std::string& lpFileName,
                                std::size_t lpMaxBufferSize = kBufferSize);

    // The LeadingNumber of what ReadStringValue gives.
    double ReadIntegerValue(std::string_view lpSectionName, std::string_view lpKeyName,
                            std::string_view lpDefaultValue, const std::string& lpFileName,
                            std::size_t lpMaxBufferSize = kBufferSize);

    // Writes the value without the spaces around it, in double quotes if asked; the
    // MissingValueMarker is never written.
    WriteResult WriteStringValue(std::string_view lpSectionName, std::string_view lpKeyName,
                                 std::string_view lpValue, const std::string& lpFileName,
                                 bool blnAddQuotation = false);

    WriteResult WriteIntegerValue(std::string_view lpSectionName, std::string_view lpKeyName,
                                  std::int32_t lpValue, const std::string& lpFileName);
    WriteResult WriteIntegerValue(std::string_view lpSectionName, std::string_view lpKeyName,
                                  std::string_view lpValue, const std::string& lpFileName);

    WriteResult DeleteSection(std::string_view lpSectionName, const std::string& lpFileName);

    // Removes the first line of that key.
    WriteResult DeleteValue(std::string_view lpSectionName, std::string_view lpKeyName,
                            const std::string& lpFileName);

    void ReadFileSectionsName(const std::string& lpFileName,
                              std::size_t lpMaxBufferSize = kBufferSize);
    void ReadSectionKeysNameAndValue(std::string_view lpSectionName, const std::string& lpFileName,
                                     std::size_t lpMaxBufferSize = kBufferSize);
    void ReadSectionKeysNameOnly(std::string_view lpSectionName, const std::string& lpFileName,
                                 std::size_t lpMaxBufferSize = kBufferSize);

    // Entry `Index` of a list; one empty entry follows the last. Beyond it: std::out_of_range.
    const std::string& FileSectionsNameList(std::int32_t Index) const;
    const std::string& SectionKeysNameAndValueList(std::int32_t Index) const;
    const std::string& SectionKeysNameOnlyList(std::int32_t Index) const;

    // Ascending by character code.
    void SortKeysNameOnlyList();

    // Index of the last entry, which is one less than their number; -1 for none.
    std::int32_t FileSectionsNameCount = -1;
    std::int32_t SectionKeysNameAndValueCount = -1;
    std::int32_t SectionKeysNameOnlyCount = -1;

private:
    IniFiles& m_files;
    std::vector<std::string> m_sectionNames;
    std::vector<std::string> m_keyLines;
    std::vector<std::string> m_keyNames;
};

// The same reads as values, on a snapshot: what a buffer of `bufferSize` characters takes of a
// value, and of a list. A list ends early when the buffer is full; its last entry may be cut.
std::string_view CutToBuffer(std::string_view value,
                             std::size_t bufferSize = cProfile::kBufferSize);
std::vector<std::string_view> SectionNames(const IniDocument& document,
                                           std::size_t bufferSize = cProfile::kBufferSize);

// Walks the key lines of a section as far as the buffer takes their names: calls
// `visit(line, name)` with the line and its name, which is cut where the buffer ends within it.
template <typename Visit>
void ForEachKey(const IniDocument& document, IniDocument::SectionId section, Visit visit,
                std::size_t bufferSize = cProfile::kBufferSize);

// Takes entries for a list buffer: gives back what of an entry fits.
class ListBuffer {
public:
    explicit ListBuffer(std::size_t bufferSize) : m_room(bufferSize > 2 ? bufferSize - 2 : 0) {}

    // Nothing once the buffer is full.
    bool IsFull() const { return m_room == 0; }
    // `units` is its length in UTF-16 units.
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
