#pragma once

#include "platform/draw/DC.h"

#include <array>
#include <cstddef>
#include <memory>
#include <span>

namespace veldan {

/// The finished look of one state of a row, ready to be copied to the screen: what stands out from its background, as a
/// few boxes of pixels, and the background, which all rows of one look share. Most of a row is background, so this
/// takes a third of the memory of a whole picture.
class CGPFrozenState {
public:
    static constexpr std::size_t kMostBoxes = 4;

    /// Keeps a picture that differs from a background of its size within the boxes only. Empty boxes don't count.
    void Keep(const CDC& picture, std::shared_ptr<const CDC> pBackground, std::span<const CRect, kMostBoxes> boxes);
    void Release() { m_pContent.reset(); }

    [[nodiscard]] bool Exists() const { return m_pContent != nullptr; }
    [[nodiscard]] CSize GetSize() const;
    /// What the boxes take in memory.
    [[nodiscard]] std::size_t GetBytes() const;

    /// Copies the picture to a place. Nothing where there is none.
    void Paint(CDC& dc, CPoint at) const;

private:
    struct Box {
        CRect rect;
        CDC dc;
    };
    struct Content {
        std::shared_ptr<const CDC> pBackground;
        std::array<Box, kMostBoxes> boxes;
    };

    std::unique_ptr<Content> m_pContent;
};

}  // namespace veldan
