#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

class WorkplaceTest : public SessionTest {
protected:
    void Start(const std::string& ownSettings) {
        StartWith({"[Configuration]\r\n", "", ownSettings});
    }
};

TEST_F(WorkplaceTest, TextsComeFromTheLanguageFileInItsEncoding) {
    const struct {
        const char *file, *fontScript, *ok;  // text 1008
        bool isRightToLeft = false;
    } cases[] = {
        {"[UserLanguage]\n1009=x\n1008=\n", "1", "OK"},
        {"[UserLanguage]\n1008=\" Okay \"\n", "1", " Okay "},
        {"[UserLanguage]\n1008=\xC4\xE0\n", "204", "\xD0\x94\xD0\xB0"},      // Cyrillic
        {"\xEF\xBB\xBF[UserLanguage]\n1008=\xD0\x94\n", "178", "\xD0\x94"},  // by its mark
        {"[UserLanguage]\nRightToLeftLanguage=1\n1008=\xE4\n", "178", "\xD9\x86", true},  // Arabic
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.file);
        world.disk.Put("C:\\Tamarind\\Languages\\x.lng", testCase.file);
        world.environment.variables["TOOLS"] = "C:\\Tamarind";
        Start(std::string("[Common]\nLanguageFile=%TOOLS%\\Languages\\x.lng\n"
                          "[ConfigurationEditor]\nUseDefaultLanguage=0\nFontScript=") +
              testCase.fontScript);
        EXPECT_EQ(Place().Text(1008), testCase.ok);
        EXPECT_EQ(Place().Texts().IsRightToLeft(), testCase.isRightToLeft);
    }
    world.disk.Put("C:\\x.lng", "[UserLanguage]\n101=a(&F)\n");
    Start("[Common]\nLanguageFile=C:\\x.lng\n[ConfigurationEditor]\nUseDefaultLanguage=0\n");
    EXPECT_EQ(Place().Label(101), "a");
    Start("[Common]\nLanguageFile=C:\\gone.lng\n[ConfigurationEditor]\nUseDefaultLanguage=0\n");
    EXPECT_THAT(world.prompts.messages, ElementsAre("XCannot find language file!"));
    EXPECT_EQ(Place().Text(1008), "OK");
}

TEST_F(WorkplaceTest, OneLanguageHoldsUntilAWindowOrTheOptionsTakeAnother) {
    world.disk.Put("C:\\a.lng", "[UserLanguage]\n1008=a\n");
    world.disk.Put("C:\\b.lng", "[UserLanguage]\n1008=b\n");
    Start("[Common]\nLanguageFile=C:\\a.lng\n[ConfigurationEditor]\nUseDefaultLanguage=0\n");
    world.disk.Put("C:\\a.lng", "[UserLanguage]\n1008=new\n");
    world.disk.stamps = world.disk.reads = 0;
    for (std::uint16_t number = 1000; number < 1100; ++number) {
        EXPECT_NE(Place().Text(number), "new");
    }
    EXPECT_EQ(world.disk.stamps + world.disk.reads, 0);
    Place().RefreshLanguage();
    EXPECT_EQ(Place().Text(1008), "new");

    // Another copy of the program chooses another one: this one follows when the dialog is gone.
    world.disk.Put(SessionWorld::kOwnSettings,
                   "[Common]\nLanguageFile=C:\\b.lng\n[ConfigurationEditor]\n"
                   "UseDefaultLanguage=0\n");
    Place().Options().Begin();
    Place().RefreshLanguage();
    EXPECT_EQ(Place().Text(1008), "new");
    Place().Options().End();
    EXPECT_EQ(Place().Text(1008), "b");

    // A file that vanishes is said once, also by options that name it still.
    world.disk.Remove("C:\\b.lng");
    for (int time = 0; time < 2; ++time) {
        Place().RefreshLanguage();
        Place().Options().Begin();
        Place().Options().End();
        EXPECT_EQ(Place().Text(1008), "OK");
    }
    EXPECT_THAT(world.prompts.messages, ElementsAre("XCannot find language file!"));
}

TEST_F(WorkplaceTest, OptionsCountAtOnceAndAreStoredWhenTheyAreApplied) {
    world.disk.Put("C:\\my.lng", "[UserLanguage]\n3080=nichts\n3077=Stueck\n");
    Start("[ConfigurationEditor]\nForegroundColor=1\nAutoSelectNextKey=0\nFontName=Old\n");
    OptionsEditor& options = Place().Options();
    const std::string before = world.disk.BytesOf(SessionWorld::kOwnSettings);
    world.prompts.colorsToChoose = {"255", "16711935"};
    world.prompts.fontsToChoose = {{"New", 12, 1, 204}};
    // Colors and the font count at once, and only until the window opens again.
    options.Begin();
    EXPECT_TRUE(options.SelectColor(OptionsEditor::Color::Text) && options.SelectFont());
    EXPECT_FALSE(options.BrowseLanguageFile()) << "it was cancelled";
    options.SetFlag(&OptionsEditor::Choices::selectsNextKey, true);
    EXPECT_EQ(world.prompts.startColors, std::vector<std::int32_t>{1});
    options.End();
    EXPECT_EQ(Place().OwnSettings().Values().foregroundColor, 255);
    EXPECT_FALSE(Commands().SelectsNextKey());
    Place().OwnSettings().SaveSettings();  // as the program's end does it
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kOwnSettings), before);
    options.Begin();
    EXPECT_EQ(options.ColorSetting(OptionsEditor::Color::Text), 1);
    EXPECT_EQ(Place().OwnSettings().Values().fontName, "Old");
    options.SetLanguageFile("C:\\my.lng");
    options.SetFlag(&OptionsEditor::Choices::usesDefaultLanguage, false);
    EXPECT_TRUE(options.SelectColor(OptionsEditor::Color::Text) && options.Apply());
    options.End();
    EXPECT_EQ(world.OwnSetting("Common", "LanguageFile"), "C:\\my.lng");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "ForegroundColor"), "16711935");
    EXPECT_EQ(Texts().Counter(), "3  Stueck");
    Selection().Rows().ShowKeyDetails(1);
    EXPECT_EQ(Selection().Rows().Description(), "nichts");

    // A settings file that cannot be read changes nothing; one that cannot be written is named
    // once, as is a language that is gone by then.
    world.disk.FailReads(SessionWorld::kOwnSettings, FileError::InUse);
    options.Begin();
    EXPECT_EQ(options.Values().languageFile, "C:\\my.lng");
    world.disk.FailReads(SessionWorld::kOwnSettings, FileError::None);
    options.SetLanguageFile("C:\\gone.lng");
    world.disk.FailReplaces(SessionWorld::kOwnSettings, FileError::ReadOnly);
    EXPECT_FALSE(options.Apply());
    options.End();
    EXPECT_EQ(world.prompts.messages.size(), 2U);
    EXPECT_EQ(world.prompts.messages.back(), "XCannot find language file!");
    EXPECT_EQ(Texts().Counter(), "3  Key(s)");
}

TEST_F(WorkplaceTest, HelpIsOpenedInTheFormThatIsThere) {
    Start("");
    Place().ShowHelpTopics();
    EXPECT_EQ(world.prompts.messages.back(), "XFile not found.");
    world.disk.Put("C:\\Tamarind\\help\\index.html", "");
    Place().ShowHelpTopics();
    world.disk.Put("C:\\Tamarind\\Readme.chm", "");
    Place().ShowHelpTopics();
    EXPECT_THAT(world.programs.calls, ElementsAre("open C:\\Tamarind\\help\\index.html",
                                                  "open C:\\Tamarind\\Readme.chm"));
}

}  // namespace
}  // namespace tamarind
