#include "platform/draw/Image.h"
#include "platform/draw/Surface.h"

#include <cstdint>

/// Any bytes give either a dead image or one of the size that its header told.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto image = veldan::Image::FromBytes(std::as_bytes(std::span(data, size)));
    const veldan::CSize told{image->GetWidth(), image->GetHeight()};
    const veldan::Surface* pixels = image->Pixels();
    if (pixels ? pixels->Bounds().Size() != told : image->GetWidth() != 0) {
        __builtin_trap();
    }
    return 0;
}
