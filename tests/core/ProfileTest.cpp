#include <gtest/gtest.h>

#include "core/LeadingNumber.h"
#include "core/MissingValueMarker.h"
#include "core/cProfile.h"
#include "tests/core/fakes/MemoryFileSystem.h"

namespace tamarind {
namespace {

const std::string kPath = "C:\\TC\\wincmd.ini";

class ProfileTest : public testing::Test {
protected:
    ProfileTest() { m_files.SetSystemCodePage(1252); }

    void Put(const std::string& bytes) {
        m_disk.Put(kPath, bytes);
        m_disk.Wait(60);
    }

    // The three lists, each with its count; the last entry is to be empty.
    std::string Lists(std::size_t bufferSize = cProfile::kBufferSize) {
        m_profile.ReadFileSectionsName(kPath, bufferSize);
        m_profile.ReadSectionKeysNameOnly("A", kPath, bufferSize);
        m_profile.ReadSectionKeysNameAndValue("A", kPath, bufferSize);
        std::string lists;
        const auto add = [&](std::int32_t count, auto list) {
            lists += std::to_string(count) + ":";
            for (std::int32_t i = 0; i <= count; ++i) {
                lists += list(i) + "|";
            }
            EXPECT_TRUE(count < 0 || list(count + 1).empty());
            EXPECT_THROW(list(-1), std::out_of_range);
            EXPECT_THROW(list(count + 2), std::out_of_range);
        };
        add(m_profile.FileSectionsNameCount,
            [&](std::int32_t i) { return m_profile.FileSectionsNameList(i); });
        add(m_profile.SectionKeysNameOnlyCount,
            [&](std::int32_t i) { return m_profile.SectionKeysNameOnlyList(i); });
        add(m_profile.SectionKeysNameAndValueCount,
            [&](std::int32_t i) { return m_profile.SectionKeysNameAndValueList(i); });
        return lists;
    }

    MemoryFileSystem m_disk;
    IniFiles m_files{m_disk};
    cProfile m_profile{m_files};
};

TEST_F(ProfileTest, Lists) {
    const struct {
        std::string bytes, expected;
        std::size_t bufferSize = cProfile::kBufferSize;
    } cases[] = {
        {"", "-1:-1:-1:"},
        {"x=1\n", "-1:-1:-1:"},
        {"[A]\n[B]\n", "1:A|B|-1:-1:"},
        {"[A]\nx = \"1\" \n;y=2\n;prose\n\n z\nX=3\n[a]\nq=1\n", "1:A|a|1:x|X|2:x=\"1\"|z|X=3|"},
        {"[A]\nx=\xEF\xBB\xBF中\n\xE4=\n", "0:A|1:x|ä|1:x=中|ä=|"},
        // Lists are cut so that two NULs fit into the buffer behind them.
        {"[A]\nxyz=1\nabc=2\n", "0:A|1:xyz|abc|1:xyz=1|ab|", 10},
        {"[A]\nxyz=1\nabc=2\n", "0:A|1:xyz|abc|1:xyz=1|a|", 9},
        {"[A]\nxyz=1\nabc=2\n", "0:A|1:xyz|ab|0:xyz=1|", 8},
        {"[A]\nxyz=1\n", "0:A|0:xy|0:xy|", 4},
        {"[A]\nxyz=1\n", "-1:-1:-1:", 2},
        {"\xEF\xBB\xBF[A]\n\U0001F600\U0001F600=\n", "0:A|0:\U0001F600|0:\U0001F600|", 5},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.bytes);
        Put(c.bytes);
        EXPECT_EQ(Lists(c.bufferSize), c.expected);
    }
    m_disk.Remove(kPath);
    EXPECT_EQ(Lists(), "-1:-1:-1:");
}

TEST_F(ProfileTest, SortsByCharacterCodeAndCountsNamedEntries) {
    Put("\xEF\xBB\xBF[A]\nalpha=\nZeta=\n\uFF21=\n\U0001F600=\nZ=\n=2\nlast=\n");
    m_profile.ReadSectionKeysNameOnly("A", kPath);
    EXPECT_EQ(m_profile.SectionKeysNameOnlyCount, 5);
    m_profile.SortKeysNameOnlyList();
    std::string sorted;
    for (std::int32_t i = 0; i <= 6; ++i) {
        sorted += m_profile.SectionKeysNameOnlyList(i) + "|";
    }
    // The entry without a name takes a place in the list; the last one is beyond the count.
    EXPECT_EQ(sorted, "|Z|Zeta|alpha|\U0001F600|\uFF21|last|");
}

TEST_F(ProfileTest, ReadsThroughABuffer) {
    const std::string longText(4096, 'v');
    Put("[A]\nlong=" + longText + "\ntabs=\"\t \"\n\xE4=\xEF\xBB\xBF\U0001F600\U0001F600\nx=\n");
    const auto read = [&](const char* key, const std::string& fallback = "d",
                          std::size_t size = cProfile::kBufferSize) {
        return m_profile.ReadStringValue("A", key, fallback, kPath, size);
    };
    EXPECT_EQ(read("long"), longText.substr(1));
    EXPECT_EQ(read("long", "", 4), "vvv");
    EXPECT_EQ(read("long", "", 1), "");
    EXPECT_EQ(read("long", "", 0), "");
    EXPECT_EQ(read("ä", "", 4), "\U0001F600");
    EXPECT_EQ(read("tabs"), "\t ");
    EXPECT_EQ(read("x", std::string(MissingValueMarker)), "");
    EXPECT_EQ(read("none", std::string(MissingValueMarker)), MissingValueMarker);
    EXPECT_EQ(read("none", " \t d \t  "), " \t d \t");
    EXPECT_EQ(read("none", longText), longText.substr(1));
}

TEST_F(ProfileTest, Numbers) {
    const struct {
        const char* text;
        double expected;
    } cases[] = {
        {"12abc", 12}, {"abc", 0}, {"0x10", 0},   {"&H10", 16},      {"&hFfg", 255}, {"&O178", 15},
        {"& 1", 0},    {"&H", 0},  {"  \t7 ", 7}, {"-3.5e2x", -350}, {"+.5", 0.5},   {"1e", 1},
        {"1e+", 1},    {".", 0},   {"-", 0},      {"1.2.3", 1.2},    {"1,5", 1},     {"", 0},
        {"e5", 0},     {"--1", 0}, {"5.", 5},     {"infinity", 0},   {"nan", 0},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(LeadingNumber(c.text), c.expected) << c.text;
    }
    EXPECT_EQ(LeadingInteger("-2.9"), -2);
    EXPECT_EQ(LeadingInteger("1e300"), 2147483647);
    EXPECT_EQ(LeadingInteger("-2147483649"), -2147483647 - 1);
    Put("[A]\nx=7\n");
    EXPECT_EQ(m_profile.ReadIntegerValue("A", "x", "5", kPath), 7);
    EXPECT_EQ(m_profile.ReadIntegerValue("A", "y", " 5", kPath), 5);
}

TEST_F(ProfileTest, Writes) {
    const std::string marker(MissingValueMarker);
    m_profile.WriteStringValue("A", "no", "  " + marker + " ", kPath);
    EXPECT_FALSE(m_disk.Has(kPath));
    m_profile.WriteStringValue("A", "x", "  a b ", kPath);
    m_profile.WriteStringValue("A", "q", "  \t ", kPath, true);
    m_profile.WriteStringValue("A", "m", "///CAN" + marker.substr(6), kPath);
    m_profile.WriteIntegerValue("A", "n", -7, kPath);
    m_profile.WriteIntegerValue("B", "t", "  8 ", kPath);
    EXPECT_EQ(m_disk.BytesOf(kPath), "[A]\r\nx=a b\r\nq=\"\t\"\r\nm=///CAN" + marker.substr(6) +
                                         "\r\nn=-7\r\n[B]\r\nt=8\r\n");
    m_profile.DeleteValue("A", "m", kPath);
    m_profile.DeleteSection("B", kPath);
    EXPECT_EQ(m_disk.BytesOf(kPath), "[A]\r\nx=a b\r\nq=\"\t\"\r\nn=-7\r\n");
    EXPECT_EQ(m_profile.ReadStringValue("A", "q", "", kPath), "\t");
    m_profile.DeleteValue("A", "m", "C:\\none.ini");
    EXPECT_EQ(m_disk.Count(), 1U);
}

TEST_F(ProfileTest, ATransactionReadsAndReplacesOnce) {
    Put("[A]\nx=0\ny=0\n[B]\nz=0\n");
    ProfileTransaction transaction(m_files, kPath);
    EXPECT_TRUE(transaction.IsEmpty());
    transaction.SetValue("A", "x", " 1 ");
    transaction.DeleteValue("A", "y");
    transaction.SetValue("A", "y", "2");
    transaction.DeleteSection("B");
    EXPECT_EQ(m_disk.reads + m_disk.replaces, 0);
    EXPECT_TRUE(transaction.Commit().Succeeded());
    EXPECT_EQ(m_disk.BytesOf(kPath), "[A]\nx= 1 \ny=2\n");
    EXPECT_EQ(m_disk.reads, 1);
    EXPECT_EQ(m_disk.replaces, 1);
    // Nothing differs in the end: y is removed and written again.
    ProfileTransaction nothing(m_files, kPath);
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
    const struct {
        std::string key, value;
        IniEdit refused = IniEdit::Unchanged;
        FileError read = FileError::None;
        FileError replace = FileError::None;
    } cases[] = {
        {"中", "1", IniEdit::NameNotEncodable},
        {"y", "1\n", IniEdit::TextNotStorable},
        {"y", "1", IniEdit::Unchanged, FileError::AccessDenied},
        {"y", "1", IniEdit::Unchanged, FileError::TooLarge},
        {"y", "1", IniEdit::Unchanged, FileError::None, FileError::ReadOnly},
    };
    for (const auto& c : cases) {
        m_disk.FailReads(kPath, c.read);
        m_disk.FailReplaces(kPath, c.replace);
        ProfileTransaction transaction(m_files, kPath);
        transaction.SetValue("A", "x", "1");
        transaction.SetValue("A", c.key, c.value);
        const ProfileResult result = transaction.Commit();
        EXPECT_FALSE(result.Succeeded());
        EXPECT_EQ(result.refused, c.refused);
        EXPECT_EQ(result.error, c.read == FileError::None ? c.replace : c.read);
        EXPECT_EQ(m_disk.BytesOf(kPath), before);
    }
    // A missing folder: nothing to remove there is no error, and writing says what is missing.
    m_disk.FailReads("D:\\no\\x.ini", FileError::FolderMissing);
    m_disk.FailReplaces("D:\\no\\x.ini", FileError::FolderMissing);
    EXPECT_TRUE(m_profile.DeleteValue("A", "x", "D:\\no\\x.ini").Succeeded());
    EXPECT_EQ(m_profile.WriteStringValue("A", "x", "1", "D:\\no\\x.ini").error,
              FileError::FolderMissing);
}

TEST_F(ProfileTest, ReadsAFileAgainOnlyWhenItMayHaveChanged) {
    const auto x = [&] { return m_profile.ReadStringValue("A", "x", "none", kPath); };
    EXPECT_EQ(x(), "none");
    m_disk.Put(kPath, "[A]\nx=1\n");
    EXPECT_EQ(x(), "1");
    // As young as it is, the file may change without a new stamp.
    m_disk.Put(kPath, "[A]\nx=2\n");
    EXPECT_EQ(x(), "2");
    m_disk.Wait(2.0);
    x();
    m_disk.reads = 0;
    x();
    EXPECT_EQ(m_disk.reads, 1);
    m_disk.Wait(0.1);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(x(), "2");
    }
    EXPECT_EQ(m_disk.reads, 2);
    // Same size, other time; other encoding; gone; back; with an error.
    m_disk.Put(kPath, "[A]\nx=3\n");
    m_disk.Wait(60);
    EXPECT_EQ(x(), "3");
    EXPECT_EQ(m_disk.reads, 3);
    EXPECT_EQ(m_files.Read(kPath, 936).document->FindValue("A", "x"), "3");
    EXPECT_EQ(m_disk.reads, 4);
    m_disk.Remove(kPath);
    EXPECT_EQ(x(), "none");
    EXPECT_EQ(m_files.Read(kPath).error, FileError::NotFound);
    m_disk.Put(kPath, "[A]\nx=4\n");
    EXPECT_EQ(x(), "4");
    m_disk.FailReads(kPath, FileError::InUse);
    EXPECT_EQ(m_files.Read(kPath).error, FileError::InUse);
    EXPECT_EQ(x(), "none");
    // A clock that was set back makes files from the future, which are never trusted.
    m_disk.FailReads(kPath, FileError::None);
    m_disk.now -= 600'000'000;
    x();
    m_disk.reads = 0;
    x();
    EXPECT_EQ(m_disk.reads, 1);
}

}  // namespace
}  // namespace tamarind
