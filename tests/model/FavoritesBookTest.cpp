#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

using FavoritesBookTest = SessionTest;

TEST_F(FavoritesBookTest, FavoritesAreReadAddedAndShown) {
    StartWithKeys("ColorBack=1\r\nShowHiddenSystem=0\r\n",
                  "[FavoritesList]\r\nColor=Prefix\r\nSp_1=-\r\nGone=\r\n"
                  "ShowHiddenSystem=\xC3\x9C\r\nshowhiddensystem=again\r\n");
    const auto& items = FavoriteKeys().Items();
    ASSERT_EQ(items.size(), 5U);
    EXPECT_TRUE(Selection().NamesInList().HasNameFrom(items[0].name));  // begins a row's text
    EXPECT_FALSE(Selection().NamesInList().HasNameFrom(items[2].name));
    EXPECT_EQ(items[4].caption, items[3].caption);  // of a repeated name the first line counts

    Selection().Rows().ShowKeyDetails(1);
    EXPECT_EQ(FavoriteKeys().BeginAddFavorite(), std::nullopt);
    EXPECT_EQ(world.prompts.messages.back(), "XThere is already a favorite with that key.");
    Selection().SetKeyFilter(KeyFilter::ShowChanged);
    EXPECT_EQ(FavoriteKeys().BeginAddFavorite(), std::nullopt) << "no key is shown";
    Selection().SetKeyFilter(KeyFilter::ShowAll);
    ASSERT_EQ(FavoriteKeys().BeginAddFavorite(), "ColorBack");
    FavoriteKeys().SetOrganizerOpen(true);
    ASSERT_TRUE(FavoriteKeys().AddFavorite("ColorBack", "Background"));
    EXPECT_EQ(world.OwnSetting("FavoritesList", "ColorBack"), "Background");
    EXPECT_EQ(FavoriteKeys().Organizer().Rows().size(), 6U);

    Selection().SetKeyFilter(KeyFilter::ShowActive);
    EXPECT_TRUE(FavoriteKeys().FavoriteDefinition("SHOWHIDDENSYSTEM"));
    EXPECT_EQ(Selection().Rows().Record(*Selection().Rows().CurrentKey()).keyName,
              "ShowHiddenSystem");
    EXPECT_EQ(Selection().Filter(), KeyFilter::ShowAll);
    EXPECT_FALSE(FavoriteKeys().FavoriteDefinition("Gone"));
    EXPECT_EQ(world.prompts.messages.back(), "XCannot find this favorite key!");

    // Nothing is said to be kept that is not.
    world.disk.FailReplaces(SessionWorld::kOwnSettings, FileError::ReadOnly);
    EXPECT_FALSE(FavoriteKeys().AddFavorite("New", "x"));
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr("read-only"));
    EXPECT_EQ(items.size(), 6U);
}

TEST_F(FavoritesBookTest, TheMenuIsFullAtNinetySevenFavorites) {
    for (const int count : {96, 97}) {
        std::string own = "[FavoritesList]\r\n";
        for (int number = 0; number < count; ++number) {
            own += "Key" + std::to_string(number) + "=Caption\r\n";
        }
        StartWithKeys("ColorBack=1\r\n", own);
        EXPECT_EQ(FavoriteKeys().BeginAddFavorite().has_value(), count == 96) << count;
    }
    EXPECT_EQ(world.prompts.messages.back(), "iFavorites list cannot contain more than 99 items.");
}

// What is read again is cut behind 4,094 characters.
TEST_F(FavoritesBookTest, FavoritesThatWouldBeCutAreRefused) {
    const auto file = [&] { return world.disk.BytesOf(SessionWorld::kOwnSettings); };
    // Whether there is room for "ColorBack", and for the separator "Sp_1".
    const std::tuple<std::string, bool, bool> cases[] = {
        {std::string(4084, 'x'), true, true},
        {std::string(4085, 'x'), false, true},
        {std::string(4090, 'x'), false, false},
        {std::string(4093, 'x') + "=\r\nLost", false, false},
    };
    for (const auto& [names, takesAnother, takesSeparator] : cases) {
        SCOPED_TRACE(names.size());
        StartWithKeys("ColorBack=1\r\n", "[FavoritesList]\r\n" + names + "=x\r\n");
        const std::string before = file();
        FavoriteKeys().SetOrganizerOpen(true);
        FavoritesOrganizer& organizer = FavoriteKeys().Organizer();
        ASSERT_TRUE(organizer.AddSeparator());
        const std::size_t count = organizer.Rows().size();
        EXPECT_EQ(FavoriteKeys().ApplyOrganizer(), takesSeparator);
        EXPECT_EQ(organizer.IsChanged(), !takesSeparator);
        EXPECT_EQ(organizer.Rows().size(), count);
        EXPECT_EQ(file() == before, !takesSeparator);

        world.disk.Put(SessionWorld::kOwnSettings, before);
        world.prompts.messages.clear();
        EXPECT_EQ(FavoriteKeys().AddFavorite("ColorBack", "Back"), takesAnother);
        EXPECT_EQ(file() == before, !takesAnother);
        EXPECT_EQ(world.prompts.messages,
                  takesAnother ? std::vector<std::string>()
                               : std::vector{"!" + Place().Text(text::kFavoritesTooLong)});
    }
}

TEST_F(FavoritesBookTest, TheOrganizerWorksOnACopyUntilItIsApplied) {
    StartWithKeys("ColorBack=1\r\n",
                  "[FavoritesList]\r\nA=First\r\nB=Second\r\nC=Third\r\n[Other]\r\nx=1\r\n");
    const auto names = [](const std::vector<Favorite>& favorites) {
        std::string all;
        for (const Favorite& favorite : favorites) {
            all += favorite.name + " ";
        }
        return all;
    };
    FavoriteKeys().SetOrganizerOpen(true);
    FavoritesOrganizer& organizer = FavoriteKeys().Organizer();
    EXPECT_FALSE(organizer.MoveUp());
    EXPECT_FALSE(organizer.IsChanged());
    organizer.MoveDown();
    EXPECT_TRUE(organizer.IsChanged());
    organizer.AddSeparator();
    organizer.AddSeparator();
    EXPECT_EQ(names(organizer.Rows()), "B Sp_2 Sp_1 A C ");
    EXPECT_FALSE(organizer.Rename(1, "x"));
    EXPECT_TRUE(organizer.Rename(3, "\xD0\x96"));
    EXPECT_FALSE(organizer.Rename(3, ""));
    organizer.Select(4);
    EXPECT_FALSE(organizer.MoveDown());
    EXPECT_TRUE(organizer.Delete());
    EXPECT_EQ(organizer.Selected(), 3U);
    EXPECT_EQ(world.OwnSetting("FavoritesList", "C"), "Third");

    ASSERT_TRUE(FavoriteKeys().ApplyOrganizer());
    EXPECT_FALSE(organizer.IsChanged());
    EXPECT_EQ(names(FavoriteKeys().Items()), "B Sp_2 Sp_1 A ");
    EXPECT_EQ(world.OwnSetting("FavoritesList", "C"), "(none)");
    EXPECT_EQ(world.OwnSetting("FavoritesList", "A"), "\xD0\x96");
    EXPECT_EQ(world.OwnSetting("Other", "x"), "1");

    // One that the file cannot hold takes none of the others with it.
    const std::string before = world.disk.BytesOf(SessionWorld::kOwnSettings);
    EXPECT_TRUE(organizer.Rename(0, "two\nlines"));
    EXPECT_FALSE(FavoriteKeys().ApplyOrganizer());
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kOwnSettings), before);
    EXPECT_TRUE(organizer.Rename(0, "Second"));
    ASSERT_TRUE(FavoriteKeys().AddFavorite("N", "New"));
    const std::string path = SessionWorld::kOwnSettings;
    Favorites elsewhere(world.files, path);
    elsewhere.Add("M", "Of another window");
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(FavoriteKeys().ApplyOrganizer());
        EXPECT_EQ(names(organizer.Rows()), "B Sp_2 Sp_1 A N M ");
    }
    while (!organizer.Rows().empty()) {
        ASSERT_TRUE(organizer.Delete());
    }
    EXPECT_TRUE(organizer.IsChanged());
    EXPECT_EQ(organizer.Selected(), std::nullopt);
    ASSERT_TRUE(FavoriteKeys().ApplyOrganizer());
    EXPECT_THAT(FavoriteKeys().Items(), IsEmpty());

    FavoriteKeys().SetOrganizerOpen(true);
    elsewhere.Add("A", "Again");
    ASSERT_TRUE(FavoriteKeys().ApplyOrganizer());
    EXPECT_EQ(names(FavoriteKeys().Items()), "A ");
}

TEST_F(FavoritesBookTest, TwoWindowsKeepEachOthersLists) {
    StartWithKeys("A=0\r\n");
    EditorSession second(world.Services());
    second.LoadSettings();
    ASSERT_TRUE(second.Activate(""));
    ASSERT_TRUE(second.FavoriteKeys().AddFavorite("A", "added there"));
    ASSERT_TRUE(FavoriteKeys().AddFavorite("B", "added here"));
    EXPECT_EQ(world.OwnSetting("FavoritesList", "A"), "added there");
    EXPECT_EQ(world.OwnSetting("FavoritesList", "B"), "added here");

    for (const char* const name : {"C:\\a.ini", "C:\\b.ini"}) {
        world.disk.Put(name, kEnd);
    }
    second.OpenSettingsFile("C:\\a.ini", true);
    Session().OpenSettingsFile("C:\\b.ini", true);
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "RecentFiles1"), "C:\\b.ini");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "RecentFiles2"), "C:\\a.ini");
    second.Place().OwnSettings().Values().splitPosition = 1234;
    second.Place().OwnSettings().SaveSettings();
    Place().OwnSettings().SaveSettings();
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "SplitPosition"), "1234");
}

}  // namespace
}  // namespace tamarind
