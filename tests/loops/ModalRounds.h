#pragma once

#include <veldan/platform.h>

#include <cstdio>

/// What both hosts do: a modal dialog that the host's own timer ends, then one that the host's quit ends. Meanwhile the
/// host's timers must tick and its window must be painted anew.
class ModalRounds {
public:
    static constexpr int kEnough = 20;
    static constexpr int kResult = 42;

    /// One tick of the host's timer.
    void Tick() {
        ++m_nTicks;
        if (m_pDialog == nullptr || m_nTicks < kEnough || m_nPaints < kEnough) {
            return;
        }
        if (m_nRound == 1) {
            m_pDialog->EndDialog(kResult);
        } else {
            m_bQuit = true;
        }
    }
    void Painted() { ++m_nPaints; }
    [[nodiscard]] bool Quits() const { return m_bQuit; }

    /// Runs both rounds; the exit status of the program.
    int Run() {
        const int ended = ShowDialog();
        const int quit = ShowDialog();
        std::printf("ended by the host's timer: %d, by its quit: %d\n", ended, quit);
        return ended == kResult && quit == veldan::IDCANCEL ? 0 : 1;
    }

private:
    int ShowDialog() {
        static constexpr veldan::DialogControl kControls[] = {
            veldan::ControlOf<veldan::CStatic>(10, "Modal", {4, 4, 60, 10}),
        };
        static constexpr veldan::DialogTemplate kForms[] = {
            {.id = 1, .size = {0, 0, 120, 60}, .caption = "modal", .controls = kControls}};
        const veldan::DialogTemplateTable table(kForms);
        ++m_nRound;
        m_nTicks = 0;
        m_nPaints = 0;
        veldan::CDialog dialog(1);
        m_pDialog = &dialog;
        const int result = static_cast<int>(dialog.DoModal());
        m_pDialog = nullptr;
        return result;
    }

    veldan::CDialog* m_pDialog = nullptr;
    int m_nRound = 0;
    int m_nTicks = 0;
    int m_nPaints = 0;
    bool m_bQuit = false;
};
