#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "model/files/DataFile.h"
#include "model/files/KeyFamilies.h"
#include "model/files/Keywords.h"
#include "model/files/ValueTypes.h"
#include "model/session/KeySelection.h"
#include "model/session/Messages.h"
#include "model/session/Workplace.h"

namespace tamarind {

class DataFileListener {
public:
    virtual ~DataFileListener() = default;
    virtual void OnDataFileChanged() {}  // another one is open
};

// The open data file: where it is, which settings it describes, and the descriptions that the user
// has changed in it.
class OpenDataFile final : private WorkplaceListener {
public:
    OpenDataFile(Workplace& workplace, KeyStore& store, KeySelection& selection);
    ~OpenDataFile() override { m_workplace.Watchers().Remove(*this); }
    OpenDataFile(const OpenDataFile&) = delete;
    OpenDataFile& operator=(const OpenDataFile&) = delete;

    Listeners<DataFileListener>& Watchers() { return m_listeners; }

    const std::string& Path() const { return m_path; }
    SettingsTarget Target() const { return m_target; }
    // What the values of its keys may be. Read on the first call: the file of types beside the data
    // file, or else the one that comes with the program.
    const ValueTypes& Types();
    // Which keys of the settings are described by others, from the same file.
    const KeyFamilies& Families();
    // The types for any kind of settings, and what people call its keys.
    ValueTypes TypesFor(SettingsTarget target) const;
    Keywords KeywordsFor(SettingsTarget target) const;
    // The status bar's text.
    std::string Panel() const;

    // The data file that the program starts with: that of the command line, which is what follows
    // the program's name on it, or else that of the own settings.
    std::string StartUpPath(const std::string& commandLine) const;
    // The data file that the own settings have for a kind of settings files.
    std::string PathFor(SettingsTarget target) const;
    // The user's choice, or the MissingValueMarker. `fileName` is proposed.
    std::string AskForPath(const std::string& fileName) const;
    // Puts a path into the own settings, as that for its kind.
    void Remember(const std::string& path) const;

    // Reads a data file, whose keys are taken by ReadKeys. False, after a message: it cannot be
    // read, and all stays as it was.
    bool LoadDataFile(const std::string& path);
    bool AreKeysRead() const { return m_areKeysRead; }
    // Fills the store and the tree; `advance` is called before each key. The states that the
    // settings give the keys are to follow.
    void ReadKeys(const std::function<void()>& advance);

    // The text that the user typed in place of the current key's description, with any kind of
    // line break. Every CR becomes a line break of the stored form, an LF nothing.
    void ChangeDescription(std::string_view text);
    // The same for a key that has no description.
    void Describe(KeyNumber key, std::string_view text);
    // How long that text may be, in UTF-16 units; 0: it cannot be edited.
    std::size_t MaxDescriptionUnits() const;

    // Whether descriptions wait for SaveDataFile, which writes them into the data file. On a
    // failure, which a message explains, they still wait.
    bool IsModified() const { return m_isModified; }
    bool SaveDataFile();
    // Asks whether to save what waits, if anything does. False: the user cancelled, or the save
    // failed; what was about to happen must not.
    bool AskSaveDataFile();

private:
    void OnLanguageChanged() override;
    std::shared_ptr<const IniDocument> Companion(SettingsTarget target,
                                                 std::string_view extension) const;

    Workplace& m_workplace;
    KeyStore& m_store;
    KeySelection& m_selection;
    Listeners<DataFileListener> m_listeners;
    std::string m_path;
    SettingsTarget m_target = SettingsTarget::Wincmd;
    std::shared_ptr<const IniDocument> m_document;
    std::shared_ptr<const IniDocument> m_onDisk;  // as it was last read or written
    std::optional<ValueTypes> m_types;
    KeyFamilies m_families;
    bool m_areKeysRead = false;
    bool m_isModified = false;
    bool m_hasNewKeys = false;  // among what is modified
};

}  // namespace tamarind
