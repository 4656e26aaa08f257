#include "platform/dialog/DialogTemplate.h"

#include "platform/window/Wnd.h"

#include <algorithm>

namespace veldan {

namespace {

// The letters of "MS Shell Dlg" at 8 points and 96 dpi, in pixels.
constexpr int kAverageWidth = 6;
constexpr int kLineHeight = 13;

// The tables form a list through their own fields, so libraries may come and go in any order.
DialogTemplateTable* g_pFirstTable = nullptr;

constexpr int Scale(int units, int base, int perBase) {
    return (units * base + perBase / 2) / perBase;
}

}  // namespace

CRect DialogUnits::ToPixels() const {
    return CRect::FromSize({Scale(x, kAverageWidth, 4), Scale(y, kLineHeight, 8)},
                           {Scale(width, kAverageWidth, 4), Scale(height, kLineHeight, 8)});
}

DialogTemplateTable::DialogTemplateTable(std::span<const DialogTemplate> templates)
    : m_templates(templates), m_pNext(g_pFirstTable) {
    g_pFirstTable = this;
}

DialogTemplateTable::~DialogTemplateTable() {
    DialogTemplateTable** ppLink = &g_pFirstTable;
    while (*ppLink != this) {
        ppLink = &(*ppLink)->m_pNext;
    }
    *ppLink = m_pNext;
}

const DialogTemplate* FindDialogTemplate(UINT id) {
    for (const DialogTemplateTable* pTable = g_pFirstTable; pTable != nullptr; pTable = pTable->m_pNext) {
        const auto found = std::ranges::find(pTable->m_templates, id, &DialogTemplate::id);
        if (found != pTable->m_templates.end()) {
            return &*found;
        }
    }
    return nullptr;
}

}  // namespace veldan
