#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>

#include "core/ini/IniFiles.h"
#include "core/system/Environment.h"
#include "core/system/Registry.h"
#include "model/program/Language.h"
#include "model/program/OptionsEditor.h"
#include "model/program/OtherPrograms.h"
#include "model/program/OwnSettingsStore.h"
#include "model/program/UserPrompts.h"
#include "model/session/Listeners.h"

namespace tamarind {

// What a session needs of the world outside.
struct SessionServices {
    IniFiles& files;
    Registry& registry;
    const Environment& environment;
    UserPrompts& prompts;
    OtherPrograms& programs;
    std::string programFolder;  // with a closing backslash
    std::string versionText;
    ScreenSize screen;
    bool hasScreenReader = false;
    std::uint16_t systemLanguage = 0;  // the primary language of Windows (LANGID); 0: any
};

// Something that the user is told in passing, in the status bar.
struct Notice {
    std::string text;
    bool offersRestart = false;  // of Total Commander
};

// What the user can hide, as the own settings keep it.
enum class WindowPart { Toolbar, Description, ValueBar, FilterBar, UndescribedKeys };

class WorkplaceListener {
public:
    virtual ~WorkplaceListener() = default;
    virtual void OnCommandsChanged() {}  // enabled or checked states
    virtual void OnLookChanged() {}      // colors, fonts and borders of the own settings
    virtual void OnLanguageChanged() {}  // all texts, and the direction of writing
    virtual void OnLanguageChosen() {}   // by the user, in the options; after the change
    virtual void OnNotice(const Notice&) {}
};

// What all parts of a session share: the world outside, the program's own settings and language,
// and whether the program is busy.
class Workplace final : private OptionsListener {
public:
    explicit Workplace(SessionServices services);
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    Listeners<WorkplaceListener>& Watchers() { return m_listeners; }
    void TellCommandsChanged() const { m_listeners.Tell(&WorkplaceListener::OnCommandsChanged); }

    void TellNotice(const Notice& notice) const {
        m_listeners.Tell(&WorkplaceListener::OnNotice, notice);
    }

    const SessionServices& Services() const { return m_services; }
    IniFiles& Files() const { return m_services.files; }
    FileSystem& Disk() const { return m_services.files.Files(); }
    UserPrompts& Prompts() const { return m_services.prompts; }

    OwnSettingsStore& OwnSettings() { return m_settings; }
    const OwnSettingsStore& OwnSettings() const { return m_settings; }
    OptionsEditor& Options() { return m_options; }

    // The language that the settings name, before a text of it is asked for. The built-in one
    // takes the place of one whose file is missing, after a message.
    void LoadLanguage();
    // Chooses a language file, and stores the choice.
    void UseLanguage(const std::string& path);
    // As LoadLanguage for one whose file has vanished since; whenever a window is about to show its
    // texts.
    void RefreshLanguage();
    const Language& Texts() const { return m_language; }
    // The name of the language file without its extension, as "German"; "English" without a file.
    std::string LanguageName() const;
    std::string Text(std::uint16_t number) const { return m_language.GetLanguageString(number); }
    // The text of a menu entry without the mark of its access key, and without one in brackets at
    // its end, as languages without letters have it.
    std::string Label(std::uint16_t number) const;
    // A text with the first value in place of its "%1", and the second one in place of "%2".
    std::string Text(std::uint16_t number, std::initializer_list<std::string> values) const;

    // While a save waits for Total Commander or something is asked, windows refuse commands and
    // closing.
    bool IsBusy() const { return m_isBusy; }
    class BusyTime {
    public:
        explicit BusyTime(Workplace& workplace)
            : m_workplace(workplace), m_wasBusy(workplace.m_isBusy) {
            m_workplace.m_isBusy = true;
        }
        ~BusyTime() { m_workplace.m_isBusy = m_wasBusy; }
        BusyTime(const BusyTime&) = delete;
        BusyTime& operator=(const BusyTime&) = delete;

    private:
        Workplace& m_workplace;
        const bool m_wasBusy;
    };

    bool IsVisible(WindowPart part) const { return m_settings.Values().*SettingOf(part) != 0; }
    void SetVisible(WindowPart part, bool isVisible);

    // Opens the help that stands beside the program: the compiled one or else its pages.
    void ShowHelpTopics();

private:
    static std::int32_t OwnSettings::*SettingOf(WindowPart part);
    void OnOptionsRead() override;
    void OnOptionsApplied(const WriteResult& saved) override;
    void OnOptionsEnd() override;
    void UseBuiltInLanguage();

    SessionServices m_services;
    OwnSettingsStore m_settings;
    Language m_language;
    OptionsEditor m_options;
    Listeners<WorkplaceListener> m_listeners;
    std::optional<std::string> m_missingLanguage;  // that the built-in one took the place of
    bool m_isBusy = false;
};

}  // namespace tamarind
