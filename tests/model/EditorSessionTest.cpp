#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

using EditorSessionTest = SessionTest;

TEST_F(EditorSessionTest, ASettingsFileOfTheOtherKindBringsItsDataFile) {
    StartWith({kSettingsText, "", ""});
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "StartUpIniFile"), "Wincmd");
    world.prompts.filesToChoose = {SessionWorld::kWcxFtp};
    Session().AskOpenSettingsFile();
    EXPECT_EQ(DataFile().Path(), SessionWorld::kWcxFtpData);
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "StartUpIniFile"), "Wcxftp");
    world.disk.Put("D:\\empty.ini", "");  // nothing to tell by
    EXPECT_TRUE(Session().OpenSettingsFile("D:\\empty.ini", false));
    EXPECT_EQ(DataFile().Path(), SessionWorld::kWcxFtpData);

    ASSERT_TRUE(world.Start()) << "the next start";
    EXPECT_EQ(Settings().Path(), SessionWorld::kWcxFtp);
    world.prompts.filesToChoose = {SessionWorld::kWincmdData};
    Session().AskOpenDataFile();
    EXPECT_EQ(Settings().Path(), SessionWorld::kWincmd);
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "StartUpIniFile"), "Wincmd");
    EXPECT_EQ(world.Rows().size(), 3U);
}

TEST_F(EditorSessionTest, TheCommandLineNamesTheDataFileInQuotes) {
    world.PutUsualFiles(kSettingsText);
    const std::string cyrillic = "D:\\\xD0\x9A\xD0\xBB\xD1\x8E\xD1\x87\xD0\xB8.tmdf";
    // Literally, and from the current folder.
    for (const auto& [path, found] : {std::pair(cyrillic, cyrillic),
                                      {"D:\\%half\\%TOOLS%\\x.tmdf", "D:\\%half\\%TOOLS%\\x.tmdf"},
                                      {"100%\\x.tmdf", "D:\\Here\\100%\\x.tmdf"}}) {
        world.environment.variables["TOOLS"] = "C:\\Tools";
        world.disk.Put(found, "[Own]\r\nCategoryTargetSection=Colors\r\nBackColor=7\r\n");
        ASSERT_TRUE(world.Start("\"" + path + "\""));
        EXPECT_EQ(DataFile().Path(), found);
        EXPECT_THAT(world.Rows(), ElementsAre("BackColor"));
    }

    for (const std::string& wrong : {cyrillic, "\"" + cyrillic + "\" \"C:\\x.tmdf\"",
                                     std::string("\""), std::string("\"C:\\Tamarind\"")}) {
        world.prompts.messages.clear();
        EXPECT_FALSE(world.Start(wrong)) << wrong;
        EXPECT_THAT(world.prompts.messages, ElementsAre("X" + BuiltIn(text::kCannotFindDataFile)));
    }
}

TEST_F(EditorSessionTest, SettingsFilesAreAskedForWhereTheyAre) {
    StartWith({kSettingsText, "", ""});
    for (const auto& [variable, settings, folder] : {std::tuple("E:\\TC", "D:\\w.ini", "E:\\TC\\"),
                                                     {"", "D:\\Conf\\w.ini", "D:\\Conf\\"},
                                                     {"", std::data(MissingValueMarker), ""}}) {
        world.environment.variables["Commander_Path"] = variable;
        Session().OpenSettingsFile(settings, false);
        Session().AskOpenSettingsFile();
        Exchange().Export();
        Exchange().Import();
        EXPECT_EQ(world.prompts.questions.size(), 3U);
        for (const FileQuestion& question : std::exchange(world.prompts.questions, {})) {
            EXPECT_EQ(question.initialFolder, folder);
        }
    }
}

TEST_F(EditorSessionTest, AMissingDataFileIsAskedForAndRemembered) {
    world.PutUsualFiles(kSettingsText);
    world.disk.Remove(SessionWorld::kWincmdData);
    world.disk.Put("D:\\mine.tmdf", "[Own]\r\nCategoryTargetSection=Colors\r\nBackColor=7\r\n");
    world.prompts.filesToChoose = {"D:\\mine.tmdf"};
    ASSERT_TRUE(world.Start());
    EXPECT_EQ(world.prompts.questions.at(0).initialFolder, "C:\\Tamarind\\Data Files");
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "WincmdDataFile"), "D:\\mine.tmdf");
    ASSERT_TRUE(world.Start());
    EXPECT_EQ(world.prompts.questions.size(), 1U);
}

TEST_F(EditorSessionTest, FilesThatCanNotBeReadEndInAMessageAndLoseNothing) {
    StartWith({kSettingsText, "", ""});
    world.prompts.filesToChoose = {"D:\\locked.tmdf", "D:\\locked.ini"};
    for (const std::string& name : world.prompts.filesToChoose) {
        world.disk.Put(name, kSettingsText);
        world.disk.FailReads(name, FileError::InUse);
    }
    Session().AskOpenDataFile();
    EXPECT_THAT(world.prompts.messages, ElementsAre(HasSubstr("D:\\locked.tmdf")));
    EXPECT_EQ(world.Rows().size(), 3U);
    // A settings file: every key absent, and the reason said.
    world.prompts.messages.clear();
    Session().AskOpenSettingsFile();
    EXPECT_THAT(world.prompts.messages, ElementsAre(HasSubstr("Another program is using it.")));
    EXPECT_THAT(world.Rows(), ElementsAre("PanelsVertical", "ShowHidden", "BackColor"));
    EXPECT_EQ(DataFile().Path(), SessionWorld::kWincmdData);

    world.disk.FailReads(SessionWorld::kWincmdData, FileError::TooLarge);
    EXPECT_FALSE(world.Start());
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr("larger than 64 MB"));
}

TEST_F(EditorSessionTest, WithoutASettingsFileEveryKeyIsAbsent) {
    world.PutUsualFiles(kSettingsText);
    world.registry = MemoryRegistry();
    ASSERT_TRUE(world.Start());
    EXPECT_THAT(world.prompts.messages, ElementsAre("!" + BuiltIn(text::kCannotFindWincmdIni)));
    EXPECT_THAT(world.Rows(), ElementsAre("PanelsVertical", "ShowHidden", "BackColor"));
    EXPECT_EQ(Session().Caption(), "Tamarind Configuration Editor 5.01");
    Commands().SetValue("2");
    EXPECT_FALSE(Settings().SaveToSettingsFile());
    EXPECT_EQ(world.prompts.messages.back(), "!" + BuiltIn(text::kNoSettingsFile));
    EXPECT_TRUE(Settings().IsModified());
}

}  // namespace
}  // namespace tamarind
