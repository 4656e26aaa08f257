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

/// A picture out of a file, from memory or from a resource. Making one reads the bytes and checks their outer form; the
/// pixels are decoded from these bytes when they are first asked for. A picture that can't be had is an object too: it
/// is dead, measures 0 by 0 and draws nothing. The last status is kept.
class VELDAN_PLATFORM_API Image {
public:
    /// Files over this size are no images.
    static constexpr std::size_t kLargestFile = 1024 * 1024;
    /// Longer paths can't be loaded, in bytes.
    static constexpr std::size_t kLongestPath = 1023;

    /// A picture of more pixels than the caller has use for is dead as well.
    [[nodiscard]] static std::unique_ptr<Image> FromFile(const std::string& path, int mostPixels = INT_MAX);
    [[nodiscard]] static std::unique_ptr<Image> FromBytes(std::string&& bytes, int mostPixels = INT_MAX);
    /// Keeps a copy of the bytes.
    [[nodiscard]] static std::unique_ptr<Image> FromBytes(std::string_view bytes);
    [[nodiscard]] static std::unique_ptr<Image> FromBytes(std::span<const std::byte> bytes);
    ~Image();
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    /// In pixels; known without decoding. 0 on a dead image, also on one whose decoding failed.
    [[nodiscard]] int GetWidth() const { return m_size.cx; }
    [[nodiscard]] int GetHeight() const { return m_size.cy; }

    /// How many bytes of the file are kept to be decoded; none on a dead image.
    [[nodiscard]] std::size_t GetByteCount() const { return m_bytes.size(); }

    /// The pixels, decoded at the first call, or null on a dead image.
    [[nodiscard]] const Surface* Pixels();
    /// Frees the decoded pixels; they are decoded again when they are next asked for.
    void DropPixels();

    /// The status of the last operation; reading it sets it back to Ok.
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
