#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <random>

#include "model/program/StringTable.h"
#include "tests/model/fakes/SessionWorld.h"

namespace tamarind {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class SavingTest : public testing::Test {
protected:
    static constexpr const char* kLastSection = "[Configuration]\r\n";

    SessionWorld world;
    EditorSession& Session() { return *world.session; }

    // Starts with a data file of the keys A, K and Z of section T.
    void Start(const std::string& settings) {
        world.PutUsualFiles("");
        world.disk.Put(SessionWorld::kWincmdData,
                       "[Cat]\nCategoryTargetSection=T\nA=0\nK=1///Key@two\nZ=\n"
                       "[/Head]\n[Col]\nCategoryTargetSection=Colors\nBackColor=-1\n");
        world.disk.Put(SessionWorld::kWincmd, settings + kLastSection);
        world.disk.Wait(10);
        ASSERT_TRUE(world.Start());
        Session().Selection().ShowKeyDetails(1);  // K
    }
    // What a letter of a script does to the current key.
    void Play(char letter) {
        const std::map<char, std::function<void()>> moves = {
            {'s', [this] { Session().Commands().SetValue("new"); }},
            {'e', [this] { Session().Commands().SetValue(""); }},
            {'c', [this] { Session().Commands().CommentKey(); }},
            {'d', [this] { Session().Commands().DeleteKey(); }},
            {'u', [this] { Session().Commands().Undo(); }},
            {'r', [this] { Session().Commands().Redo(); }},
            {'w', [this] { EXPECT_TRUE(Session().TargetFile().SaveToSettingsFile()); }}};
        moves.at(letter)();
    }
    // What was saved, without the section by which the file is known for a Wincmd.ini.
    std::string Saved() const {
        std::string bytes = world.disk.BytesOf(SessionWorld::kWincmd);
        const std::size_t last = bytes.rfind(kLastSection);
        return last == std::string::npos ? bytes : bytes.erase(last);
    }
};

// Every pair of a pending and an initial state, on every way there, against the bytes of the file.
TEST_F(SavingTest, EachPendingStateBecomesTheLinesThatItStandsFor) {
    using enum KeyState;
    const struct {
        const char* before;
        const char* script;
        KeyState state;
        const char* shown;
        const char* after;
    } cases[] = {
        {"[T]\nA=1\n", "sd", ToBeDeleted, "K", "[T]\nA=1\n"},
        {"[T]\nA=1\n;end\n", "s", ValueSet, "K=new", "[T]\nA=1\nK=new\n;end\n"},
        {"[T]\nA=1\n;end\n", "sc", ToBeCommented, "K=new", "[T]\nA=1\n;K=new\n;end\n"},
        {"[T]\nK=1\nA=1\nk=2\n", "d", ToBeDeleted, "K", "[T]\nA=1\n"},
        {"[T]\n K = 1 \nA=1\nk=2\n", "s", ValueSet, "K=new", "[T]\n K = new \nA=1\nk=2\n"},
        {"[T]\n K = 1\nA=1\nk=2\n", "c", ToBeCommented, "K=1", "[T]\n ;K = 1\nA=1\n"},
        {"[T]\n;K=1\nA=1\n;K=2\n", "d", ToBeDeleted, "K", "[T]\nA=1\n"},
        {"[T]\n ;K = 1\nA=1\n;k=2\n", "s", ValueSet, "K=new", "[T]\n K = new\nA=1\n"},
        {"[T]\n;K=1\nA=1\n;K=2\n", "sc", ToBeCommented, "K=new", "[T]\n;K=new\nA=1\n;K=2\n"},
        // Both forms are there: the active one counts, and a line of the wanted form is used.
        {"[T]\n;K=0\nK=1\n", "d", ToBeDeleted, "K", "[T]\n;K=0\n"},
        {"[T]\n;K=0\nK=1\n", "s", ValueSet, "K=new", "[T]\n;K=0\nK=new\n"},
        {"[T]\n;K=0\nA=1\nK=1\n", "c", ToBeCommented, "K=1", "[T]\n;K=1\nA=1\n"},
        // Taken back and done again, with saves in between.
        {"[T]\nK=1\n", "su", ValueSet, "K=1", "[T]\nK=1\n"},
        {"[T]\n", "su", ToBeDeleted, "K", "[T]\n"},
        {"[T]\n;K=1\n", "su", ValueSet, "K=1", "[T]\nK=1\n"},
        {"[T]\nK=1\n", "du", ValueSet, "K=1", "[T]\nK=1\n"},
        {"[T]\nK=1\n", "dur", ToBeDeleted, "K", "[T]\n"},
        {"[T]\nK=1\n", "cu", ValueSet, "K=1", "[T]\nK=1\n"},
        {"[T]\nK=1\n", "cur", ToBeCommented, "K=1", "[T]\n;K=1\n"},
        {"[T]\nK=1\n", "cwu", ValueSet, "K=1", "[T]\nK=1\n"},
        {"[T]\nK=1\n", "swu", ValueSet, "K=1", "[T]\nK=1\n"},
        {"[T]\nK=1\n", "swuwr", ValueSet, "K=new", "[T]\nK=new\n"},
        {"[T]\nK=1\n", "dwu", ValueSet, "K=1", "[T]\nK=1\n"},
        {"[T]\nK=1\n", "e", ValueSet, "K=", "[T]\nK=\n"},
        {"[T]\nK=1\n", "eur", ToBeDeleted, "K", "[T]\n"},
        {"[T]\nK=1\n", "sdcuu", ValueSet, "K=1", "[T]\nK=1\n"},
        {"[T]\nK=1\n", "scuurr", ToBeCommented, "K=new", "[T]\n;K=new\n"},
        // What was taken back is gone with the next change.
        {"[T]\nK=1\n", "sucr", ToBeCommented, "K=1", "[T]\n;K=1\n"},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testing::PrintToString(testCase.before) + " " + testCase.script);
        Start(testCase.before);
        for (const char letter : std::string(testCase.script)) {
            Play(letter);
        }
        EXPECT_EQ(Session().Selection().Record(2).currentState, testCase.state);
        EXPECT_EQ(VisibleText(Session().Selection().Record(2)), testCase.shown);
        EXPECT_TRUE(Session().TargetFile().IsModified());
        EXPECT_TRUE(Session().TargetFile().SaveToSettingsFile());
        EXPECT_EQ(Saved(), testCase.after);
        EXPECT_FALSE(Session().TargetFile().IsModified());
        EXPECT_EQ(Session().Selection().Record(2).initialState,
                  Session().Selection().Record(2).currentState);
        const int replaces = world.disk.replaces;
        Session().TargetFile().SaveToSettingsFile();
        EXPECT_EQ(world.disk.replaces, replaces) << "nothing is left to save";
    }
}

// Two traps of real files: quotes that reading strips, and values longer than any buffer.
TEST_F(SavingTest, QuotesAndLongValuesSurvive) {
    const std::string command = "\"C:\\dir\\x.exe\" \"%1\"";
    const std::string tail(5000, 'v');
    Start("[T]\nK=" + tail + "\nA=\"" + command + "\"\nZ='single'\n");
    EXPECT_EQ(Session().Selection().Record(1).currentValue, command);

    Session().Commands().CommentKey();
    EXPECT_TRUE(Session().TargetFile().SaveToSettingsFile());
    EXPECT_THAT(Saved(), HasSubstr(";K=" + tail + "\n")) << "the line's own text moves";
    Session().Commands().Undo();
    EXPECT_TRUE(Session().TargetFile().SaveToSettingsFile());
    EXPECT_THAT(Saved(), HasSubstr("\nK=" + tail.substr(1)));
    EXPECT_THAT(Saved(), HasSubstr(tail));

    // Taken back to what the file says: the line stays as it is, its own quotes included.
    Session().Selection().ShowKeyDetails(2);
    Session().Commands().SetValue("x");
    Session().Commands().Undo();
    Session().Selection().ShowKeyDetails(0);
    Session().Commands().SetValue(command + " ");
    EXPECT_TRUE(Session().TargetFile().SaveToSettingsFile());
    EXPECT_THAT(Saved(), HasSubstr("\nZ='single'\n"));
    EXPECT_THAT(Saved(), HasSubstr("\nA=\"" + command + "\"\n"));
    EXPECT_EQ(Session().Selection().Record(1).currentValue, command)
        << "the record holds what was stored";
}

TEST_F(SavingTest, AFailedSaveHasNotHappened) {
    const struct {
        FileError read;
        FileError replace;
        const char* reason;
    } cases[] = {
        {FileError::None, FileError::ReadOnly, "read-only"},
        {FileError::InUse, FileError::None, "Another program"},
        {FileError::IsFolder, FileError::None, "folder"},
        {FileError::None, FileError::DiskFull, "disk is full"},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.reason);
        Start("[T]\nK=1\n");
        Session().Commands().SetValue("2");
        world.disk.FailReads(SessionWorld::kWincmd, testCase.read);
        world.disk.FailReplaces(SessionWorld::kWincmd, testCase.replace);
        world.prompts.messages.clear();
        EXPECT_FALSE(Session().TargetFile().SaveToSettingsFile());
        EXPECT_THAT(world.prompts.messages, ElementsAre(AllOf(HasSubstr(SessionWorld::kWincmd),
                                                              HasSubstr(testCase.reason))));
        EXPECT_TRUE(Session().TargetFile().IsModified());
        world.disk.FailReads(SessionWorld::kWincmd, FileError::None);
        world.disk.FailReplaces(SessionWorld::kWincmd, FileError::None);
        EXPECT_EQ(Saved(), "[T]\nK=1\n");
        EXPECT_TRUE(Session().TargetFile().SaveToSettingsFile());
        EXPECT_EQ(Saved(), "[T]\nK=2\n");
    }
}

TEST_F(SavingTest, WhatTheFileCanNotHoldIsRefusedOrStoredInAFormThatItCan) {
    Start("[T]\r\nK=1\r\n");
    Session().Commands().SetValue("\xE4\xB8\xAD");  // beyond every one-byte code page
    EXPECT_TRUE(Session().TargetFile().SaveToSettingsFile());
    EXPECT_EQ(Saved(), "[T]\r\nK=\xEF\xBB\xBF\xE4\xB8\xAD\r\n");
    Session().Commands().SetValue("line\nbreak");
    EXPECT_FALSE(Session().TargetFile().SaveToSettingsFile());
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr("[T] K"));
    EXPECT_TRUE(Session().TargetFile().IsModified());

    world.prompts.messages.clear();
    EXPECT_FALSE(Session().Commands().StoreEditedValue("K=" + std::string(4096, 'x')));
    EXPECT_THAT(world.prompts.messages,
                ElementsAre("!" + std::string(BuiltInText(text::kValueTooLong))));
    EXPECT_FALSE(Session().Commands().SetValue(std::string(MissingValueMarker)));
    EXPECT_EQ(world.prompts.messages.back(), "!" + std::string(BuiltInText(text::kValueIsMarker)));
    EXPECT_EQ(Session().Selection().Record(2).currentValue, "line\nbreak");

    world.disk.Put(SessionWorld::kWincmdData,
                   "\xEF\xBB\xBF[C]\nCategoryTargetSection=T\n\xE4\xB8\xAD=1\n");
    world.disk.Put(SessionWorld::kWincmd, "[T]\nA=1\n[Configuration]\r\n");
    ASSERT_TRUE(world.Start());
    Session().Commands().SetValue("2");
    EXPECT_FALSE(Session().TargetFile().SaveToSettingsFile());
    EXPECT_EQ(Saved(), "[T]\nA=1\n");
}

TEST_F(SavingTest, TheEditBoxOpensWithTheLineAndTakesWhatFollowsTheEqualsSign) {
    Start("[T]\nK=v=w\n");
    EXPECT_EQ(Session().Commands().BeginInplaceEdit()->text, "K=v=w");
    EXPECT_EQ(Session().Commands().BeginInplaceEdit()->selectionStart, 2U);
    Session().Selection().ShowKeyDetails(0);
    EXPECT_EQ(Session().Commands().BeginInplaceEdit()->text, "A=0")
        << "an absent key offers its default";
    for (const auto& [typed, shown] : {std::pair("other=12345", "A=12345"),
                                       {"77", "A=77"},
                                       {"=", "A="},
                                       {"A=a=b", "A=a=b"},
                                       {" x ", "A= x "}}) {
        EXPECT_TRUE(Session().Commands().StoreEditedValue(typed));
        EXPECT_EQ(VisibleText(Session().Selection().Record(1)), shown);
    }
    Session().Selection().SelectCategory(1);  // the heading
    EXPECT_FALSE(Session().Commands().BeginInplaceEdit());
    EXPECT_FALSE(Session().Commands().SetValue("1"));
    EXPECT_EQ(world.prompts.beeps, 2);
    Session().Commands().Undo();
    EXPECT_EQ(VisibleText(Session().Selection().Record(1)), "A= x ")
        << "no undo while a heading is shown";
}

TEST_F(SavingTest, CommandsFollowTheCurrentKeysState) {
    Start("[T]\nK=1\n;Z=2\n");
    const auto enabled = [&] {
        std::string flags;
        for (const Command command : {Command::EditValue, Command::EditComment, Command::EditDelete,
                                      Command::EditUndo, Command::EditRedo, Command::FileSave}) {
            flags += Session().States().IsEnabled(command) ? '+' : '-';
        }
        return flags;
    };
    EXPECT_EQ(enabled(), "+++---");
    Session().Selection().ShowKeyDetails(0);
    EXPECT_EQ(enabled(), "+-----");
    Session().Commands().CommentKey();
    Session().Commands().DeleteKey();
    EXPECT_FALSE(Session().TargetFile().IsModified())
        << "an absent key is neither commented nor deleted";
    Session().Selection().ShowKeyDetails(2);
    Session().Commands().DeleteKey();
    EXPECT_EQ(enabled(), "+--+-+");
    Session().Commands().Undo();
    EXPECT_EQ(enabled(), "+++-++");
    Session().Selection().SelectCategory(1);
    EXPECT_EQ(enabled(), "-----+");
    Session().Selection().SelectCategory(kRootNode);
    Session().Place().OwnSettings().Values().autoSelectNextKey = 1;
    Session().Selection().ShowKeyDetails(1);
    Session().Commands().CommentKey();
    EXPECT_EQ(Session().Selection().CurrentKey(), 3U) << "the next key's turn";
}

TEST_F(SavingTest, ColorKeysShowAndChooseColors) {
    Start("[Colors]\nBackColor=255\n");
    EXPECT_FALSE(Session().Commands().CurrentColor());
    world.prompts.filesToChoose = {"C:\\a=b.exe"};
    EXPECT_TRUE(Session().Commands().BrowseValue());
    EXPECT_EQ(Session().Selection().Record(2).currentValue, "C:\\a=b.exe")
        << "as the dialog gave it";
    EXPECT_FALSE(Session().Commands().BrowseValue()) << "cancelled";
    Session().Selection().ShowKeyDetails(3);
    EXPECT_EQ(Session().Commands().CurrentColor()->color, 255U);
    world.prompts.colorsToChoose = {"65280"};
    EXPECT_TRUE(Session().Commands().BrowseValue());
    EXPECT_EQ(Session().Commands().CurrentColor()->color, 65280U);
    EXPECT_EQ(ColorOfValue("16777216").color, 0U);
    EXPECT_EQ(ColorOfValue("$0000FF").color, 255U) << "as $BBGGRR";
    EXPECT_TRUE(ColorOfValue("-1").isSystemColor);
}

TEST_F(SavingTest, LeavingAsksFirst) {
    const struct {
        Answer answer;
        FileError error;
        bool mayLeave;
        bool isSaved;
    } cases[] = {
        {Answer::Yes, FileError::None, true, true},
        {Answer::Yes, FileError::ReadOnly, false, false},
        {Answer::No, FileError::None, true, false},
        {Answer::Cancel, FileError::None, false, false},
    };
    for (const auto& testCase : cases) {
        world.disk.FailReplaces(SessionWorld::kWincmd, FileError::None);
        Start("[T]\nK=1\n");
        EXPECT_TRUE(Session().TargetFile().AskSaveSettings()) << "nothing is pending";
        Session().Commands().SetValue("2");
        world.disk.FailReplaces(SessionWorld::kWincmd, testCase.error);
        world.prompts.answers = {testCase.answer};
        world.prompts.messages.clear();
        EXPECT_EQ(Session().TargetFile().AskSaveSettings(), testCase.mayLeave);
        EXPECT_EQ(world.prompts.messages.at(0), "?Save changes to  C:\\TC\\Wincmd.ini\n");
        EXPECT_EQ(Saved() == "[T]\nK=2\n", testCase.isSaved);
    }
}

TEST_F(SavingTest, ARestartClosesBeforeTheSaveAndStartsAfterIt) {
    Start("[T]\nK=1\n");
    world.disk.Put("C:\\TC\\TOTALCMD64.EXE", "");
    EXPECT_FALSE(Session().States().IsEnabled(Command::FileSaveAndRestart));
    world.programs.isRunning = true;
    EXPECT_TRUE(Session().States().IsEnabled(Command::FileSaveAndRestart));
    Session().Commands().SetValue("2");
    std::vector<std::string> savedAtWait;
    world.programs.onWait = [&] {
        savedAtWait.push_back(Saved());
        EXPECT_TRUE(Session().Place().IsBusy());
        EXPECT_FALSE(Session().TargetFile().SaveToSettingsFile());
        EXPECT_FALSE(Session().States().IsEnabled(Command::EditDelete));
    };
    EXPECT_TRUE(Session().TargetFile().SaveAndRestart());
    EXPECT_THAT(savedAtWait, ElementsAre("[T]\nK=1\n", "[T]\nK=2\n"));
    EXPECT_THAT(world.programs.calls,
                ElementsAre("front", "close", "wait", "wait",
                            "start \"C:\\TC\\TOTALCMD64.EXE\" /i=\"C:\\TC\\Wincmd.ini\""));

    // The program that was closed is the one that is started, wherever it is.
    world.programs.calls.clear();
    world.programs.isRunning = true;
    world.programs.path = "D:\\Other\\TOTALCMD.EXE";
    EXPECT_TRUE(Session().TargetFile().SaveAndRestart());
    EXPECT_THAT(world.programs.calls.back(), HasSubstr("start \"D:\\Other\\TOTALCMD.EXE\" /i="));

    // Nothing is touched where its folder is not known.
    world.programs.calls.clear();
    world.environment.variables.erase("Commander_Path");
    Session().Commands().SetValue("3");
    EXPECT_TRUE(Session().TargetFile().SaveAndRestart());
    EXPECT_THAT(world.programs.calls, IsEmpty());
    EXPECT_EQ(Saved(), "[T]\nK=3\n");
}

// Whatever is done to three keys: undo gives the texts of before, redo what was there, and what is
// saved is what another start reads.
TEST_F(SavingTest, RandomSequencesKeepWhatTheyShow) {
    const char* const values[] = {"1", " blanks ", "\"quoted\"", "'a' 'b'", "a=b", "x///y"};
    const auto shown = [this](bool withStates = true) {
        std::string all;
        for (KeyNumber key = 1; key <= 3; ++key) {
            const KeyRecord record = Session().Selection().Record(key);
            const std::string state = record.Looks().isChecked ? " " : ";";
            all += (withStates ? state : "") + VisibleText(record) + "|";
        }
        return all;
    };
    Start("[T]\nA=1\n;K=2\n");
    std::mt19937 random(1);
    for (int step = 0; step < 3000; ++step) {
        Session().Selection().SetKeyFilter(KeyFilter::ShowAll);
        Session().Selection().ShowKeyDetails(random() % 3);
        const std::string before = shown();
        const std::string textsBefore = shown(false);
        const unsigned action = random() % 8;
        if (action < 3) {
            Session().Commands().StoreEditedValue(values[random() % std::size(values)]);
        } else {
            Play("cdurw"[action - 3]);
        }
        const std::string after = shown();
        Session().Selection().SetKeyFilter(static_cast<KeyFilter>(random() % 3));
        if (action < 5 && after != before) {
            Session().Commands().Undo();
            ASSERT_EQ(shown(false), textsBefore) << step;
            Session().Commands().Redo();
            ASSERT_EQ(shown(), after) << step;
        }
        if (step % 10 == 0) {
            ASSERT_TRUE(Session().TargetFile().SaveToSettingsFile());
            const std::string saved = shown();
            ASSERT_TRUE(world.Start());
            ASSERT_EQ(shown(), saved) << step;
        }
    }
}

}  // namespace
}  // namespace tamarind
