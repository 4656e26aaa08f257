#pragma once

#include "platform/core/Export.h"
#include "platform/core/Geometry.h"

#include <climits>
#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace veldan {

class Surface;

enum class DrawStatus { Ok, FileNotFound, NotAnImage, InvalidParameter };

/// A picture from a file, from memory or from a resource. Creating one reads the bytes and checks their outer form; the
/// pixels are decoded when they are first needed. If that isn't possible the picture is dead: it measures 0 by 0 and
/// draws nothing. The status of the last operation can be queried.
class VELDAN_PLATFORM_API Image {
public:
    /// Larger files aren't accepted, in bytes.
    static constexpr std::size_t kLargestFile = 1024 * 1024;
    /// Longer paths aren't accepted, in bytes.
    static constexpr std::size_t kLongestPath = 1023;

    /// A picture of more than `mostPixels` pixels is dead as well.
    [[nodiscard]] static std::unique_ptr<Image> FromFile(const std::string& path, int mostPixels = INT_MAX);
    [[nodiscard]] static std::unique_ptr<Image> FromBytes(std::string&& bytes, int mostPixels = INT_MAX);
    /// Keeps a copy of the bytes.
    [[nodiscard]] static std::unique_ptr<Image> FromBytes(std::string_view bytes);
    [[nodiscard]] static std::unique_ptr<Image> FromBytes(std::span<const std::byte> bytes);
    ~Image();
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    /// In pixels, known without decoding. 0 for a dead image, also if decoding failed.
    [[nodiscard]] int GetWidth() const { return m_size.cx; }
    [[nodiscard]] int GetHeight() const { return m_size.cy; }

    /// The number of bytes that are kept for decoding; 0 for a dead image.
    [[nodiscard]] std::size_t GetByteCount() const { return m_bytes.size(); }

    /// The pixels, decoded at the first call; null for a dead image.
    [[nodiscard]] const Surface* Pixels();
    /// Frees the decoded pixels, which are decoded again when they are next needed.
    void DropPixels();

    /// The status of the last operation; reading it resets it to Ok.
    DrawStatus GetLastStatus();

private:
    Image(std::string&& bytes, int mostPixels);
    void Die(DrawStatus status);

    std::string m_bytes;
    CSize m_size;
    std::unique_ptr<Surface> m_pixels;
    DrawStatus m_status = DrawStatus::Ok;
};

}  // namespace veldan
