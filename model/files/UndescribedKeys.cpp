#include "model/files/UndescribedKeys.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "core/text/Unicode.h"
#include "model/files/KeyStates.h"

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
        }
        for (KeyNumber key = 1; key <= store.Size(); ++key) {
            const SettingsPlace place = store.PlaceOf(key);
            if (place.line != IniDocument::kNone) {
                m_known[place.file][place.line] = true;
            }
        }
    }

    // Those whose names are wanted; `visit(name, place)` returns whether to go on.
    template <typename IsWanted, typename Visit>
    void ForEachOf(std::string_view section, IsWanted isWanted, Visit visit) {
        const auto here = Document(0).FindSection(section);
        if (!here) {
            return;
        }
        const std::size_t file = m_settings.FileOf(section);
        if (ForEachIn(0, *here, file == 0 ? Keys::All : Keys::Staying, isWanted, visit) &&
            file != 0) {
            if (const auto there = Document(file).FindSection(section)) {
                ForEachIn(file, *there, Keys::Moved, isWanted, visit);
            }
        }
    }

private:
    const IniDocument& Document(std::size_t file) const {
        return *m_settings.Files()[file].document;
    }

    // Which keys of a section are read from a file: of one that is kept in another file some stay.
    enum class Keys { All, Staying, Moved };

    template <typename IsWanted, typename Visit>
    bool ForEachIn(std::size_t file, SectionId section, Keys keys, IsWanted isWanted, Visit visit) {
        const IniDocument& document = Document(file);
        const bool hasKeys = HasActiveKeys(document, section);
        bool hasKnown = false;
        for (LineId line = document.FirstLine(section); line != IniDocument::kNone;
             line = document.NextLine(line)) {
            const bool isCommented = document.Kind(line) == IniLineKind::CommentedKey;
            const bool isKey = document.Kind(line) == IniLineKind::Key ||
                               (isCommented && hasKeys && IsPlain(document, line));
            if (!isKey) {
                continue;
            }
            if (m_known[file][line]) {
                hasKnown = true;
                continue;
            }
            const std::string_view name = document.KeyName(line).substr(isCommented ? 1 : 0);
            const bool isRead = keys == Keys::All ||
                                SettingsFiles::StaysInMainFile(name) == (keys == Keys::Staying);
            const auto place = isRead && !name.empty() && isWanted(name)
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
    // known already. Looking that up may make a table of the section's keys: for a line before
    // which there is no known one it is not needed.
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
    std::vector<std::vector<bool>> m_known;  // the lines of each file that belong to a record
};

constexpr std::string_view kDigits = "0123456789";

// Tells which key of the data file is the model of another one.
class Models {
public:
    Models(const KeyStore& store, const KeyFamilies& families)
        : m_store(store), m_families(families) {}

    // The section of the data file that this one is like, of which it is none itself.
    std::string_view SectionLike(std::string_view section) const {
        const std::string_view like = m_families.SectionLike(section);
        return !like.empty() && !m_store.DescribesSection(section) && m_store.DescribesSection(like)
                   ? like
                   : std::string_view();
    }

    // Neighbours are nearly always of one family, and histories have very many of them.
    std::optional<KeyNumber> ModelOf(std::string_view section, std::string_view name) {
        if (section.data() != m_section.data() || !IsOfLastForm(name)) {
            m_section = section;
            TakeForm(name);
            const std::string_view like = m_families.KeyLike(section, name);
            m_model = like.empty() ? std::nullopt : m_store.Find(section, like);
        }
        return m_model;
    }

    // The keys of a section of the data file, each name once.
    const std::vector<KeyNumber>& KeysOf(std::string_view section) {
        if (m_keysOf == section) {
            return m_keys;
        }
        m_keysOf = section;
        m_keys.clear();
        m_hashes.clear();
        for (KeyNumber key = 1; key <= m_store.DescribedCount(); ++key) {
            if (IsOf(key, section) && !HasKey(section, m_store.KeyName(key))) {
                m_keys.push_back(key);
                m_hashes.push_back(m_store.NameHash(key));
            }
        }
        return m_keys;
    }
    bool HasKey(std::string_view section, std::string_view name) {
        const std::vector<KeyNumber>& keys = KeysOf(section);
        const std::uint32_t hash = IniDocument::NameHash(name);
        for (std::size_t at = 0; at < keys.size(); ++at) {
            if (m_hashes[at] == hash && EqualsIgnoreCase(m_store.KeyName(keys[at]), name)) {
                return true;
            }
        }
        return false;
    }

private:
    // Names of one form have one number each, with the same before and behind it.
    void TakeForm(std::string_view name) {
        const std::size_t begin = name.find_first_of(kDigits);
        const std::size_t end = std::min(name.find_first_not_of(kDigits, begin), name.size());
        m_hasForm = begin != std::string_view::npos &&
                    name.find_first_of(kDigits, end) == std::string_view::npos;
        m_before = m_hasForm ? name.substr(0, begin) : std::string_view();
        m_behind = m_hasForm ? name.substr(end) : std::string_view();
    }
    bool IsOfLastForm(std::string_view name) const {
        if (!m_hasForm || name.size() <= m_before.size() + m_behind.size() ||
            !name.starts_with(m_before) || !name.ends_with(m_behind)) {
            return false;
        }
        name.remove_prefix(m_before.size());
        name.remove_suffix(m_behind.size());
        return std::ranges::all_of(name, [](char c) { return c >= '0' && c <= '9'; });
    }

    bool IsOf(KeyNumber key, std::string_view section) const {
        return EqualsIgnoreCase(m_store.TargetSection(key), section);
    }

    const KeyStore& m_store;
    const KeyFamilies& m_families;
    std::string_view m_section;
    bool m_hasForm = false;
    std::string m_before;
    std::string m_behind;
    std::optional<KeyNumber> m_model;
    std::string m_keysOf;
    std::vector<KeyNumber> m_keys;
    std::vector<std::uint32_t> m_hashes;  // of their names
};

// Whether the store has keys of a section behind those of the data file.
bool HasMoreOf(const KeyStore& store, std::string_view section) {
    for (auto key = static_cast<KeyNumber>(store.DescribedCount() + 1); key <= store.Size();
         ++key) {
        if (EqualsIgnoreCase(store.TargetSection(key), section)) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::vector<MoreKeys> SectionsWithMoreKeys(const KeyStore& store, const SettingsFiles& settings,
                                           const KeyFamilies& families) {
    std::vector<MoreKeys> sections;
    Finder finder(store, settings);
    Models models(store, families);
    const IniDocument& main = *settings.Main().document;
    for (SectionId id = 0; id < main.SectionCount(); ++id) {
        const std::string_view name = main.SectionName(id);
        if (main.FindSection(name) != id) {
            continue;
        }
        MoreKeys more;
        const std::string_view like = models.SectionLike(name);
        more.isLike = !like.empty();
        bool isSibling = false;
        const auto tellsMore = [&](std::string_view key) {
            isSibling =
                more.isLike ? models.HasKey(like, key) : models.ModelOf(name, key).has_value();
            return isSibling ? !more.hasSiblings && !more.isLike : !more.hasOthers;
        };
        finder.ForEachOf(name, tellsMore, [&](std::string_view, const SettingsPlace&) {
            (isSibling ? more.hasSiblings : more.hasOthers) = true;
            // Nothing of a section that the data file does not know has siblings.
            return store.DescribesSection(name) && !(more.hasSiblings && more.hasOthers);
        });
        if (more.isLike || more.hasSiblings || more.hasOthers) {
            more.section = name;
            sections.push_back(std::move(more));
        }
    }
    return sections;
}

void AddMoreKeys(KeyStore& store, const SettingsFiles& settings, const KeyFamilies& families,
                 const std::vector<std::string>& sections) {
    Models models(store, families);
    const auto first = static_cast<KeyNumber>(store.Size() + 1);
    for (const std::string& section : sections) {
        const std::string_view like = models.SectionLike(section);
        if (!like.empty() && !HasMoreOf(store, section)) {
            for (const KeyNumber model : models.KeysOf(like)) {
                store.AddSibling(section, store.KeyName(model), model);
            }
        }
    }
    DeriveStatesFrom(first, store, settings);
    Finder finder(store, settings);
    for (const std::string& section : sections) {
        const auto isAny = [](std::string_view) { return true; };
        finder.ForEachOf(section, isAny, [&](std::string_view name, const SettingsPlace& place) {
            const auto model = models.ModelOf(section, name);
            store.SetFromSettings(model ? store.AddSibling(section, name, *model)
                                        : store.AddUndescribed(section, name),
                                  place);
            return true;
        });
    }
}

}  // namespace tamarind
