#include "measure.h"
#include "settings/TAppData.h"
#include "ui/dialogs/TDialogSelectDevice.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QTimer>

// The dialog that chooses a chip, on the shipped list: CPU time until it is on the screen, and of each letter
// of the filter with all that is painted for it.

namespace {

constexpr double openMs = 50;
constexpr double letterMs = 10;
constexpr int rounds = 5;

int failures = 0;

void tell(const QString& what, double seconds, double most)
{
    const double ms = seconds * 1e3;
    failures += ms > most ? 1 : 0;
    printf("%-32s %6.1f ms of %.0f\n", qPrintable(what), ms, most);
}

void settle()
{
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
}

void press(QWidget* widget, int key, const QString& text)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(widget, &event);
    }
    settle();
}

void typeInto(QDialog& dialog)
{
    auto* filter = dialog.findChild<QLineEdit*>();
    for (const QString& text : {QStringLiteral("w25q128"), QStringLiteral("*m*p")}) {
        for (const QChar letter : text) {
            const double seconds = cpuSecondsOf([&] { press(filter, 0, letter); });
            tell(QStringLiteral("\"%1\" typed").arg(filter->text()), seconds, letterMs);
        }
        while (!filter->text().isEmpty()) {
            const double seconds = cpuSecondsOf([&] { press(filter, Qt::Key_Backspace, QString()); });
            tell(QStringLiteral("\"%1\" left").arg(filter->text()), seconds, letterMs);
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    appData().PathDevices = QStringLiteral(VM_DATA_DIR "/devices");
    for (int round = 0; round < rounds; ++round) {
        const std::clock_t start = std::clock();
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            settle();
            const auto* list = dialog->findChild<QListWidget*>();
            tell(QStringLiteral("opened with %1 chips").arg(list->count()),
                 double(std::clock() - start) / CLOCKS_PER_SEC, openMs);
            if (round == rounds - 1)
                typeInto(*dialog);
            dialog->reject();
        });
        (void)TDialogSelectDevice::selectChip(QStringLiteral("W25Q64"));
    }
    return failures == 0 ? 0 : 1;
}
