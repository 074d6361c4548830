#include "model/KeyStates.h"

#include "core/cProfile.h"

namespace tamarind {
namespace {

// Looks keys up in the settings file, section by section: neighbouring records nearly always share
// their section.
class SettingsReader {
public:
    explicit SettingsReader(const IniDocument& settings) : m_settings(settings) {}

    std::optional<std::string_view> Read(std::string_view section, std::string_view key) {
        if (!m_isSectionKnown || section != m_sectionName) {
            m_isSectionKnown = true;
            m_sectionName = section;
            m_section = m_settings.FindSection(section);
        }
        const auto line = m_section ? m_settings.FindKey(*m_section, key) : std::nullopt;
        return line ? std::optional(CutToBuffer(m_settings.Value(*line))) : std::nullopt;
    }

    std::optional<std::string_view> ReadCommented(std::string_view section, std::string_view key) {
        m_commentedName.assign(1, ';');
        m_commentedName += key;
        return Read(section, m_commentedName);
    }

private:
    const IniDocument& m_settings;
    bool m_isSectionKnown = false;
    std::string_view m_sectionName;
    std::optional<IniDocument::SectionId> m_section;
    std::string m_commentedName;
};

void DeriveRecord(SettingsReader& settings, KeyRecord& record) {
    record.isGhosted = false;
    record.isChecked = true;
    record.foreColor = KeyColor::Active;
    record.smallIcon = ValueIconIndex(record.defaultValue);
    record.initialState = KeyState::Active;
    record.currentValue = settings.Read(record.targetSection, record.keyName);
    if (!record.currentValue) {
        record.isChecked = false;
        record.foreColor = KeyColor::Gray;
        record.currentValue = settings.ReadCommented(record.targetSection, record.keyName);
        record.isGhosted = !record.currentValue;
        record.initialState = record.isGhosted ? KeyState::Absent : KeyState::Commented;
        if (!record.isGhosted) {
            record.smallIcon = KeyIcon::Commented;
        }
    }
    record.currentState = record.initialState;
}

}  // namespace

void DeriveKeyStates(KeyStore& store, std::shared_ptr<const IniDocument> settings,
                     const std::function<void()>& advance) {
    SettingsReader reader(*settings);
    for (RowKey key = 1; key <= store.Size(); ++key) {
        advance();
        DeriveRecord(reader, store.Record(key));
    }
    // Only now: the old settings may hold the texts of records that were not derived yet.
    store.SetSettings(std::move(settings));
}

}  // namespace tamarind
