#include "platform/display/x11/X11Icon.h"

#include <algorithm>
#include <array>

namespace veldan {

namespace {

/// A rectangle with round corners on a square with sides of kGrid, which falls on whole pixels in each size.
struct Shape {
    double left;
    double top;
    double right;
    double bottom;
    double radius;
    std::uint32_t colour;  // 0xRRGGBB

    [[nodiscard]] bool Contains(double x, double y) const {
        if (x < left || x >= right || y < top || y >= bottom) {
            return false;
        }
        const double dx = x - std::clamp(x, left + radius, right - radius);
        const double dy = y - std::clamp(y, top + radius, bottom - radius);
        return dx * dx + dy * dy <= radius * radius;
    }
};

// A window with a menu open in it, from the back to the front.
constexpr std::array kShapes = {
    Shape{0, 1, 16, 15, 3, 0x3a2013},  Shape{1, 2, 15, 14, 2, 0x6f3217},    Shape{3, 4, 13, 6, 0.7, 0xf0a060},
    Shape{3, 7, 11, 9, 0.7, 0xe9dcd4}, Shape{3, 10, 12, 12, 0.7, 0xe9dcd4},
};
constexpr double kGrid = 16;
constexpr int kSides[] = {16, 32, 48};
constexpr int kSamples = 4;  // a side of the grid in each pixel

std::uint32_t PixelAt(int x, int y, int side) {
    std::array<int, 3> sums{};
    int covered = 0;
    for (int sample = 0; sample < kSamples * kSamples; ++sample) {
        const int row = sample / kSamples;
        const double sampleX = (x + (sample % kSamples + 0.5) / kSamples) * kGrid / side;
        const double sampleY = (y + (row + 0.5) / kSamples) * kGrid / side;
        const auto hit = std::find_if(kShapes.rbegin(), kShapes.rend(),
                                      [=](const Shape& shape) { return shape.Contains(sampleX, sampleY); });
        if (hit != kShapes.rend()) {
            ++covered;
            for (int channel = 0; channel < 3; ++channel) {
                sums[channel] += static_cast<int>(hit->colour >> (16 - 8 * channel) & 0xffU);
            }
        }
    }
    auto pixel = static_cast<std::uint32_t>(covered * 255 / (kSamples * kSamples));
    for (const int sum : sums) {
        pixel = pixel << 8 | static_cast<std::uint32_t>(covered == 0 ? 0 : sum / covered);
    }
    return pixel;
}

}  // namespace

std::vector<std::uint32_t> MakeDefaultIcon() {
    std::vector<std::uint32_t> icon;
    for (const int side : kSides) {
        icon.insert(icon.end(), 2, static_cast<std::uint32_t>(side));
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                icon.push_back(PixelAt(x, y, side));
            }
        }
    }
    return icon;
}

}  // namespace veldan
