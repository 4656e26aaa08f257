#pragma once

#include "controls/GPResourceImage.h"
#include "controls/StatePool.h"
#include "platform/draw/DC.h"

#include <array>
#include <map>
#include <memory>
#include <tuple>
#include <utility>

namespace veldan {

/// What the skinned controls of the process make once and share. Each control holds its share, so everything ends with
/// the last of them. One thread.
class CLookCache {
public:
    /// The one that the others share, or a new one where there are no others.
    [[nodiscard]] static std::shared_ptr<CLookCache> Share();

    CLookCache() = default;
    CLookCache(const CLookCache&) = delete;
    CLookCache& operator=(const CLookCache&) = delete;

    /// The bound of what composed states cost.
    [[nodiscard]] CStatePool& States() { return m_states; }

    /// A picture with colours that run from top to bottom. Kept while somebody has it.
    [[nodiscard]] std::shared_ptr<const CDC> Gradient(CSize size, COLORREF top, COLORREF bottom);

    /// A picture of the library's resources, or null where it has none. Kept while somebody has it.
    [[nodiscard]] std::shared_ptr<CGPResourceImage> Picture(UINT id, const char* type);

    /// Where rows of a kind draw their states before they keep them; it shows what the last one left there. Rows of a
    /// kind mostly have one size.
    [[nodiscard]] CDC& Board(int kind, CSize size);

private:
    CStatePool m_states;
    std::map<std::tuple<int, int, COLORREF, COLORREF>, std::weak_ptr<const CDC>> m_mapGradients;
    std::map<std::pair<UINT, CString>, std::weak_ptr<CGPResourceImage>> m_mapPictures;
    std::array<CDC, 2> m_boards;
};

}  // namespace veldan
