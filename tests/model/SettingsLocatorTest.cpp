#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/model/fakes/SessionWorld.h"

namespace tamarind {
namespace {

class SettingsLocatorTest : public testing::Test {
protected:
    SessionWorld world;

    std::string Find(std::string (SettingsLocator::*find)()) {
        OwnSettingsStore store(world.files, world.environment, "C:\\Tamarind\\", {15360, 11520});
        store.LoadSettings();
        const Language language(world.files, store.Values());
        SettingsLocator locator(world.disk, world.registry, world.environment, store, language,
                                world.prompts);
        world.prompts.messages.clear();
        return (locator.*find)();
    }
    std::string FindWincmd() { return Find(&SettingsLocator::FindWincmdIni); }
};

TEST_F(SettingsLocatorTest, RegistryPathsAreResolvedInTotalCommandersWay) {
    world.environment.variables["X"] = "D:\\Conf";
    for (const char* path : {"C:\\TC\\a.ini", "C:\\Windows\\b.ini", "D:\\Conf\\c.ini",
                             "C:\\TC\\b.ini", "\\\\server\\share\\d.ini"}) {
        world.disk.Put(path, "");
    }
    for (const auto& [entry, expected] :
         {std::pair(".\\a.ini", "C:\\TC\\a.ini"),  // in Total Commander's folder
          {"b.ini", "C:\\Windows\\b.ini"},         // a bare name: in the Windows folder
          {"a.ini", ""},
          {"%X%\\c.ini", "D:\\Conf\\c.ini"},  // expanded before anything else
          {"d:\\conf\\C.ini", "d:\\conf\\C.ini"},
          {"\\\\server\\share\\d.ini", "\\\\server\\share\\d.ini"},
          {"", ""}}) {
        world.SetRegistry("HKEY_CURRENT_USER", "IniFileName", entry);
        EXPECT_EQ(FindWincmd(), expected) << entry;
    }
}

TEST_F(SettingsLocatorTest, TheUsersEntryHidesTheMachinesEvenWhenItsFileIsGone) {
    world.disk.Put("C:\\TC\\machine.ini", "");
    world.disk.Put("C:\\TC\\machine32.ini", "");
    world.registry.storesInto = RegistryView::Other;
    world.SetRegistry("HKEY_LOCAL_MACHINE", "IniFileName", "C:\\TC\\machine32.ini");
    EXPECT_EQ(FindWincmd(), "C:\\TC\\machine32.ini");
    world.registry.storesInto = RegistryView::Native;
    world.SetRegistry("HKEY_LOCAL_MACHINE", "IniFileName", "C:\\TC\\machine.ini");
    EXPECT_EQ(FindWincmd(), "C:\\TC\\machine.ini");
    world.SetRegistry("HKEY_CURRENT_USER", "IniFileName", "C:\\TC\\gone.ini");
    EXPECT_EQ(FindWincmd(), "");
    EXPECT_EQ(world.prompts.messages.size(), 1U);
}

TEST_F(SettingsLocatorTest, TheUsersChoiceIsKeptForTheNextTime) {
    world.environment.variables["HOME"] = "E:\\Me";
    world.disk.Put("E:\\Me\\w.ini", "");
    world.prompts.filesToChoose = {"%HOME%\\w.ini"};
    EXPECT_EQ(FindWincmd(), "E:\\Me\\w.ini");
    EXPECT_EQ(world.prompts.questions.at(0).fileName, "Wincmd.ini");
    EXPECT_EQ(world.prompts.questions.at(0).initialFolder, "C:\\TC\\");
    EXPECT_EQ(world.OwnSetting("Common", "UserDefinedWincmd"), "%HOME%\\w.ini");
    EXPECT_EQ(FindWincmd(), "E:\\Me\\w.ini");
    EXPECT_TRUE(world.prompts.messages.empty());
}

TEST_F(SettingsLocatorTest, TheFtpSideGivesTheAnswerAsItIs) {
    EXPECT_EQ(Find(&SettingsLocator::FindWcxFtpIni), MissingValueMarker);
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "UserDefinedWcxftp"), "(none)");
    world.prompts.filesToChoose = {"%HOME%\\f.ini"};
    EXPECT_EQ(Find(&SettingsLocator::FindWcxFtpIni), "%HOME%\\f.ini");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "UserDefinedWcxftp"), "%HOME%\\f.ini");
}

}  // namespace
}  // namespace tamarind
