#pragma once

#include "platform/core/Text.h"
#include "platform/draw/Image.h"

#include <climits>
#include <memory>

namespace veldan {

/// Owns one picture.
class CGPImageHolder {
public:
    CGPImageHolder() = default;
    virtual ~CGPImageHolder() = default;
    CGPImageHolder(const CGPImageHolder&) = delete;
    CGPImageHolder& operator=(const CGPImageHolder&) = delete;

    void Empty() { m_pBitmap.reset(); }

    /// Size in pixels; 0 by 0 without a picture.
    [[nodiscard]] CSize GetSize() const;

    /// Null while empty. A picture that could not be read is an object all the same, which draws nothing.
    std::unique_ptr<Image> m_pBitmap;
};

/// A picture out of the library's resources or out of a file. The encoded bytes live as long as the picture, which is
/// decoded from them when it is drawn.
class CGPResourceImage : public CGPImageHolder {
public:
    /// Replaces what the holder has. False, and the holder empty, where there is no such resource or it is no picture.
    bool Load(UINT id, const char* type);

    /// The same from a file, read at once. False, for a picture of too many pixels too, leaves one that draws nothing.
    bool LoadFile(const CString& path, int mostPixels = INT_MAX);

    /// The same from the bytes of a file.
    bool LoadBytes(CString bytes, int mostPixels = INT_MAX);
};

}  // namespace veldan
