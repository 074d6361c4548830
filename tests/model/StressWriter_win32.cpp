// The other program of the stress test. It shares the file in three ways, one after the other.
#include <windows.h>

#include <fstream>
#include <random>

#include "core/files/FileSystem.h"
#include "core/system/UniqueHandle_win32.h"

namespace tamarind {
namespace {

constexpr const wchar_t* kPath = L"Wincmd.ini";
constexpr const wchar_t* kTemporary = L"theirs.tmp";

// Tried again for a second, while others have the file or it has no name.
template <typename Call>
void Insist(Call call) {
    const ULONGLONG end = GetTickCount64() + 1000;
    while (!call()) {
        if (GetTickCount64() > end) {
            std::exit(5);
        }
        Sleep(2);
    }
}

UniqueFile Open(const wchar_t* path, DWORD access, DWORD shareMode, DWORD disposition) {
    UniqueFile file;
    Insist([&] {
        file.Reset(CreateFileW(path, access, shareMode, nullptr, disposition, 0, nullptr));
        return static_cast<bool>(file);
    });
    return file;
}

void Write(const UniqueFile& file, const std::string& text) {
    DWORD done = 0;
    WriteFile(file.Get(), text.data(), static_cast<DWORD>(text.size()), &done, nullptr);
}

// The whole file with one key of this program's own changed.
std::string ReadChanged(const UniqueFile& file, const std::string& line) {
    const std::string section = "[Theirs]\r\n";
    const std::string former = "\r\n" + line.substr(0, line.find('=')) + "=0\r\n";
    const std::string end = "[Configuration]\r\nWhole=1\r\n";
    std::string text(GetFileSize(file.Get(), nullptr), '\0');
    DWORD done = 0;
    ReadFile(file.Get(), text.data(), static_cast<DWORD>(text.size()), &done, nullptr);
    if (text.size() < end.size() || text.substr(text.size() - end.size()) != end) {
        std::exit(6);
    }
    if (const std::size_t at = text.find(former); at != std::string::npos) {
        text.erase(at, former.size() - 2);
    }
    return text.insert(text.find(section) + section.size(), line + "\r\n");
}

}  // namespace
}  // namespace tamarind

int WriteAsAnotherProgram(int count) {
    using namespace tamarind;
    DiskFileSystem disk;
    std::ofstream log("Theirs.log");
    std::minstd_rand random(1);
    while (!disk.Stamp("go")) {
        Sleep(20);
    }
    for (int value = 1; value <= count; ++value) {
        const std::string key = "Theirs" + std::to_string(value);
        const DWORD shareModes[] = {1, 3, 7};
        const bool isInPlace = value % 2 != 0;
        UniqueFile file = Open(kPath, isInPlace ? GENERIC_READ | GENERIC_WRITE : GENERIC_READ,
                               shareModes[value / 2 % 3], OPEN_EXISTING);
        const std::uint64_t read = disk.NowTicks();
        const std::string text = ReadChanged(file, key + "=" + std::to_string(value));
        if (isInPlace) {
            SetFilePointer(file.Get(), 0, nullptr, FILE_BEGIN);
            SetEndOfFile(file.Get());
            Write(file, text.substr(0, text.size() / 2));
            Sleep(1 + static_cast<DWORD>(random() % 150));
            Write(file, text.substr(text.size() / 2));
        } else {
            file.Reset();
            Write(Open(kTemporary, GENERIC_WRITE, 0, CREATE_ALWAYS), text);
            Sleep(random() % 4 == 0 ? 10 : 0);
            Insist([] { return MoveFileExW(kTemporary, kPath, MOVEFILE_REPLACE_EXISTING) != 0; });
        }
        file.Reset();
        log << key << ' ' << value << ' ' << read << ' ' << disk.NowTicks()
            << (isInPlace ? " place" : " rename") << std::endl;
        Sleep(static_cast<DWORD>(random() % 60));
    }
    return 0;
}
