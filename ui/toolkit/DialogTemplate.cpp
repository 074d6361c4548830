#include "ui/toolkit/DialogTemplate.h"

#include <algorithm>
#include <cstring>

#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/SystemLook.h"

namespace tamarind {
namespace {

// The place of the menu in a template, in words (Microsoft: DLGTEMPLATEEX). Behind it stand the
// class and the title, and then the font's size in points.
constexpr std::size_t kMenu = 13;
constexpr WORD kOrdinal = 0xFFFF;  // the next word is the number of a resource

constexpr int kUsualPoints = 8;
constexpr int kTallest = 520;  // of all dialogs in that size, in pixels at 96 DPI, with its frame

// Where the string or number ends that begins at `at`.
std::size_t EndOfName(const std::vector<WORD>& words, std::size_t at) {
    if (at < words.size() && words[at] == kOrdinal) {
        return at + 2;
    }
    while (at < words.size() && words[at] != 0) {
        ++at;
    }
    return at + 1;
}

// The largest size in points, not above `wanted`, with which every dialog fits into the work area
// of the window's monitor. All have the same one, or the pages of a dialog would differ from it.
int PointsOnMonitor(int wanted, HWND window) {
    MONITORINFO info{};
    info.cbSize = sizeof(info);
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &info);
    const LONG room = info.rcWork.bottom - info.rcWork.top;
    const int most = Scaled(room, kUsualPoints, ScaledPixels(kTallest, WindowDpi(window)));
    return std::clamp(wanted, kUsualPoints, std::max(most, kUsualPoints));
}

}  // namespace

DialogTemplate::DialogTemplate(int id, HWND owner) {
    const HRSRC found = FindResourceW(nullptr, MAKEINTRESOURCEW(id), RT_DIALOG);
    const HGLOBAL loaded = found != nullptr ? LoadResource(nullptr, found) : nullptr;
    const void* const bytes = loaded != nullptr ? LockResource(loaded) : nullptr;
    if (bytes == nullptr) {
        return;
    }
    m_words.resize(SizeofResource(nullptr, found) / sizeof(WORD));
    std::memcpy(m_words.data(), bytes, m_words.size() * sizeof(WORD));
    std::size_t points = kMenu;
    for (int name = 0; name < 3; ++name) {
        points = EndOfName(m_words, points);
    }
    if (points < m_words.size()) {
        const int wanted = Scaled(m_words[points], SystemLook::Present().TextScale(), 100);
        m_words[points] = static_cast<WORD>(PointsOnMonitor(wanted, owner));
    }
}

const DLGTEMPLATE* DialogTemplate::Get() const {
    return m_words.empty() ? nullptr : reinterpret_cast<const DLGTEMPLATE*>(m_words.data());
}

}  // namespace tamarind
