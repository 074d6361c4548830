#include <random>

#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

using KeyCommandsTest = KeyChangesTest;

TEST_F(KeyCommandsTest, TheEditBoxOpensWithTheLineAndTakesWhatFollowsTheEqualsSign) {
    Start("[T]\nK=v=w\n");
    EXPECT_EQ(Commands().BeginInplaceEdit()->text, "K=v=w");
    EXPECT_EQ(Commands().BeginInplaceEdit()->selectionStart, 2U);
    Selection().Rows().ShowKeyDetails(0);
    EXPECT_EQ(Commands().BeginInplaceEdit()->text, "A=0") << "an absent key offers its default";
    for (const auto& [typed, shown] : {std::pair("other=12345", "A=12345"),
                                       {"77", "A=77"},
                                       {"=", "A="},
                                       {"A=a=b", "A=a=b"},
                                       {" x ", "A= x "}}) {
        EXPECT_TRUE(Commands().StoreEditedValue(typed));
        EXPECT_EQ(VisibleText(Selection().Rows().Record(1)), shown);
    }
    Selection().SelectCategory(1);  // the heading
    EXPECT_FALSE(Commands().BeginInplaceEdit());
    EXPECT_FALSE(Commands().SetValue("1"));
    EXPECT_EQ(world.prompts.beeps, 2);
    Commands().Undo();
    EXPECT_EQ(VisibleText(Selection().Rows().Record(1)), "A= x ")
        << "no undo while a heading is shown";
}

TEST_F(KeyCommandsTest, WhatTheFileCanNotHoldIsRefused) {
    Start("[T]\r\nK=1\r\n");
    Commands().SetValue("line\nbreak");
    EXPECT_FALSE(Settings().SaveToSettingsFile());
    EXPECT_THAT(world.prompts.messages.back(), HasSubstr("[T] K"));
    EXPECT_TRUE(Settings().IsModified());

    world.prompts.messages.clear();
    EXPECT_FALSE(Commands().StoreEditedValue("K=" + std::string(4096, 'x')));
    EXPECT_THAT(world.prompts.messages, ElementsAre("!" + BuiltIn(text::kValueTooLong)));
    EXPECT_FALSE(Commands().SetValue(std::string(MissingValueMarker)));
    EXPECT_EQ(world.prompts.messages.back(), "!" + BuiltIn(text::kValueIsMarker));
    EXPECT_EQ(Selection().Rows().Record(2).currentValue, "line\nbreak");

    StartWith({"[T]\nA=1\n[Configuration]\r\n",
               "\xEF\xBB\xBF[C]\nCategoryTargetSection=T\n\xE4\xB8\xAD=1\n", ""});
    Commands().SetValue("2");
    EXPECT_FALSE(Settings().SaveToSettingsFile());
    EXPECT_EQ(Saved(), "[T]\nA=1\n");
}

TEST_F(KeyCommandsTest, CommandsFollowTheCurrentKeysState) {
    Start("[T]\nK=1\n;Z=2\n");
    const auto enabled = [&] {
        std::string flags;
        for (const Command command : {Command::EditValue, Command::EditComment, Command::EditDelete,
                                      Command::EditUndo, Command::EditRedo, Command::FileSave}) {
            flags += States().IsEnabled(command) ? '+' : '-';
        }
        return flags;
    };
    EXPECT_EQ(enabled(), "+++---");
    Selection().Rows().ShowKeyDetails(0);
    EXPECT_EQ(enabled(), "+-----");
    Commands().CommentKeys();
    Commands().DeleteKeys();
    EXPECT_FALSE(Settings().IsModified()) << "an absent key is neither commented nor deleted";
    Selection().Rows().ShowKeyDetails(2);
    Commands().DeleteKeys();
    EXPECT_EQ(enabled(), "+--+-+");
    Commands().Undo();
    EXPECT_EQ(enabled(), "+++-++");
    Selection().SelectCategory(1);
    EXPECT_EQ(enabled(), "-----+");
    Selection().SelectCategory(kRootNode);
    Place().OwnSettings().Values().autoSelectNextKey = 1;
    Selection().Rows().ShowKeyDetails(1);
    Commands().CommentKeys();
    EXPECT_EQ(Selection().Rows().CurrentKey(), 3U) << "the next key's turn";
}

TEST_F(KeyCommandsTest, ColorKeysShowAndChooseColors) {
    Start("[Colors]\nBackColor=255\n");
    const auto color = [this] {
        return Session().Values().ColorOf(*Selection().Rows().CurrentKey());
    };
    EXPECT_FALSE(color());
    world.prompts.filesToChoose = {"C:\\a=b.exe"};
    EXPECT_TRUE(Session().Editing().Browse());
    EXPECT_EQ(Selection().Rows().Record(2).currentValue, "C:\\a=b.exe") << "as the dialog gave it";
    EXPECT_FALSE(Session().Editing().Browse()) << "cancelled";
    Selection().Rows().ShowKeyDetails(3);
    EXPECT_EQ(color()->color, 255U);
    world.prompts.colorsToChoose = {"65280"};
    EXPECT_TRUE(Session().Editing().Browse());
    EXPECT_EQ(color()->color, 65280U);
    EXPECT_EQ(ColorOfValue("16777216").color, 0U);
    EXPECT_EQ(ColorOfValue("$0000FF").color, 255U) << "as $BBGGRR";
    EXPECT_TRUE(ColorOfValue("-1").isSystemColor);
}

// Whatever is done to three keys: undo gives the texts of before, redo what was there, and what is
// saved is what another start reads.
TEST_F(KeyCommandsTest, RandomSequencesKeepWhatTheyShow) {
    const char* const values[] = {"1", " blanks ", "\"quoted\"", "'a' 'b'", "a=b", "x///y"};
    const auto shown = [this](bool withStates = true) {
        std::string all;
        for (KeyNumber key = 1; key <= 3; ++key) {
            const KeyRecord record = Selection().Rows().Record(key);
            const std::string state = record.Looks().isChecked ? " " : ";";
            all += (withStates ? state : "") + VisibleText(record) + "|";
        }
        return all;
    };
    Start("[T]\nA=1\n;K=2\n");
    std::mt19937 random(1);
    for (int step = 0; step < 3000; ++step) {
        Selection().SetKeyFilter(KeyFilter::ShowAll);
        Selection().Rows().ShowKeyDetails(random() % 3);
        const std::string before = shown();
        const std::string textsBefore = shown(false);
        const unsigned action = random() % 8;
        if (action < 3) {
            Commands().StoreEditedValue(values[random() % std::size(values)]);
        } else {
            Play("cdurw"[action - 3]);
        }
        const std::string after = shown();
        Selection().SetKeyFilter(static_cast<KeyFilter>(random() % 3));
        if (action < 5 && after != before) {
            Commands().Undo();
            ASSERT_EQ(shown(false), textsBefore) << step;
            Commands().Redo();
            ASSERT_EQ(shown(), after) << step;
        }
        if (step % 10 == 0) {
            ASSERT_TRUE(Settings().SaveToSettingsFile());
            const std::string saved = shown();
            ASSERT_TRUE(world.Start());
            ASSERT_EQ(shown(), saved) << step;
        }
    }
}

}  // namespace
}  // namespace tamarind
