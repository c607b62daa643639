#include "InOrder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>
#include <thread>

namespace genvara {
namespace {

using testing::ElementsAre;

/// Squares, of which the first takes longest.
auto SlowFirst() {
    return [](std::int64_t piece) {
        std::this_thread::sleep_for(std::chrono::milliseconds(piece == 0 ? 30 : 0));
        return piece * piece;
    };
}

TEST(DoInOrder, HandsResultsOverInTheOrderOfTheWork) {
    for (const std::int32_t jobs : {1, 3, 16}) {
        const StopFlag stop{false};
        std::vector<std::int64_t> taken;
        DoInOrder(5, jobs, stop, SlowFirst, [&](std::int64_t piece, std::int64_t square) {
            EXPECT_EQ(square, piece * piece);
            taken.push_back(piece);
        });
        EXPECT_THAT(taken, ElementsAre(0, 1, 2, 3, 4)) << jobs;
    }
}

TEST(DoInOrder, DoesMoreThanItLetsWait) {
    const StopFlag stop{false};
    std::int64_t sum = 0;
    DoInOrder(1000, 2, stop, SlowFirst, [&](std::int64_t piece, std::int64_t /*square*/) { sum += piece; });
    EXPECT_EQ(sum, 499500);  // 999 x 1000 / 2
}

TEST(DoInOrder, EndsWithTheFailureOfItsWorkOrOfWhoTakesIt) {
    const StopFlag stop{false};
    const auto failing = [] {
        return [](std::int64_t piece) -> int { return piece == 7 ? throw std::runtime_error("work") : 0; };
    };
    EXPECT_THROW(DoInOrder(1000, 3, stop, failing, [](std::int64_t, int) {}), std::runtime_error);
    EXPECT_THROW(DoInOrder(1000, 3, stop, SlowFirst,
                           [](std::int64_t, std::int64_t) { throw std::runtime_error("take"); }),
                 std::runtime_error);
}

TEST(DoInOrder, StopsBetweenTwoPieces) {
    StopFlag stop{false};
    std::int64_t taken = 0;
    EXPECT_THROW(DoInOrder(1000, 2, stop, SlowFirst,
                           [&](std::int64_t, std::int64_t) {
                               ++taken;
                               stop = true;
                           }),
                 StudyStopped);
    EXPECT_LT(taken, 1000);
}

}  // namespace
}  // namespace genvara
