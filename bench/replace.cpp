// What safety costs: replacing a file of 100 KB, with a backup of the old content, against
// overwriting it in place and waiting for the disk. By turns, so that both meet the disk in the
// same mood.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "core/files/FileSystem.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kBytes = 100'000;

bool OverwriteInPlace(const std::string& path, const std::string& bytes) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT, 0666);
    const bool isWritten = write(file, bytes.data(), bytes.size()) == ssize_t(kBytes) &&
                           ftruncate(file, kBytes) == 0 && fsync(file) == 0;
    close(file);
    return isWritten;
}

double Median(std::vector<double>& times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

// The time is that of the replacement alone; the counters are medians.
void ReplaceWithBackup(benchmark::State& state) {
    // Not in a folder in memory, where waiting for the disk takes no time.
    const std::filesystem::path folder = std::filesystem::current_path() / "build/bench_replace";
    std::filesystem::create_directories(folder);
    tamarind::DiskFileSystem disk;
    std::vector<double> inPlace;
    std::vector<double> safely;
    int run = 0;
    for (auto _ : state) {
        const std::string bytes(kBytes, static_cast<char>('a' + run++ % 26));
        const auto start = Clock::now();
        const bool isWritten = OverwriteInPlace(folder / "in_place.ini", bytes);
        const auto middle = Clock::now();
        const tamarind::FileError error =
            disk.Replace(folder / "safely.ini", bytes, tamarind::Backup::Yes);
        const auto end = Clock::now();
        if (!isWritten || error != tamarind::FileError::None) {
            state.SkipWithError("the file was not written");
        }
        inPlace.push_back(std::chrono::duration<double, std::milli>(middle - start).count());
        safely.push_back(std::chrono::duration<double, std::milli>(end - middle).count());
        state.SetIterationTime(safely.back() / 1000);
    }
    std::filesystem::remove_all(folder);
    state.counters["in_place_ms"] = Median(inPlace);
    state.counters["safely_ms"] = Median(safely);
    state.counters["ratio"] = Median(safely) / Median(inPlace);
}

BENCHMARK(ReplaceWithBackup)->UseManualTime();

}  // namespace
