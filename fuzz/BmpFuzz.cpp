#include "platform/draw/Bmp.h"
#include "platform/draw/Surface.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto surface = veldan::DecodeBmp({reinterpret_cast<const char*>(data), size});
    // A picture can't have more pixels than its file has bits.
    if (surface &&
        static_cast<std::size_t>(surface->Width()) * static_cast<std::size_t>(surface->Height()) > size * 8) {
        std::abort();
    }
    return 0;
}
