#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/system/cRegistry.h"
#include "model/program/FileAssociation.h"
#include "tests/core/fakes/MemoryRegistry.h"

namespace tamarind {
namespace {

constexpr std::uint32_t kClassesRoot = 0x80000000U;

// Copies of the program register themselves in turn.
TEST(FileAssociationTest, TheNewestCopyKeepsTheFileTypeAndFollowsItsFolder) {
    const std::tuple<const char*, const char*, bool, const char*> cases[] = {
        {"C:\\A\\Tamarind.exe", "5.011", true, "\"c:\\a\\tamarind.exe\" \"%1\""},
        {"C:\\A\\TAMARIND.EXE", "5.011", false, "\"c:\\a\\tamarind.exe\" \"%1\""},
        {"C:\\B\\Tamarind.exe", "5.011", true, "\"c:\\b\\tamarind.exe\" \"%1\""},
        {"C:\\Old\\Tamarind.exe", "5.000", false, "\"c:\\b\\tamarind.exe\" \"%1\""},
        {"C:\\New\\Tamarind.exe", "5.100", true, "\"c:\\new\\tamarind.exe\" \"%1\""},
        {"C:\\B\\Tamarind.exe", "5.91", true, "\"c:\\b\\tamarind.exe\" \"%1\""},  // as texts
    };
    for (const bool isAdministrator : {true, false}) {
        MemoryRegistry registry;
        cRegistry values(registry);
        registry.readOnlyRoot = isAdministrator ? 0 : kClassesRoot;
        const std::string root =
            isAdministrator ? "HKEY_CLASSES_ROOT\\" : "HKEY_CURRENT_USER\\Software\\Classes\\";
        for (const auto& [path, version, isWritten, command] : cases) {
            SCOPED_TRACE(path);
            EXPECT_EQ(RegisterDataFileType(registry, path, version), isWritten);
            EXPECT_EQ(values.ReadValue(root + "Fernedit\\Shell\\Open\\Command", ""), command);
        }
        EXPECT_EQ(values.ReadValue(root + "Fernedit\\DefaultIcon", ""), "C:\\B\\Tamarind.exe, 1");
        EXPECT_EQ(values.ReadValue(root + ".tmdf", ""), "Fernedit");
    }
}

}  // namespace
}  // namespace tamarind
