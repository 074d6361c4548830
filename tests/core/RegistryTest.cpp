#include <gtest/gtest.h>

#include "core/MissingValueMarker.h"
#include "core/TextEncoding.h"
#include "core/cRegistry.h"
#include "tests/core/fakes/MemoryRegistry.h"

namespace tamarind {
namespace {

using namespace std::string_literals;

constexpr std::uint32_t kCurrentUser = 0x80000001;

TEST(Registry, ReadsEveryType) {
    const std::string marker(MissingValueMarker);
    const auto text = [](const std::string& t) { return EncodeUtf16Le(t + '\0'); };
    const struct {
        std::uint32_t type;
        std::string bytes;
        std::string expected;
    } cases[] = {
        {kRegistryString, text("C:\\TC 中"), "C:\\TC 中"},
        {kRegistryString, text(""), ""},
        {kRegistryString, "", ""},
        // The last character goes, whether it is a NUL or not.
        {kRegistryString, EncodeUtf16Le("abc"), "ab"},
        {2, text("%a%"), "%a%"},
        {kRegistryString, text(std::string(2047, 'x')), std::string(2047, 'x')},
        {kRegistryString, text(std::string(2048, 'x')), marker},
        {kRegistryBinary, "\x01\xAB", "01AB"},
        {kRegistryBinary, "", ""},
        {kRegistryBinary, std::string(2048, '\0'), std::string(4096, '0')},
        {kRegistryBinary, std::string(2049, '\0'), marker},
        {kRegistryNumber, "ABCD", "ABC"},
        {kRegistryNumber, "\x07\0\0\0"s, "\x07\0\0"s},
        {kRegistryNumber, "\xE4\0\0\0"s, DecodeCodePage("\xE4\0\0"s, SystemAnsiCodePage())},
    };
    MemoryRegistry memory;
    cRegistry registry(memory);
    for (const auto& c : cases) {
        memory.Store(kCurrentUser, "Software\\T", "v", {c.type, c.bytes});
        EXPECT_EQ(registry.ReadValue("hkey_Current_user\\Software\\T", "v"), c.expected)
            << c.type << " " << testing::PrintToString(c.bytes);
    }
}

TEST(Registry, FindsRoots) {
    const struct {
        const char* path;
        std::uint32_t root;
        const char* subkey;
    } cases[] = {
        {"HKEY_CLASSES_ROOT\\.ini", 0x80000000, ".ini"},
        {"HKEY_CURRENT_USER\\a\\b", 0x80000001, "a\\b"},
        {"hkey_local_machine\\a", 0x80000002, "a"},
        {"HKEY_USERS", 0x80000003, ""},
        {"HKEY_CURRENT_CONFIG\\", 0x80000005, ""},
        {"HKEY_DYN_DATA\\a", 0x80000006, "a"},
        {"HKCU\\a", 0, nullptr},
        {"\\HKEY_USERS", 0, nullptr},
    };
    for (const auto& c : cases) {
        MemoryRegistry memory;
        cRegistry registry(memory);
        registry.WriteValue(c.path, "", "here", kRegistryString);
        EXPECT_EQ(c.root != 0 && memory.Query(c.root, c.subkey, ""), c.root != 0) << c.path;
        EXPECT_EQ(registry.ReadValue(c.path, ""), c.root != 0 ? "here" : MissingValueMarker);
    }
}

TEST(Registry, StoresTextsAndNumbers) {
    MemoryRegistry memory;
    cRegistry registry(memory);
    const auto stored = [&](const char* value, std::uint32_t type) {
        registry.WriteValue("HKEY_CURRENT_USER\\a", "v", value, type);
        const auto result = memory.Query(kCurrentUser, "a", "v");
        return result ? std::to_string(result->type) + ":" + result->bytes : "nothing";
    };
    EXPECT_EQ(stored("a中", 1), "1:" + EncodeUtf16Le("a中") + "\0\0"s);
    EXPECT_EQ(stored("a", 2), "1:a\0"s);
    EXPECT_EQ(stored("258 px", 4), "4:\x02\x01\0\0"s);
    EXPECT_EQ(stored("-2", 4), "4:\xFE\xFF\xFF\xFF");
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
    registry.WriteValue(root, "long", std::string(2048, 'x'), kRegistryString);
    EXPECT_EQ(registry.ReadValue(root + "\\SUB", ""), "default 中");
    EXPECT_EQ(registry.ReadValue(root, "V"), "1");
    EXPECT_EQ(registry.ReadValue(root, "n"), "AB\0"s);
    EXPECT_EQ(registry.ReadValue(root, "long"), MissingValueMarker);
    EXPECT_EQ(registry.ReadValue(root, "none"), MissingValueMarker);
    EXPECT_EQ(registry.Deletekey(root), "");
    EXPECT_EQ(registry.ReadValue(root, "v"), "1") << "a key with subkeys was deleted";
    registry.Deletekey(root + "\\sub");
    registry.Deletekey(root);
    EXPECT_EQ(registry.ReadValue(root, "v"), MissingValueMarker);
    registry.WriteValue("HKCU\\Software\\TamarindTest", "v", "1", kRegistryString);
    EXPECT_EQ(registry.ReadValue("HKCU\\Software\\TamarindTest", "v"), MissingValueMarker);
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
#endif

}  // namespace
}  // namespace tamarind
