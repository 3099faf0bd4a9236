// The benchmark program. Whichever benchmark comes first, what it writes goes to the scratch directory.

#include "scratch.h"

#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
    bench::scratch();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
}
