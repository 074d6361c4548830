#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/program/StringTable.h"
#include "tests/model/fakes/SessionWorld.h"

namespace tamarind {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class FindingTest : public testing::Test, private KeyListListener {
protected:
    SessionWorld world;
    std::vector<std::pair<std::size_t, std::size_t>> hits;
    EditorSession& Session() { return *world.session; }

    void Start(const std::string& keys, const std::string& ownSettings = "") {
        world.PutUsualFiles("[Configuration]\r\nColorBack=7\r\n");
        if (!ownSettings.empty()) {
            world.disk.Put(SessionWorld::kOwnSettings, ownSettings);
        }
        world.disk.Put(SessionWorld::kWincmdData,
                       "\xEF\xBB\xBF[Cat]\r\nCategoryTargetSection=Configuration\r\n" + keys);
        world.disk.Wait(10);
        ASSERT_TRUE(world.Start());
        Session().Selection().KeyWatchers().Add(*this);
    }
    std::string CurrentName() {
        return std::string(
            Session().Selection().Store().KeyName(*Session().Selection().CurrentKey()));
    }

private:
    void OnWentToKey(const std::optional<DescriptionPart>& part) override {
        if (part) {
            hits.emplace_back(part->start, part->length);
        }
    }
};

TEST_F(FindingTest, StepsThroughTheHitsAndSaysWhenThereAreNoMore) {
    Start(
        "ColorBack=1///Show hidden@files\r\n"
        "Other=2///Show (hidden) \xC3\x9C"
        "BER files\r\n"
        "Blank=3\r\n"
        "InactiveColor=4///The last, hidden\r\n");
    const struct {
        const char* text;
        bool inNames;
        bool wholeWord;
        std::vector<KeyNumber> keys;
        std::pair<std::size_t, std::size_t> firstHit;  // in the description
    } cases[] = {
        {"cOLOR", true, false, {1, 4}, {}},
        {"color", true, true, {}, {}},
        {"hidden", false, false, {1, 2, 4}, {5, 6}},
        {"HIDDEN", false, true, {1, 4}, {5, 6}},
        {"files", false, true, {1, 2}, {13, 5}},  // behind the line break, which is two long
        {"hidden  files", false, false, {1}, {5, 13}},
        {"\u00FCber", false, true, {2}, {14, 4}},
        {"not available", false, false, {3}, {12, 13}},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.text);
        Session().Selection().Search().SetSearchesNames(testCase.inNames);
        Session().Selection().Search().SetMatchesWholeWord(testCase.wholeWord);
        Session().Selection().SetSearchText(testCase.text);
        hits.clear();
        // Twice: the end of a search starts it again.
        for (int round = 0; round < 2; ++round) {
            world.prompts.messages.clear();
            for (const KeyNumber key : testCase.keys) {
                EXPECT_THAT(world.prompts.messages, IsEmpty());
                Session().Selection().FindNextString();
                EXPECT_EQ(Session().Selection().CurrentKey(), key);
            }
            // A hit in the last key is the end as well.
            if (testCase.keys.empty() || testCase.keys.back() != 4) {
                Session().Selection().FindNextString();
            }
            EXPECT_THAT(world.prompts.messages,
                        ElementsAre(std::string("iCannot find \"") + testCase.text + "\""));
        }
        if (!testCase.inNames) {
            EXPECT_EQ(hits.front(), testCase.firstHit);
        }
    }
    // A setting that stays as it is does not start the search again.
    Session().Selection().SetSearchText("color");
    for (const auto& [wholeWord, key] : {std::pair(true, 0U), {false, 1U}, {false, 4U}}) {
        Session().Selection().Search().SetSearchesNames(true);
        Session().Selection().Search().SetMatchesWholeWord(wholeWord);
        Session().Selection().FindNextString();
        EXPECT_TRUE(key == 0 || Session().Selection().CurrentKey() == key) << key;
    }
    Session().Selection().SetSearchText("");
    Session().Selection().FindNextString();
    EXPECT_EQ(world.prompts.beeps, 1);
}

// The pass over the file's bytes against a look at each key, for data files of every kind.
TEST_F(FindingTest, TheFastSearchFindsWhatThePlainOneFinds) {
    const std::string files[] = {
        "[A]\nCategoryTargetSection=T\nColor=1///a color\n;Color=no key\nK=2///Kelvin\n[B]\n"
        "CategoryTargetSection=T\nLast=color///x\n",
        "[A]\nCategoryTargetSection=T\nB=1///color\n[B]\nCategoryTargetSection=T\nC=1///b\n[A]\n"
        "CategoryTargetSection=T\nD=3///color\n",
        "[A]\nCategoryTargetSection=T\nB=1///color\nb=2///k\nC=\"q///color\"\n",
        "[A]\nCategoryTargetSection=T\nB=1///k\nC=1///color\nD=1///b\xF6r",
    };
    for (const std::string& bytes : files) {
        KeyStore store;
        const auto document = std::make_shared<const IniDocument>(IniDocument::Parse(bytes, 1252));
        ASSERT_TRUE(LoadDataFile(
            document, "none", [] {}, store));
        store.SetDescription(2, "my own Color");
        for (const char* const text :
             {"color", "c", "o", "r", "k", "x", "no", "1", "/", "\u00F6"}) {
            for (const bool inNames : {true, false}) {
                KeySearch search;
                search.SetText(text);
                search.SetSearchesNames(inNames);
                std::vector<KeyNumber> found;
                while (const auto hit = search.FindNext(store)) {
                    found.push_back(hit->key);
                    if (hit->key == store.Size()) {
                        break;
                    }
                }
                std::vector<KeyNumber> expected;
                for (KeyNumber key = 1; key <= store.Size(); ++key) {
                    std::string where(inNames ? store.KeyName(key) : store.Record(key).description);
                    std::transform(where.begin(), where.end(), where.begin(), ::tolower);
                    if (where.find(text) != std::string::npos) {
                        expected.push_back(key);
                    }
                }
                EXPECT_EQ(found, expected) << text << inNames << bytes;
            }
        }
    }
}

TEST_F(FindingTest, FavoritesAreReadAddedAndShown) {
    Start("ColorBack=1\r\nShowHiddenSystem=0\r\n",
          "[FavoritesList]\r\nColor=Prefix\r\nSp_1=-\r\nGone=\r\n"
          "ShowHiddenSystem=\xC3\x9C\r\nshowhiddensystem=again\r\n");
    const auto& items = Session().FavoriteKeys().Items();
    ASSERT_EQ(items.size(), 5U);
    EXPECT_TRUE(
        Session().Selection().NamesInList().HasNameFrom(items[0].name));  // begins a row's text
    EXPECT_FALSE(Session().Selection().NamesInList().HasNameFrom(items[2].name));
    EXPECT_EQ(items[4].caption, items[3].caption);  // of a repeated name the first line counts

    Session().Selection().ShowKeyDetails(1);
    EXPECT_EQ(Session().FavoriteKeys().BeginAddFavorite(), std::nullopt);
    EXPECT_EQ(world.prompts.messages.back(), "XThere is already a favorite with that key.");
    Session().Selection().ShowKeyDetails(0);
    ASSERT_EQ(Session().FavoriteKeys().BeginAddFavorite(), "ColorBack");
    Session().FavoriteKeys().SetOrganizerOpen(true);
    ASSERT_TRUE(Session().FavoriteKeys().AddFavorite("ColorBack", "Background"));
    EXPECT_EQ(world.OwnSetting("FavoritesList", "ColorBack"), "Background");
    EXPECT_EQ(Session().FavoriteKeys().Organizer().Rows().size(), 6U);

    Session().Selection().SetKeyFilter(KeyFilter::ShowActive);
    EXPECT_TRUE(Session().FavoriteKeys().FavoriteDefinition("SHOWHIDDENSYSTEM"));
    EXPECT_EQ(CurrentName(), "ShowHiddenSystem");
    EXPECT_EQ(Session().Selection().Filter(), KeyFilter::ShowAll);
    EXPECT_FALSE(Session().FavoriteKeys().FavoriteDefinition("Gone"));
    EXPECT_EQ(world.prompts.messages.back(), "XCannot find this favorite key!");

    // Nothing is said to be kept that is not.
    world.disk.FailReplaces(SessionWorld::kOwnSettings, FileError::ReadOnly);
    EXPECT_FALSE(Session().FavoriteKeys().AddFavorite("New", "x"));
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr("read-only"));
    EXPECT_EQ(items.size(), 6U);
}

TEST_F(FindingTest, TheMenuIsFullAtNinetySevenFavorites) {
    for (const int count : {96, 97}) {
        std::string own = "[FavoritesList]\r\n";
        for (int number = 0; number < count; ++number) {
            own += "Key" + std::to_string(number) + "=Caption\r\n";
        }
        Start("ColorBack=1\r\n", own);
        EXPECT_EQ(Session().FavoriteKeys().BeginAddFavorite().has_value(), count == 96) << count;
    }
    EXPECT_EQ(world.prompts.messages.back(), "iFavorites list cannot contain more than 99 items.");
}

// What is read again is cut behind 4,094 characters.
TEST_F(FindingTest, FavoritesThatWouldBeCutAreRefused) {
    const auto file = [&] { return world.disk.BytesOf(SessionWorld::kOwnSettings); };
    const struct {
        std::string names;
        bool takesAnother;    // "ColorBack"
        bool takesSeparator;  // "Sp_1"
    } cases[] = {
        {std::string(4084, 'x'), true, true},
        {std::string(4085, 'x'), false, true},
        {std::string(4089, 'x'), false, true},
        {std::string(4090, 'x'), false, false},
        {"A=\r\n" + std::string(4093, 'x'), false, false},  // cut as it stands
        {std::string(4093, 'x') + "=\r\nLost", false, false},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.names.size());
        Start("ColorBack=1\r\n", "[FavoritesList]\r\n" + testCase.names + "=x\r\n");
        const std::string before = file();
        Session().FavoriteKeys().SetOrganizerOpen(true);
        FavoritesOrganizer& organizer = Session().FavoriteKeys().Organizer();
        ASSERT_TRUE(organizer.AddSeparator());
        const std::size_t count = organizer.Rows().size();
        EXPECT_EQ(Session().FavoriteKeys().ApplyOrganizer(), testCase.takesSeparator);
        EXPECT_EQ(organizer.IsChanged(), !testCase.takesSeparator);
        EXPECT_EQ(organizer.Rows().size(), count);
        EXPECT_EQ(file() == before, !testCase.takesSeparator);

        world.disk.Put(SessionWorld::kOwnSettings, before);
        world.prompts.messages.clear();
        EXPECT_EQ(Session().FavoriteKeys().AddFavorite("ColorBack", "Back"), testCase.takesAnother);
        EXPECT_EQ(file() == before, !testCase.takesAnother);
        EXPECT_EQ(world.prompts.messages,
                  testCase.takesAnother
                      ? std::vector<std::string>()
                      : std::vector{"!" + Session().Place().Text(text::kFavoritesTooLong)});
    }
}

TEST_F(FindingTest, TheOrganizerWorksOnACopyUntilItIsApplied) {
    Start("ColorBack=1\r\n",
          "[FavoritesList]\r\nA=First\r\nB=Second\r\nC=Third\r\n[Other]\r\nx=1\r\n");
    const auto names = [](const std::vector<Favorite>& favorites) {
        std::string all;
        for (const Favorite& favorite : favorites) {
            all += favorite.name + " ";
        }
        return all;
    };
    Session().FavoriteKeys().SetOrganizerOpen(true);
    FavoritesOrganizer& organizer = Session().FavoriteKeys().Organizer();
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

    ASSERT_TRUE(Session().FavoriteKeys().ApplyOrganizer());
    EXPECT_FALSE(organizer.IsChanged());
    EXPECT_EQ(names(Session().FavoriteKeys().Items()), "B Sp_2 Sp_1 A ");
    EXPECT_EQ(world.OwnSetting("FavoritesList", "C"), "(none)");
    EXPECT_EQ(world.OwnSetting("FavoritesList", "A"), "\xD0\x96");
    EXPECT_EQ(world.OwnSetting("Other", "x"), "1");

    // One that the file cannot hold takes none of the others with it.
    const std::string before = world.disk.BytesOf(SessionWorld::kOwnSettings);
    EXPECT_TRUE(organizer.Rename(0, "two\nlines"));
    EXPECT_TRUE(organizer.IsChanged());
    EXPECT_FALSE(Session().FavoriteKeys().ApplyOrganizer());
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kOwnSettings), before);
    EXPECT_TRUE(organizer.Rename(0, "Second"));
    ASSERT_TRUE(Session().FavoriteKeys().AddFavorite("N", "New"));
    const std::string path = SessionWorld::kOwnSettings;
    Favorites(world.files, path).Add("M", "Of another window");
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(Session().FavoriteKeys().ApplyOrganizer());
        EXPECT_EQ(names(organizer.Rows()), "B Sp_2 Sp_1 A N M ");
    }

    while (!organizer.Rows().empty()) {
        ASSERT_TRUE(organizer.Delete());
        EXPECT_TRUE(organizer.IsChanged());
    }
    EXPECT_EQ(organizer.Selected(), std::nullopt);
    ASSERT_TRUE(Session().FavoriteKeys().ApplyOrganizer());
    EXPECT_THAT(Session().FavoriteKeys().Items(), IsEmpty());

    // What was deleted once can come again.
    Session().FavoriteKeys().SetOrganizerOpen(true);
    Favorites(world.files, path).Add("A", "Again");
    ASSERT_TRUE(Session().FavoriteKeys().ApplyOrganizer());
    EXPECT_EQ(names(Session().FavoriteKeys().Items()), "A ");
}

TEST_F(FindingTest, LongPathsAreShortenedByTheirParts) {
    const std::string part16 = "0123456789ABCDEF";
    const std::string part40 = part16 + part16 + "01234567";
    const std::pair<std::string, std::string> cases[] = {
        {"C:\\" + part40 + "12345", "C:\\" + part40 + "12345"},  // 48 characters
        {"C:\\" + part40 + "123456", "C:\\" + part16 + "......EF01234567123456"},
        {"C:\\Program Files Common Tools\\Wincmd settings of the office.ini",
         "C:\\Program Files Co\\...\\f the office.ini"},
        {"C:\\aa\\bb\\" + part40 + "\\cc\\wincmd.ini", "C:\\aa\\...\\cc\\wincmd.ini"},
    };
    for (const auto& [path, shown] : cases) {
        EXPECT_EQ(ShortenedPath(path), shown) << path;
    }
    // No half of a surrogate pair is left over, at either cut.
    const std::string middle(48, 'x');
    EXPECT_EQ(ShortenedPath("C:\\012345678901234\U0001F600" + middle + "\U0001F600012345678901234"),
              "C:\\012345678901234......012345678901234");
}

TEST_F(FindingTest, RecentFilesMoveToTheTopAndLeaveWhenTheyAreGone) {
    Start("ColorBack=1\r\n",
          "[Common]\r\nNumberOfRecentFiles=3\r\n[ConfigurationEditor]\r\n"
          "RecentFiles1=C:\\gone.ini\r\nRecentFiles3=%Commander_Path%\\Wincmd.ini\r\n"
          "RecentFiles4=C:\\beyond.ini\r\n");
    const auto captions = [&] {
        std::vector<std::string> all;
        for (const auto& entry : Session().Recent().Files().Entries()) {
            all.push_back(entry.caption);
        }
        return all;
    };
    EXPECT_THAT(captions(), ElementsAre("&1 C:\\gone.ini", "&3 %Commander_Path%\\Wincmd.ini"));
    Session().OpenRecentFile(1);
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr("Cannot find this file C:\\gone.ini\n\n"));
    EXPECT_THAT(captions(), ElementsAre("&2 %Commander_Path%\\Wincmd.ini"));
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "RecentFiles3"), "(none)");
    Session().OpenRecentFile(2);
    EXPECT_EQ(Session().TargetFile().Path(), SessionWorld::kWincmd);
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "RecentFiles1"), SessionWorld::kWincmd);

    for (const char* const name : {"C:\\a.ini", "C:\\R&D\\b.ini", "c:\\A.INI"}) {
        world.disk.Put(name, "[Configuration]\r\n");
        world.disk.FailReplaces(name, FileError::ReadOnly);
        world.prompts.filesToChoose = {name};
        Session().AskOpenSettingsFile();
        EXPECT_THAT(world.prompts.messages.back(), HasSubstr(name));  // can not be saved
    }
    EXPECT_THAT(captions(),
                ElementsAre("&1 c:\\A.INI", "&2 C:\\R&&D\\b.ini", "&3 C:\\TC\\Wincmd.ini"));
    EXPECT_EQ(Session().Recent().Files().ListItems(0), MissingValueMarker);
    EXPECT_EQ(Session().Recent().Files().ListItems(4), MissingValueMarker);

    // Pending changes are asked about; a file that is not opened is not the latest.
    Session().Commands().SetValue("5");
    world.prompts.answers = {Answer::Cancel};
    Session().OpenRecentFile(2);
    EXPECT_EQ(Session().TargetFile().Path(), "c:\\A.INI");

    world.prompts.answers = {Answer::No, Answer::Yes};
    Session().Recent().Clear();
    EXPECT_EQ(captions().size(), 3U);
    Session().Recent().Clear();
    EXPECT_THAT(captions(), IsEmpty());
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "RecentFiles1"), "(none)");
}

TEST_F(FindingTest, DescriptionsAreWrittenIntoTheirEntriesOnly) {
    Start("ColorBack = 1///old ; text  \r\nB=\"q\"\r\nC\r\nD=\" x ///d\"\r\n;end\r\n");
    const auto data = [&] { return world.disk.BytesOf(SessionWorld::kWincmdData); };
    const std::string before = data();
    Session().DataFile().ChangeDescription("one\r\ntwo\rthree\nfour");
    EXPECT_EQ(Session().Selection().Description(), "one\r\ntwo\r\nthreefour");
    Session().DataFile().ChangeDescription("one\r\ntwo \"x\"");
    Session().Selection().ShowKeyDetails(1);
    EXPECT_FALSE(Session().Selection().Store().IsDescriptionPending(2));
    Session().DataFile().ChangeDescription("say \"hi\"");  // quotes around the entry would be lost
    Session().Selection().ShowKeyDetails(2);
    Session().DataFile().ChangeDescription("d2");  // with blanks around its default
    EXPECT_TRUE(Session().States().IsEnabled(Command::FileSaveDataFile));
    ASSERT_TRUE(Session().DataFile().SaveDataFile());
    std::string expected = before;
    expected.replace(expected.find("1///old ; text"), 14, "1///one@two \"x\"");
    expected.replace(expected.find("\"q\""), 3, "q///say \"hi\"");
    expected.replace(expected.find("///d\""), 5, "///d2\"");
    EXPECT_EQ(data(), expected);
    EXPECT_FALSE(Session().States().IsEnabled(Command::FileSaveDataFile));

    // Files that can not be written, or are another's by now: a message, and the text still waits.
    Session().Selection().ShowKeyDetails(1);
    Session().DataFile().ChangeDescription("again");
    world.disk.FailReplaces(SessionWorld::kWincmdData, FileError::ReadOnly);
    EXPECT_FALSE(Session().DataFile().SaveDataFile());
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr("read-only"));
    world.disk.FailReplaces(SessionWorld::kWincmdData, FileError::None);
    world.disk.Put(SessionWorld::kWincmdData, data() + "[New]\r\n");
    const std::string changed = data();
    world.prompts.answers = {Answer::No, Answer::Yes, Answer::Yes};
    EXPECT_FALSE(Session().DataFile().SaveDataFile());
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr("Another program has changed"));
    EXPECT_EQ(data(), changed);
    EXPECT_TRUE(Session().DataFile().IsModified());
    EXPECT_EQ(Session().Selection().Description(), "again");
    ASSERT_TRUE(Session()
                    .DataFile()
                    .AskSaveDataFile());  // asks whether to save, then whether over the change
    EXPECT_THAT(data(), HasSubstr("q///again\r\n"));
    EXPECT_THAT(data(), HasSubstr("[New]\r\n"));
}

TEST_F(FindingTest, OnlyDescriptionsThatCanBeReadAgainAreTaken) {
    Start("ColorBack=1///" + std::string(5000, 'x') + "\r\nB=22\r\n");
    EXPECT_EQ(Session().DataFile().MaxDescriptionUnits(),
              0U);  // its end was never read and would be lost
    Session().DataFile().ChangeDescription("short");
    EXPECT_FALSE(Session().DataFile().IsModified());
    Session().Selection().ShowKeyDetails(1);
    EXPECT_EQ(Session().DataFile().MaxDescriptionUnits(), 4095U - 2 - 3);
}

TEST_F(FindingTest, KeysTravelInAnExportFile) {
    Start("A=0\r\nB=0\r\nC=0\r\nD=0\r\nE=0\r\n");
    world.disk.Put(SessionWorld::kWincmd,
                   "[Configuration]\r\nA=1\r\n;B=\"\"q\"\"\r\nC=\"\"x\" \"%1\"\"\r\n");
    world.disk.Put("C:\\TC\\out.ini",
                   "; mine\r\n[Configuration]\r\n;A=9\r\nB=9\r\nD=9\r\n;D=9\r\nOther=1\r\n");
    world.disk.Wait(10);
    ASSERT_TRUE(world.Start());
    Session().Selection().ShowKeyDetails(4);
    Session().Commands().SetValue("pending");
    world.prompts.filesToChoose = {"C:\\TC\\out.ini", "C:\\TC\\out.ini", "C:\\TC\\out.ini"};
    Session().Commands().ExportKeys();
    EXPECT_EQ(world.disk.BytesOf("C:\\TC\\out.ini"),
              "; mine\r\n[Configuration]\r\nA=1\r\n;B=\"\"q\"\"\r\nOther=1\r\n"
              "C=\"\"x\" \"%1\"\"\r\nE=pending\r\n");

    // Back again into a file without them: what is exported comes to the same lines.
    world.disk.Put(SessionWorld::kWincmd, "[Configuration]\r\nD=5\r\n");
    world.disk.Wait(10);
    ASSERT_TRUE(world.Start());
    Session().Commands().ImportKeys();
    EXPECT_THAT(world.Rows(), ElementsAre("A=1", "B=\"q\"", "C=\"x\" \"%1\"", "D", "E=pending"));
    EXPECT_FALSE(Session().States().IsEnabled(Command::EditUndo));
    ASSERT_TRUE(Session().TargetFile().SaveToSettingsFile());
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kWincmd),
              "[Configuration]\r\nA=1\r\n;B=\"\"q\"\"\r\nC=\"\"x\" \"%1\"\"\r\nE=pending\r\n");

    // A file that can not be read says nothing of any key.
    world.disk.Put("C:\\TC\\out.ini", "changed");
    world.disk.FailReads("C:\\TC\\out.ini", FileError::InUse);
    Session().Commands().ImportKeys();
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr("Another program is using it."));
    EXPECT_FALSE(Session().TargetFile().IsModified());

    // Without set keys there is no file, which is said.
    Session().Selection().SetKeyFilter(KeyFilter::ShowInactive);
    EXPECT_THAT(world.Rows(), ElementsAre("B=\"q\"", "D"));
    Session().Commands().DeleteKey();
    world.prompts.filesToChoose = {"C:\\TC\\none.ini"};
    Session().Commands().ExportKeys();
    EXPECT_FALSE(world.disk.Has("C:\\TC\\none.ini"));
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr("No key was exported"));
}

}  // namespace
}  // namespace tamarind
