#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/text/MissingValueMarker.h"
#include "model/program/FileAssociation.h"
#include "model/program/StringTable.h"
#include "tests/model/fakes/SessionWorld.h"

namespace tamarind {
namespace {

using testing::ElementsAre;

constexpr std::uint32_t kClassesRoot = 0x80000000U;

// Copies of the program register themselves in turn.
TEST(FileAssociationTest, TheNewestCopyKeepsTheFileTypeAndFollowsItsFolder) {
    const struct {
        const char* path;
        const char* version;
        bool isWritten;
        const char* command;  // afterwards
    } cases[] = {
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
        for (const auto& testCase : cases) {
            SCOPED_TRACE(testCase.path);
            EXPECT_EQ(RegisterDataFileType(registry, testCase.path, testCase.version),
                      testCase.isWritten);
            EXPECT_EQ(values.ReadValue(root + "Fernedit\\Shell\\Open\\Command", ""),
                      testCase.command);
        }
        EXPECT_EQ(values.ReadValue(root + "Fernedit\\DefaultIcon", ""), "C:\\B\\Tamarind.exe, 1");
        EXPECT_EQ(values.ReadValue(root + ".tmdf", ""), "Fernedit");
    }
}

class ShellTest : public testing::Test {
protected:
    SessionWorld world;
    EditorSession& Session() { return *world.session; }

    void Start(const std::string& ownSettings) {
        world.PutUsualFiles("[Configuration]\r\n");
        world.disk.Put(SessionWorld::kOwnSettings, ownSettings);
        world.disk.Wait(10);
        ASSERT_TRUE(world.Start());
    }
};

TEST_F(ShellTest, TextsComeFromTheLanguageFileInItsEncoding) {
    const struct {
        const char* file;
        const char* fontScript;
        const char* ok;  // text 1008
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
        EXPECT_EQ(Session().Place().Text(1008), testCase.ok);
        EXPECT_EQ(Session().Place().Texts().IsRightToLeft(), testCase.isRightToLeft);
    }
    Start("[Common]\nLanguageFile=C:\\gone.lng\n[ConfigurationEditor]\nUseDefaultLanguage=0\n");
    EXPECT_THAT(world.prompts.messages, ElementsAre("XCannot find language file!"));
    EXPECT_EQ(Session().Place().Text(1008), "OK");
}

TEST_F(ShellTest, OneLanguageHoldsUntilAWindowOrTheOptionsTakeAnother) {
    world.disk.Put("C:\\a.lng", "[UserLanguage]\n1008=a\n");
    world.disk.Put("C:\\b.lng", "[UserLanguage]\n1008=b\n");
    Start("[Common]\nLanguageFile=C:\\a.lng\n[ConfigurationEditor]\nUseDefaultLanguage=0\n");
    world.disk.Put("C:\\a.lng", "[UserLanguage]\n1008=new\n");
    world.disk.stamps = world.disk.reads = 0;
    for (std::uint16_t number = 1000; number < 1100; ++number) {
        EXPECT_NE(Session().Place().Text(number), "new");
    }
    EXPECT_EQ(world.disk.stamps + world.disk.reads, 0);
    Session().Place().RefreshLanguage();
    EXPECT_EQ(Session().Place().Text(1008), "new");

    // Another copy of the program chooses another one: this one follows when the dialog is gone.
    world.disk.Put(SessionWorld::kOwnSettings,
                   "[Common]\nLanguageFile=C:\\b.lng\n[ConfigurationEditor]\n"
                   "UseDefaultLanguage=0\n");
    Session().Place().Options().Begin();
    Session().Place().RefreshLanguage();
    EXPECT_EQ(Session().Place().Text(1008), "new");
    Session().Place().Options().End();
    EXPECT_EQ(Session().Place().Text(1008), "b");

    // A file that vanishes is said once, also by options that name it still.
    world.disk.Remove("C:\\b.lng");
    for (int time = 0; time < 2; ++time) {
        Session().Place().RefreshLanguage();
        Session().Place().Options().Begin();
        Session().Place().Options().End();
        EXPECT_EQ(Session().Place().Text(1008), "OK");
    }
    EXPECT_THAT(world.prompts.messages, ElementsAre("XCannot find language file!"));
    Session().Place().Options().Begin();
    Session().Place().Options().Apply();
    Session().Place().Options().End();
    EXPECT_EQ(world.prompts.messages.size(), 2U) << "who insists on it hears it again";
}

// What each way to leave the options window makes of its choices, in memory and in the file.
TEST_F(ShellTest, OptionsAreStoredWhenTheyAreApplied) {
    world.disk.Put("C:\\my.lng", "[UserLanguage]\n3080=nichts\n3077=Stueck\n");
    Start("[ConfigurationEditor]\nForegroundColor=1\nAutoSelectNextKey=0\nFontName=Old\n");
    OptionsEditor& options = Session().Place().Options();
    const std::string before = world.disk.BytesOf(SessionWorld::kOwnSettings);
    Session().Place().Options().Begin();
    EXPECT_EQ(options.Values().languageFile, "");
    Session().Place().Options().Apply();
    Session().Place().Options().End();
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kOwnSettings), before);

    // Colours and the font count at once, and only until the window opens again.
    const FontChoice font = {"New", 12, 1, 204};
    world.prompts.colorsToChoose = {"255", "16711935"};
    world.prompts.fontsToChoose = {font, font};
    Session().Place().Options().Begin();
    options.SetFlag(&OptionsEditor::Choices::selectsNextKey, true);
    EXPECT_TRUE(options.SelectColor(OptionsEditor::Color::Text));
    EXPECT_EQ(world.prompts.startColors, std::vector<std::int32_t>{1});
    EXPECT_TRUE(options.SelectFont());
    Session().Place().Options().End();
    EXPECT_EQ(Session().Place().OwnSettings().Values().foregroundColor, 255);
    EXPECT_FALSE(Session().Commands().SelectsNextKey());
    Session().Place().OwnSettings().SaveSettings();  // as the program's end does it
    EXPECT_EQ(world.disk.BytesOf(SessionWorld::kOwnSettings), before);
    Session().Place().Options().Begin();
    EXPECT_FALSE(options.IsChanged());
    EXPECT_EQ(options.ColorSetting(OptionsEditor::Color::Text), 1);
    EXPECT_EQ(Session().Place().OwnSettings().Values().fontName, "Old");

    EXPECT_TRUE(options.SelectFont());
    EXPECT_TRUE(options.IsChanged());
    options.SetLanguageFile("C:\\my.lng");
    options.SetFlag(&OptionsEditor::Choices::usesDefaultLanguage, false);
    options.SetFlag(&OptionsEditor::Choices::selectsNextKey, true);
    EXPECT_TRUE(options.SelectColor(OptionsEditor::Color::Text));
    EXPECT_TRUE(Session().Place().Options().Apply());
    EXPECT_FALSE(options.IsChanged());
    Session().Place().Options().End();
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "ForegroundColor"), "16711935");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "FontName"), "New");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "FontSize"), "12");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "FontStyle"), "1");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "FontScript"), "204");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "AutoSelectNextKey"), "1");
    EXPECT_EQ(world.OwnSetting("Common", "LanguageFile"), "C:\\my.lng");
    EXPECT_EQ(Session().Selection().CounterPanel(), "3  Stueck");
    Session().Selection().ShowKeyDetails(1);
    EXPECT_EQ(Session().Selection().Description(), "nichts");

    // A language that is gone by then is named once; a settings file that can not be written, too.
    // One that can not be read changes nothing.
    world.disk.FailReads(SessionWorld::kOwnSettings, FileError::InUse);
    Session().Place().Options().Begin();
    EXPECT_EQ(options.ColorSetting(OptionsEditor::Color::Text), 16711935);
    EXPECT_EQ(options.Values().languageFile, "C:\\my.lng");
    world.disk.FailReads(SessionWorld::kOwnSettings, FileError::None);
    options.SetLanguageFile("C:\\gone.lng");
    world.disk.FailReplaces(SessionWorld::kOwnSettings, FileError::ReadOnly);
    EXPECT_FALSE(Session().Place().Options().Apply());
    EXPECT_TRUE(options.IsChanged());
    Session().Place().Options().End();
    EXPECT_EQ(world.prompts.messages.back(), "XCannot find language file!");
    EXPECT_EQ(world.prompts.messages.size(), 2U);
    EXPECT_EQ(Session().Selection().CounterPanel(), "3  Key(s)");
}

TEST_F(ShellTest, HelpIsOpenedInTheFormThatIsThere) {
    Start("");
    Session().Place().ShowHelpTopics();
    EXPECT_EQ(world.prompts.messages.back(), "XFile not found.");
    world.disk.Put("C:\\Tamarind\\help\\index.html", "");
    Session().Place().ShowHelpTopics();
    world.disk.Put("C:\\Tamarind\\Readme.chm", "");
    Session().Place().ShowHelpTopics();
    EXPECT_THAT(world.programs.calls, ElementsAre("open C:\\Tamarind\\help\\index.html",
                                                  "open C:\\Tamarind\\Readme.chm"));
}

TEST_F(ShellTest, ClosingTellsWhatIsToBeStartedAgain) {
    Start("");
    TotalCommander totalCommander(world.programs, world.files, world.environment);
    for (const auto& [isRunning, refuses] :
         {std::pair(false, false), {true, false}, {true, true}}) {
        world.programs.isRunning = isRunning;
        world.programs.refusesToClose = refuses;
        const RestartResult result = totalCommander.Close(SessionWorld::kOwnSettings);
        EXPECT_EQ(result.hasClosed, isRunning && !refuses);
        EXPECT_EQ(result.stillRuns, refuses);
    }
    world.programs.calls.clear();
    totalCommander.Start(" /i=", "", SessionWorld::kOwnSettings);
    EXPECT_THAT(world.programs.calls,
                ElementsAre("front", "wait", "start \"C:\\TC\\Totalcmd.exe\""));
}

// What follows the mark would be arguments, or another program.
TEST_F(ShellTest, APathWithAQuotationMarkStartsNothing) {
    const struct {
        const char* folder;
        const char* settings;
        const char* refused;
    } cases[] = {
        {"C:\\TC\" /x=\"", SessionWorld::kWincmd, "C:\\TC\" /x=\"\\Totalcmd.exe"},
        {"C:\\TC", "C:\\a\" /x=\"b.ini", "C:\\a\" /x=\"b.ini"},
    };
    for (const auto& testCase : cases) {
        world.environment.variables["Commander_Path"] = testCase.folder;
        world.disk.Put(testCase.settings, "[Configuration]\r\n");
        Start("");
        Session().OpenSettingsFile(testCase.settings, false);
        Session().Commands().SetValue("5");
        EXPECT_TRUE(Session().TargetFile().SaveAndRestart());
        EXPECT_THAT(world.programs.calls, ElementsAre("wait"));  // for the one that was to close
        EXPECT_EQ(world.prompts.messages.back(),
                  "!" + Session().Place().Text(text::kQuoteInPath) + " " + testCase.refused);
        world.programs.calls.clear();
    }
}

}  // namespace
}  // namespace tamarind
