// Replacements and backups over a disk in memory that fails and stops where it is told to.
#include "core/files/SafeReplace.h"

#include <gtest/gtest.h>

#include "core/files/Leftovers.h"
#include "core/ini/IniTransaction.h"
#include "tests/core/fakes/FaultyDisk.h"

namespace tamarind {
namespace {

const std::string kPath = "C:\\TC\\Wincmd.ini";
const std::string kFolder = "C:\\TC\\Wincmd.ini backups\\";
const std::string kOld = "[A]\r\nx=old, and longer than the half of the other\r\n";
const std::string kNew =
    "[A]\r\nx=new\r\n[B]\r\ny=more keys than before, so that the file grows\r\n";

constexpr std::uint64_t kSecond = 10'000'000;

bool HasLeftovers(const FaultyDisk& disk, const std::string& mark = ".~") {
    const std::vector<std::string> names = disk.Names();
    return std::any_of(names.begin(), names.end(), [&](const std::string& name) {
        return name.find(mark) != std::string::npos;
    });
}

FileError Save(FaultyDisk& disk, const std::string& bytes, Backup backup = Backup::Yes) {
    return DiskFileSystem(disk).Replace(kPath, bytes, backup);
}

std::string OldPath(const std::string& bytes, const std::string& beside = kPath) {
    return LeftoverPath(beside, LeftoverKind::Old, bytes);
}
std::string WholePath(const std::string& bytes) {
    return LeftoverPath(kPath, LeftoverKind::Whole, bytes);
}
const std::string kAmongBackups = kFolder + "Wincmd.ini";

// The contents of the backups, newest first.
std::string Backups(FaultyDisk& disk) {
    std::string contents;
    for (const BackupFile& backup : SafeReplace(disk).ListBackups(kPath)) {
        contents += (backup.isFirst ? "first:" : "") + disk.BytesOf(backup.path) + " ";
    }
    return contents;
}

// Where the save before was interrupted.
enum class Interrupted { No, JustBeforeItsEnd, WhileReplacing };

struct Scenario {
    const char* name;
    Backup backup;
    bool isThere;
    int links;
    const std::string& bytes;  // that are saved
    bool hasReplace = true;
    Interrupted interrupted = Interrupted::No;
};

const Scenario kScenarios[] = {
    {"new file", Backup::Yes, false, 1, kNew},
    {"without backup", Backup::No, true, 1, kNew},
    {"with backup", Backup::Yes, true, 1, kNew},
    {"after a crash", Backup::Yes, true, 1, kNew, true, Interrupted::JustBeforeItsEnd},
    {"after a crash that left no file", Backup::No, true, 1, kNew, true,
     Interrupted::WhileReplacing},
    {"with backup, no function to replace", Backup::Yes, true, 1, kNew, false},
    {"hard links", Backup::Yes, true, 2, kNew},
    {"hard links, after a crash", Backup::Yes, true, 2, kNew, true, Interrupted::JustBeforeItsEnd},
    {"hard links, shorter, without backup", Backup::No, true, 2, kOld},
};

void Prepare(FaultyDisk& disk, const Scenario& scenario, const std::string& old) {
    if (scenario.isThere) {
        disk.Put(kPath, "first");
        for (int backup = 0; backup < 12 && scenario.backup == Backup::Yes; ++backup) {
            disk.now += kSecond;
            Save(disk, std::to_string(backup));
        }
        disk.now += kSecond;
        disk.Put(kPath, old);
    }
    disk.hasReplace = scenario.hasReplace;
    if (scenario.interrupted == Interrupted::WhileReplacing) {
        disk.Move(kPath, OldPath(old), MoveMode::KeepExisting);
    } else if (scenario.interrupted == Interrupted::JustBeforeItsEnd && scenario.links > 1) {
        disk.Put(WholePath(old), old);
        disk.Put(kPath, "torn");
    } else if (scenario.interrupted == Interrupted::JustBeforeItsEnd) {
        disk.Put(OldPath("!", kAmongBackups), "!");
    }
    if (scenario.links > 1) {
        disk.PutHardLink("C:\\TC\\other.ini", kPath);
    }
}

// One save with a fault at the call that the plan says.
class FaultySave {
public:
    FaultySave(const Scenario& scenario, const FaultyDisk::Plan& plan)
        : m_scenario(scenario),
          m_fault(plan.fault),
          m_isInterrupted(scenario.interrupted == Interrupted::JustBeforeItsEnd),
          m_old(&scenario.bytes == &kOld ? kNew : kOld),
          m_before(scenario.isThere ? m_old : "(none)") {
        Prepare(m_disk, scenario, m_old);
        m_disk.calls = 0;
        m_disk.plan = plan;
        m_error = Save(m_disk, scenario.bytes, scenario.backup);
        m_hasStruck = m_disk.calls >= plan.call;
    }

    // False if the save ended before the fault.
    bool Check() {
        const bool isSaved = m_error == FileError::None;
        if (IsOverWhenSaveEnds()) {
            EXPECT_EQ(m_disk.BytesOf(kPath), isSaved ? m_scenario.bytes : m_before);
            EXPECT_TRUE(isSaved || !HasLeftovers(m_disk, ".~new-"));
        }
        EXPECT_TRUE(m_fault != Fault::ShortWrite || isSaved);
        EXPECT_TRUE(m_fault != Fault::LostWrite || isSaved || m_error == FileError::NotVerified);
        EXPECT_TRUE(m_fault != Fault::BadWrites || isSaved || m_error == FileError::Other);
        EXPECT_TRUE(m_fault != Fault::DiskFull || isSaved || m_error == FileError::DiskFull);
        m_disk.Restart();
        ExpectWholeFile(isSaved);
        ExpectBackups(isSaved);
        // The next save puts everything in order.
        EXPECT_EQ(Save(m_disk, "z", m_scenario.backup), FileError::None);
        EXPECT_EQ(m_disk.BytesOf(kPath), "z");
        EXPECT_FALSE(HasLeftovers(m_disk)) << testing::PrintToString(m_disk.Names());
        return m_hasStruck;
    }

private:
    // Whether the fault leaves the program the means to put things right at once.
    bool IsOverWhenSaveEnds() const {
        return m_fault != Fault::CrashAfter && m_fault != Fault::CrashInside &&
               m_fault != Fault::Forever && m_scenario.interrupted != Interrupted::WhileReplacing &&
               (m_scenario.links == 1 || (m_fault != Fault::BadWrites && !m_isInterrupted));
    }
    bool IsWhole(const std::string& bytes) const {
        return bytes == m_before || bytes == m_scenario.bytes;
    }

    // On the bare disk, and as the program reads it when it starts again.
    void ExpectWholeFile(bool isSaved) {
        EXPECT_TRUE(IsWhole(m_disk.BytesOf(kPath)) || m_disk.BytesOf(OldPath(m_old)) == m_old ||
                    m_disk.BytesOf(OldPath(m_old, kAmongBackups)) == m_old ||
                    m_disk.BytesOf(WholePath(m_old)) == m_old);
        const FileContent content = DiskFileSystem(m_disk).Read(kPath, 1000);
        const std::string bytes = content.error == FileError::NotFound ? "(none)" : content.bytes;
        EXPECT_TRUE(isSaved ? bytes == m_scenario.bytes : IsWhole(bytes)) << bytes;
        EXPECT_TRUE(m_scenario.links == 1 || m_disk.BytesOf("C:\\TC\\other.ini") == bytes);
    }

    // All whole, but for what an interrupted overwriting left: that is kept to be on the safe side.
    void ExpectBackups(bool isSaved) {
        const bool hasBackups = m_scenario.backup == Backup::Yes && m_scenario.isThere;
        const std::vector<BackupFile> backups = SafeReplace(m_disk).ListBackups(kPath);
        if (isSaved && hasBackups) {
            // What an earlier save has left may come after it.
            const bool isFirst = m_disk.BytesOf(backups.at(0).path) == m_old;
            EXPECT_TRUE(isFirst ||
                        (m_isInterrupted && m_disk.BytesOf(backups.at(1).path) == m_old));
        }
        int firsts = 0;
        int others = 0;
        bool hasInterrupted = false;
        for (const BackupFile& backup : backups) {
            const std::string kept = m_disk.BytesOf(backup.path);
            EXPECT_TRUE(!backup.isFirst || !hasBackups || kept == "first");
            firsts += backup.isFirst;
            hasInterrupted = hasInterrupted || kept == "!";
            others +=
                kept != "first" && kept.size() > 2 && kept != m_old && kept != m_scenario.bytes;
        }
        EXPECT_LE(others, (m_scenario.links - 1) * (m_isInterrupted ? 2 : 1));
        EXPECT_EQ(firsts, backups.empty() ? 0 : 1);
        EXPECT_EQ(hasInterrupted, m_isInterrupted && m_scenario.links == 1);
    }

    const Scenario& m_scenario;
    const Fault m_fault;
    const bool m_isInterrupted;
    const std::string m_old, m_before;
    FaultyDisk m_disk;
    FileError m_error = FileError::None;
    bool m_hasStruck = false;
};

TEST(SafeReplaceTest, TheFileIsWholeWhateverFails) {
    const FaultyDisk::Plan plans[] = {
        {Fault::Once, CallError::Shared},
        {Fault::Once, CallError::Other},
        {Fault::Once, CallError::Unsupported},
        {Fault::Forever, CallError::AccessDenied},
        {Fault::Forever, CallError::Other},
        {Fault::ShortWrite},
        {Fault::LostWrite},
        {Fault::BadWrites},
        {Fault::DiskFull},
        {Fault::CrashAfter},
        {Fault::CrashAfter, CallError::Other, true},
        {Fault::CrashInside},
        {Fault::CrashInside, CallError::Other, true},
    };
    for (const Scenario& scenario : kScenarios) {
        for (FaultyDisk::Plan plan : plans) {
            SCOPED_TRACE(std::string(scenario.name) + ", fault " + std::to_string(int(plan.fault)));
            do {
                ++plan.call;
            } while (!HasFailure() && FaultySave(scenario, plan).Check());
            EXPECT_GT(plan.call, 1);
            ASSERT_FALSE(HasFailure()) << "at call " << plan.call;
        }
    }
}

TEST(SafeReplaceTest, ErrorsOfTheReplacementOneByOne) {
    using E = CallError;
    using Results = std::deque<FaultyDisk::ReplaceResult>;
    Results passing(5, {E::Shared});
    passing.push_back({E::None, true});
    const std::tuple<const char*, Results, FileError, unsigned> cases[] = {
        {"in use for a while", passing, FileError::None, 385},
        {"5 and no end", Results(6, {E::AccessDenied}), FileError::AccessDenied, 385},
        {"32 and no end", Results(6, {E::Shared}), FileError::InUse, 385},
        {"33 and no end", Results(6, {E::Locked}), FileError::InUse, 385},
        {"1175, then it works", {{E::UnableToRemoveOld}}, FileError::None, 10},
        {"1175 and no end", Results(6, {E::UnableToRemoveOld}), FileError::InUse, 385},
        {"1176, both keep their names", {{E::UnableToMoveNew}}, FileError::Other, 0},
        {"1176, the old file has moved", {{E::UnableToMoveNew, true}}, FileError::Other, 0},
        {"1177", {{E::UnableToMoveNewAtAll, true}}, FileError::Other, 0},
        {"not told, the old file has moved", {{E::Other, true}}, FileError::Other, 0},
        {"no such function", {{E::Unsupported}}, FileError::None, 0},
    };
    for (const auto& [name, results, error, slept] : cases) {
        SCOPED_TRACE(name);
        FaultyDisk disk;
        disk.Put(kPath, kOld);
        disk.replaceResults = results;
        EXPECT_EQ(Save(disk, kNew, Backup::No), error);
        EXPECT_EQ(disk.BytesOf(kPath), error == FileError::None ? kNew : kOld);
        EXPECT_EQ(disk.Names().size(), 1U);
        EXPECT_EQ(disk.slept, slept);
        EXPECT_TRUE(disk.replaceResults.empty());
    }
}

// What a crash has left, or another program has written there since.
struct Left {
    std::string path, bytes;
    int second = 0;  // when it was written
};

TEST(SafeReplaceTest, WhatACrashLeftIsPutBackOrKept) {
    const std::string oldPath = OldPath("old");
    const std::string oldOfBackups = OldPath("old", kAmongBackups);
    const std::string whole = WholePath("old text");
    const std::string planned = LeftoverPath(kPath, LeftoverKind::New, "new words");
    const std::string backup = kFolder + "Wincmd (first, 2026-11-20 00.00.00).ini";
    const struct {
        std::vector<Left> files;
        bool hasLinks;
        std::string read, backups;
    } cases[] = {
        // Nothing under its name: what agrees with its own name is put back.
        {{{oldPath, "old"}}, false, "old", ""},
        {{{oldOfBackups, "old"}}, false, "old", ""},
        {{{oldPath, "old"}, {oldOfBackups, "old"}}, false, "old", ""},
        {{{whole, "old text"}}, false, "old text", ""},
        {{{planned, "new words"}}, false, "new words", ""},
        {{{oldPath, "old"}, {planned, "new words"}}, false, "old", "first:new words "},
        {{{oldPath, "theirs"}, {planned, "new words"}}, false, "new words", "first:theirs "},
        {{{oldPath, "theirs"}, {planned, "new w"}}, false, "(none)", "first:theirs "},
        // Beside it nothing is put back, and what is nowhere else becomes a backup.
        {{{kPath, "new"}, {oldPath, "old"}}, false, "new", "first:old "},
        {{{kPath, "new"}, {oldOfBackups, "old"}}, false, "new", "first:old "},
        {{{kPath, "old"}, {oldPath, "old"}}, false, "old", ""},
        {{{kPath, "new"}, {oldPath, "old"}, {backup, "old"}}, false, "new", "first:old "},
        {{{kPath, "x"}, {planned, "new words"}}, false, "x", "first:new words "},
        {{{kPath, "x"}, {planned, "new w"}}, false, "x", ""},
        // Names of somebody else's.
        {{{kPath, "x"}, {kPath + ".~old", "y"}}, false, "x", ""},
        // A file with several names is mended only where it was torn.
        {{{whole, "old text"}, {kPath, "torn", 1}}, true, "old text", "first:torn "},
        {{{whole, "old text"}, {kPath, "theirs", 9}}, true, "theirs", "first:old text "},
        {{{kPath, "theirs", 1}, {whole, "old text", 2}}, true, "theirs", "first:old text "},
        {{{whole, "old text"}, {planned, "new words"}, {kPath, "new text", 9}},
         true,
         "old text",
         "new words first:new text "},
        {{{whole, "old text"}, {planned, "new words"}, {kPath, "theirs", 9}},
         true,
         "theirs",
         "old text first:new words "},
        {{{whole, "old text"}, {planned, "new words"}, {kPath, "new words", 1}},
         true,
         "new words",
         "first:old text "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(&c - cases));
        FaultyDisk disk;
        disk.MakeFolder(kFolder);
        for (const Left& file : c.files) {
            disk.now = static_cast<std::uint64_t>(file.second) * kSecond;
            disk.Put(file.path, file.bytes);
        }
        if (c.hasLinks) {
            disk.PutHardLink("C:\\TC\\other.ini", kPath);
        }
        DiskFileSystem system(disk);
        EXPECT_EQ(system.Stamp(kPath).has_value(), c.read != "(none)");
        system.Read(kPath, 1000);
        EXPECT_EQ(Backups(disk), c.backups);
        EXPECT_EQ(disk.BytesOf(kPath), c.read);
        EXPECT_EQ(HasLeftovers(disk), disk.Has(kPath + ".~old"));
    }
}

// Another program writes into the file, or puts another one in its place, before each call of a
// replacement in turn. Its text is in the file afterwards, or given back and among the backups.
TEST(SafeReplaceTest, WhatAnotherProgramWritesMeanwhileIsNotLost) {
    for (const Scenario& scenario : kScenarios) {
        // Without a function to replace there is a moment that nobody can guard.
        bool hasWritten = scenario.hasReplace;
        for (int call = 1; hasWritten; ++call) {
            for (const bool inPlace : {true, false}) {
                SCOPED_TRACE(std::string(scenario.name) + " at call " + std::to_string(call));
                FaultyDisk disk;
                Prepare(disk, scenario, &scenario.bytes == &kOld ? kNew : kOld);
                DiskFileSystem system(disk);
                const FileContent read = system.Read(kPath, 1000);
                const bool isThere = read.error == FileError::None;
                hasWritten = false;
                disk.others = [&, first = disk.calls](int now) {
                    if (!hasWritten && now >= first + call && !(inPlace && disk.IsHeld(kPath))) {
                        hasWritten = true;
                        inPlace&& disk.Has(kPath) ? disk.PutInPlace(kPath, "theirs")
                                                  : disk.Put(kPath, "theirs");
                    }
                };
                const ReplaceResult result = system.Exchange(
                    kPath, scenario.bytes, isThere ? FileState(read.bytes) : std::nullopt,
                    scenario.backup);
                disk.others = nullptr;
                const bool isTold =
                    result.foreign == "theirs" && disk.BytesOf(result.aside) == "theirs";
                EXPECT_TRUE(!hasWritten || isTold || disk.BytesOf(kPath) == "theirs");
                EXPECT_TRUE(result.error == FileError::None || result.error == FileError::Changed);
            }
        }
    }

    // It makes a file of its own while the old one is aside. An edit brings it together with what
    // was there: of each key the newer write stays.
    FaultyDisk disk;
    disk.Put(kPath, "[A]\r\nx=0\r\ny=0\r\ngone=1\r\n");
    disk.whileAside = [&](const std::string&) {
        disk.Put(kPath, "[A]\r\nx=theirs\r\nz=theirs\r\n");
    };
    DiskFileSystem system(disk);
    IniFiles files(system);
    const auto edit = [](IniDocument& file) {
        file.DeleteKey("A", "gone");
        return file.SetValue("A", "x", "mine");
    };
    EXPECT_TRUE(EditIniFile(files, kPath, edit).Succeeded());
    EXPECT_EQ(disk.BytesOf(kPath), "[A]\r\nx=mine\r\ny=0\r\nz=theirs\r\n");
    EXPECT_FALSE(HasLeftovers(disk));
}

// Whatever fails once another program's text is aside, it is where the result says.
TEST(SafeReplaceTest, ATextThatIsAsideIsTold) {
    bool hasStruck = true;
    for (int call = 1; hasStruck; ++call) {
        FaultyDisk disk;
        disk.Put(kPath, kOld);
        disk.whileAside = [&](const std::string& old) {
            disk.PutInPlace(old, "theirs");
            disk.plan = {Fault::Once, CallError::Other, false, disk.calls + call};
        };
        const ReplaceResult result = DiskFileSystem(disk).Exchange(kPath, kNew, kOld, Backup::No);
        hasStruck = disk.calls >= disk.plan.call;
        EXPECT_EQ(disk.BytesOf(result.aside), "theirs") << call;
    }
}

// "Not found" would pass for "nothing set yet", and the next save would write that.
TEST(SafeReplaceTest, AFileThatWaitsToBePutBackIsNeverCalledMissing) {
    for (const CallError error : {CallError::Other, CallError::Shared}) {
        bool hasStruck = true;
        for (int call = 1; hasStruck; ++call) {
            FaultyDisk disk;
            disk.MakeFolder(kFolder);
            disk.Put(OldPath("old", kAmongBackups), "old");
            disk.plan = {Fault::Once, error, false, disk.calls + call};
            const FileContent read = DiskFileSystem(disk).Read(kPath, 1000);
            hasStruck = disk.calls >= disk.plan.call;
            EXPECT_NE(read.error, FileError::NotFound) << call;
            EXPECT_TRUE(read.error != FileError::None || read.bytes == "old") << call;
        }
    }
}

TEST(SafeReplaceTest, OtherCopiesOfTheProgramAreWaitedFor) {
    FaultyDisk disk;
    disk.Put(kPath, kOld);
    disk.isLockTaken = true;
    EXPECT_EQ(Save(disk, kNew), FileError::InUse);
    EXPECT_EQ(disk.Names().size(), 1U);
    EXPECT_EQ(DiskFileSystem(disk).Lock({kPath}), nullptr);
    // What is aside may belong to a replacement that is going on.
    disk.Move(kPath, OldPath(kOld), MoveMode::KeepExisting);
    EXPECT_EQ(DiskFileSystem(disk).Read(kPath, 1000).error, FileError::InUse);
    EXPECT_TRUE(disk.Has(OldPath(kOld)));
}

void CheckBackups(bool hasLinks) {
    FaultyDisk disk;
    disk.Put(kPath, "a");
    if (hasLinks) {
        disk.PutHardLink("C:\\TC\\other.ini", kPath);
    }
    disk.Put(kFolder + "Wincmd (my own).ini", "not a backup");
    disk.Put(kFolder + "Wincmd (2026-11-20 06.45.12)x.ini", "not a backup");
    disk.Put(kFolder + "Wincmd (2026-11-20 06.45.1x).ini", "not a backup");
    disk.now = (6 * 3600 + 45 * 60 + 12) * kSecond;
    // Three within one second, of which the last finds its content among the backups.
    for (const char* bytes : {"b", "c", "c"}) {
        EXPECT_EQ(Save(disk, bytes), FileError::None);
    }
    EXPECT_EQ(disk.BytesOf(kFolder + "Wincmd (first, 2026-11-21 06.45.12).ini"), "a");
    EXPECT_EQ(disk.BytesOf(kFolder + "Wincmd (2026-11-21 06.45.12).ini"), "b");
    EXPECT_EQ(Save(disk, "d"), FileError::None);
    EXPECT_EQ(disk.BytesOf(kFolder + "Wincmd (2026-11-21 06.45.12) 2.ini"), "c");
    EXPECT_EQ(Backups(disk), "c b first:a ");

    // A backup from a clock that went ahead is neither the newest nor the last to go, and numbers
    // go on where the first of a second have gone.
    disk.Put(kFolder + "Wincmd (2027-05-01 00.00.00).ini", "future");
    for (const char bytes : std::string("efghijkl")) {
        EXPECT_EQ(Save(disk, std::string(1, bytes)), FileError::None);
    }
    EXPECT_EQ(Backups(disk), "k j i h g f e d c b first:a ");
    for (const char bytes : std::string("mn")) {
        EXPECT_EQ(Save(disk, std::string(1, bytes)), FileError::None);
        disk.now += 9 * kSecond;
    }
    EXPECT_EQ(Backups(disk), "m l k j i h g f e d first:a ");
    EXPECT_EQ(disk.Names().size(), (hasLinks ? 2U : 1U) + 11U + 3U);
    const BackupFile newest = SafeReplace(disk).ListBackups(kPath).front();
    EXPECT_EQ(newest.date, "2026-11-21 06.45.21");
    EXPECT_EQ(newest.size, 1U);
}

TEST(BackupsTest, TheFirstAndTheLastTenStay) {
    CheckBackups(false);
    CheckBackups(true);
}

}  // namespace
}  // namespace tamarind
