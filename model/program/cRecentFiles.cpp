#include "model/program/cRecentFiles.h"

#include <algorithm>

#include "core/ini/cProfile.h"
#include "core/text/MissingValueMarker.h"
#include "core/text/Unicode.h"
#include "model/program/StringTable.h"

namespace tamarind {
namespace {

constexpr std::size_t kWholeUnits = 48;
constexpr std::size_t kPieceUnits = 16;

const std::string kEmptySlot(MissingValueMarker);

std::string_view Start(std::string_view text) {
    return CutToUtf16Units(text, kPieceUnits);
}

// The last 16 units of a text; half a surrogate pair is left out.
std::string_view End(std::string_view text) {
    while (Utf16Length(text) > kPieceUnits) {
        text.remove_prefix(DecodeUtf8(text).length);
    }
    return text;
}

std::vector<std::string_view> Parts(std::string_view path) {
    std::vector<std::string_view> parts;
    std::size_t end = 0;
    while ((end = path.find('\\')) != std::string_view::npos) {
        parts.push_back(path.substr(0, end));
        path.remove_prefix(end + 1);
    }
    parts.push_back(path);
    return parts;
}

std::string Joined(std::initializer_list<std::string_view> pieces) {
    std::string text;
    for (const std::string_view piece : pieces) {
        text += piece;
    }
    return text;
}

// In a menu "&&" stands for the character, a single "&" for an access key.
std::string WithDoubledMarks(std::string_view text) {
    std::string doubled;
    for (const char c : text) {
        doubled.append(c == '&' ? 2 : 1, c);
    }
    return doubled;
}

}  // namespace

// No text is measured: the number of parts alone decides what is left out.
std::string ShortenedPath(std::string_view path) {
    if (Utf16Length(path) <= kWholeUnits) {
        return std::string(path);
    }
    const std::vector<std::string_view> parts = Parts(path);
    const std::string_view last = parts.back();
    switch (parts.size()) {
        case 1:
            return {};
        case 2:
            return Joined({parts[0], "\\", Start(last), "......", End(last)});
        case 3:
            return Joined({parts[0], "\\", Start(parts[1]), "\\...\\", End(last)});
        case 4:
        case 5:
            return Joined({parts[0], "\\", parts[1], "\\...\\", last});
        default:
            return Joined(
                {parts[0], "\\", parts[1], "\\...\\", parts[parts.size() - 2], "\\", last});
    }
}

void cRecentFiles::Setup(std::int16_t vMax) {
    m_slots.assign(static_cast<std::size_t>(std::max<std::int16_t>(vMax, 0)), kEmptySlot);
}

void cRecentFiles::ReadList(const std::string& FileName, std::string_view Section,
                            std::string_view KeyPrefix) {
    const IniSnapshot file = m_files.Read(FileName);
    for (std::size_t slot = 0; slot < m_slots.size(); ++slot) {
        const auto value =
            file.document->FindValue(Section, std::string(KeyPrefix) + std::to_string(slot + 1));
        m_slots[slot] = value ? std::string(CutToBuffer(*value)) : kEmptySlot;
    }
}

WriteResult cRecentFiles::SaveList(const std::string& FileName, std::string_view Section,
                                   std::string_view KeyPrefix) const {
    ProfileTransaction transaction(m_files, FileName);
    for (std::size_t slot = 0; slot < m_slots.size(); ++slot) {
        const std::string key = std::string(KeyPrefix) + std::to_string(slot + 1);
        if (m_slots[slot] == kEmptySlot) {
            transaction.DeleteValue(Section, key);
        } else {
            transaction.SetValue(Section, key, m_slots[slot]);
        }
    }
    return transaction.Commit();
}

void cRecentFiles::AddFile(const std::string& file) {
    if (m_slots.empty()) {
        return;
    }
    auto slot = std::ranges::find_if(
        m_slots, [&](const std::string& known) { return EqualsIgnoreCase(known, file); });
    if (slot == m_slots.end()) {
        --slot;
    }
    *slot = file;
    PutAsFirstItem(static_cast<std::int16_t>(slot - m_slots.begin() + 1));
}

void cRecentFiles::PutAsFirstItem(std::int16_t Index) {
    if (Index >= 1 && Index <= Max()) {
        std::rotate(m_slots.begin(), m_slots.begin() + (Index - 1), m_slots.begin() + Index);
    }
}

void cRecentFiles::RemoveFile(std::int16_t Index) {
    if (Index >= 1 && Index <= Max()) {
        m_slots.erase(m_slots.begin() + (Index - 1));
        m_slots.push_back(kEmptySlot);
    }
}

bool cRecentFiles::Clear() {
    if (!m_prompts.AskWhetherSure(m_language.GetLanguageString(text::kAreYouSure))) {
        return false;
    }
    std::ranges::fill(m_slots, kEmptySlot);
    return true;
}

const std::string& cRecentFiles::ListItems(std::int16_t Index) const {
    return Index >= 1 && Index <= Max() ? m_slots[static_cast<std::size_t>(Index) - 1] : kEmptySlot;
}

std::vector<cRecentFiles::Entry> cRecentFiles::Entries() const {
    std::vector<Entry> entries;
    for (std::int16_t index = 1; index <= Max(); ++index) {
        if (ListItems(index) != kEmptySlot) {
            entries.push_back({index, Joined({"&", std::to_string(index), " ",
                                              WithDoubledMarks(ShortenedPath(ListItems(index)))})});
        }
    }
    return entries;
}

std::string cRecentFiles::NoFilesText() const {
    return m_language.GetLanguageString(text::kNoRecentFiles);
}

std::string cRecentFiles::ClearText() const {
    return m_language.GetLanguageString(text::kClearList);
}

}  // namespace tamarind
