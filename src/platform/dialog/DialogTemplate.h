#pragma once

#include "platform/core/Export.h"
#include "platform/core/Geometry.h"
#include "platform/window/Styles.h"

#include <memory>
#include <span>

namespace veldan {

class CWnd;

/// A place in dialog units: quarters of the average width of the dialog font's letters, eighths of its height.
struct DialogUnits {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    /// The same place in pixels, rounded to whole ones.
    [[nodiscard]] VELDAN_PLATFORM_API CRect ToPixels() const;
};

/// A control of a dialog template. Made by ControlOf.
struct DialogControl {
    UINT id = 0;
    const WindowClass* windowClass = nullptr;
    std::unique_ptr<CWnd> (*make)() = nullptr;  ///< The object that the control has until a member takes it over.
    UINT style = 0;
    DialogUnits place;
    const char* text = "";
};

/// A control of the class `Control`, a child that is visible unless `style` says otherwise.
template <class Control>
constexpr DialogControl ControlOf(UINT id, const char* text, DialogUnits place, UINT style = WS_VISIBLE) {
    return {id,
            &Control::kWindowClass,
            [] { return std::unique_ptr<CWnd>(std::make_unique<Control>()); },
            style | WS_CHILD,
            place,
            text};
}

/// What a dialog is made from: a window without a border, its font, and its controls in the order of the Tab key. All
/// of it outlives the table that it is in.
struct DialogTemplate {
    UINT id = 0;
    UINT style = WS_POPUP;
    DialogUnits size;  ///< Width and height alone count.
    const char* caption = "";
    const char* face = "MS Shell Dlg";
    int pointSize = 8;
    std::span<const DialogControl> controls{};
};

/// Makes the dialog templates of a library known for as long as the object lives: one per library, at namespace scope
/// or in the library's own start.
class VELDAN_PLATFORM_API DialogTemplateTable {
public:
    explicit DialogTemplateTable(std::span<const DialogTemplate> templates);
    ~DialogTemplateTable();
    DialogTemplateTable(const DialogTemplateTable&) = delete;
    DialogTemplateTable& operator=(const DialogTemplateTable&) = delete;

private:
    friend VELDAN_PLATFORM_API const DialogTemplate* FindDialogTemplate(UINT id);

    std::span<const DialogTemplate> m_templates;
    DialogTemplateTable* m_pNext;
};

/// The template with an id, or null. Where several tables have it, the latest wins.
[[nodiscard]] VELDAN_PLATFORM_API const DialogTemplate* FindDialogTemplate(UINT id);

}  // namespace veldan
