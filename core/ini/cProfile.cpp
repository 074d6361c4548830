#include "core/ini/cProfile.h"

#include <algorithm>
#include <utility>

#include "core/ini/IniParser.h"
#include "core/text/LeadingNumber.h"
#include "core/text/MissingValueMarker.h"
#include "core/text/Unicode.h"

namespace tamarind {
namespace {

std::string_view WithoutTrailingSpaces(std::string_view text) {
    while (text.ends_with(' ')) {
        text.remove_suffix(1);
    }
    return text;
}

// Fills a list as its users see it, with an empty entry at its end, and returns the index of the
// last entry. Empty entries stay in the list but are not counted.
template <typename Entries>
std::int32_t FillList(std::vector<std::string>& list, const Entries& entries) {
    list.assign(entries.begin(), entries.end());
    const auto filled =
        std::ranges::count_if(list, [](const std::string& entry) { return !entry.empty(); });
    if (!list.empty()) {
        list.emplace_back();
    }
    return static_cast<std::int32_t>(filled) - 1;
}

const std::string& EntryAt(const std::vector<std::string>& list, std::int32_t index) {
    return list.at(static_cast<std::size_t>(index));
}

}  // namespace

std::string_view ListBuffer::Take(std::string_view entry, std::size_t units) {
    // An entry takes one character more for the NUL that ends it.
    const std::size_t room = std::exchange(m_room, m_room - std::min(m_room, units + 1));
    return units <= room ? entry : CutToUtf16Units(entry, room);
}

std::string_view CutToBuffer(std::string_view value, std::size_t bufferSize) {
    return CutToUtf16Units(value, bufferSize > 0 ? bufferSize - 1 : 0);
}

std::vector<std::string_view> SectionNames(const IniDocument& document, std::size_t bufferSize) {
    std::vector<std::string_view> names;
    ListBuffer buffer(bufferSize);
    for (IniDocument::SectionId id = 0; id < document.SectionCount() && !buffer.IsFull(); ++id) {
        const std::string_view name = document.SectionName(id);
        names.push_back(buffer.Take(name, Utf16Length(name)));
    }
    return names;
}

std::string cProfile::ReadStringValue(std::string_view lpSectionName, std::string_view lpKeyName,
                                      std::string_view lpDefaultValue,
                                      const std::string& lpFileName, std::size_t lpMaxBufferSize) {
    const IniSnapshot snapshot = m_files.Read(lpFileName);
    const auto value = snapshot.document->FindValue(lpSectionName, lpKeyName);
    return std::string(
        CutToBuffer(value ? *value : WithoutTrailingSpaces(lpDefaultValue), lpMaxBufferSize));
}

double cProfile::ReadIntegerValue(std::string_view lpSectionName, std::string_view lpKeyName,
                                  std::string_view lpDefaultValue, const std::string& lpFileName,
                                  std::size_t lpMaxBufferSize) {
    return LeadingNumber(
        ReadStringValue(lpSectionName, lpKeyName, lpDefaultValue, lpFileName, lpMaxBufferSize));
}

WriteResult cProfile::WriteStringValue(std::string_view lpSectionName, std::string_view lpKeyName,
                                       std::string_view lpValue, const std::string& lpFileName,
                                       bool blnAddQuotation) {
    const std::string_view value = TrimIniSpaces(lpValue);
    if (value == MissingValueMarker) {
        return {};
    }
    const std::string quote = blnAddQuotation ? "\"" : "";
    ProfileTransaction transaction(m_files, lpFileName);
    transaction.SetValue(lpSectionName, lpKeyName, quote + std::string(value) + quote);
    return transaction.Commit();
}

WriteResult cProfile::WriteIntegerValue(std::string_view lpSectionName, std::string_view lpKeyName,
                                        std::int32_t lpValue, const std::string& lpFileName) {
    return WriteIntegerValue(lpSectionName, lpKeyName, std::to_string(lpValue), lpFileName);
}

WriteResult cProfile::WriteIntegerValue(std::string_view lpSectionName, std::string_view lpKeyName,
                                        std::string_view lpValue, const std::string& lpFileName) {
    ProfileTransaction transaction(m_files, lpFileName);
    transaction.SetValue(lpSectionName, lpKeyName, TrimIniSpaces(lpValue));
    return transaction.Commit();
}

WriteResult cProfile::DeleteSection(std::string_view lpSectionName, const std::string& lpFileName) {
    ProfileTransaction transaction(m_files, lpFileName);
    transaction.DeleteSection(lpSectionName);
    return transaction.Commit();
}

WriteResult cProfile::DeleteValue(std::string_view lpSectionName, std::string_view lpKeyName,
                                  const std::string& lpFileName) {
    ProfileTransaction transaction(m_files, lpFileName);
    transaction.DeleteValue(lpSectionName, lpKeyName);
    return transaction.Commit();
}

void cProfile::ReadFileSectionsName(const std::string& lpFileName, std::size_t lpMaxBufferSize) {
    const IniSnapshot snapshot = m_files.Read(lpFileName);
    FileSectionsNameCount =
        FillList(m_sectionNames, SectionNames(*snapshot.document, lpMaxBufferSize));
}

void cProfile::ReadSectionKeysNameAndValue(std::string_view lpSectionName,
                                           const std::string& lpFileName,
                                           std::size_t lpMaxBufferSize) {
    const IniSnapshot snapshot = m_files.Read(lpFileName);
    const IniDocument& document = *snapshot.document;
    std::vector<std::string> lines;
    if (const auto section = document.FindSection(lpSectionName)) {
        ListBuffer buffer(lpMaxBufferSize);
        for (auto id = document.FirstLine(*section); id != IniDocument::kNone && !buffer.IsFull();
             id = document.NextLine(id)) {
            for (const std::string& line : document.LineTexts(id)) {
                if (line.front() != ';' && !buffer.IsFull()) {
                    lines.emplace_back(buffer.Take(line, Utf16Length(line)));
                }
            }
        }
    }
    SectionKeysNameAndValueCount = FillList(m_keyLines, lines);
}

void cProfile::ReadSectionKeysNameOnly(std::string_view lpSectionName,
                                       const std::string& lpFileName, std::size_t lpMaxBufferSize) {
    const IniSnapshot snapshot = m_files.Read(lpFileName);
    std::vector<std::string_view> names;
    if (const auto section = snapshot.document->FindSection(lpSectionName)) {
        ForEachKey(
            *snapshot.document, *section,
            [&](IniDocument::LineId, std::string_view name) { names.push_back(name); },
            lpMaxBufferSize);
    }
    SectionKeysNameOnlyCount = FillList(m_keyNames, names);
}

const std::string& cProfile::FileSectionsNameList(std::int32_t Index) const {
    return EntryAt(m_sectionNames, Index);
}

const std::string& cProfile::SectionKeysNameAndValueList(std::int32_t Index) const {
    return EntryAt(m_keyLines, Index);
}

const std::string& cProfile::SectionKeysNameOnlyList(std::int32_t Index) const {
    return EntryAt(m_keyNames, Index);
}

void cProfile::SortKeysNameOnlyList() {
    const std::ptrdiff_t count = SectionKeysNameOnlyCount + std::ptrdiff_t{1};
    std::sort(m_keyNames.begin(), m_keyNames.begin() + count,
              [](const std::string& left, const std::string& right) {
                  return Utf16FromUtf8(left) < Utf16FromUtf8(right);
              });
}

}  // namespace tamarind
