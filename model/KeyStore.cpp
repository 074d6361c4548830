#include "model/KeyStore.h"

#include <algorithm>
#include <cstring>

#include "core/LeadingNumber.h"

namespace tamarind {
namespace {

constexpr std::size_t kBlockBytes = 16384;
constexpr std::string_view kRowKeyPrefix = "key";

}  // namespace

KeyIcon ValueIconIndex(std::string_view value) {
    return value == "0" || LeadingNumber(value) != 0 ? KeyIcon::Numeric : KeyIcon::Text;
}

std::string_view TextArena::Keep(std::string_view text) {
    if (text.size() > m_left) {
        m_left = std::max(kBlockBytes, text.size());
        m_blocks.push_back(std::make_unique<char[]>(m_left));
        m_next = m_blocks.back().get();
    }
    if (!text.empty()) {
        std::memcpy(m_next, text.data(), text.size());
    }
    const std::string_view kept(m_next, text.size());
    m_next += text.size();
    m_left -= text.size();
    return kept;
}

void TextArena::Clear() {
    m_blocks.clear();
    m_next = nullptr;
    m_left = 0;
}

void KeyStore::Clear() {
    m_records.clear();
    m_arena.Clear();
    m_dataFile.reset();
    m_settings.reset();
}

bool KeyStore::Add(const KeyRecord& record) {
    if (m_records.size() >= kMaxRecords) {
        return false;
    }
    m_records.push_back(record);
    return true;
}

std::string RowKeyText(RowKey key) {
    return std::string(kRowKeyPrefix) + std::to_string(key);
}

RowKey RowKeyOfText(std::string_view text) {
    return text.substr(0, kRowKeyPrefix.size()) == kRowKeyPrefix
               ? static_cast<RowKey>(LeadingInteger(text.substr(kRowKeyPrefix.size())))
               : 0;
}

}  // namespace tamarind
