#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/app/RunningProgram.h"

namespace tamarind {

inline constexpr const wchar_t* kTotalCommanderKey = L"Software\\Ghisler\\Total Commander";
inline constexpr const char* kSettings =
    "[Configuration]\r\nPanelsVertical=1\r\n;ShowHidden=0\r\n[Colors]\r\nBackColor=5\r\n";
inline constexpr const char* kDataFile =
    "[Panels]\r\nCategoryTargetSection=Configuration\r\nPanelsVertical=0///Panels.@0 = no\r\n"
    "ShowHidden=1///Hidden files.\r\n"
    "[Colors]\r\nCategoryTargetSection=Colors\r\nBackColor=-1///The background.\r\n";

// The program beside a data file, with settings that the registry names.
class ProgramTest : public testing::Test {
protected:
    ProgramFolder folder;

    void SetUp() override {
        folder.Write(L"Wincmd.ini", kSettings);
        folder.Write(L"data.tmdf", kDataFile);
        const std::wstring path = folder.Path(L"Wincmd.ini");
        RegSetKeyValueW(HKEY_CURRENT_USER, kTotalCommanderKey, L"IniFileName", REG_SZ, path.c_str(),
                        static_cast<DWORD>(2 * path.size() + 2));
    }
    void TearDown() override { RegDeleteKeyW(HKEY_CURRENT_USER, kTotalCommanderKey); }

    std::wstring Quoted(const std::wstring& name) const {
        return L"\"" + folder.Path(name) + L"\"";
    }
};

}  // namespace tamarind
