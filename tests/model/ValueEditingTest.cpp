#include "tests/model/fakes/SessionTest.h"

namespace tamarind {
namespace {

// Keys of all types, with the file that has them.
class ValueEditingTest : public SessionTest {
protected:
    void Start(const std::string& settings) {
        world.disk.Put(
            SessionWorld::kWincmdTypes,
            "[T]\r\nOn=bool\r\nStyle=enum 0 1 2..\r\nSum=flags 1 2|4\r\n"
            "Size=int 8..20 px -1\r\nTint=color -1\r\nFont=font Points Weight Charset\r\n"
            "Points=int 1..\r\nWeight=int 1..\r\nCharset=int 0..255\r\n"
            "Tool=path command\r\nLib=path file *.dll;*.icl\r\nDir=path folder\r\n"
            "Text=string\r\n[Colors]\r\nInverse=bool\r\n[left]\r\ntabcolor=color\r\n");
        StartWith(
            {settings + kEnd,
             "[Cat]\r\nCategoryTargetSection=T\r\n"
             "On=1///Line.@0 = off@1 = on\r\n"
             "Style=///@0 = plain@1 = fancy, \"very\"@2.. = other\r\n"
             "Sum=0///@0 = none@1 = a@2 = b@4 = c\r\nSize=12///@-1 = as Windows\r\n"
             "Tint=-1///@-1 = Windows color\r\nFont=Arial///\r\nPoints=8///\r\n"
             "Weight=400///\r\nCharset=1///\r\nTool=///\r\nLib=///\r\nDir=///\r\nText=///\r\n"
             "Guess=0///@0 = no@1 = yes\r\n"
             "[Col]\r\nCategoryTargetSection=Colors\r\nInverse=0///@0 = a@1 = b\r\nBack=1///\r\n"
             "[Left]\r\nCategoryTargetSection=left\r\ntabcolor=255///\r\n",
             ""});
    }
    void Go(const std::string& name) {
        for (KeyNumber key = 1; key <= Selection().Rows().Store().Size(); ++key) {
            if (Selection().Rows().Store().KeyName(key) == name) {
                Selection().Rows().ShowKeyDetails(key - 1);
            }
        }
    }
    ValueEditing& Editing() { return Session().Editing(); }
    std::string Row() {
        return VisibleText(Selection().Rows().Record(*Selection().Rows().CurrentKey()));
    }
    // What the bar shows: state, text, default.
    std::string Shown() {
        const ValueField field = *Editing().Field();
        return field.state + " | " + field.text + " | " + field.defaultValue;
    }
};

TEST_F(ValueEditingTest, TheBarTellsStateMeaningAndDefault) {
    Start("[T]\r\nOn=1\r\nStyle=7\r\n;Size=-1\r\nSum=3\r\nTint=$0000FF\r\n");
    const struct {
        const char* key;
        const char* shown;
        const char* choices;
    } cases[] = {
        {"On", "set, same as default | 1 = on | 1 (on)", "0 = off|1 = on*|"},
        {"Style", "set | 7 = other | not set",
         "(not set)|0 = plain|1 = fancy, \"very\"|2 = other|"},
        {"Sum", "set | 3 | 0 (none)", "1 = a|2 = b|4 = c|"},
        {"Size", "commented out | -1 = as Windows | 12 px", "-1 = as Windows|"},
        {"Tint", "set | $0000FF | -1 (Windows color)", "Windows color (-1)*|"},
        {"Points", "not set | 8 | 8", ""},
        {"Guess", "not set | 0 = no | 0 (no)", "0 = no*|1 = yes|"},
        {"Inverse", "not set | 0 = a | 0 (a)", "0 = a*|1 = b|"},
    };
    for (const auto& c : cases) {
        Go(c.key);
        EXPECT_EQ(Shown(), c.shown);
        std::string choices;
        const auto field = Editing().Field();
        for (const LabeledChoice& choice : field->choices) {
            choices += choice.label + (choice.isDefault ? "*|" : "|");
        }
        EXPECT_EQ(choices, c.choices) << c.key;
    }
    Go("Sum");
    Editing().Store("5");
    EXPECT_EQ(Editing().Field()->state, "set, changed");
    EXPECT_EQ(Editing().OtherBitsOf("41"), "other: 40");
    Go("Size");
    EXPECT_EQ(Editing().ObjectionTo("55"), "Expected: a whole number from 8 to 20 or -1.");
    EXPECT_EQ(Editing().ObjectionTo("12 = twelve"), "");
    EXPECT_EQ(Editing().Field()->unit, "px");
    Selection().SelectCategory(kRootNode);
    Go("Inverse");
    EXPECT_FALSE(Editing().Field()->color) << "the entry says that it is none";
    Go("Back");
    EXPECT_TRUE(Editing().Field()->color) << "without an entry the section decides";
    Go("tabcolor");
    EXPECT_EQ(Editing().Field()->color->isSystemColor, true) << "absent";
}

TEST_F(ValueEditingTest, WhatIsTypedIsStoredAsItIsMeant) {
    Start("[T]\r\nTint=$0000FF\r\n");
    const struct {
        const char* key;
        const char* typed;
        const char* row;
    } cases[] = {
        {"On", "0 = off", "On=0"},
        {"On", "2", "On=2"},
        {"Style", "5 = whatever", "Style=5"},
        {"Size", "99", "Size=99"},
        {"Text", "a = b", "Text=a = b"},
        {"Tint", "Windows color (-1)", "Tint=-1"},
        {"Tint", "$0000fF", "Tint=255"},
        {"Tint", "#FF0080", "Tint=8388863"},
        {"Tint", "red", "Tint=red"},
    };
    for (const auto& c : cases) {
        Go(c.key);
        EXPECT_TRUE(Editing().Store(c.typed));
        EXPECT_EQ(Row(), c.row);
    }
    Start("[T]\r\nTint=$0000FF\r\n");
    Go("Tint");
    Editing().Store("#00FF00");
    EXPECT_EQ(Row(), "Tint=$00FF00") << "in the form of the file";
    world.prompts.colorsToChoose = {"255"};
    EXPECT_TRUE(Editing().Browse());
    EXPECT_EQ(Row(), "Tint=$0000FF");
    EXPECT_EQ(world.prompts.startColors, std::vector<std::int32_t>{0x00FF00});
    EXPECT_FALSE(Editing().Browse()) << "cancelled";

    Go("Style");
    EXPECT_TRUE(Editing().Choose(1));
    EXPECT_EQ(Row(), "Style=0");
    EXPECT_TRUE(Editing().Choose(0));
    EXPECT_EQ(Row(), "Style") << "not set";
    EXPECT_FALSE(Editing().Choose(0));
    EXPECT_FALSE(Editing().Choose(9));
    Commands().Undo();
    EXPECT_EQ(Row(), "Style=0");
    Go("Sum");
    EXPECT_EQ(Editing().Toggled("8", 1), "10");
    EXPECT_EQ(Editing().Toggled("10", 2), "12") << "one of the two";
    EXPECT_TRUE(Editing().IsChecked("12", 2));

    Go("On");
    EXPECT_TRUE(Editing().ToggleSwitch());
    EXPECT_EQ(Row(), "On=0") << "the opposite of the default";
    EXPECT_TRUE(Editing().ToggleSwitch());
    EXPECT_EQ(Row(), "On=1");
    Go("Style");
    EXPECT_FALSE(Editing().ToggleSwitch());
}

TEST_F(ValueEditingTest, AFontIsOneStep) {
    Start("[T]\r\nFont=Tahoma\r\nWeight=500\r\n");
    Go("Font");
    world.prompts.fontsToChoose = {{"Segoe UI", 11, 0, 238}};
    EXPECT_TRUE(Editing().Browse());
    EXPECT_EQ(world.prompts.fontsShown[0].name, "Tahoma");
    EXPECT_EQ(world.prompts.fontsShown[0].points, 8);
    const auto rows = [this] {
        const auto all = world.Rows();
        return std::vector<std::string>(all.begin() + 5, all.begin() + 9);
    };
    EXPECT_THAT(rows(), ElementsAre("Font=Segoe UI", "Points=11", "Weight=500", "Charset=238"))
        << "a weight that is not bold either stays";
    EXPECT_EQ(Commands().UndoName(), "value of 3 keys");
    world.prompts.fontsToChoose = {{"Segoe UI", 11, 1, 238}};
    Editing().Browse();
    EXPECT_EQ(rows()[2], "Weight=700");
    Commands().Undo();
    Commands().Undo();
    EXPECT_THAT(rows(), ElementsAre("Font=Tahoma", "Points", "Weight=500", "Charset"));
    EXPECT_FALSE(Editing().Browse()) << "cancelled";
}

TEST_F(ValueEditingTest, PathsStartWhereTheyPointAndCanBeginWithTheVariable) {
    Start("[T]\r\nLib=%COMMANDER_PATH%\\icons\\a.icl\r\nTool=\"C:\\x y\\z.exe\" /p\r\n");
    Go("Lib");
    EXPECT_TRUE(Editing().NamesMissingPlace(Editing().Field()->text));
    world.disk.Put("C:\\TC\\icons\\a.icl", "x");
    EXPECT_FALSE(Editing().NamesMissingPlace(Editing().Field()->text));
    world.prompts.filesToChoose = {"C:\\tc\\icons\\b.dll", "C:\\tc\\c.dll", "C:\\tc\\d.dll"};
    world.prompts.answers = {Answer::Yes, Answer::No, Answer::Cancel};
    EXPECT_TRUE(Editing().Browse());
    EXPECT_EQ(Row(), "Lib=%COMMANDER_PATH%\\icons\\b.dll");
    EXPECT_EQ(world.prompts.questions[0].initialFolder, "C:\\TC\\icons\\");
    EXPECT_EQ(world.prompts.questions[0].fileName, "a.icl");
    EXPECT_EQ(world.prompts.questions[0].pattern, "*.dll;*.icl");
    EXPECT_TRUE(Editing().Browse());
    EXPECT_EQ(Row(), "Lib=C:\\tc\\c.dll");
    EXPECT_FALSE(Editing().Browse());
    EXPECT_EQ(Row(), "Lib=C:\\tc\\c.dll");

    Go("Tool");
    EXPECT_TRUE(Editing().NamesMissingPlace("\"C:\\x y\\z.exe\" /p"));
    world.disk.Put("C:\\x y\\z.exe", "x");
    EXPECT_FALSE(Editing().NamesMissingPlace("\"C:\\x y\\z.exe\" /p"));
    EXPECT_FALSE(Editing().NamesMissingPlace("C:\\x y\\z.exe /p /q"));
    EXPECT_FALSE(Editing().NamesMissingPlace("cm_List"));
    EXPECT_FALSE(Editing().NamesMissingPlace("\\\\server\\share\\x"));
    world.prompts.filesToChoose = {"D:\\a b.exe"};
    EXPECT_TRUE(Editing().Browse());
    EXPECT_EQ(Row(), "Tool=\"D:\\a b.exe\"");
    Go("Dir");
    world.prompts.filesToChoose = {"D:\\folder"};
    EXPECT_TRUE(Editing().Browse());
    EXPECT_EQ(world.prompts.questions.back().fileName, "(folder)");
    EXPECT_EQ(Row(), "Dir=D:\\folder");
}

TEST_F(ValueEditingTest, ChoosingFollowsTheEntry) {
    Start("");
    const std::pair<const char*, ChoosingWay> ways[] = {
        {"On", ChoosingWay::DropDown},     {"Style", ChoosingWay::DropDown},
        {"Sum", ChoosingWay::DropDown},    {"Size", ChoosingWay::DropDown},
        {"Points", ChoosingWay::Text},     {"Text", ChoosingWay::Text},
        {"Font", ChoosingWay::Dialog},     {"Lib", ChoosingWay::Dialog},
        {"Guess", ChoosingWay::Dialog},    {"Back", ChoosingWay::Dialog},
        {"Inverse", ChoosingWay::DropDown}};
    for (const auto& [key, way] : ways) {
        Go(key);
        EXPECT_EQ(Editing().WayToChoose(), way) << key;
    }
}

TEST_F(ValueEditingTest, ColumnsSayWhatRowsHideAndAreKept) {
    Start("[T]\r\nOn=0\r\n");
    KeyColumns& columns = Session().Columns();
    EXPECT_THAT(columns.Shown(), ElementsAre(ShownColumn{KeyColumn::Key, 4000}));
    columns.Toggle(KeyColumn::Meaning);
    columns.Toggle(KeyColumn::State);
    columns.Toggle(KeyColumn::Meaning);
    EXPECT_TRUE(States().IsChecked(Command::ViewColumnState));
    EXPECT_FALSE(States().IsChecked(Command::ViewColumnMeaning));
    columns.Keep({{KeyColumn::State, 900}, {KeyColumn::Key, 5000}});
    EXPECT_EQ(Place().OwnSettings().Values().keyListColumns, "State:900,Key:5000");
    const auto cells = [&columns](KeyNumber key) {
        std::string text;
        for (const KeyColumn column :
             {KeyColumn::Key, KeyColumn::State, KeyColumn::Default, KeyColumn::Meaning,
              KeyColumn::Category, KeyColumn::Section}) {
            text += columns.CellText(key, column) + "|";
        }
        return text;
    };
    EXPECT_EQ(cells(1), "On=0|set|1|off|Cat|T|");
    EXPECT_EQ(cells(3), "Sum|not set|0|none|Cat|T|") << "the default is in force";

    Place().OwnSettings().Values().keyListColumns = "x:1,State:999999,State:5,,";
    EXPECT_THAT(columns.Shown(), ElementsAre(ShownColumn{KeyColumn::Key, 4000},
                                             ShownColumn{KeyColumn::State, 30000}));
    Place().OwnSettings().Values().keyListColumns.clear();
    SessionServices services = world.Services();
    services.hasScreenReader = true;
    Workplace reading(services);
    KeyColumns read(reading, Selection().Rows().Store(), Session().Values());
    EXPECT_THAT(read.Shown(), ElementsAre(ShownColumn{KeyColumn::Key, 4000},
                                          ShownColumn{KeyColumn::State, 2000}));
}

}  // namespace
}  // namespace tamarind
