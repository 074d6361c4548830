#include <gtest/gtest.h>

#include "tests/model/fakes/SessionWorld.h"

namespace tamarind {
namespace {

constexpr ScreenSize kScreen = {15360, 11520};

class SettingsTest : public testing::Test {
protected:
    SessionWorld world;

    SettingsStore Loaded() {
        SettingsStore store(world.files, world.environment, "C:\\Tamarind\\", kScreen);
        store.LoadSettings();
        return store;
    }
    SettingsStore Loaded(const std::string& file) {
        world.disk.Put(SessionWorld::kOwnSettings, file);
        return Loaded();
    }
};

TEST_F(SettingsTest, TheFirstStartMakesTheFileAndCentersTheWindow) {
    const SettingsStore store = Loaded();
    EXPECT_EQ(store.Values().mainWindowWidth, 9000);
    EXPECT_EQ(store.Values().mainWindowLeft, (15360 - 9000) / 2);
    EXPECT_TRUE(world.disk.BytesOf(SessionWorld::kOwnSettings)
                    .starts_with("[ConfigurationEditor]\r\nFixedBorders=1\r\n"));
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "MainWindowWidth"), "9000");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "ToolbarVisible"), "(none)");
}

TEST_F(SettingsTest, ALaterStartTakesTheFileAndItsOwnDefaults) {
    const struct {
        const char* file;
        std::int32_t Settings::*member;
        std::int32_t expected;
    } cases[] = {
        {"", &Settings::mainWindowWidth, 8610},
        {"[ConfigurationEditor]\nFixedBorders=0", &Settings::fixedBorders, 0},
        {"[ConfigurationEditor]\nSplitPosition=-5", &Settings::splitPosition, 0},
        {"[ConfigurationEditor]\nfontsize = 12pt", &Settings::fontSize, 12},
        {"[ConfigurationEditor]\nFontSize=huge", &Settings::fontSize, 0},
        {"[Common]\nNumberOfRecentFiles=1", &Settings::numberOfRecentFiles, 2},
        {"[Common]\nNumberOfRecentFiles=40", &Settings::numberOfRecentFiles, 16},
        {"[ConfigurationEditor]\nNumberOfRecentFiles=4", &Settings::numberOfRecentFiles, 9},
    };
    for (const auto& testCase : cases) {
        EXPECT_EQ(Loaded(testCase.file).Values().*testCase.member, testCase.expected)
            << testCase.file;
    }
}

TEST_F(SettingsTest, OnlySizesOfUseAreUsed) {
    for (const auto& [points, used] : {std::pair(3, 10), {4, 4}, {144, 144}, {145, 10}}) {
        SettingsStore store = Loaded("[ConfigurationEditor]\nFontSize=" + std::to_string(points));
        OptionsListener nobody;
        OptionsEditor(store, world.prompts, "", nobody).SelectFont();
        EXPECT_EQ(world.prompts.fontsShown.back().points, used);
        EXPECT_EQ(store.Values().fontSize, points);  // the user chose none
    }
    for (const auto& [twips, used] :
         {std::pair(0, 4000), {1, 1}, {144'000, 144'000}, {144'001, 4000}}) {
        EXPECT_EQ(UsableBarPosition(twips), used);
    }
}

TEST_F(SettingsTest, TotalCommandersFolderComesFromSettingEnvironmentOrWindows) {
    EXPECT_EQ(Loaded("[Common]\nTCInstallDir=D:\\Tools\n").Values().totalCommanderFolder,
              "D:\\Tools\\");
    EXPECT_EQ(Loaded("[Common]\n").Values().totalCommanderFolder, "C:\\TC\\");
    world.environment.variables.erase("Commander_Path");
    EXPECT_EQ(Loaded("[Common]\n").Values().totalCommanderFolder, "C:\\Windows\\");
}

TEST_F(SettingsTest, OnlyWhatThisProgramChangedIsWritten) {
    const std::string file =
        "[ConfigurationEditor]\r\nFontSize = 9\r\nMainWindowLeft=10\r\nFontName=Arial\r\n"
        "[OtherEditor]\r\nFontSize=1\r\n";
    SettingsStore store = Loaded(file);
    EXPECT_TRUE(store.SaveSettings().Succeeded());
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kOwnSettings), file);
    EXPECT_EQ(world.disk.replaces, 0);

    // What a full disk did not take is written by the next save, or holds for this run.
    world.disk.FailReplaces(SessionWorld::kOwnSettings, FileError::DiskFull);
    store.WriteNow(&Settings::wincmdDataFile, "C:\\my.tmdf");
    EXPECT_EQ(store.Values().wincmdDataFile, "C:\\my.tmdf");
    store.Values().splitPosition = 4321;
    EXPECT_FALSE(store.SaveSettings().Succeeded());
    world.disk.FailReplaces(SessionWorld::kOwnSettings, FileError::None);
    EXPECT_TRUE(store.SaveSettings().Succeeded());
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "SplitPosition"), "4321");

    // Another window changed the font meanwhile; this one moved and was maximized.
    world.disk.Put(SessionWorld::kOwnSettings, file.substr(0, 40) + "\r\nFontName=Tahoma\r\n");
    store.Values().mainWindowLeft = 99;
    store.Values().splitPosition = 1234;
    store.Values().mainWindowMaximized = 1;
    store.Values().favoriteWindowTop = 77;  // has a time of its own
    EXPECT_TRUE(store.SaveSettings().Succeeded());
    EXPECT_EQ(world.disk.replaces, 4);
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "FontName"), "Tahoma");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "MainWindowLeft"), "(none)");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "MainWindowMaxmized"), "1");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "SplitPosition"), "1234");
    store.Values().mainWindowMaximized = 0;
    store.SaveSettings();
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "MainWindowLeft"), "99");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "FavoriteWindowTop"), "(none)");
    store.WriteFavoriteWindow();
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "FavoriteWindowTop"), "77");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "FavoriteWindowLeft"), "(none)");
}

class SettingsLocatorTest : public SettingsTest {
protected:
    std::string Find(std::string (SettingsLocator::*find)()) {
        SettingsStore store = Loaded();
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
