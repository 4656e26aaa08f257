#include "controls/LookCache.h"

#include "controls/FrozenSurface.h"
#include "platform/draw/Graphics.h"

namespace veldan {
namespace {

/// The living thing that a map knows by this key, or null; others that are gone leave the map then.
template <class Map>
auto FindLiving(Map& map, const typename Map::key_type& key) {
    const auto found = map.find(key);
    auto pThing = found != map.end() ? found->second.lock() : nullptr;
    if (!pThing) {
        std::erase_if(map, [](const auto& entry) { return entry.second.expired(); });
    }
    return pThing;
}

}  // namespace

std::shared_ptr<CLookCache> CLookCache::Share() {
    static constinit std::weak_ptr<CLookCache> pShared;
    std::shared_ptr<CLookCache> pCache = pShared.lock();
    if (!pCache) {
        pCache = std::make_shared<CLookCache>();
        pShared = pCache;
    }
    return pCache;
}

std::shared_ptr<const CDC> CLookCache::Gradient(CSize size, COLORREF top, COLORREF bottom) {
    const std::tuple key(size.cx, size.cy, top, bottom);
    if (std::shared_ptr<const CDC> pKnown = FindLiving(m_mapGradients, key)) {
        return pKnown;
    }
    const auto pGradient = std::make_shared<CDC>();
    MakeSurface(*pGradient, *pGradient, size);
    Graphics(*pGradient)
        .FillVerticalGradient({0, 0, static_cast<float>(size.cx), static_cast<float>(size.cy)}, size.cy, top, bottom);
    m_mapGradients[key] = pGradient;
    return pGradient;
}

std::shared_ptr<CGPResourceImage> CLookCache::Picture(UINT id, const char* type) {
    const std::pair key(id, CString(type));
    if (std::shared_ptr<CGPResourceImage> pKnown = FindLiving(m_mapPictures, key)) {
        return pKnown;
    }
    auto pPicture = std::make_shared<CGPResourceImage>();
    if (!pPicture->Load(id, type)) {
        return nullptr;
    }
    m_mapPictures[key] = pPicture;
    return pPicture;
}

CDC& CLookCache::Board(int kind, CSize size) {
    CDC& board = m_boards[kind == 1 ? 1 : 0];
    if (board.GetClipBox().Size() != size) {
        MakeSurface(board, board, size);
    }
    return board;
}

}  // namespace veldan
