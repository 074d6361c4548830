#include <gtest/gtest.h>

#include "core/ini/cProfile.h"
#include "core/text/LeadingNumber.h"
#include "core/text/MissingValueMarker.h"
#include "tests/core/fakes/MemoryFileSystem.h"

namespace tamarind {
namespace {

const std::string kProfilePath = "C:\\TC\\wincmd.ini";

class ProfileTest : public testing::Test {
protected:
    ProfileTest() { m_files.SetSystemCodePage(1252); }

    void Put(const std::string& bytes) {
        m_disk.Put(kProfilePath, bytes);
        m_disk.Wait(60);
    }

    MemoryFileSystem m_disk;
    IniFiles m_files{m_disk};
    cProfile m_profile{m_files};
};

TEST_F(ProfileTest, ListsAreReadAndSorted) {
    Put("\xEF\xBB\xBF[A]\nz = \"1\" \n;y=2\nprose\n\uFF21=\n\U0001F600=\nZ=\nz=3\n[a]\nq=1\n");
    m_profile.SortKeysNameOnlyList();  // empty
    m_profile.ReadFileSectionsName(kProfilePath);
    m_profile.ReadSectionKeysNameOnly("A", kProfilePath);
    m_profile.ReadSectionKeysNameAndValue("A", kProfilePath, 14);
    m_profile.SortKeysNameOnlyList();
    std::string all;
    for (std::int32_t i = 0; i <= m_profile.FileSectionsNameCount; ++i) {
        all += m_profile.FileSectionsNameList(i) + "|";
    }
    for (std::int32_t i = 0; i <= m_profile.SectionKeysNameOnlyCount; ++i) {
        all += m_profile.SectionKeysNameOnlyList(i) + "|";
    }
    for (std::int32_t i = 0; i <= m_profile.SectionKeysNameAndValueCount; ++i) {
        all += m_profile.SectionKeysNameAndValueList(i) + "|";
    }
    EXPECT_EQ(m_profile.FileSectionsNameList(m_profile.FileSectionsNameCount + 1), "");
    EXPECT_EQ(all, "A|a|Z|z|z|\U0001F600|\uFF21|z=\"1\"|prose|");
}

TEST_F(ProfileTest, ReadsThroughABuffer) {
    const std::string longText(4096, 'v');
    Put("[A]\nlong=" + longText + "\n\xE4=\xEF\xBB\xBF\U0001F600\U0001F600\n");
    EXPECT_EQ(m_profile.ReadStringValue("A", "long", "", kProfilePath), longText.substr(1));
    EXPECT_EQ(m_profile.ReadStringValue("A", "long", "", kProfilePath, 0), "");
    EXPECT_EQ(m_profile.ReadStringValue("A", "ä", "", kProfilePath, 4), "\U0001F600");
    EXPECT_EQ(m_profile.ReadStringValue("A", "none", " \t d \t  ", kProfilePath), " \t d \t");
}

TEST_F(ProfileTest, Numbers) {
    const std::tuple<const char*, double> cases[] = {
        {"12abc", 12}, {"0x10", 0},     {"&H10", 16},   {"&hFfg", 255},    {"&O178", 15},
        {"&H1,2", 1},  {"&H", 0},       {"  \t7 ", 7},  {"-3.5e2x", -350}, {"+.5", 0.5},
        {"1e+", 1},    {".", 0},        {"1.2.3", 1.2}, {"1,5", 1},        {"", 0},
        {"--1", 0},    {"infinity", 0},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(LeadingNumber(text), expected) << text;
    }
    EXPECT_EQ(LeadingInteger("1e300"), 2147483647);
    EXPECT_EQ(LeadingInteger("-2147483649"), -2147483647 - 1);
    Put("[A]\nx=7\n");
    EXPECT_EQ(m_profile.ReadIntegerValue("A", "x", "5", kProfilePath), 7);
}

TEST_F(ProfileTest, Writes) {
    const std::string marker(MissingValueMarker);
    m_profile.WriteStringValue("A", "no", "  " + marker + " ", kProfilePath);
    EXPECT_FALSE(m_disk.Has(kProfilePath));
    m_profile.WriteStringValue("A", "x", "  a b ", kProfilePath);
    m_profile.WriteStringValue("A", "q", "  \t ", kProfilePath, true);
    m_profile.WriteStringValue("A", "m", "///CAN" + marker.substr(6), kProfilePath);
    m_profile.WriteIntegerValue("A", "n", -7, kProfilePath);
    m_profile.WriteIntegerValue("B", "t", "  8 ", kProfilePath);
    EXPECT_EQ(m_disk.BytesOf(kProfilePath), "[A]\r\nx=a b\r\nq=\"\t\"\r\nm=///CAN" +
                                                marker.substr(6) + "\r\nn=-7\r\n[B]\r\nt=8\r\n");
    EXPECT_EQ(m_profile.ReadStringValue("A", "q", "", kProfilePath), "\t");
    Put("[A]\nx=\"\"abc\"\"\n");
    m_profile.WriteStringValue("A", "x", "abc", kProfilePath, true);
    EXPECT_EQ(m_profile.ReadStringValue("A", "x", "", kProfilePath), "abc");
    m_profile.DeleteValue("A", "m", "C:\\none.ini");
    EXPECT_FALSE(m_disk.Has("C:\\none.ini"));
}

TEST_F(ProfileTest, ATransactionReadsAndReplacesOnce) {
    Put("[A]\nx=0\ny=0\n[B]\nz=0\n");
    ProfileTransaction transaction(m_files, kProfilePath);
    transaction.SetValue("A", "x", " 1 ");
    transaction.DeleteValue("A", "y");
    transaction.SetValue("A", "y", "2");
    transaction.DeleteSection("B");
    EXPECT_TRUE(transaction.Commit().Succeeded());
    EXPECT_EQ(m_disk.BytesOf(kProfilePath), "[A]\nx= 1 \ny=2\n");
    EXPECT_EQ(m_disk.reads, 1);
    EXPECT_EQ(m_disk.replaces, 1);
    // Nothing differs in the end: y is removed and written again.
    ProfileTransaction nothing(m_files, kProfilePath);
    nothing.SetValue("a", "X", "1");
    nothing.DeleteValue("A", "none");
    nothing.DeleteSection("B");
    nothing.DeleteValue("A", "y");
    nothing.SetValue("A", "y", "2");
    EXPECT_TRUE(nothing.Commit().Succeeded());
    EXPECT_EQ(m_disk.replaces, 1);
}

TEST_F(ProfileTest, AFailedTransactionLeavesTheFile) {
    const std::string before = "[A]\nx=0\n";
    Put(before);
    const auto write = [&](const std::string& key) {
        ProfileTransaction transaction(m_files, kProfilePath);
        transaction.SetValue("A", "x", "1");
        transaction.SetValue("A", key, "1");
        const WriteResult result = transaction.Commit();
        EXPECT_FALSE(result.Succeeded());
        EXPECT_EQ(m_disk.BytesOf(kProfilePath), before);
        return result;
    };
    EXPECT_EQ(write("中").refused, IniEdit::NameNotEncodable);
    m_disk.FailReplaces(kProfilePath, FileError::ReadOnly);
    EXPECT_EQ(write("y").error, FileError::ReadOnly);
    m_disk.FailReads(kProfilePath, FileError::TooLarge);
    EXPECT_EQ(write("y").error, FileError::TooLarge);
    // A missing folder: nothing to remove there is no error, and writing says what is missing.
    const std::string none = "D:\\no\\x.ini";
    m_disk.FailReads(none, FileError::FolderMissing);
    m_disk.FailReplaces(none, FileError::FolderMissing);
    EXPECT_TRUE(m_profile.DeleteValue("A", "x", none).Succeeded());
    EXPECT_EQ(m_profile.WriteStringValue("A", "x", "1", none).error, FileError::FolderMissing);
}

TEST_F(ProfileTest, ReadsAFileAgainOnlyWhenItMayHaveChanged) {
    const struct {
        const char* bytes;  // that are put there, if any
        double wait;        // until it is read
        bool isHeld;        // from then on
        const char* expected;
        int reads;
        FileError error = FileError::None;
    } steps[] = {
        {nullptr, 0, false, "none", 1},
        {"[A]\nx=1\n", 0, false, "1", 1},
        // As young as it is, the file may change without a new stamp.
        {"[A]\nx=2\n", 0, true, "2", 1},
        // Later it need not be read again, as long as somebody holds it.
        {nullptr, 2.1, true, "2", 1},
        {nullptr, 0, false, "2", 0},
        {nullptr, 0, true, "2", 1},
        // Same size, other time; with an error.
        {"[A]\nx=3\n", 60, true, "3", 1},
        {"[A]\nx=4\n", 0, true, "none", 1, FileError::InUse},
    };
    IniSnapshot held;
    const auto read = [&] {
        m_disk.reads = 0;
        return m_profile.ReadStringValue("A", "x", "none", kProfilePath);
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(&step - steps);
        if (step.bytes != nullptr) {
            m_disk.Put(kProfilePath, step.bytes);
        }
        m_disk.Wait(step.wait);
        m_disk.FailReads(kProfilePath, step.error);
        EXPECT_EQ(read(), step.expected);
        EXPECT_EQ(m_disk.reads, step.reads);
        held = step.isHeld ? m_files.Read(kProfilePath) : IniSnapshot();
        EXPECT_EQ(held.error, step.error);
    }
    m_disk.FailReads(kProfilePath, FileError::None);
    EXPECT_EQ(read(), "4");
    EXPECT_EQ(m_files.Read(kProfilePath, 936).document->FindValue("A", "x"), "4");
    EXPECT_EQ(m_disk.reads, 2) << "in another encoding it is another document";
    // A clock that was set back makes files from the future, which are never trusted.
    m_disk.now -= 600'000'000;
    held = m_files.Read(kProfilePath);
    read();
    EXPECT_EQ(m_disk.reads, 1);
    m_disk.Remove(kProfilePath);
    EXPECT_EQ(m_files.Read(kProfilePath).error, FileError::NotFound);
}

}  // namespace
}  // namespace tamarind
