#include "platform/draw/Region.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <utility>

namespace veldan {
namespace {

using Pixels = std::set<std::pair<int, int>>;

Pixels PixelsOf(const CRect& rect) {
    Pixels pixels;
    for (int x = rect.left; x < rect.right; ++x) {
        for (int y = rect.top; y < rect.bottom; ++y) {
            pixels.emplace(x, y);
        }
    }
    return pixels;
}

Pixels PixelsOf(const Region& region) {
    Pixels pixels;
    std::size_t area = 0;
    for (const CRect& rect : region.Rects()) {
        const Pixels part = PixelsOf(rect);
        area += part.size();
        pixels.insert(part.begin(), part.end());
    }
    EXPECT_EQ(area, pixels.size()) << "rectangles overlap";
    return pixels;
}

TEST(Region, AgreesWithASetOfPixelsThroughRandomOperations) {
    std::mt19937 random(7);
    const auto number = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    Region region;
    Pixels expected;
    for (int step = 0; step < 300; ++step) {
        const CRect rect = CRect::FromSize({number(12) - 4, number(12) - 4}, {number(8), number(8)});
        const Pixels pixels = PixelsOf(rect);
        const int operation = number(5);
        if (operation < 3) {
            region.Add(rect);
            expected.insert(pixels.begin(), pixels.end());
        } else if (operation == 3) {
            region.Subtract(Region(rect));
            std::erase_if(expected, [&](const auto& pixel) { return pixels.contains(pixel); });
        } else if (!rect.IsEmpty()) {
            region.Intersect(rect.Inflate(3, 3));
            std::erase_if(expected, [&](const auto& p) { return !rect.Inflate(3, 3).Contains({p.first, p.second}); });
        }
        ASSERT_EQ(PixelsOf(region), expected);
        ASSERT_EQ(region.Contains({2, 2}), expected.contains({2, 2}));
        ASSERT_EQ(region.IsEmpty(), expected.empty());
    }
}

TEST(Region, IsEqualWhateverItWasMadeOf) {
    Region halves(CRect{0, 0, 5, 10});
    halves.Add(CRect{5, 0, 10, 10}).Add(CRect{5, 5, 2, 9});
    EXPECT_EQ(halves, Region(CRect{0, 0, 10, 10})) << "a rectangle turned inside out adds nothing";
    EXPECT_EQ(Region(halves).Intersect(CRect{}), Region());
    EXPECT_FALSE(halves == Region());
}

TEST(Region, KeepsItsValueWhenACopyChanges) {
    const Region original(CRect{0, 0, 4, 4});
    Region copy = original;
    copy.Translate({10, 0}).Add(CRect{0, 0, 1, 1});
    EXPECT_EQ(original.Bounds(), (CRect{0, 0, 4, 4}));
    EXPECT_EQ(copy.Bounds(), (CRect{0, 0, 14, 4}));
    EXPECT_TRUE(copy.Intersects({12, 2, 20, 3}));
    EXPECT_FALSE(copy.Intersects({2, 2, 9, 3}));
}

}  // namespace
}  // namespace veldan
