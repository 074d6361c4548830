#include <benchmark/benchmark.h>
#include <malloc.h>

int main(int argc, char** argv) {
    // Memory stays with the process: otherwise large blocks go back to the system after every round
    // and the time for their pages outweighs what is measured.
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
