// Runs the tests with the machine-wide data folder inside a scratch directory of this process.

#include "support/host.h"

#include <chrono>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    auto const now = std::chrono::steady_clock::now().time_since_epoch().count();
    auto const directory = std::filesystem::current_path() / ("common-data-" + std::to_string(now));
    test::chooseCommonDataFolder(directory);
    int const result = RUN_ALL_TESTS();
    std::filesystem::remove_all(directory);
    return result;
}
