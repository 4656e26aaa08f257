#include "platform/core/File.h"
#include "platform/debug/Debug.h"
#include "platform/draw/Png.h"

namespace veldan {

namespace {

CString DescribeWindow(const Desktop& desktop, const WindowRecord& record) {
    CString line =
        Format("%u.%u %s id=%u (%d,%d)-(%d,%d)", record.handle.slot, record.handle.generation, record.windowClass->name,
               record.id, record.rect.left, record.rect.top, record.rect.right, record.rect.bottom);
    const std::pair<bool, const char*> states[] = {
        {record.visible, " shown"},
        {!record.enabled, " disabled"},
        {desktop.Active() == record.handle, " active"},
        {desktop.Focus() == record.handle, " focus"},
        {desktop.Capture() == record.handle, " capture"},
    };
    for (const auto& [holds, word] : states) {
        line += holds ? word : "";
    }
    return record.text.empty() ? line : line + " \"" + record.text + '"';
}

void DumpWindow(const Desktop& desktop, const WindowRecord& record, CString& text) {
    text.append(2 * static_cast<std::size_t>(record.depth), ' ');
    text += DescribeWindow(desktop, record) + '\n';
    for (const ChildList::Entry& entry : record.children.Entries()) {
        if (const WindowRecord* child = desktop.Find(entry.window)) {
            DumpWindow(desktop, *child, text);
        }
    }
}

}  // namespace

CString DumpWindowTree(const Desktop& desktop) {
    CString text;
    for (const HWND window : desktop.TopLevels()) {
        DumpWindow(desktop, *desktop.Find(window), text);
    }
    return text;
}

bool SaveWindowPicture(const Desktop& desktop, HWND topLevel, const CString& path) {
    const WindowRecord* record = desktop.Find(topLevel);
    if (record == nullptr || record->IsChild() || !record->topLevel->surface) {
        return false;
    }
    const CString png = EncodePng(*record->topLevel->surface, PngAlpha::Ignore);
    return !png.empty() && WriteFileWhole(path, png);
}

}  // namespace veldan
