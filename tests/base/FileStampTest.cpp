#include "FileStamp.h"

#include <gtest/gtest.h>

#include <chrono>

#include "TemporaryFolder.h"

namespace genvara {
namespace {

TEST(FileStamp, TellsWhetherAFileHoldsOtherBytes) {
    TemporaryFolder folder;
    const auto file = folder / "a";
    WriteBytes(file, "same length 1");
    const auto stamp = StampOf(file);
    ASSERT_TRUE(stamp);
    EXPECT_EQ(stamp->size, 13U);
    EXPECT_FALSE(HoldsOtherBytes(file, *stamp));
    WriteBytes(file, "same length 2");
    std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) + std::chrono::seconds(2));
    EXPECT_TRUE(HoldsOtherBytes(file, *stamp));
    WriteBytes(file, "same length 1");
    std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) + std::chrono::seconds(9));
    EXPECT_FALSE(HoldsOtherBytes(file, *stamp)) << "touched, or written anew with the same bytes";
    WriteBytes(file, "longer than it was");
    EXPECT_TRUE(HoldsOtherBytes(file, *stamp));
}

TEST(FileStamp, HashesLikeFnv1a) {
    TemporaryFolder folder;
    // The published test vector of "a" for 64-bit FNV-1a.
    WriteBytes(folder / "a", "a");
    EXPECT_EQ(StampOf(folder / "a")->hash, 0xAF63DC4C8601EC8CULL);
    WriteBytes(folder / "empty", "");
    EXPECT_EQ(StampOf(folder / "empty")->hash, 0xCBF29CE484222325ULL);
}

TEST(FileStamp, WhatIsNotThereHoldsNothing) {
    TemporaryFolder folder;
    EXPECT_FALSE(StampOf(folder / "none"));
    EXPECT_FALSE(StampOf(folder.Path()));
    EXPECT_FALSE(HoldsOtherBytes(folder / "none", FileStamp{}));
}

}  // namespace
}  // namespace genvara
