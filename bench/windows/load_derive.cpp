// Loading a data file and deriving every key's state: ours against the same work with the profile
// functions of the system, and against bare reading of both files.
#include "bench/windows/Harness.h"
#include "core/ini/IniFiles.h"
#include "core/text/WideText_win32.h"
#include "model/files/DataFile.h"
#include "model/files/KeyStates.h"
#include "model/files/UndescribedKeys.h"

namespace tamarind::bench {
namespace {

constexpr DWORD kBuffer = 4096;
constexpr wchar_t kMarker[] = L"///can\\not/find\\this/data\\\\\\";

struct Paths {
    std::wstring dataFile;
    std::wstring settings;
};

// As the program does; with `takesAll` it looks for the keys that only the settings have, too.
std::size_t LoadWithOurs(IniFiles& files, const Paths& paths, bool takesAll = true,
                         const KeyFamilies& families = {}) {
    KeyStore store;
    LoadDataFile(
        files.Read(Narrow(paths.dataFile)).document, "none", [] {}, store);
    const SettingsFiles settings =
        SettingsFiles::Read(files, ProcessEnvironment(), Narrow(paths.settings));
    DeriveKeyStates(store, settings, [] {});
    if (takesAll) {
        SectionsWithMoreKeys(store, settings, families);
    }
    return store.Size();
}

void ReadBoth(const Paths& paths) {
    DiskFileSystem disk;
    disk.Read(Narrow(paths.dataFile), FileSystem::kMaxFileBytes);
    disk.Read(Narrow(paths.settings), FileSystem::kMaxFileBytes);
}

struct SystemRecord {
    std::wstring name;
    std::wstring defaultValue;
    std::wstring description;
    std::wstring section;
    std::wstring current;
};

std::vector<std::wstring> SplitList(const wchar_t* list) {
    std::vector<std::wstring> entries;
    for (; *list != L'\0'; list += entries.back().size() + 1) {
        entries.emplace_back(list);
    }
    return entries;
}

std::wstring ReadWithSystem(const std::wstring& section, const std::wstring& key,
                            const std::wstring& file) {
    wchar_t buffer[kBuffer];
    GetPrivateProfileStringW(section.c_str(), key.c_str(), kMarker, buffer, kBuffer, file.c_str());
    return buffer;
}

// At most `maxKeys` keys, since a whole large file takes this way many seconds.
std::size_t LoadWithSystem(const Paths& paths, std::size_t maxKeys) {
    std::vector<SystemRecord> records;
    wchar_t sections[kBuffer];
    GetPrivateProfileSectionNamesW(sections, kBuffer, paths.dataFile.c_str());
    for (const std::wstring& section : SplitList(sections)) {
        wchar_t keys[kBuffer];
        GetPrivateProfileStringW(section.c_str(), nullptr, L"", keys, kBuffer,
                                 paths.dataFile.c_str());
        const std::wstring target =
            ReadWithSystem(section, L"CategoryTargetSection", paths.dataFile);
        for (const std::wstring& key : SplitList(keys)) {
            if (key == L"CategoryTargetSection" || records.size() >= maxKeys) {
                continue;
            }
            const std::wstring entry = ReadWithSystem(section, key, paths.dataFile);
            const std::size_t at = entry.find(L"///");
            records.push_back({key, entry.substr(0, at), entry.substr(at + 3), target, {}});
        }
    }
    for (SystemRecord& record : records) {
        record.current = ReadWithSystem(record.section, record.name, paths.settings);
        if (record.current == kMarker) {
            record.current = ReadWithSystem(record.section, L";" + record.name, paths.settings);
        }
    }
    return records.size();
}

void Measure(const std::wstring& folder, int keys) {
    constexpr int kRuns = 31;
    const SampleFiles sample = MakeSample(keys);
    const Paths paths = {folder + L"data.tmdf", folder + L"settings.ini"};
    WriteOldFile(paths.dataFile, sample.dataFile);
    WriteOldFile(paths.settings, sample.settings);
    DiskFileSystem disk;
    std::size_t loaded = 0;
    IniFiles kept(disk);
    LoadWithOurs(kept, paths);
    const std::vector<double> medians =
        MediansMs(kRuns, {[&] {
                              IniFiles files(disk);
                              loaded = LoadWithOurs(files, paths);
                          },
                          [&] { LoadWithOurs(kept, paths); }, [&] { ReadBoth(paths); }});
    const double cold = medians[0];
    const double warm = medians[1];
    const double bare = medians[2];
    std::size_t bySystem = 0;
    const int systemRuns = keys > 5000 ? 1 : 3;
    const double system = MedianMs(
        systemRuns, [&] { bySystem = LoadWithSystem(paths, static_cast<std::size_t>(keys)); });
    std::printf(
        "%6d keys: ours cold %8.2f ms, warm %8.2f ms, bare read %7.2f ms, "
        "system %9.1f ms\n",
        keys, cold, warm, bare, system);
    std::printf(
        "             system / cold %.0f, system / warm %.0f, cold / bare read %.2f "
        "(%u and %u keys loaded)\n",
        system / cold, system / warm, cold / bare, static_cast<unsigned>(loaded),
        static_cast<unsigned>(bySystem));
}

// A settings file with very many keys that the data file does not have, as histories grow to. In
// every second section they are further members of a family.
void MeasureHistories(const std::wstring& folder) {
    constexpr int kRuns = 15;
    constexpr int kSections = 30;
    constexpr int kKeys = 2000;  // of each
    const SampleFiles sample = MakeSample(3255);
    const Paths paths = {folder + L"data.tmdf", folder + L"settings.ini"};
    std::string settings = sample.settings;
    std::string dataFile = sample.dataFile;
    std::string counted;
    for (int key = 0; key < kSections * kKeys; ++key) {
        if (key % kKeys == 0) {
            const std::string section = "History" + std::to_string(key / kKeys);
            settings += "[" + section + "]\r\n";
            if (key / kKeys % 2 == 0) {
                dataFile += "[" + section + "]\r\nCategoryTargetSection=" + section +
                            "\r\n0=///A folder.\r\n";
                counted += "[counted:" + section + "]\r\n#=0\r\n";
            }
        }
        settings += std::to_string(key % kKeys) + "=c:\\some folder\\visited lately\\\r\n";
    }
    WriteOldFile(paths.dataFile, dataFile);
    WriteOldFile(paths.settings, settings);
    const KeyFamilies families(
        std::make_shared<const IniDocument>(IniDocument::Parse(counted, 1252)));
    DiskFileSystem disk;
    const auto load = [&](bool takesAll) {
        return [&, takesAll] {
            IniFiles files(disk);
            LoadWithOurs(files, paths, takesAll, families);
        };
    };
    const std::vector<double> times = MediansMs(kRuns, {load(false), load(true)});
    std::printf("60,000 keys in histories: %.2f ms without them, %.2f ms with them, ratio %.2f\n",
                times[0], times[1], times[1] / times[0]);
}

}  // namespace
}  // namespace tamarind::bench

int wmain() {
    const std::wstring folder = tamarind::bench::MakeScratchFolder(L"load");
    for (const int keys : {500, 700, 5000, 32000}) {
        tamarind::bench::Measure(folder, keys);
    }
    tamarind::bench::MeasureHistories(folder);
    return 0;
}
