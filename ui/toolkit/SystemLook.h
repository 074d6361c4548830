#pragma once

namespace tamarind {

// What the user has chosen in Windows. Tests put their own in its place.
class SystemLook {
public:
    virtual ~SystemLook() = default;
    // The programs' mode in the settings of Windows (AppsUseLightTheme below
    // Software\Microsoft\Windows\CurrentVersion\Themes\Personalize, from Windows 10 on).
    virtual bool PrefersDark() const;
    // SPI_GETHIGHCONTRAST.
    virtual bool HasHighContrast() const;
    // How large the user wants texts, in percent from 100 to 225 (the value that
    // UISettings.TextScaleFactor tells, TextScaleFactor below Software\Microsoft\Accessibility: a
    // query of the registry starts no other library).
    virtual int TextScale() const;

    static const SystemLook& Present();
    // Null: that of Windows again.
    static void Use(const SystemLook* look);
};

}  // namespace tamarind
