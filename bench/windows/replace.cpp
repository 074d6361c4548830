// What safety costs: replacing a file of 100 KB, with a backup of the old content, against
// overwriting it in place and waiting for the disk.
#include "bench/windows/Harness.h"
#include "core/files/FileSystem.h"
#include "core/system/UniqueHandle_win32.h"
#include "core/text/WideText_win32.h"

namespace tamarind::bench {
namespace {

constexpr std::size_t kBytes = 100'000;
constexpr int kRuns = 101;

bool OverwriteInPlace(const std::wstring& path, const std::string& bytes) {
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                      OPEN_ALWAYS, 0, nullptr));
    DWORD written = 0;
    return file &&
           WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                     nullptr) &&
           SetEndOfFile(file.Get()) && FlushFileBuffers(file.Get());
}

double Median(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

}  // namespace
}  // namespace tamarind::bench

int wmain() {
    using namespace tamarind;
    using namespace tamarind::bench;
    const std::wstring folder = MakeScratchFolder(L"replace");
    DiskFileSystem disk;
    std::vector<double> inPlace;
    std::vector<double> safely;
    // By turns, so that both meet the disk in the same mood.
    for (int run = 0; run < kRuns; ++run) {
        const std::string bytes(kBytes, static_cast<char>('a' + run % 26));
        const double start = NowMs();
        const bool isWritten = OverwriteInPlace(folder + L"in_place.ini", bytes);
        const double middle = NowMs();
        const FileError error = disk.Replace(Narrow(folder + L"safely.ini"), bytes, Backup::Yes);
        safely.push_back(NowMs() - middle);
        inPlace.push_back(middle - start);
        if (!isWritten || error != FileError::None) {
            std::printf("the file was not written\n");
            return 1;
        }
    }
    std::printf("100 KB: in place %.2f ms, replaced with a backup %.2f ms, ratio %.2f\n",
                Median(inPlace), Median(safely), Median(safely) / Median(inPlace));
    return 0;
}
