#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

using TotalCommanderTest = KeyChangesTest;

TEST_F(TotalCommanderTest, ARestartClosesBeforeTheSaveAndStartsAfterIt) {
    Start("[T]\nK=1\n");
    world.disk.Put("C:\\TC\\TOTALCMD64.EXE", "");
    EXPECT_FALSE(States().IsEnabled(Command::FileSaveAndRestart));
    world.programs.isRunning = true;
    EXPECT_TRUE(States().IsEnabled(Command::FileSaveAndRestart));
    Commands().SetValue("2");
    std::vector<std::string> savedAtWait;
    world.programs.onWait = [&] {
        savedAtWait.push_back(Saved());
        EXPECT_TRUE(Place().IsBusy());
        EXPECT_FALSE(Settings().SaveToSettingsFile());
        EXPECT_FALSE(States().IsEnabled(Command::EditDelete));
    };
    EXPECT_TRUE(Settings().SaveAndRestart());
    EXPECT_THAT(savedAtWait, ElementsAre("[T]\nK=1\n", "[T]\nK=2\n"));
    EXPECT_THAT(world.programs.calls,
                ElementsAre("front", "close", "wait", "wait",
                            "start \"C:\\TC\\TOTALCMD64.EXE\" /i=\"C:\\TC\\Wincmd.ini\""));

    // The program that was closed is the one that is started, wherever it is.
    world.programs.calls.clear();
    world.programs.isRunning = true;
    world.programs.path = "D:\\Other\\TOTALCMD.EXE";
    EXPECT_TRUE(Settings().SaveAndRestart());
    EXPECT_THAT(world.programs.calls.back(), HasSubstr("start \"D:\\Other\\TOTALCMD.EXE\" /i="));

    // Nothing is touched where its folder is not known.
    world.programs.calls.clear();
    world.environment.variables.erase("Commander_Path");
    Commands().SetValue("3");
    EXPECT_TRUE(Settings().SaveAndRestart());
    EXPECT_THAT(world.programs.calls, IsEmpty());
    EXPECT_EQ(Saved(), "[T]\nK=3\n");
}

// Total Commander writes its own settings while it closes, some of it late.
TEST_F(TotalCommanderTest, ItsLastWriteComesBeforeOurs) {
    Start("[T]\nA=1\nK=1\n");
    Set(0, "mine");
    world.programs.isRunning = true;
    world.programs.refusesToClose = true;
    world.programs.onEnding = [&] {
        Write("[T]\nA=1\nK=theirs\nNew=1\n");
        world.programs.isRunning = false;
    };
    ASSERT_TRUE(Settings().SaveAndRestart());
    EXPECT_EQ(Saved(), "[T]\nA=mine\nK=theirs\nNew=1\n");
    EXPECT_EQ(world.Rows()[1], "K=theirs");
    EXPECT_THAT(world.prompts.messages, IsEmpty());

    world.programs.isRunning = true;
    world.programs.onEnding = [] {};
    Set(0, "again");
    ASSERT_TRUE(Settings().SaveAndRestart());
    EXPECT_THAT(Saved(), HasSubstr("A=again"));
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr("still running"));
}

// What follows the mark would be arguments, or another program.
TEST_F(TotalCommanderTest, APathWithAQuotationMarkStartsNothing) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"C:\\TC\" /x=\"", SessionWorld::kWincmd, "C:\\TC\" /x=\"\\Totalcmd.exe"},
        {"C:\\TC", "C:\\a\" /x=\"b.ini", "C:\\a\" /x=\"b.ini"},
    };
    for (const auto& [folder, settings, refused] : cases) {
        world.environment.variables["Commander_Path"] = folder;
        world.disk.Put(settings, "[Configuration]\r\n");
        Start("");
        Session().OpenSettingsFile(settings, false);
        Commands().SetValue("5");
        EXPECT_TRUE(Settings().SaveAndRestart());
        EXPECT_THAT(world.programs.calls, ElementsAre("wait"));  // for the one that was to close
        EXPECT_EQ(world.prompts.messages.back(),
                  "!" + Place().Text(text::kQuoteInPath) + " " + refused);
        world.programs.calls.clear();
    }
}

}  // namespace
}  // namespace tamarind
