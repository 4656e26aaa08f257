#include "platform/draw/Image.h"

#include "platform/core/File.h"
#include "platform/draw/Png.h"
#include "platform/draw/Surface.h"

#include <cstdint>
#include <utility>

namespace veldan {

Image::Image(std::string&& bytes, int mostPixels) : m_bytes(std::move(bytes)) {
    const std::optional<CSize> size = m_bytes.size() <= kLargestFile ? ReadPngSize(m_bytes) : std::nullopt;
    if (size && std::int64_t{size->cx} * size->cy <= mostPixels) {
        m_size = *size;
    } else {
        Die(DrawStatus::NotAnImage);
    }
}

Image::~Image() = default;

std::unique_ptr<Image> Image::FromFile(const std::string& path, int mostPixels) {
    std::string bytes;
    const bool isRead = path.size() <= kLongestPath && ReadWholeFile(path, bytes, kLargestFile);
    std::unique_ptr<Image> image(new Image(std::move(bytes), mostPixels));
    if (!isRead) {
        image->Die(DrawStatus::FileNotFound);
    }
    return image;
}

std::unique_ptr<Image> Image::FromBytes(std::string&& bytes, int mostPixels) {
    return std::unique_ptr<Image>(new Image(std::move(bytes), mostPixels));
}

std::unique_ptr<Image> Image::FromBytes(std::string_view bytes) {
    // Bytes that are too large for an image aren't worth copying.
    return FromBytes(std::string(bytes.substr(0, kLargestFile + 1)));
}

std::unique_ptr<Image> Image::FromBytes(std::span<const std::byte> bytes) {
    return FromBytes(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

const Surface* Image::Pixels() {
    if (!m_pixels && m_size.cx > 0) {
        m_pixels = DecodePng(m_bytes);
        if (!m_pixels) {
            Die(DrawStatus::NotAnImage);
        }
    }
    return m_pixels.get();
}

void Image::DropPixels() {
    m_pixels.reset();
}

DrawStatus Image::GetLastStatus() {
    return std::exchange(m_status, DrawStatus::Ok);
}

void Image::Die(DrawStatus status) {
    std::string().swap(m_bytes);
    m_size = {};
    m_status = status;
}

}  // namespace veldan
