#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

using RecentSettingsTest = SessionTest;

TEST_F(RecentSettingsTest, LongPathsAreShortenedByTheirParts) {
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

TEST_F(RecentSettingsTest, RecentFilesMoveToTheTopAndLeaveWhenTheyAreGone) {
    StartWithKeys("ColorBack=1\r\n",
                  "[Common]\r\nNumberOfRecentFiles=3\r\n[ConfigurationEditor]\r\n"
                  "RecentFiles1=C:\\gone.ini\r\nRecentFiles3=%Commander_Path%\\Wincmd.ini\r\n"
                  "RecentFiles4=C:\\beyond.ini\r\n");
    const auto captions = [&] {
        std::vector<std::string> all;
        for (const auto& entry : Recent().Files().Entries()) {
            all.push_back(entry.caption);
        }
        return all;
    };
    EXPECT_THAT(captions(), ElementsAre("&1 C:\\gone.ini", "&3 %Commander_Path%\\Wincmd.ini"));
    Session().OpenRecentFile(1);
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr("Cannot find this file C:\\gone.ini\n\n"));
    EXPECT_THAT(captions(), ElementsAre("&2 %Commander_Path%\\Wincmd.ini"));
    Session().OpenRecentFile(2);
    EXPECT_EQ(Settings().Path(), SessionWorld::kWincmd);
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "RecentFiles1"), SessionWorld::kWincmd);

    for (const char* const name : {"C:\\a.ini", "C:\\R&D\\b.ini", "c:\\A.INI"}) {
        world.disk.Put(name, "[Configuration]\r\n");
        world.disk.FailReplaces(name, FileError::ReadOnly);
        world.prompts.filesToChoose = {name};
        Session().AskOpenSettingsFile();
        EXPECT_THAT(world.prompts.messages.back(), HasSubstr(name));  // cannot be saved
    }
    EXPECT_THAT(captions(),
                ElementsAre("&1 c:\\A.INI", "&2 C:\\R&&D\\b.ini", "&3 C:\\TC\\Wincmd.ini"));

    // Pending changes are asked about; a file that is not opened is not the latest.
    Commands().SetValue("5");
    world.prompts.answers = {Answer::Cancel};
    Session().OpenRecentFile(2);
    EXPECT_EQ(Settings().Path(), "c:\\A.INI");

    Recent().Clear();
    EXPECT_EQ(captions().size(), 3U) << "the user was not sure";
    world.prompts.answers = {Answer::Yes};
    Recent().Clear();
    EXPECT_EQ(world.OwnSetting("ConfigurationEditor", "RecentFiles1"), "(none)");
}

}  // namespace
}  // namespace tamarind
