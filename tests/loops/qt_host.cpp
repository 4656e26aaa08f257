// A Qt program that shows modal dialogs of the layer. Exit status 0 if its own loop went on meanwhile.

#include "ModalRounds.h"

#include <QtWidgets>

namespace {

ModalRounds g_rounds;

class CountingWidget : public QWidget {
protected:
    void paintEvent(QPaintEvent* /*event*/) override { g_rounds.Painted(); }
};

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    CountingWidget window;
    window.show();

    veldan::Desktop& desktop = veldan::Desktop::Get();
    desktop.SetWaitFunction([] {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        return !g_rounds.Quits();
    });
    QSocketNotifier notifier(desktop.Descriptor(), QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, [&desktop] { desktop.Dispatch(); });
    QTimer ticks;
    QObject::connect(&ticks, &QTimer::timeout, [&window] {
        window.update();
        g_rounds.Tick();
    });
    ticks.start(5);
    int status = 1;
    QTimer::singleShot(0, [&status] {
        status = g_rounds.Run();
        QCoreApplication::exit(status);
    });
    return QApplication::exec() == 0 ? status : 1;
}
