#include <gtest/gtest.h>

#include "model/files/DataFile.h"
#include "model/keys/KeyList.h"

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
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"///", "", "Description not available!"},        {"a///b///c", "a", "b///c"},
        {"plain", "plain", "Description not available!"}, {"\" 1 ///x \"", " 1 ", "x "},
        {"C:\\a//b///One@Two", "C:\\a//b", "One@Two"},
    };
    for (const auto& [entry, defaultValue, description] : cases) {
        const KeyStore store =
            Loaded("[A]\nCategoryTargetSection=T\nK=" + std::string(entry) + "\n");
        EXPECT_EQ(store.Record(1).defaultValue, defaultValue) << entry;
        EXPECT_EQ(store.Record(1).description, description) << entry;
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

TEST(DataFileTest, NothingIsLeftOfTheFormerFile) {
    KeyStore store;
    for (const auto& [second, count] : {std::pair("A=1\n", 2), {"B=1\n", 1}}) {
        const std::string content =
            std::string("[X]\nCategoryTargetSection=T\nA=1\n[Y]\nCategoryTargetSection=T\n") +
            second;
        LoadDataFile(
            std::make_shared<const IniDocument>(IniDocument::Parse(content, 1252)), "", [] {},
            store);
        int twins = 0;
        store.ForEachTwin(1, [&](KeyNumber) { ++twins; });
        EXPECT_EQ(twins, count);
    }
}

TEST(DataFileTest, TheDefaultDecidesThePicture) {
    for (const std::string text : {"0", "-1", "12abc", "0.5", "", "abc", "00", "&H0"}) {
        const bool isNumeric = text.find_first_of("125") < text.size() || text == "0";
        EXPECT_EQ(ValueIconIndex(text) == KeyIcon::Numeric, isNumeric) << text;
    }
}

}  // namespace
}  // namespace tamarind
