#include "platform/draw/PixelsInternal.h"

#include <algorithm>
#include <array>
#include <utility>

namespace veldan {
namespace {

constexpr std::uint32_t kOpaque = 0xff000000;

// value * factor / 255, rounded, for two channels at once: those at bits 0 and 16.
constexpr std::uint32_t ScalePair(std::uint32_t pair, std::uint32_t factor) {
    const std::uint32_t product = (pair & 0x00ff00ff) * factor + 0x00800080;
    return (product + (product >> 8 & 0x00ff00ff)) >> 8 & 0x00ff00ff;
}

constexpr std::uint32_t ScalePixel(std::uint32_t pixel, std::uint32_t factor) {
    return ScalePair(pixel, factor) | ScalePair(pixel >> 8, factor) << 8;
}

/// What becomes of one pixel under another at each coverage.
class Blends {
public:
    Blends(std::uint32_t above, std::uint32_t below) : m_above(above), m_below(below) {
        for (std::uint32_t coverage = 0; coverage < m_pixels.size(); ++coverage) {
            m_pixels[coverage] = ScalePixel(above, coverage) + ScalePixel(below, 255 - coverage);
        }
    }
    [[nodiscard]] bool AreOf(std::uint32_t above, std::uint32_t below) const {
        return above == m_above && below == m_below;
    }
    std::uint32_t operator[](std::uint32_t coverage) const { return m_pixels[coverage]; }

private:
    std::uint32_t m_above;
    std::uint32_t m_below;
    std::array<std::uint32_t, 256> m_pixels;
};

constexpr float ChannelOf(std::uint32_t pixel, int shift) {
    return static_cast<float>(pixel >> shift & 0xff);
}

// A channel from 0 to 1 as an integer from 0 to 255, `alpha` already as an integer in floating point.
std::uint32_t ToChannel(float value, float alpha) {
    return static_cast<std::uint32_t>(std::clamp(value, 0.0F, 1.0F) * alpha + 0.5F);
}

std::uint32_t TransformPixel(std::uint32_t pixel, const ColorMatrix& m) {
    const float sourceAlpha = ChannelOf(pixel, 24);
    // Premultiplied channels divided by alpha are the true colours, from 0 to 1.
    const float scale = sourceAlpha > 0 ? 1 / sourceAlpha : 0;
    const float a = sourceAlpha / 255;
    const float r = ChannelOf(pixel, 16) * scale;
    const float g = ChannelOf(pixel, 8) * scale;
    const float b = ChannelOf(pixel, 0) * scale;
    const auto column = [&](std::size_t c) { return r * m[0][c] + g * m[1][c] + b * m[2][c] + a * m[3][c] + m[4][c]; };
    const std::uint32_t alpha = ToChannel(column(3), 255);
    const auto factor = static_cast<float>(alpha);
    return alpha << 24 | ToChannel(column(0), factor) << 16 | ToChannel(column(1), factor) << 8 |
           ToChannel(column(2), factor);
}

}  // namespace

void FillPixels(std::uint32_t* target, std::size_t count, std::uint32_t pixel) {
    std::fill_n(target, count, pixel);
}

void BlendPixels(std::uint32_t* target, const std::uint32_t* source, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t pixel = source[i];
        if (pixel >= kOpaque) {
            target[i] = pixel;
        } else if (pixel != 0) {
            target[i] = pixel + ScalePixel(target[i], 255 - (pixel >> 24));
        }
    }
}

void BlendMask(std::uint32_t* target, const std::uint8_t* mask, std::size_t count, std::uint32_t pixel) {
    // Most texts are of one colour, on a ground that is of one colour for two rows at least.
    thread_local Blends usual(0, 0);
    thread_local std::uint32_t lastBelow = 0;
    const std::uint32_t below = count > 0 ? target[0] : lastBelow;
    if (std::exchange(lastBelow, below) == below && !usual.AreOf(pixel, below)) {
        usual = Blends(pixel, below);
    }
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t coverage = mask[i];
        if (coverage == 0) {
            continue;
        }
        target[i] = usual.AreOf(pixel, target[i]) ? usual[coverage]
                                                  : ScalePixel(pixel, coverage) + ScalePixel(target[i], 255 - coverage);
    }
}

void PremultiplyPixels(std::uint32_t* pixels, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t pixel = pixels[i];
        if (pixel < kOpaque) {
            pixels[i] = (pixel & kOpaque) | (ScalePixel(pixel, pixel >> 24) & ~kOpaque);
        }
    }
}

void UnpremultiplyPixels(std::uint32_t* pixels, std::size_t count) {
    const auto divide = [](std::uint32_t channel, std::uint32_t alpha) {
        return std::min<std::uint32_t>((channel * 255 + alpha / 2) / alpha, 255);
    };
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t pixel = pixels[i];
        const std::uint32_t alpha = pixel >> 24;
        if (alpha == 0) {
            pixels[i] = 0;
        } else if (pixel < kOpaque) {
            pixels[i] = alpha << 24 | divide(pixel >> 16 & 0xff, alpha) << 16 | divide(pixel >> 8 & 0xff, alpha) << 8 |
                        divide(pixel & 0xff, alpha);
        }
    }
}

void TransformPixels(std::uint32_t* pixels, std::size_t count, const ColorMatrix& matrix) {
    // Icons consist of runs of one colour, above all of transparent pixels.
    std::uint32_t lastPixel = 0;
    std::uint32_t lastResult = TransformPixel(0, matrix);
    for (std::size_t i = 0; i < count; ++i) {
        if (pixels[i] != lastPixel) {
            lastPixel = pixels[i];
            lastResult = TransformPixel(lastPixel, matrix);
        }
        pixels[i] = lastResult;
    }
}

}  // namespace veldan
