#include "platform/draw/PixelsInternal.h"

#include <algorithm>
#include <cstring>

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

// Two pixels, and their channels in a type that can hold products.
using PairBytes [[gnu::vector_size(8)]] = std::uint8_t;
using Pair [[gnu::vector_size(16)]] = std::uint16_t;

Pair LoadPair(const std::uint32_t* pixels) {
    PairBytes bytes;
    std::memcpy(&bytes, pixels, sizeof bytes);
    return __builtin_convertvector(bytes, Pair);
}

void StorePair(std::uint32_t* pixels, Pair pair) {
    const auto bytes = __builtin_convertvector(pair, PairBytes);
    std::memcpy(pixels, &bytes, sizeof bytes);
}

// Each of two numbers, repeated for all four channels of its pixel.
Pair ForEachChannel(std::uint64_t first, std::uint64_t second) {
    using Halves [[gnu::vector_size(16)]] = std::uint64_t;
    return reinterpret_cast<Pair>(Halves{first, second} * 0x0001000100010001);
}

// Like ScalePixel, with a factor for each channel.
Pair Scale(Pair pair, Pair factors) {
    const Pair product = pair * factors + 0x80;
    return (product + (product >> 8)) >> 8;
}

constexpr float ChannelOf(std::uint32_t pixel, int shift) {
    return static_cast<float>(pixel >> shift & 0xff);
}

// Converts a channel from the range 0 to 1 to an integer from 0 to 255; `alpha` is already converted, but in floating
// point.
std::uint32_t ToChannel(float value, float alpha) {
    return static_cast<std::uint32_t>(std::clamp(value, 0.0F, 1.0F) * alpha + 0.5F);
}

std::uint32_t TransformPixel(std::uint32_t pixel, const ColorMatrix& m) {
    const float sourceAlpha = ChannelOf(pixel, 24);
    // Premultiplied channels divided by alpha give the true colours, from 0 to 1.
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
    const std::uint32_t both[] = {pixel, pixel};
    const Pair above = LoadPair(both);
    const auto blendPair = [&](std::size_t i) {
        const Pair coverage = ForEachChannel(mask[i], mask[i + 1]);
        StorePair(target + i, Scale(above, coverage) + Scale(LoadPair(target + i), 255 - coverage));
    };
    std::size_t i = 0;
    // Letters cover only a small part of a row.
    for (std::uint64_t eight = 0; i + sizeof eight <= count; i += sizeof eight) {
        std::memcpy(&eight, mask + i, sizeof eight);
        for (std::size_t k = 0; eight != 0 && k < sizeof eight; k += 2) {
            blendPair(i + k);
        }
    }
    for (; i + 1 < count; i += 2) {
        blendPair(i);
    }
    if (i < count) {
        target[i] = ScalePixel(pixel, mask[i]) + ScalePixel(target[i], 255U - mask[i]);
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
