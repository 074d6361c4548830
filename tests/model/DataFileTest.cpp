#include <gtest/gtest.h>

#include "model/files/DataFile.h"
#include "model/files/KeyStates.h"
#include "model/keys/KeyList.h"
#include "tests/core/fakes/FakeEnvironment.h"
#include "tests/core/fakes/MemoryFileSystem.h"

namespace tamarind {
namespace {

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
    const struct {
        const char* entry;
        const char* defaultValue;
        const char* description;
    } cases[] = {
        {"///", "", "Description not available!"},        {"a///b///c", "a", "b///c"},
        {"plain", "plain", "Description not available!"}, {"\" 1 ///x \"", " 1 ", "x "},
        {"C:\\a//b///One@Two", "C:\\a//b", "One@Two"},
    };
    for (const auto& testCase : cases) {
        const KeyStore store =
            Loaded("[A]\nCategoryTargetSection=T\nK=" + std::string(testCase.entry) + "\n");
        EXPECT_EQ(store.Record(1).defaultValue, testCase.defaultValue) << testCase.entry;
        EXPECT_EQ(store.Record(1).description, testCase.description) << testCase.entry;
    }
    EXPECT_EQ(DescriptionForDisplay("One@@Two@"), "One\r\n\r\nTwo\r\n");
}

TEST(DataFileTest, SectionsBecomeCategoriesAndKeysRecords) {
    const auto document = Parsed(
        "[targetinifile]\nWcx_ftp=7\n[/Group]\n[No target]\nLost=1\n"
        "[A]\nK1=1\ncategorytargetsection=T\nK1=2\n;K3=3\nprose\n"
        "[B]\nCategoryTargetSection=U\nK1=3\n");
    EXPECT_EQ(GetDataFileTarget(*document), SettingsTarget::WcxFtp);
    EXPECT_EQ(GetDataFileTarget(*Parsed("[A]\n")), SettingsTarget::Wincmd);
    const auto categories = ReadCategories(*document);
    ASSERT_EQ(categories.size(), 4U);
    EXPECT_EQ(categories[0].position, 1U) << "the target section takes a number too";
    EXPECT_EQ(categories[0].Text(), "Group");
    KeyStore store;
    ASSERT_TRUE(LoadDataFile(
        document, "-", [] {}, store));
    ASSERT_EQ(store.Size(), 3U) << "one row for each line, though the first of a name counts";
    EXPECT_EQ(store.Record(2).defaultValue, "1");
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
    const KeyRecord cut = store.Record(static_cast<KeyNumber>(store.Size()));
    EXPECT_EQ(cut.keyName, "Ke");
    EXPECT_EQ(cut.description, "Description not available!");
}

TEST(KeyStatesTest, TheFileDecidesStateAndValue) {
    const struct {
        const char* settings;
        const char* visible;
        KeyState state;
    } cases[] = {
        {"[Other]\nK=1\n", "K", KeyState::Absent},     {"[t]\nk = 5\n", "K=5", KeyState::Active},
        {"[T]\nK=\n", "K=", KeyState::Active},         {"[T]\n;K=7\n", "K=7", KeyState::Commented},
        {"[T]\n;K=7\nK=8\n", "K=8", KeyState::Active}, {"[T]\n; K=7\n", "K", KeyState::Absent},
    };
    MemoryFileSystem disk;
    IniFiles files(disk);
    KeyStore store =
        Loaded("[A]\nCategoryTargetSection=T\nK=1///\n[B]\nCategoryTargetSection=T\nK=x\n");
    for (const auto& testCase : cases) {
        disk.Put("C:\\s.ini", testCase.settings);
        const auto settings = SettingsFiles::Read(files, FakeEnvironment(), "C:\\s.ini");
        DeriveKeyStates(store, settings, [] {});
        const KeyRecord record = store.Record(1);
        EXPECT_EQ(VisibleText(record), testCase.visible) << testCase.settings;
        EXPECT_EQ(record.initialState, testCase.state) << testCase.settings;
        EXPECT_EQ(store.Record(2).currentValue, record.currentValue) << testCase.settings;
    }
}

TEST(KeyStatesTest, TheDefaultDecidesThePicture) {
    for (const char* numeric : {"0", "-1", "12abc", "&H10", "0.5"}) {
        EXPECT_EQ(ValueIconIndex(numeric), KeyIcon::Numeric) << numeric;
    }
    for (const char* other : {"", "abc", "00", " ", "&H0"}) {
        EXPECT_EQ(ValueIconIndex(other), KeyIcon::Text) << other;
    }
}

}  // namespace
}  // namespace tamarind
