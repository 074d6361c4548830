#pragma once

#include <cstdint>
#include <string>

#include "model/program/OwnSettingsStore.h"
#include "model/program/UserPrompts.h"

namespace tamarind {

// Is told what happens in the options dialog.
class OptionsListener {
public:
    virtual ~OptionsListener() = default;
    virtual void OnOptionsRead() {}  // the own settings were read again; the dialog shows them next
    virtual void OnOptionsApplied(const WriteResult& /*saved*/) {}
    virtual void OnOptionsEnd() {}  // the dialog is gone
};

// The state of the options dialog. Colors and the font are put into the settings at once,
// everything else by Apply; other windows show neither before that.
class OptionsEditor {
public:
    struct Choices {
        bool showsGridLines = false;
        bool isFlat = false;
        bool hasFixedBorders = false;
        bool restartsTotalCommander = false;
        bool selectsNextKey = false;
        bool usesDefaultLanguage = true;
        std::int32_t theme = 0;    // as the own settings have it
        std::string languageFile;  // empty: none
    };
    enum class Color { Text, Background, ActiveKey };

    // `languageFolder` is the folder in which language files are offered.
    OptionsEditor(OwnSettingsStore& settings, UserPrompts& prompts, std::string languageFolder,
                  OptionsListener& listener);

    // Reads the settings that the dialog edits from their file and starts with them.
    void Begin();

    const Choices& Values() const { return m_choices; }
    // These take a choice over, to be applied later.
    void SetFlag(bool Choices::*flag, bool isOn);
    void SetLanguageFile(const std::string& path);
    void SetTheme(std::int32_t theme);
    // Each asks the user and returns whether they have chosen something.
    bool BrowseLanguageFile();
    bool SelectColor(Color color);
    bool SelectFont();
    // As the settings store it: a COLORREF, or a system color with the high bit set.
    std::int32_t ColorSetting(Color color) const;

    // Whether there is something to apply.
    bool IsChanged() const { return m_isChanged; }
    // Puts the choices into the settings and saves them. False if they cannot be saved; the
    // listener is told why.
    bool Apply();
    // To be called when the dialog is closed.
    void End() { m_listener.OnOptionsEnd(); }

private:
    OwnSettingsStore& m_settings;
    UserPrompts& m_prompts;
    std::string m_languageFolder;
    OptionsListener& m_listener;
    Choices m_choices;
    bool m_isChanged = false;
};

}  // namespace tamarind
