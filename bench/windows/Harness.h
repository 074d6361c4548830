#pragma once

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace tamarind::bench {

inline double NowMs() {
    LARGE_INTEGER count;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// The median time of `runs` calls of each work in milliseconds. They are called in turn, so that
// whatever else the machine does meets all of them.
inline std::vector<double> MediansMs(int runs, const std::vector<std::function<void()>>& works) {
    std::vector<std::vector<double>> times(works.size());
    for (int run = 0; run < runs; ++run) {
        for (std::size_t i = 0; i < works.size(); ++i) {
            const double start = NowMs();
            works[i]();
            times[i].push_back(NowMs() - start);
        }
    }
    std::vector<double> medians;
    for (std::vector<double>& ofWork : times) {
        std::sort(ofWork.begin(), ofWork.end());
        medians.push_back(ofWork[ofWork.size() / 2]);
    }
    return medians;
}

// The same for one work.
template <typename Work>
double MedianMs(int runs, Work work) {
    return MediansMs(runs, {work}).front();
}

// A new folder below the temporary one, with a closing backslash.
inline std::wstring MakeScratchFolder(const wchar_t* name) {
    wchar_t base[MAX_PATH];
    GetTempPathW(MAX_PATH, base);
    const std::wstring folder = base + std::wstring(L"tamarind_bench_") + name + L"\\";
    CreateDirectoryW(folder.c_str(), nullptr);
    return folder;
}

// Writes a file and dates it an hour back: neither Wine's cache nor ours trusts a young file.
inline void WriteOldFile(const std::wstring& path, const std::string& bytes) {
    HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    ULARGE_INTEGER time = {{now.dwLowDateTime, now.dwHighDateTime}};
    time.QuadPart -= 36'000'000'000U;
    const FILETIME past = {time.LowPart, time.HighPart};
    SetFileTime(file, nullptr, nullptr, &past);
    CloseHandle(file);
}

// A data file with `keys` keys in categories of 125, and a settings file that holds every other one
// of them, a quarter of these commented out.
struct SampleFiles {
    std::string dataFile;
    std::string settings;
};

inline SampleFiles MakeSample(int keys) {
    constexpr int kKeysPerCategory = 125;
    constexpr int kKeysPerSection = 500;
    SampleFiles sample;
    sample.settings = "[Configuration]\r\n";
    for (int key = 0; key < keys; ++key) {
        const int section = key / kKeysPerSection;
        if (key % kKeysPerCategory == 0) {
            sample.dataFile += "[C" + std::to_string(key / kKeysPerCategory) +
                               "]\r\nCategoryTargetSection=Section" + std::to_string(section) +
                               "\r\n";
        }
        if (key % kKeysPerSection == 0) {
            sample.settings += "[Section" + std::to_string(section) + "]\r\n";
        }
        const std::string name = "SomeSetting" + std::to_string(key);
        sample.dataFile += name + "=" + std::to_string(key % 3) +
                           "///Says whether the program does this or that.@0 = no@1 = yes\r\n";
        if (key % 2 == 0) {
            sample.settings += (key % 8 == 0 ? ";" : "") + name + "=value of this setting\r\n";
        }
    }
    return sample;
}

}  // namespace tamarind::bench
