#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/cProfile.h"
#include "model/Commands.h"
#include "model/DataFile.h"
#include "model/KeyList.h"
#include "model/KeyStates.h"
#include "model/Toolbar.h"
#include "tests/core/fakes/FakeEnvironment.h"
#include "tests/core/fakes/MemoryFileSystem.h"

namespace tamarind {
namespace {

using testing::ElementsAre;

std::shared_ptr<const IniDocument> Parsed(const std::string& bytes) {
    return std::make_shared<const IniDocument>(IniDocument::Parse(bytes, 1252));
}

KeyStore Loaded(const std::string& dataFile) {
    KeyStore store;
    LoadDataFile(
        Parsed(dataFile), "Description not available!", [] {}, store);
    return store;
}

TEST(DataFileTest, EntriesSplitAtTheFirstThreeSlashes) {
    struct Case {
        const char* entry;
        const char* defaultValue;
        const char* description;
    };
    const Case cases[] = {
        {"0///Text", "0", "Text"},
        {"///", "", "Description not available!"},
        {"a///b///c", "a", "b///c"},
        {"plain", "plain", "Description not available!"},
        {"", "", "Description not available!"},
        {"\" 1 ///x \"", " 1 ", "x "},
        {"C:\\a//b///One@Two", "C:\\a//b", "One@Two"},
    };
    for (const Case& testCase : cases) {
        const KeyStore store =
            Loaded("[A]\nCategoryTargetSection=T\nK=" + std::string(testCase.entry) + "\n");
        ASSERT_EQ(store.Size(), 1U) << testCase.entry;
        EXPECT_EQ(store.Record(1).defaultValue, testCase.defaultValue) << testCase.entry;
        EXPECT_EQ(store.Record(1).description, testCase.description) << testCase.entry;
    }
    EXPECT_EQ(DescriptionForDisplay("One@@Two@"), "One\r\n\r\nTwo\r\n");
}

TEST(DataFileTest, SectionsBecomeCategoriesAndKeysRecords) {
    const auto document = Parsed(
        "[targetinifile]\nWcx_ftp=7\n[/Group]\n[No target]\nLost=1\n"
        "[A]\nK1=1\ncategorytargetsection=T\nK1=2\n;K3=3\nno "
        "key\n[B]\nCategoryTargetSection=U\nK1=3\n");
    EXPECT_EQ(GetDataFileTarget(*document), SettingsTarget::WcxFtp);
    EXPECT_EQ(GetDataFileTarget(*Parsed("[A]\n")), SettingsTarget::Wincmd);
    const auto categories = ReadCategories(*document);
    ASSERT_EQ(categories.size(), 4U);
    EXPECT_EQ(categories[0].position, 1U) << "the target section takes a number too";
    EXPECT_TRUE(categories[0].IsHeading());
    EXPECT_EQ(categories[0].Text(), "Group");
    KeyStore store;
    ASSERT_TRUE(LoadDataFile(
        document, "-", [] {}, store));
    ASSERT_EQ(store.Size(), 3U) << "one row for each line, though the first of a name counts";
    EXPECT_EQ(store.Record(2).defaultValue, "1");
    EXPECT_EQ(store.Record(2).targetSection, "T");
    EXPECT_EQ(store.Record(3).category, "B");
    EXPECT_EQ(store.Record(3).targetSection, "U");
}

TEST(DataFileTest, BuffersBoundNamesAndValues) {
    std::string content = "[A]\nCategoryTargetSection=T\n";
    for (int i = 0; i < 500; ++i) {
        content += "Key" + std::to_string(1000000 + i) + "=" + std::string(5000, 'v') + "\n";
    }
    const KeyStore store = Loaded(content);
    // 22 characters go to the first name; 11 to each other one, of which the last is cut.
    EXPECT_EQ(store.Size(), (4094U - 22) / 11 + 1);
    EXPECT_EQ(store.Record(1).defaultValue.size(), 4095U);
    const KeyRecord cut = store.Record(static_cast<RowKey>(store.Size()));
    EXPECT_EQ(cut.keyName, "Ke");
    EXPECT_EQ(cut.description, "Description not available!");
}

TEST(KeyStatesTest, TheFileDecidesStateValueAndLooks) {
    struct Case {
        const char* name;
        const char* settings;
        const char* visible;
        KeyState state;
        bool isChecked;
        bool isGhosted;
        KeyColor color;
        KeyIcon icon;
    };
    const Case cases[] = {
        {"absent", "[Other]\nK=1\n", "K", KeyState::Absent, false, true, KeyColor::Gray,
         KeyIcon::Numeric},
        {"active", "[t]\nk = 5\n", "K=5", KeyState::Active, true, false, KeyColor::Active,
         KeyIcon::Numeric},
        {"empty", "[T]\nK=\n", "K=", KeyState::Active, true, false, KeyColor::Active,
         KeyIcon::Numeric},
        {"commented", "[T]\n;K=7\n", "K=7", KeyState::Commented, false, false, KeyColor::Gray,
         KeyIcon::Commented},
        {"both", "[T]\n;K=7\nK=8\n", "K=8", KeyState::Active, true, false, KeyColor::Active,
         KeyIcon::Numeric},
        {"prose", "[T]\n; K=7\n", "K", KeyState::Absent, false, true, KeyColor::Gray,
         KeyIcon::Numeric},
    };
    MemoryFileSystem disk;
    IniFiles files(disk);
    KeyStore store =
        Loaded("[A]\nCategoryTargetSection=T\nK=1///\n[B]\nCategoryTargetSection=T\nK=x\n");
    for (const Case& testCase : cases) {
        disk.Put("C:\\s.ini", testCase.settings);
        DeriveKeyStates(store, SettingsFiles::Read(files, FakeEnvironment(), "C:\\s.ini"), [] {});
        const KeyRecord record = store.Record(1);
        EXPECT_EQ(VisibleText(record), testCase.visible) << testCase.name;
        EXPECT_EQ(record.initialState, testCase.state) << testCase.name;
        EXPECT_EQ(record.currentState, testCase.state) << testCase.name;
        EXPECT_EQ(record.Looks().isChecked, testCase.isChecked) << testCase.name;
        EXPECT_EQ(record.Looks().isGhosted, testCase.isGhosted) << testCase.name;
        EXPECT_EQ(record.Looks().foreColor, testCase.color) << testCase.name;
        EXPECT_EQ(record.Looks().smallIcon, testCase.icon) << testCase.name;
        EXPECT_EQ(store.Record(2).currentValue, record.currentValue) << testCase.name;
    }
}

TEST(KeyStatesTest, TheDefaultDecidesTheKindOfValue) {
    for (const char* numeric : {"0", "1", "-1", "12abc", "&H10", "0.5"}) {
        EXPECT_EQ(ValueIconIndex(numeric), KeyIcon::Numeric) << numeric;
    }
    for (const char* other : {"", "abc", "0.0", "00", " ", "&H0"}) {
        EXPECT_EQ(ValueIconIndex(other), KeyIcon::Text) << other;
    }
}

TEST(KeyListTest, PendingDeletionsShowTheBareName) {
    KeyRecord record;
    record.keyName = "K";
    record.currentValue = "1";
    for (const KeyState state : {KeyState::Absent, KeyState::ToBeDeleted}) {
        record.currentState = state;
        EXPECT_EQ(VisibleText(record), "K");
    }
    for (const KeyState state :
         {KeyState::Active, KeyState::Commented, KeyState::ValueSet, KeyState::ToBeCommented}) {
        record.currentState = state;
        EXPECT_EQ(VisibleText(record), "K=1");
    }
}

TEST(ToolbarTest, TheShippedToolbarHasTenPicturesAndACommandForEach) {
    int pictures = 0;
    for (const ToolbarButton& button : BuildToolbar(10, kToolbarSpec, kToolbarIds, 0)) {
        if (button.picture >= 0) {
            EXPECT_EQ(button.picture, pictures++);
            const Command command = CommandOfButton(button.name);
            ASSERT_NE(command, Command::None) << button.name;
            EXPECT_EQ(InfoOf(command).textNumber, button.textNumber) << button.name;
        }
    }
    EXPECT_EQ(pictures, 10);
}

TEST(ToolbarTest, TextFormsAreReadUpToTheLastPicture) {
    const auto buttons = BuildToolbar(4, "0A,3,425,1B,0Never", "101,102", 1);
    ASSERT_EQ(buttons.size(), 5U);
    EXPECT_EQ(buttons[2].style, ButtonStyle::Placeholder);
    EXPECT_EQ(buttons[2].width, 25);
    EXPECT_EQ(buttons[3].style, ButtonStyle::Check);
    EXPECT_EQ(buttons[3].textNumber, 102);
    EXPECT_EQ(buttons[4].name, "Never");
    EXPECT_EQ(buttons[4].textNumber, 0);
    EXPECT_EQ(BuildToolbar(3, "0A", "101", 0).size(), 3U) << "nameless buttons fill it up";
}

TEST(CommandsTest, TheTableIsInTheOrderOfTheCommandsAndEachMenuEntryIsInIt) {
    for (const CommandInfo& info : AllCommands()) {
        EXPECT_EQ(&InfoOf(info.command), &info);
    }
    std::size_t entries = 0;
    for (const MenuInfo& menu : MenuBar()) {
        for (const Command command : menu.entries) {
            entries += command == Command::None ? 0U : 1U;
        }
    }
    EXPECT_EQ(entries, AllCommands().size());
}

}  // namespace
}  // namespace tamarind
