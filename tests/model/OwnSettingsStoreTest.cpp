#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

constexpr ScreenSize kScreen = {15360, 11520};

class OwnSettingsStoreTest : public SessionTest {
protected:
    OwnSettingsStore Loaded() {
        OwnSettingsStore store(world.files, world.environment, "C:\\Tamarind\\", kScreen);
        store.LoadSettings();
        return store;
    }
    OwnSettingsStore Loaded(const std::string& file) {
        world.disk.Put(SessionWorld::kOwnSettings, file);
        return Loaded();
    }
};

TEST_F(OwnSettingsStoreTest, TheFirstStartMakesTheFileAndCentersTheWindow) {
    const OwnSettingsStore store = Loaded();
    EXPECT_EQ(store.Values().mainWindowWidth, 9000);
    EXPECT_EQ(store.Values().mainWindowLeft, (15360 - 9000) / 2);
    EXPECT_TRUE(world.disk.BytesOf(SessionWorld::kOwnSettings)
                    .starts_with("[ConfigurationEditor]\r\nFixedBorders=1\r\n"));
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "MainWindowWidth"), "9000");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "ToolbarVisible"), "(none)");
}

TEST_F(OwnSettingsStoreTest, ALaterStartTakesTheFileAndItsOwnDefaults) {
    const std::tuple<const char*, std::int32_t OwnSettings::*, std::int32_t> cases[] = {
        {"", &OwnSettings::mainWindowWidth, 8610},
        {"[ConfigurationEditor]\nFixedBorders=0", &OwnSettings::fixedBorders, 0},
        {"[ConfigurationEditor]\nSplitPosition=-5", &OwnSettings::splitPosition, 0},
        {"[ConfigurationEditor]\nfontsize = 12pt", &OwnSettings::fontSize, 12},
        {"[ConfigurationEditor]\nFontSize=huge", &OwnSettings::fontSize, 0},
        {"[Common]\nNumberOfRecentFiles=1", &OwnSettings::numberOfRecentFiles, 2},
        {"[Common]\nNumberOfRecentFiles=40", &OwnSettings::numberOfRecentFiles, 16},
        {"[ConfigurationEditor]\nNumberOfRecentFiles=4", &OwnSettings::numberOfRecentFiles, 9},
    };
    for (const auto& [file, member, expected] : cases) {
        EXPECT_EQ(Loaded(file).Values().*member, expected) << file;
    }
}

TEST_F(OwnSettingsStoreTest, OnlySizesOfUseAreUsed) {
    for (const auto& [points, used] : {std::pair(3, 10), {4, 4}, {144, 144}, {145, 10}}) {
        OwnSettingsStore store =
            Loaded("[ConfigurationEditor]\nFontSize=" + std::to_string(points));
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

TEST_F(OwnSettingsStoreTest, TotalCommandersFolderComesFromSettingEnvironmentOrWindows) {
    EXPECT_EQ(Loaded("[Common]\nTCInstallDir=D:\\Tools\n").Values().totalCommanderFolder,
              "D:\\Tools\\");
    EXPECT_EQ(Loaded("[Common]\n").Values().totalCommanderFolder, "C:\\TC\\");
    world.environment.variables.erase("Commander_Path");
    EXPECT_EQ(Loaded("[Common]\n").Values().totalCommanderFolder, "C:\\Windows\\");
}

TEST_F(OwnSettingsStoreTest, OnlyWhatThisProgramChangedIsWritten) {
    const std::string file =
        "[ConfigurationEditor]\r\nFontSize = 9\r\nMainWindowLeft=10\r\nFontName=Arial\r\n"
        "[OtherEditor]\r\nFontSize=1\r\n";
    OwnSettingsStore store = Loaded(file);
    EXPECT_TRUE(store.SaveSettings().Succeeded());
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kOwnSettings), file);
    EXPECT_EQ(world.disk.replaces, 0);

    // What a full disk did not take is written by the next save, or holds for this run.
    world.disk.FailReplaces(SessionWorld::kOwnSettings, FileError::DiskFull);
    store.WriteNow(&OwnSettings::wincmdDataFile, "C:\\my.tmdf");
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

// Where the program's own settings are kept.
TEST_F(OwnSettingsStoreTest, OwnSettingsGoWhereTheyCanBeWritten) {
    const std::string user = "C:\\Users\\me\\Tamarind Editors\\tamarind editors.ini";
    world.environment.variables["APPDATA"] = "C:\\Users\\me";
    StartWith({"[Configuration]\r\n", "", ""});
    EXPECT_EQ(Place().OwnSettings().Path(), SessionWorld::kOwnSettings);
    world.disk.Remove(SessionWorld::kOwnSettings);
    world.disk.FailReplaces(SessionWorld::kOwnSettings, FileError::AccessDenied);
    ASSERT_TRUE(world.Start());
    EXPECT_EQ(Place().OwnSettings().Path(), user);
    EXPECT_THAT(world.disk.folders, ElementsAre("C:\\Users\\me\\Tamarind Editors"));
    ASSERT_TRUE(FavoriteKeys().AddFavorite("A", "kept"));
    ASSERT_TRUE(world.Start());
    EXPECT_EQ(FavoriteKeys().Items().size(), 1U);
    // One beside the program wins, also if it can only be read.
    world.disk.Put(SessionWorld::kOwnSettings, "[FavoritesList]\nB=1\nC=2\n");
    ASSERT_TRUE(world.Start());
    EXPECT_EQ(FavoriteKeys().Items().size(), 2U);
    EXPECT_FALSE(FavoriteKeys().AddFavorite("D", "not kept"));
    // Nowhere at all, which stops nothing.
    world.disk.Remove(SessionWorld::kOwnSettings);
    world.environment.variables.erase("APPDATA");
    ASSERT_TRUE(world.Start());
    EXPECT_EQ(Place().OwnSettings().Values().mainWindowWidth, 9000);
}

}  // namespace
}  // namespace tamarind
