#pragma once

#include <string>

#include "model/program/SettingsStore.h"
#include "model/program/UserPrompts.h"

namespace tamarind {

// Hears how the options dialog goes on.
class OptionsListener {
public:
    virtual ~OptionsListener() = default;
    virtual void OnOptionsRead() {}  // the own settings were read again; the dialog shows them next
    virtual void OnOptionsApplied(const WriteResult& /*saved*/) {}
    virtual void OnOptionsEnd() {}  // the dialog is gone
};

// What the options dialog is set to. Colours and the font become the program's at once, the rest
// when it is applied; other windows show nothing of either before that.
class OptionsEditor {
public:
    struct Choices {
        bool showsGridLines = false;
        bool isFlat = false;
        bool hasFixedBorders = false;
        bool restartsTotalCommander = false;
        bool selectsNextKey = false;
        bool usesDefaultLanguage = true;
        std::string languageFile;  // empty: none
    };
    enum class Color { Text, Background, ActiveKey };

    // `languageFolder` is where language files are offered.
    OptionsEditor(SettingsStore& settings, UserPrompts& prompts, std::string languageFolder,
                  OptionsListener& listener);

    // Reads the settings that the dialog edits from their file again.
    void Begin();

    const Choices& Values() const { return m_choices; }
    void SetFlag(bool Choices::*flag, bool isOn);
    void SetLanguageFile(const std::string& path);
    // Each asks the user and returns whether they chose something.
    bool BrowseLanguageFile();
    bool SelectColor(Color color);
    bool SelectFont();
    // As the settings have it: a COLORREF or a reference to a system colour.
    std::int32_t ColorSetting(Color color) const;

    // Whether there is something to apply.
    bool IsChanged() const { return m_isChanged; }
    // Puts the choices into the settings and saves these. False when they cannot be saved.
    bool Apply();
    // After the dialog is gone.
    void End() { m_listener.OnOptionsEnd(); }

private:
    SettingsStore& m_settings;
    UserPrompts& m_prompts;
    std::string m_languageFolder;
    OptionsListener& m_listener;
    Choices m_choices;
    bool m_isChanged = false;
};

}  // namespace tamarind
