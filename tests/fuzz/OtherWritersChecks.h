// What holds for saves beside another program, whatever that does.
#pragma once

#include <algorithm>
#include <map>

#include "core/ini/IniEntries.h"
#include "core/text/Unicode.h"
#include "tests/fuzz/FuzzWorld.h"

namespace tamarind {

inline constexpr std::string_view kSection = "S";
inline constexpr std::string_view kOurs[] = {"A", "B", "C"};

inline bool IsTouched(std::string_view section, std::string_view key) {
    key.remove_prefix(key.substr(0, 1) == ";" ? 1 : 0);
    return EqualsIgnoreCase(section, kSection) && key.size() <= 2;
}

// Reads the file, changes one key and writes it, at a moment that the input says.
class OtherProgram {
public:
    OtherProgram(SessionWorld& world, std::string turns) : m_world(world), m_turns(turns) {}

    std::map<std::string, std::string> written;  // its own keys; an empty value: deleted
    bool isAtWork = false;

    void TakeTurns() {
        MemoryFileSystem& disk = m_world.disk;
        disk.beforeRead = [this](const std::string& path) {
            const unsigned turn = NextTurn(path);
            m_world.disk.FailReads(path, ErrorOf(turn));
            Write(path, turn);
        };
        disk.beforeExchange = [this](const std::string& path) {
            const unsigned turn = NextTurn(path);
            m_world.disk.FailReplaces(path, ErrorOf(turn));
            if ((turn & 0x80U) == 0) {
                Write(path, turn);
                return;
            }
            m_world.disk.whileAside = [this, turn](const std::string& there) {
                std::string text = Changed(m_world.disk.BytesOf(there), turn);
                m_wasAside = true;
                return text;
            };
        };
    }

private:
    // Nothing on other files.
    unsigned NextTurn(const std::string& path) {
        if (!isAtWork || path != SessionWorld::kWincmd || m_next >= m_turns.size()) {
            return 0;
        }
        return static_cast<unsigned char>(m_turns[m_next++]);
    }
    // It may hold the file, too.
    static FileError ErrorOf(unsigned turn) {
        return (turn & 0x12U) == 0x12 ? FileError::InUse : FileError::None;
    }
    void Write(const std::string& path, unsigned turn) {
        if ((turn & 1U) != 0) {
            m_world.disk.Put(path, Changed(m_world.disk.BytesOf(path), turn));
        }
    }
    // One of eight keys of its own, or one that the session changes, too.
    std::string Changed(const std::string& bytes, unsigned turn) {
        IniDocument document = IniDocument::Parse(bytes, m_world.files.SystemCodePage());
        const bool isOurs = (turn & 0x40U) != 0;
        const bool isDeleted = !isOurs && (turn & 0x20U) != 0;
        const std::string key =
            isOurs ? std::string(kOurs[turn >> 2 & 1U]) : "O" + std::to_string(turn >> 2 & 7U);
        const std::string value = isDeleted ? "" : "theirs" + std::to_string(m_next);
        const IniEdit edit =
            isDeleted ? document.DeleteKey(kSection, key) : document.SetValue(kSection, key, value);
        if (edit == IniEdit::Changed && !isOurs) {
            written[key] = value;
        }
        // A key that is aside, made again in the file and deleted there leaves no trace of that.
        if (isDeleted && m_wasAside) {
            written.erase(key);
        }
        return document.Bytes();
    }

    SessionWorld& m_world;
    const std::string m_turns;
    std::size_t m_next = 0;
    bool m_wasAside = false;
};

inline bool Holds(const IniDocument& document, const std::string& key, const std::string& value) {
    return document.FindValue(kSection, key).value_or(std::string_view()) == value;
}

// In the file; after a save that has failed it may be in the backup that the message names.
inline void RequireTheirs(SessionWorld& world, const OtherProgram& other, bool isSaved) {
    for (const auto& [key, value] : other.written) {
        bool isThere = Holds(*world.files.Read(SessionWorld::kWincmd).document, key, value);
        for (const BackupFile& backup : world.disk.ListBackups(SessionWorld::kWincmd)) {
            const bool isNamed =
                !isSaved && world.prompts.messages.back().find(backup.path) != std::string::npos;
            isThere =
                isThere || (isNamed && Holds(*world.files.Read(backup.path).document, key, value));
        }
        Require(isThere);
    }
}

inline void RequireUntouched(const IniDocument& before, const IniDocument& now) {
    ForEachEntry(before, [&](std::string_view section, IniDocument::LineId line) {
        const std::string_view key = before.KeyName(line);
        Require(IsTouched(section, key) || now.FindValue(section, key) == before.Value(line));
    });
}

inline void RequireRowsAsOnDisk(SessionWorld& world) {
    world.disk.Wait(10);
    Require(world.session->Settings().CheckOutsideChanges() == OutsideCheck::Taken);
    const std::vector<std::string> rows = world.Rows();
    Require(world.Start());
    Require(rows == world.Rows());
}

// Each of the turns says what the other program does when it has its turn, which may be in the
// middle of a save. No key of either side gets lost, and none that nobody touches.
inline void CheckSavesBeside(const std::string& turns, const std::string& file) {
    FuzzWorld world(
        file + "\n[Configuration]\n", SessionWorld::kWincmdData,
        "[One]\nCategoryTargetSection=S\nA=0\nB=0\n[Two]\nCategoryTargetSection=S\nC=0\n");
    Require(world.Start());
    const auto before = world.files.Read(SessionWorld::kWincmd).document;
    if (!before->FindSection("Configuration")) {
        return;  // in an encoding of its own: a settings file of the other kind
    }
    OtherProgram other(world, turns);
    other.TakeTurns();
    for (std::size_t save = 0; save < 4; ++save) {
        const std::string value = "mine" + std::to_string(save);
        world.session->Selection().Rows().ShowKeyDetails(save % 3);
        Require(world.session->Commands().SetValue(value));
        other.isAtWork = true;
        const bool isSaved = world.session->Settings().SaveToSettingsFile();
        other.isAtWork = false;
        RequireTheirs(world, other, isSaved);
        if (!isSaved) {
            return;
        }
        const SettingsFiles now =
            SettingsFiles::Read(world.files, world.environment, SessionWorld::kWincmd);
        const auto& saved = now.Files()[now.FileOf(kSection, kOurs[save % 3])];
        Require(saved.document->FindValue(kSection, kOurs[save % 3]) == value);
        RequireUntouched(*before, *now.Main().document);
    }
    RequireRowsAsOnDisk(world);
}

}  // namespace tamarind
