#include <gtest/gtest.h>

#include "core/system/cRegistry.h"
#include "core/text/MissingValueMarker.h"
#include "core/text/TextEncoding.h"
#include "tests/core/fakes/MemoryRegistry.h"

#if defined(_WIN32)
#include <windows.h>
#endif

namespace tamarind {
namespace {

using namespace std::string_literals;

constexpr std::uint32_t kCurrentUser = 0x80000001;

TEST(Registry, ReadsEveryType) {
    const std::string marker(MissingValueMarker);
    const auto text = [](const std::string& t) { return EncodeUtf16Le(t + '\0'); };
    const std::tuple<std::uint32_t, std::string, std::string> cases[] = {
        {kRegistryString, text("C:\\TC 中"), "C:\\TC 中"},
        {kRegistryString, "", ""},
        // The last character goes, whether it is a NUL or not.
        {kRegistryString, EncodeUtf16Le("abc"), "ab"},
        {kRegistryString, text(std::string(2047, 'x')), std::string(2047, 'x')},
        {kRegistryString, text(std::string(2048, 'x')), marker},
        {kRegistryBinary, "\x01\xAB", "01AB"},
        {kRegistryBinary, std::string(2049, '\0'), marker},
        {kRegistryNumber, "\x07\0\0\0"s, "\x07\0\0"s},
        {kRegistryNumber, "\xE4\0\0\0"s, DecodeCodePage("\xE4\0\0"s, SystemAnsiCodePage())},
    };
    MemoryRegistry memory;
    cRegistry registry(memory);
    for (const auto& [type, bytes, expected] : cases) {
        memory.Store(kCurrentUser, "Software\\T", "v", {type, bytes});
        EXPECT_EQ(registry.ReadValue("hkey_Current_user\\Software\\T", "v"), expected)
            << type << " " << testing::PrintToString(bytes);
    }
}

// The real registry and the one in memory do the same.
void CheckLife(Registry& store) {
    cRegistry registry(store);
    const std::string root = "HKEY_CURRENT_USER\\Software\\TamarindTest";
    registry.Deletekey(root + "\\sub");
    registry.Deletekey(root);
    EXPECT_EQ(registry.ReadValue(root, "v"), MissingValueMarker);
    registry.WriteValue(root + "\\sub", "", "default 中", kRegistryString);
    registry.WriteValue(root, "v", "1", kRegistryString);
    registry.WriteValue(root, "n", "16961", kRegistryNumber);
    EXPECT_EQ(registry.ReadValue(root + "\\SUB", ""), "default 中");
    EXPECT_EQ(registry.ReadValue(root, "V"), "1");
    EXPECT_EQ(registry.ReadValue(root, "n"), "AB\0"s);
    registry.Deletekey(root);
    EXPECT_EQ(registry.ReadValue("HKCU\\Software\\TamarindTest", "v"), MissingValueMarker);
    EXPECT_EQ(registry.ReadValue(root, "v"), "1") << "a key with subkeys was deleted";
    registry.Deletekey(root + "\\sub");
    registry.Deletekey(root);
    EXPECT_EQ(registry.ReadValue(root, "v"), MissingValueMarker);
}

TEST(Registry, LifeOfAKeyInMemory) {
    MemoryRegistry memory;
    CheckLife(memory);
}

#if defined(_WIN32)
TEST(Registry, LifeOfAKeyInTheSystem) {
    SystemRegistry system;
    CheckLife(system);
}

TEST(Registry, TheOtherViewHasValuesOfItsOwn) {
    BOOL isWow64 = FALSE;
    if (sizeof(void*) == 4 && !(IsWow64Process(GetCurrentProcess(), &isWow64) && isWow64)) {
        GTEST_SKIP() << "a Windows for 32 bits has one view";
    }
    constexpr REGSAM kOther = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"Software\\TamarindTest", 0, nullptr, 0,
                    KEY_SET_VALUE | kOther, nullptr, &key, nullptr);
    RegSetValueExW(key, L"v", 0, REG_SZ, reinterpret_cast<const BYTE*>(L"1"), 4);
    RegCloseKey(key);
    SystemRegistry system;
    cRegistry registry(system);
    const std::string path = "HKEY_LOCAL_MACHINE\\Software\\TamarindTest";
    EXPECT_EQ(registry.ReadValue(path, "v", RegistryView::Other), "1");
    EXPECT_EQ(registry.ReadValue(path, "v"), MissingValueMarker);
    RegDeleteKeyExW(HKEY_LOCAL_MACHINE, L"Software\\TamarindTest", kOther, 0);
}
#endif

}  // namespace
}  // namespace tamarind
