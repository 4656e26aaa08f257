#pragma once

#include "platform/window/Wnd.h"

namespace veldan {

/// The content of a resource of type "DIALOG": the struct's own bytes. Dialogs come without a border; their controls
/// are made in code.
struct DialogTemplate {
    UINT style = WS_POPUP;
    CSize size;  ///< In dialog units: quarters of the dialog font's average width, eighths of its height.
    const char* caption = "";
};

/// A popup window made from a template. A dialog that receives the focus hands it on at once: to its child that had it
/// last, if that can be seen and is enabled, else to the one that GetFirstFocus names, else it keeps it.
class VELDAN_PLATFORM_API CDialog : public CWnd {
public:
    CDialog();
    ~CDialog() override;

    /// Makes the modeless dialog and runs OnInitDialog. It stays hidden unless the template says otherwise. Without a
    /// parent the owner is the active window, or else the host's frame. False without the template, or if the window
    /// did not survive its own creation.
    bool Create(UINT templateId, CWnd* parent = nullptr);

protected:
    /// Runs when the window exists.
    virtual BOOL OnInitDialog();

    [[nodiscard]] static const MessageMap& ClassMessageMap();
    [[nodiscard]] const MessageMap& GetMessageMap() const override;

private:
    LRESULT HandleInitDialog(WPARAM wParam, LPARAM lParam);
    void OnSetFocus(CWnd* before);
    [[nodiscard]] CWnd* FocusTarget();
};

}  // namespace veldan
