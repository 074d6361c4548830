#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

using OpenDataFileTest = SessionTest;

TEST_F(OpenDataFileTest, DescriptionsAreWrittenIntoTheirEntriesOnly) {
    StartWithKeys("ColorBack = 1///old ; text  \r\nB=\"q\"\r\nC\r\nD=\" x ///d\"\r\n;end\r\n");
    const auto data = [&] { return world.disk.BytesOf(SessionWorld::kWincmdData); };
    const std::string before = data();
    DataFile().ChangeDescription("one\r\ntwo\rthree\nfour");
    EXPECT_EQ(Selection().Rows().Description(), "one\r\ntwo\r\nthreefour");
    DataFile().ChangeDescription("one\r\ntwo \"x\"");
    Selection().Rows().ShowKeyDetails(1);
    EXPECT_FALSE(Selection().Rows().Store().IsDescriptionPending(2));
    DataFile().ChangeDescription("say \"hi\"");  // quotes around the entry would be lost
    Selection().Rows().ShowKeyDetails(2);
    DataFile().ChangeDescription("d2");  // with blanks around its default
    EXPECT_TRUE(States().IsEnabled(Command::FileSaveDataFile));
    ASSERT_TRUE(DataFile().SaveDataFile());
    std::string expected = before;
    expected.replace(expected.find("1///old ; text"), 14, "1///one@two \"x\"");
    expected.replace(expected.find("\"q\""), 3, "q///say \"hi\"");
    expected.replace(expected.find("///d\""), 5, "///d2\"");
    EXPECT_EQ(data(), expected);
    EXPECT_FALSE(States().IsEnabled(Command::FileSaveDataFile));

    // A file that cannot be written: a message, and the text still waits.
    Selection().Rows().ShowKeyDetails(1);
    DataFile().ChangeDescription("again");
    world.disk.FailReplaces(SessionWorld::kWincmdData, FileError::ReadOnly);
    EXPECT_FALSE(DataFile().SaveDataFile());
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr("read-only"));
    EXPECT_TRUE(DataFile().IsModified());
    EXPECT_EQ(Selection().Rows().Description(), "again");
}

TEST_F(OpenDataFileTest, OnlyDescriptionsThatCanBeReadAgainAreTaken) {
    StartWithKeys("ColorBack=1///" + std::string(5000, 'x') + "\r\nB=22\r\n");
    EXPECT_EQ(DataFile().MaxDescriptionUnits(), 0U) << "its end would be lost";
    DataFile().ChangeDescription("short");
    EXPECT_FALSE(DataFile().IsModified());
    Selection().Rows().ShowKeyDetails(1);
    EXPECT_EQ(DataFile().MaxDescriptionUnits(), 4095U - 2 - 3);
}

TEST_F(OpenDataFileTest, MoreKeysThanCanBeNumberedAreCutWithAMessage) {
    std::string content;
    for (int category = 0; category < 132; ++category) {
        content += "[C" + std::to_string(category) + "]\nCategoryTargetSection=Colors\n";
        for (int key = 0; key < 250; ++key) {
            content += "K" + std::to_string(key) + "=1\n";
        }
    }
    StartWith({"[Configuration]\r\n", content, ""});
    EXPECT_EQ(Selection().Rows().Store().Size(), 32767U);
    EXPECT_THAT(world.prompts.messages, ElementsAre("!" + BuiltIn(text::kTooManyKeys)));
}

}  // namespace
}  // namespace tamarind
