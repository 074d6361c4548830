#pragma once

#include "bench/windows/Harness.h"
#include "core/system/Environment.h"
#include "core/text/WideText_win32.h"
#include "ui/main/WindowPrompts.h"
#include "ui/main/frmMain.h"
#include "ui/shell/RealOtherPrograms.h"

namespace tamarind::bench {

// Names the settings file as if Total Commander had stored it.
class BenchRegistry final : public Registry {
public:
    explicit BenchRegistry(std::string settings) : m_settings(std::move(settings)) {}

    std::optional<RegistryValue> Query(std::uint32_t, const std::string&,
                                       const std::string& valueName, RegistryView) override {
        if (valueName != "IniFileName") {
            return std::nullopt;
        }
        return RegistryValue{kRegistryString, EncodeUtf16Le(m_settings) + std::string(2, '\0')};
    }
    bool Store(std::uint32_t, const std::string&, const std::string&,
               const RegistryValue&) override {
        return false;
    }
    bool DeleteKey(std::uint32_t, const std::string&) override { return false; }

private:
    std::string m_settings;
};

// The real main window with a number of keys, at its first size, and all that it needs.
class BenchWindow {
public:
    BenchWindow(const std::wstring& folder, int keys)
        : m_registry(Narrow(folder + L"Wincmd.ini")),
          session({m_files,
                   m_registry,
                   m_environment,
                   m_prompts,
                   m_programs,
                   Narrow(folder),
                   "0",
                   {15360, 11520}}),
          window(session) {
        const SampleFiles sample = MakeSample(keys);
        WriteOldFile(folder + L"data.tmdf", sample.dataFile);
        WriteOldFile(folder + L"Wincmd.ini", sample.settings);
        session.LoadSettings();
        isOpen = window.Create() && session.Activate("\"" + Narrow(folder) + "data.tmdf\"");
        if (isOpen) {
            window.ShowFirst(SW_SHOWNORMAL);
            session.Selection().SelectCategory(kRootNode);
        }
    }

    // Handles and paints all that waits.
    static void Settle() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message != WM_QUIT) {
                TranslateMessage(&message);
                DispatchMessageW(&message);
            }
        }
        GdiFlush();
    }
    void Repaint() const {
        RedrawWindow(window.Handle(), nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
        Settle();
    }

private:
    DiskFileSystem m_disk;
    IniFiles m_files{m_disk};
    BenchRegistry m_registry;
    const ProcessEnvironment m_environment;
    WindowPrompts m_prompts{L"bench"};
    RealOtherPrograms m_programs;

public:
    EditorSession session;
    frmMain window;
    bool isOpen = false;
};

}  // namespace tamarind::bench
