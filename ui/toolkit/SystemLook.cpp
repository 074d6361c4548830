#include "ui/toolkit/SystemLook.h"

#include <windows.h>

#include <algorithm>

namespace tamarind {
namespace {

constexpr DWORD kLeastPercent = 100;
constexpr DWORD kMostPercent = 225;

const SystemLook* g_look = nullptr;

// A number that Windows keeps for the user, or `missing`.
DWORD UserNumber(const wchar_t* key, const wchar_t* name, DWORD missing) {
    DWORD number = missing;
    DWORD size = sizeof(number);
    const LSTATUS error =
        RegGetValueW(HKEY_CURRENT_USER, key, name, RRF_RT_REG_DWORD, nullptr, &number, &size);
    return error == ERROR_SUCCESS ? number : missing;
}

}  // namespace

bool SystemLook::PrefersDark() const {
    return UserNumber(L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                      L"AppsUseLightTheme", 1) == 0;
}

bool SystemLook::HasHighContrast() const {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof(contrast);
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof(contrast), &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

int SystemLook::TextScale() const {
    const DWORD percent =
        UserNumber(L"Software\\Microsoft\\Accessibility", L"TextScaleFactor", kLeastPercent);
    return static_cast<int>(std::clamp(percent, kLeastPercent, kMostPercent));
}

const SystemLook& SystemLook::Present() {
    static const SystemLook look;
    return g_look != nullptr ? *g_look : look;
}

void SystemLook::Use(const SystemLook* look) {
    g_look = look;
}

}  // namespace tamarind
