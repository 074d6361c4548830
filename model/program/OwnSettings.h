#pragma once

#include <cstdint>
#include <string>

namespace tamarind {

// The program's own settings while it runs. Flags are numbers: 0 is false, anything else is true.
// Positions and sizes are in twips. A color is a COLORREF, or a system color with the high bit
// set.
struct OwnSettings {
    std::int32_t commandListShowLines = 0;
    std::int32_t fixedBorders = 0;
    std::int32_t flatUserInterface = 0;
    std::int32_t foregroundColor = 0;
    std::int32_t backgroundColor = 0;
    std::int32_t activeKeyForeColor = 0;
    std::string fontName;
    std::int32_t fontScript = 0;  // a Windows character set number
    std::int32_t fontSize = 0;    // points
    std::int32_t fontStyle = 0;   // 1 bold, 2 italic, 4 strikethrough, 8 underline
    std::int32_t useDefaultLanguage = 0;
    std::string languageFile;          // as written in the settings file
    std::string expandedLanguageFile;  // with its environment variables replaced
    std::int32_t mainWindowTop = 0;
    std::int32_t mainWindowLeft = 0;
    std::int32_t mainWindowHeight = 0;
    std::int32_t mainWindowWidth = 0;
    std::int32_t mainWindowMaximized = 0;
    std::int32_t toolbarVisible = 0;
    std::int32_t alwaysRestartTC = 0;
    std::int32_t autoSelectNextKey = 0;
    std::int32_t numberOfRecentFiles = 0;  // 2 to 16
    std::int32_t showControlsBackColor = 0;
    std::int32_t descriptionPanelHeight = 0;
    std::int32_t splitPosition = 0;  // not negative
    std::int32_t descriptionVisible = 0;
    std::int32_t valueBarVisible = 0;
    std::int32_t filterBarVisible = 0;
    std::int32_t undescribedVisible = 0;
    std::int32_t theme = 0;      // 0 as Windows, 1 light, 2 dark
    std::string recentFilters;   // as TextFilter has it
    std::string keyListColumns;  // as KeyColumns has it; empty until the user chose any
    std::int32_t favoritesOrganizeVisible = 0;
    std::int32_t favoriteWindowLeft = 0;
    std::int32_t favoriteWindowTop = 0;
    std::int32_t favoriteWindowWidth = 0;
    std::int32_t favoriteWindowHeight = 0;
    std::string wincmdDataFile;
    std::string wcxFtpDataFile;
    std::string startUpIniFile;        // "Wincmd" or "Wcxftp"
    std::string userDefinedWincmd;     // chosen by the user; the MissingValueMarker for none
    std::string userDefinedWcxFtp;     // chosen by the user; empty for none
    std::string wcxFtpFile;            // the Wcx_ftp.ini that was found; only ever written
    std::string totalCommanderFolder;  // ends with a backslash
};

// The size in points that is used. Values that only a damaged file has are replaced by the usual
// one here, while the setting keeps what the file says, so that it is not rewritten.
constexpr std::int32_t UsableFontSize(std::int32_t points) {
    return points >= 4 && points <= 144 ? points : 10;
}
// The position of a splitter's bar in twips that is used, at most 100 inches (144,000 twips).
constexpr std::int32_t UsableBarPosition(std::int32_t twips) {
    return twips > 0 && twips <= 144'000 ? twips : 4000;
}

}  // namespace tamarind
