#include <windows.h>

#include "core/text/RandomSeed.h"

namespace tamarind {

// RtlGenRandom has no other name and no import library. Clock and addresses, which are at random
// as well, have to do where it is missing.
std::uint64_t RandomSeed() {
    LARGE_INTEGER ticks;
    FILETIME now;
    QueryPerformanceCounter(&ticks);
    GetSystemTimeAsFileTime(&now);
    const auto address = reinterpret_cast<std::uintptr_t>(&ticks);
    std::uint64_t seed = (std::uint64_t{GetCurrentProcessId()} << 48) ^
                         (std::uint64_t{now.dwLowDateTime} << 20) ^ (address << 32) ^
                         static_cast<std::uint64_t>(ticks.QuadPart);
    using Generate = BOOLEAN(WINAPI*)(void*, ULONG);
    const auto generate = reinterpret_cast<Generate>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"advapi32.dll"), "SystemFunction036")));
    std::uint64_t random = 0;
    if (generate != nullptr && generate(&random, sizeof random) != FALSE) {
        seed ^= random;
    }
    return seed;
}

}  // namespace tamarind
