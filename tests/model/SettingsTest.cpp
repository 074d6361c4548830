#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/StringTable.h"
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
    EXPECT_EQ(store.Values().mainWindowTop, (11520 - 7000) / 2);
    EXPECT_EQ(store.Values().fixedBorders, 1);
    EXPECT_EQ(store.Values().toolbarVisible, 1);
    EXPECT_EQ(store.Values().wincmdDataFile, SessionWorld::kWincmdData);
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "MainWindowWidth"), "9000");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "ToolbarVisible"), "(none)");
    EXPECT_EQ(world.OwnSetting("Common", "LanguageFile"), "(none)");
}

TEST_F(SettingsTest, ALaterStartTakesTheFileAndItsOwnDefaults) {
    struct Case {
        const char* section;
        const char* line;
        std::int32_t Settings::*member;
        std::int32_t expected;
    };
    const Case cases[] = {
        {"ConfigurationEditor", "", &Settings::mainWindowWidth, 8610},
        {"ConfigurationEditor", "", &Settings::mainWindowHeight, 7230},
        {"ConfigurationEditor", "", &Settings::fixedBorders, 1},
        {"ConfigurationEditor", "SplitPosition=-5", &Settings::splitPosition, 0},
        {"ConfigurationEditor", "fontsize = 12pt", &Settings::fontSize, 12},
        {"ConfigurationEditor", "ForegroundColor=-2147483640", &Settings::foregroundColor,
         -2147483640},
        {"ConfigurationEditor", "FontSize=huge", &Settings::fontSize, 0},
        {"Common", "NumberOfRecentFiles=1", &Settings::numberOfRecentFiles, 2},
        {"Common", "NumberOfRecentFiles=40", &Settings::numberOfRecentFiles, 16},
        {"Common", "NumberOfRecentFiles=many", &Settings::numberOfRecentFiles, 2},
        {"ConfigurationEditor", "NumberOfRecentFiles=4", &Settings::numberOfRecentFiles, 9},
    };
    for (const Case& testCase : cases) {
        const SettingsStore store =
            Loaded("[" + std::string(testCase.section) + "]\n" + testCase.line + "\n");
        EXPECT_EQ(store.Values().*testCase.member, testCase.expected) << testCase.line;
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

    // What a full disk did not take is written by the next save.
    world.disk.FailReplaces(SessionWorld::kOwnSettings, FileError::DiskFull);
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
    EXPECT_TRUE(store.SaveSettings().Succeeded());
    EXPECT_EQ(world.disk.replaces, 3);
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "FontName"), "Tahoma");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "MainWindowLeft"), "(none)");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "MainWindowMaxmized"), "1");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "SplitPosition"), "1234");
    store.Values().mainWindowMaximized = 0;
    store.SaveSettings();
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "MainWindowLeft"), "99");
}

TEST_F(SettingsTest, LanguageFilesReplaceTextsOneByOne) {
    world.disk.Put("C:\\my.lng", "[UserLanguage]\r\n104=&\xD1\xEE\xF5\xF0\xE0\xED\r\n110=\r\n");
    world.environment.variables["LNG"] = "C:";
    SettingsStore store = Loaded(
        "[ConfigurationEditor]\nUseDefaultLanguage=0\nFontScript=204\n"
        "[Common]\nLanguageFile=%LNG%\\my.lng\n");
    const Language language(world.files, store.Values());
    EXPECT_EQ(language.GetLanguageString(104), "&\xD0\xA1\xD0\xBE\xD1\x85\xD1\x80\xD0\xB0\xD0\xBD");
    EXPECT_EQ(language.GetLanguageString(110), "E&xit");
    EXPECT_EQ(language.GetLanguageString(999), "");
    store.Values().useDefaultLanguage = 1;
    EXPECT_EQ(language.GetLanguageString(104), "&Save");
}

class SettingsLocatorTest : public SettingsTest {
protected:
    struct Found {
        std::string path;
        std::size_t messages;
    };
    Found FindWincmd() {
        SettingsStore store = Loaded();
        const Language language(world.files, store.Values());
        SettingsLocator locator(world.disk, world.registry, world.environment, store, language,
                                world.prompts);
        world.prompts.messages.clear();
        const std::string path = locator.FindWincmdIni();
        return {path, world.prompts.messages.size()};
    }
};

TEST_F(SettingsLocatorTest, RegistryPathsAreResolvedInTotalCommandersWay) {
    world.environment.variables["X"] = "D:\\Conf";
    for (const char* path : {"C:\\TC\\a.ini", "C:\\Windows\\b.ini", "D:\\Conf\\c.ini",
                             "C:\\TC\\b.ini", "\\\\server\\share\\d.ini"}) {
        world.disk.Put(path, "");
    }
    struct Case {
        const char* entry;
        const char* expected;
    };
    const Case cases[] = {
        {".\\a.ini", "C:\\TC\\a.ini"},      // in Total Commander's folder
        {"b.ini", "C:\\Windows\\b.ini"},    // a bare name: in the Windows folder
        {"a.ini", ""},                      //
        {"%X%\\c.ini", "D:\\Conf\\c.ini"},  // expanded before anything else
        {"d:\\conf\\C.ini", "d:\\conf\\C.ini"},
        {"\\\\server\\share\\d.ini", "\\\\server\\share\\d.ini"},
        {"C:\\TC", ""},
        {"", ""},
    };
    for (const Case& testCase : cases) {
        world.SetRegistry("HKEY_CURRENT_USER", "IniFileName", testCase.entry);
        EXPECT_EQ(FindWincmd().path, testCase.expected) << testCase.entry;
    }
}

TEST_F(SettingsLocatorTest, TheUsersEntryHidesTheMachinesEvenWhenItsFileIsGone) {
    world.disk.Put("C:\\TC\\machine.ini", "");
    world.SetRegistry("HKEY_LOCAL_MACHINE", "IniFileName", "C:\\TC\\machine.ini");
    EXPECT_EQ(FindWincmd().path, "C:\\TC\\machine.ini");
    world.SetRegistry("HKEY_CURRENT_USER", "IniFileName", "C:\\TC\\gone.ini");
    EXPECT_EQ(FindWincmd().path, "");
    EXPECT_EQ(world.prompts.messages.size(), 1U);
}

TEST_F(SettingsLocatorTest, TheUsersChoiceIsKeptForTheNextTime) {
    world.environment.variables["HOME"] = "E:\\Me";
    world.disk.Put("E:\\Me\\w.ini", "");
    world.prompts.filesToChoose = {"%HOME%\\w.ini"};
    EXPECT_EQ(FindWincmd().path, "E:\\Me\\w.ini");
    EXPECT_EQ(world.prompts.questions.at(0).fileName, "Wincmd.ini");
    EXPECT_EQ(world.prompts.questions.at(0).initialFolder, "C:\\TC\\");
    EXPECT_EQ(world.OwnSetting("Common", "UserDefinedWincmd"), "%HOME%\\w.ini");
    const Found again = FindWincmd();
    EXPECT_EQ(again.path, "E:\\Me\\w.ini");
    EXPECT_EQ(again.messages, 0U);
}

TEST_F(SettingsLocatorTest, TheFtpSideGivesTheAnswerAsItIs) {
    world.environment.variables["HOME"] = "E:\\Me";
    SettingsStore store = Loaded();
    const Language language(world.files, store.Values());
    SettingsLocator locator(world.disk, world.registry, world.environment, store, language,
                            world.prompts);
    EXPECT_EQ(locator.FindWcxFtpIni(), MissingValueMarker);
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "UserDefinedWcxftp"), "(none)");
    world.prompts.filesToChoose = {"%HOME%\\f.ini"};
    EXPECT_EQ(locator.FindWcxFtpIni(), "%HOME%\\f.ini");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "UserDefinedWcxftp"), "%HOME%\\f.ini");
}

}  // namespace
}  // namespace tamarind
