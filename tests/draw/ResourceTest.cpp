#include "platform/resource/Resource.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>

namespace veldan {
namespace {

constexpr std::array<std::byte, 3> kFirst{};
constexpr std::array<std::byte, 5> kSecond{};

TEST(Resource, IsFoundByNumberAndTypeUntilItsTableGoes) {
    const std::array early{Resource{1, "PNG", kFirst}, Resource{1, "DIALOG", kFirst}, Resource{2, "PNG", kFirst}};
    const std::array late{Resource{1, "PNG", kSecond}};
    std::optional<ResourceTable> first(early);
    const ResourceTable second(late);
    EXPECT_EQ(FindResource(1, "PNG").data(), kSecond.data());
    EXPECT_EQ(FindResource(1, "DIALOG").size(), 3U);
    EXPECT_TRUE(FindResource(1, "MENU").empty());
    EXPECT_TRUE(FindResource(3, "PNG").empty());
    first.reset();
    EXPECT_TRUE(FindResource(2, "PNG").empty());
    EXPECT_EQ(FindResource(1, "PNG").size(), 5U);
}

}  // namespace
}  // namespace veldan
