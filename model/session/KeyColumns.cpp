#include "model/session/KeyColumns.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

#include "core/text/LeadingNumber.h"
#include "model/keys/KeyList.h"
#include "model/program/StringTable.h"

namespace tamarind {
namespace {

struct ColumnInfo {
    std::string_view name;  // in the own settings
    std::uint16_t title;
    std::int32_t width;  // at first, in twips
};

// In the order of KeyColumn.
constexpr std::array<ColumnInfo, 6> kColumns = {{{"Key", text::kKey, 4000},
                                                 {"State", text::kState, 2000},
                                                 {"Default", text::kDefault, 1500},
                                                 {"Meaning", text::kMeaning, 3500},
                                                 {"Category", text::kCategory, 2500},
                                                 {"Section", text::kSection, 2000}}};
constexpr std::int32_t kLeastWidth = 300;
constexpr std::int32_t kMostWidth = 30000;

const ColumnInfo& InfoOf(KeyColumn column) {
    return kColumns[static_cast<std::size_t>(column)];
}

bool Has(const std::vector<ShownColumn>& columns, KeyColumn column) {
    return std::ranges::find(columns, column, &ShownColumn::column) != columns.end();
}

ShownColumn AsAtFirst(KeyColumn column) {
    return {column, InfoOf(column).width};
}

// What a damaged file has besides columns is left out.
std::vector<ShownColumn> ColumnsOf(std::string_view text) {
    std::vector<ShownColumn> columns;
    while (!text.empty()) {
        const std::string_view part = text.substr(0, text.find(','));
        text.remove_prefix(std::min(text.size(), part.size() + 1));
        const std::string_view name = part.substr(0, part.find(':'));
        const auto* const info = std::ranges::find(kColumns, name, &ColumnInfo::name);
        const auto column = static_cast<KeyColumn>(info - kColumns.begin());
        if (info != kColumns.end() && !Has(columns, column)) {
            const std::string_view width = part.substr(std::min(part.size(), name.size() + 1));
            columns.push_back({column, std::clamp(LeadingInteger(width), kLeastWidth, kMostWidth)});
        }
    }
    if (!columns.empty() && !Has(columns, KeyColumn::Key)) {
        columns.insert(columns.begin(), AsAtFirst(KeyColumn::Key));
    }
    return columns;
}

}  // namespace

std::vector<ShownColumn> KeyColumns::Shown() const {
    std::vector<ShownColumn> columns = ColumnsOf(m_workplace.OwnSettings().Values().keyListColumns);
    if (columns.empty()) {
        columns.push_back(AsAtFirst(KeyColumn::Key));
        if (m_workplace.Services().hasScreenReader) {
            columns.push_back(AsAtFirst(KeyColumn::State));
        }
    }
    return columns;
}

void KeyColumns::Toggle(KeyColumn column) {
    std::vector<ShownColumn> columns = Shown();
    if (std::erase_if(columns,
                      [column](const ShownColumn& shown) { return shown.column == column; }) == 0) {
        columns.push_back(AsAtFirst(column));
    }
    Keep(columns);
    m_listeners.Tell(&KeyColumnsListener::OnColumnsChanged);
    m_workplace.TellCommandsChanged();
}

void KeyColumns::Keep(const std::vector<ShownColumn>& columns) {
    std::string& setting = m_workplace.OwnSettings().Values().keyListColumns;
    if (columns == Shown()) {
        return;
    }
    setting.clear();
    for (const ShownColumn& shown : columns) {
        setting.append(setting.empty() ? "" : ",").append(InfoOf(shown.column).name);
        setting.append(":").append(std::to_string(shown.width));
    }
}

std::string KeyColumns::Title(KeyColumn column) const {
    return m_workplace.Text(InfoOf(column).title);
}

std::string KeyColumns::CellText(KeyNumber key, KeyColumn column) const {
    switch (column) {
        case KeyColumn::Key:
            return VisibleText(m_store.Record(key));
        case KeyColumn::State:
            return m_values.StateOf(key);
        case KeyColumn::Default:
            return std::string(m_store.Record(key).defaultValue);
        case KeyColumn::Meaning:
            return m_values.MeaningFor(key);
        case KeyColumn::Category:
            return std::string(m_store.Category(key));
        case KeyColumn::Section:
            return std::string(m_store.TargetSection(key));
    }
    return {};
}

}  // namespace tamarind
