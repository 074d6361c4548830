#include "model/files/UndescribedKeys.h"

#include <optional>

namespace tamarind {
namespace {

using LineId = IniDocument::LineId;
using SectionId = IniDocument::SectionId;

// Visits the keys of a section that no record stands for.
class Finder {
public:
    Finder(const KeyStore& store, const SettingsFiles& settings) : m_settings(settings) {
        for (const SettingsFiles::File& file : settings.Files()) {
            m_known.emplace_back(file.document->LineCount());
            m_hasKnown.emplace_back(file.document->SectionCount());
        }
        for (KeyNumber key = 1; key <= store.Size(); ++key) {
            const SettingsPlace place = store.PlaceOf(key);
            if (place.line != IniDocument::kNone) {
                m_known[place.file][place.line] = true;
                m_hasKnown[place.file][Document(place.file).SectionOf(place.line)] = true;
            }
        }
    }

    // `visit(name, place)` returns whether to go on.
    template <typename Visit>
    void ForEachOf(std::string_view section, Visit visit) {
        const auto here = Document(0).FindSection(section);
        if (!here) {
            return;
        }
        const std::size_t file = m_settings.FileOf(section);
        if (ForEachIn(0, *here, file == 0 ? Keys::All : Keys::Staying, visit) && file != 0) {
            if (const auto there = Document(file).FindSection(section)) {
                ForEachIn(file, *there, Keys::Moved, visit);
            }
        }
    }

private:
    const IniDocument& Document(std::size_t file) const {
        return *m_settings.Files()[file].document;
    }

    // Which keys of a section are read from a file: of one that is kept in another file some stay.
    enum class Keys { All, Staying, Moved };

    template <typename Visit>
    bool ForEachIn(std::size_t file, SectionId section, Keys keys, Visit visit) {
        const IniDocument& document = Document(file);
        const bool hasKeys = HasActiveKeys(document, section);
        bool hasKnown = m_hasKnown[file][section];
        for (LineId line = document.FirstLine(section); line != IniDocument::kNone;
             line = document.NextLine(line)) {
            const bool isCommented = document.Kind(line) == IniLineKind::CommentedKey;
            const bool isKey = document.Kind(line) == IniLineKind::Key ||
                               (isCommented && hasKeys && IsPlain(document, line));
            if (!isKey || m_known[file][line]) {
                continue;
            }
            const std::string_view name = document.KeyName(line).substr(isCommented ? 1 : 0);
            const bool isRead = keys == Keys::All ||
                                SettingsFiles::StaysInMainFile(name) == (keys == Keys::Staying);
            const auto place = isRead && !name.empty()
                                   ? PlaceOf(file, section, line, name, hasKnown)
                                   : std::nullopt;
            if (place && !visit(name, *place)) {
                return false;
            }
        }
        return true;
    }

    static bool HasActiveKeys(const IniDocument& document, SectionId section) {
        LineId line = document.FirstLine(section);
        while (line != IniDocument::kNone && document.Kind(line) != IniLineKind::Key) {
            line = document.NextLine(line);
        }
        return line != IniDocument::kNone;
    }

    // Whether a name follows the ";" at once, as Total Commander and this program write it.
    static bool IsPlain(const IniDocument& document, LineId line) {
        const std::string_view name = document.KeyName(line).substr(1);
        return !name.empty() && name.front() != ' ' && name.front() != '\t' && name.front() != ';';
    }

    // Where a key stands; nothing if the line is another one, or the other form, of a key that is
    // known already. Looking that up makes a table of the section's keys: for the first line of a
    // section without any known one it is not needed.
    std::optional<SettingsPlace> PlaceOf(std::size_t file, SectionId section, LineId line,
                                         std::string_view name, bool& hasKnown) {
        const IniDocument& document = Document(file);
        IniDocument::KeyLines forms;
        if (hasKnown || document.Kind(line) != IniLineKind::Key) {
            forms = document.FindKeyForms(section, name, document.NameHash(line));
        } else {
            forms.active = line;
        }
        hasKnown = true;
        const bool isActive = forms.active != IniDocument::kNone;
        const LineId first = isActive ? forms.active : forms.commented;
        if (first == IniDocument::kNone || m_known[file][first]) {
            return std::nullopt;
        }
        m_known[file][first] = true;
        return SettingsPlace{isActive ? KeyState::Active : KeyState::Commented, first, file};
    }

    const SettingsFiles& m_settings;
    // The lines of each file that belong to a record, and the sections that have such lines.
    std::vector<std::vector<bool>> m_known;
    std::vector<std::vector<bool>> m_hasKnown;
};

}  // namespace

std::vector<std::string> SectionsWithUndescribedKeys(const KeyStore& store,
                                                     const SettingsFiles& settings) {
    std::vector<std::string> sections;
    Finder finder(store, settings);
    const IniDocument& main = *settings.Main().document;
    for (SectionId id = 0; id < main.SectionCount(); ++id) {
        const std::string_view name = main.SectionName(id);
        if (main.FindSection(name) == id) {
            finder.ForEachOf(name, [&](std::string_view, const SettingsPlace&) {
                sections.emplace_back(name);
                return false;
            });
        }
    }
    return sections;
}

void AddUndescribedKeys(KeyStore& store, const SettingsFiles& settings,
                        const std::vector<std::string>& sections) {
    Finder finder(store, settings);
    for (const std::string& section : sections) {
        finder.ForEachOf(section, [&](std::string_view name, const SettingsPlace& place) {
            store.SetFromSettings(store.AddUndescribed(section, name), place);
            return true;
        });
    }
}

}  // namespace tamarind
