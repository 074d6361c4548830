#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "core/files/FileCalls.h"
#include "core/text/Unicode.h"
#include "tests/core/fakes/IgnoreCase.h"

namespace tamarind {

enum class Fault {
    None,
    Once,         // one call fails
    Forever,      // it and all after it fail
    ShortWrite,   // writes half and says so
    LostWrite,    // writes half and says that it was all
    BadWrites,    // from this call on every write fails halfway
    DiskFull,     // from this call on no file grows
    CrashAfter,   // the machine stops after the call
    CrashInside,  // it stops in the middle of the call, where that has one
};

// A disk in memory under the calls of the system. It tells bytes that are on the disk from those
// that wait to be flushed, and the chosen fault strikes at the call with the chosen number. Names
// are on the disk at once, in whatever letter case. Its one folder is C:\TC, besides those that are
// made, unless it has all.
class FaultyDisk final : public FileCalls {
public:
    struct Plan {
        Fault fault = Fault::None;
        CallError error = CallError::Other;  // of Once and Forever
        bool leavesGarbage = false;          // a crash turns what was not flushed into other bytes
        int call = 0;                        // counted from 1
    };
    // What becomes of a call to Replace.
    struct ReplaceResult {
        CallError error;
        bool movesOld = false;  // to the name of the backup
    };

    Plan plan;
    int calls = 0;
    std::deque<ReplaceResult> replaceResults;  // of the next calls; as usual beyond its end
    // In the middle of the next replacement, with the old file's name by then.
    std::function<void(const std::string& old)> whileAside;
    unsigned slept = 0;     // milliseconds
    std::uint64_t now = 0;  // since 2026-11-21 00:00:00
    bool isLockTaken = false;
    bool hasReplace = true;  // whether the file system has such a function
    bool hasAllFolders = false;

    // Called with the number of each call before it is carried out: another program's turn.
    std::function<void(int call)> others;

    // In a new file, or into the one that is there, under all its names.
    void Put(const std::string& path, const std::string& bytes) {
        m_files[path] = std::make_shared<Node>(Node{bytes, bytes, now});
    }
    void PutInPlace(const std::string& path, const std::string& bytes) {
        m_files.at(path)->bytes = m_files.at(path)->flushed = bytes;
        m_files.at(path)->modified = now;
    }
    // Whether somebody keeps writers out.
    bool IsHeld(const std::string& path) const {
        return Has(path) && m_files.at(path)->mark.use_count() > 1;
    }
    void PutHardLink(const std::string& path, const std::string& other) {
        m_files[path] = m_files.at(other);
    }
    void Remove(const std::string& path) { m_files.erase(path); }
    bool Has(const std::string& path) const { return m_files.count(path) != 0; }
    std::string BytesOf(const std::string& path) const {
        return Has(path) ? m_files.at(path)->bytes : "(none)";
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& file : m_files) {
            names.push_back(file.first);
        }
        return names;
    }
    // The machine starts again, in good health.
    void Restart() {
        for (auto& [path, node] : m_files) {
            if (m_stopsNow && node->bytes != node->flushed) {
                node->bytes =
                    plan.leavesGarbage ? std::string(node->bytes.size(), '\x5A') : node->flushed;
                node->flushed = node->bytes;
            }
        }
        plan = {};
        m_stopsNow = false;
        m_isFull = false;
    }

    FileFacts Inspect(const std::string& path) override {
        const bool isThere = IsThere(path);
        const bool isFolder = HasFolderOf(path) && (path.empty() || path.back() == '\\');
        return {Begin(isFolder || isThere), path, isThere ? LinksOf(*m_files.at(path)) : 1,
                isFolder};
    }
    std::optional<FileStamp> Stamp(const std::string& path) override {
        return Begin(IsThere(path)) == CallError::None ? std::optional(StampOf(*m_files.at(path)))
                                                       : std::nullopt;
    }
    FileBytes Read(const std::string& path, std::uint64_t maxBytes,
                   std::unique_ptr<HeldFile>* held) override {
        const CallError error = Begin(IsThere(path));
        if (error != CallError::None) {
            return {error, {}, {}};
        }
        const Node& node = *m_files.at(path);
        if (held != nullptr) {
            *held = std::make_unique<Held>(node);
        }
        return node.bytes.size() > maxBytes
                   ? FileBytes{CallError::TooLarge, {}, {}}
                   : FileBytes{error, node.bytes, StampOf(node), LinksOf(node)};
    }
    CallError List(const std::string& pathPrefix, std::vector<FolderEntry>& files) override {
        LetOthersWrite();
        files.clear();
        const CallError error = Begin(HasFolderOf(pathPrefix), CallError::FolderMissing);
        const std::size_t nameAt = pathPrefix.rfind('\\') + 1;
        for (const auto& [path, node] : m_files) {
            if (error == CallError::None &&
                EqualsIgnoreCase(path.substr(0, pathPrefix.size()), pathPrefix) &&
                path.find('\\', nameAt) == std::string::npos) {
                files.push_back({path.substr(nameAt), {node->bytes.size(), node->modified}});
            }
        }
        return error;
    }
    CallError Open(const std::string& path, OpenMode mode,
                   std::unique_ptr<WritableFile>& file) override {
        const bool isThere = IsThere(path);
        const CallError error = mode == OpenMode::InPlace ? Begin(isThere)
                                : isThere                 ? Begin(false, CallError::Exists)
                                          : Begin(HasFolderOf(path), CallError::FolderMissing);
        return Do(error, [&] {
            m_files.try_emplace(path, std::make_shared<Node>());
            file = std::make_unique<File>(*this, m_files[path]);
        });
    }
    CallError Replace(const std::string& path, const std::string& replacement,
                      const std::string& backup) override {
        const CallError error = Begin(IsThere(path) && Has(replacement));
        if (error != CallError::None || !hasReplace || !HasFolderOf(backup)) {
            return error != CallError::None ? error
                   : hasReplace             ? CallError::UnableToRemoveOld
                                            : CallError::Unsupported;
        }
        ReplaceResult result = {CallError::None, true};
        if (!replaceResults.empty()) {
            result = replaceResults.front();
            replaceResults.pop_front();
        }
        if (result.movesOld) {
            Rename(path, backup);
        }
        if (whileAside) {
            std::exchange(whileAside, nullptr)(result.movesOld ? backup : path);
        }
        result.error = StopsInside() ? CallError::Other : result.error;
        if (result.error == CallError::None && Has(path)) {
            result.error = CallError::UnableToMoveNewAtAll;
        }
        if (result.error == CallError::None) {
            Rename(replacement, path);
        }
        return result.error;
    }
    CallError Move(const std::string& from, const std::string& to, MoveMode mode) override {
        const bool isThere = IsThere(from);
        const bool isTaken = isThere && mode == MoveMode::KeepExisting && Has(to);
        return Do(isTaken ? Begin(false, CallError::Exists) : Begin(isThere),
                  [&] { Rename(from, to); });
    }
    CallError Delete(const std::string& path) override {
        return Do(Begin(IsThere(path)), [&] { m_files.erase(path); });
    }
    CallError MakeFolder(const std::string& path) override {
        return Do(Begin(), [&] { m_folders.insert(path); });
    }
    std::shared_ptr<FileLock> Lock(const std::string&, unsigned) override {
        return isLockTaken ? nullptr : std::make_shared<FileLock>();
    }
    std::uint64_t NowTicks() override { return now; }
    CivilTime LocalTime(std::uint64_t ticks) override {
        const auto seconds = static_cast<int>(ticks / 10'000'000U);
        return {2026,        11, 21 + seconds / 86'400, seconds / 3600 % 24, seconds / 60 % 60,
                seconds % 60};
    }
    void Sleep(unsigned milliseconds) override { slept += milliseconds; }

private:
    struct Node {
        std::string bytes, flushed;
        std::uint64_t modified = 0;
        std::shared_ptr<bool> mark = std::make_shared<bool>();
    };

    // Copies of the file's mark count those who hold it.
    struct Held final : HeldFile {
        explicit Held(const Node& node) : mark(node.mark) {}
        const std::shared_ptr<bool> mark;
    };

    class File final : public WritableFile {
    public:
        File(FaultyDisk& disk, std::shared_ptr<Node> node)
            : m_disk(disk), m_node(std::move(node)), m_held(*m_node) {}
        FileBytes ReadAndRewind(std::uint64_t) override {
            m_place = 0;
            return {m_disk.Begin(), m_node->bytes, {}};
        }
        CallError Write(std::string_view bytes, std::size_t& written) override {
            return m_disk.Write(*m_node, m_place, bytes, written);
        }
        CallError CutHere() override {
            return Do(m_disk.Begin(), [&] { m_node->bytes.resize(m_place); });
        }
        CallError Flush() override {
            return Do(m_disk.Begin(), [&] { m_node->flushed = m_node->bytes; });
        }

    private:
        FaultyDisk& m_disk;
        std::shared_ptr<Node> m_node;
        Held m_held;
        std::size_t m_place = 0;
    };

    void LetOthersWrite() {
        if (others) {
            others(calls + 1);
        }
    }
    // Once it is this call's turn.
    bool IsThere(const std::string& path) {
        LetOthersWrite();
        return Has(path);
    }

    template <typename Action>
    static CallError Do(CallError error, Action action) {
        if (error == CallError::None) {
            action();
        }
        return error;
    }

    // Counts the call and says how it ends: by the fault, or with `reason` if it is not possible.
    CallError Begin(bool isPossible = true, CallError reason = CallError::NotFound) {
        if (m_stopsNow) {
            return CallError::Other;
        }
        ++calls;
        const bool strikes = calls == plan.call;
        m_stopsNow =
            strikes && (plan.fault == Fault::CrashAfter || plan.fault == Fault::CrashInside);
        m_isFull = m_isFull || (strikes && plan.fault == Fault::DiskFull);
        const bool fails = (strikes && plan.fault == Fault::Once) ||
                           (plan.fault == Fault::Forever && plan.call > 0 && calls >= plan.call);
        return fails ? plan.error : isPossible ? CallError::None : reason;
    }
    bool StopsInside() const { return m_stopsNow && plan.fault == Fault::CrashInside; }

    CallError Write(Node& node, std::size_t& place, std::string_view bytes, std::size_t& written) {
        if (const CallError error = Begin(); error != CallError::None) {
            return error;
        }
        const bool isBad = plan.fault == Fault::BadWrites && calls >= plan.call;
        const bool strikes = calls == plan.call;
        const bool isLost = strikes && plan.fault == Fault::LostWrite;
        const bool isHalf =
            isBad || isLost || StopsInside() || (strikes && plan.fault == Fault::ShortWrite);
        std::size_t count = isHalf ? bytes.size() / 2 : bytes.size();
        if (m_isFull) {
            count = std::min(count, node.bytes.size() - std::min(place, node.bytes.size()));
        }
        node.bytes.replace(place, count, bytes.substr(0, count));
        node.modified = now;
        place += count;
        written = isLost ? bytes.size() : count;
        return isBad                                      ? CallError::Other
               : m_isFull && count == 0 && !bytes.empty() ? CallError::DiskFull
                                                          : CallError::None;
    }
    static FileStamp StampOf(const Node& node) { return {node.bytes.size(), node.modified}; }
    void Rename(const std::string& from, const std::string& to) {
        m_files[to] = m_files.at(from);
        m_files.erase(from);
    }
    std::uint32_t LinksOf(const Node& node) const {
        return static_cast<std::uint32_t>(
            std::count_if(m_files.begin(), m_files.end(),
                          [&](const auto& file) { return file.second.get() == &node; }));
    }
    bool HasFolderOf(const std::string& path) const {
        return hasAllFolders || m_folders.count(path.substr(0, path.rfind('\\') + 1)) != 0;
    }

    std::map<std::string, std::shared_ptr<Node>, LessIgnoreCase> m_files;
    std::set<std::string, LessIgnoreCase> m_folders = {"C:\\TC\\"};
    bool m_stopsNow = false;  // before the next call
    bool m_isFull = false;
};

}  // namespace tamarind
