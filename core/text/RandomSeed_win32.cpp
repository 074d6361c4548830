#include <windows.h>

#include "core/text/RandomSeed.h"

namespace tamarind {

// RtlGenRandom is exported as SystemFunction036 and has no import library (Microsoft:
// RtlGenRandom). If it is missing, clocks, process number and an address, which is random as well,
// have to do.
std::uint64_t RandomSeed() {
    LARGE_INTEGER ticks;
    FILETIME now;
    QueryPerformanceCounter(&ticks);
    GetSystemTimeAsFileTime(&now);
    const auto address = reinterpret_cast<std::uintptr_t>(&ticks);
    std::uint64_t seed = (std::uint64_t{GetCurrentProcessId()} << 48) ^
                         (std::uint64_t{now.dwLowDateTime} << 20) ^ (std::uint64_t{address} << 32) ^
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
