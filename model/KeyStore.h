#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/IniDocument.h"
#include "model/KeyRecord.h"

namespace tamarind {

// Keeps texts at fixed addresses until it is cleared.
class TextArena {
public:
    std::string_view Keep(std::string_view text);
    void Clear();

private:
    std::vector<std::unique_ptr<char[]>> m_blocks;
    char* m_next = nullptr;
    std::size_t m_left = 0;
};

// A key record's number, counted from 1 in the data file's order; "key" and the number make up the
// row key. 0 is no record.
using RowKey = std::uint32_t;

// Every key of the open data file, in the file's order. It also keeps alive the documents that the
// records' texts point into.
class KeyStore {
public:
    // More keys than a 16-bit signed counter can number are not taken.
    static constexpr std::size_t kMaxRecords = 32767;

    void Clear();

    // Adds a record with texts that belong to `Source()` or were kept by `Keep`. Returns false, and
    // adds nothing, when the store is full.
    bool Add(const KeyRecord& record);

    std::size_t Size() const { return m_records.size(); }
    const std::vector<KeyRecord>& Records() const { return m_records; }
    // `key` is between 1 and Size().
    const KeyRecord& Record(RowKey key) const { return m_records[key - 1]; }
    KeyRecord& Record(RowKey key) { return m_records[key - 1]; }

    // A copy of the text that lives as long as the records.
    std::string_view Keep(std::string_view text) { return m_arena.Keep(text); }

    void SetSource(std::shared_ptr<const IniDocument> dataFile) {
        m_dataFile = std::move(dataFile);
    }
    void SetSettings(std::shared_ptr<const IniDocument> settings) {
        m_settings = std::move(settings);
    }

private:
    std::vector<KeyRecord> m_records;
    TextArena m_arena;
    std::shared_ptr<const IniDocument> m_dataFile;
    std::shared_ptr<const IniDocument> m_settings;
};

// "key12" for 12, and back; 0 for a text that is no row key.
std::string RowKeyText(RowKey key);
RowKey RowKeyOfText(std::string_view text);

}  // namespace tamarind
