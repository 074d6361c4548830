#include "model/KeyStates.h"

#include <optional>
#include <string>

namespace tamarind {
namespace {

// Looks keys up in the settings file, section by section: neighbouring records nearly always share
// their section.
class SettingsReader {
public:
    explicit SettingsReader(const IniDocument& settings) : m_settings(settings) {}

    void SetSection(std::string_view section) {
        if (!m_isSectionKnown || section != m_sectionName) {
            m_isSectionKnown = true;
            m_sectionName = section;
            m_section = m_settings.FindSection(section);
        }
    }

    std::optional<IniDocument::LineId> Find(std::string_view key) const {
        return m_section ? m_settings.FindKey(*m_section, key) : std::nullopt;
    }

    std::optional<IniDocument::LineId> FindCommented(std::string_view key) {
        m_commentedName.assign(1, ';');
        m_commentedName += key;
        return Find(m_commentedName);
    }

private:
    const IniDocument& m_settings;
    bool m_isSectionKnown = false;
    std::string_view m_sectionName;
    std::optional<IniDocument::SectionId> m_section;
    std::string m_commentedName;
};

}  // namespace

void DeriveKeyStates(KeyStore& store, std::shared_ptr<const IniDocument> settings,
                     const std::function<void()>& advance) {
    SettingsReader reader(*settings);
    store.SetSettings(std::move(settings));
    for (RowKey key = 1; key <= store.Size(); ++key) {
        advance();
        reader.SetSection(store.TargetSection(key));
        const std::string_view name = store.KeyName(key);
        if (const auto line = reader.Find(name)) {
            store.SetFromSettings(key, KeyState::Active, *line);
        } else if (const auto commented = reader.FindCommented(name)) {
            store.SetFromSettings(key, KeyState::Commented, *commented);
        } else {
            store.SetFromSettings(key, KeyState::Absent, IniDocument::kNone);
        }
    }
}

}  // namespace tamarind
