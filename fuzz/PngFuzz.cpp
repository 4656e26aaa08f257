#include "platform/draw/Image.h"
#include "platform/draw/Surface.h"

#include <zlib.h>

/// Any bytes give either a dead image or one of the size in its header. Checksums are corrected first, because
/// otherwise they would stop nearly every change.
extern "C" int LLVMFuzzerTestOneInput(const Bytef* data, std::size_t size) {
    std::string file(data, data + size);
    for (std::size_t chunk = 8, length = 0; chunk + 12 <= size; chunk += 12 + length) {
        length = std::min<std::size_t>(256 * data[chunk + 2] + data[chunk + 3], size - chunk - 12);
        const uLong sum = crc32(0, reinterpret_cast<Bytef*>(&file[chunk + 4]), static_cast<uInt>(length + 4));
        for (std::size_t i = 0; i < 4; ++i) {
            file[chunk + 8 + length + i] = static_cast<char>(sum >> (24 - 8 * i));
        }
    }
    const auto image = veldan::Image::FromBytes(file);
    const veldan::CSize told{image->GetWidth(), image->GetHeight()};
    const veldan::Surface* pixels = image->Pixels();
    const bool isRight = pixels ? pixels->Bounds().Size() == told : image->GetWidth() == 0;
    return isRight ? 0 : (__builtin_trap(), 1);
}
