#include "settings/TAppData.h"
#include "ui/main/TWgtStatusBar.h"
#include "ui/window_helpers.h"

#include <QtTest>
#include <QtWidgets>

class TestWindowHelpers : public QObject
{
    Q_OBJECT

private slots:
    // Wanted, and what it becomes on the screen.
    void placed()
    {
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        const int w = screen.width();
        const int h = screen.height();
        const QRect rows[][2] = {
            {{10, 20, 300, 200}, {10, 20, 300, 200}},   {{w, 20, 300, 200}, {0, 20, 300, 200}},
            {{10, h + 7, 300, 200}, {10, 0, 300, 200}}, {{w - 1, 20, 300, 200}, {w - 1, 20, 300, 200}},
            {{10, 20, 300, h + 1}, {10, 0, 300, h}},    {{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, {0, 0, w, h}},
        };
        QWidget widget;
        for (const auto& [wanted, expected] : rows) {
            for (const auto& place : {placeOnScreen, placeOnWindow}) {
                place(&widget, false, wanted.x(), wanted.y(), wanted.width(), wanted.height());
                QCOMPARE(widget.geometry(), expected);
            }
        }
        const auto isCentredOn = [&](const QRect& area) {
            placeOnWindow(&widget, true, 0, 0, 100, 80);
            return (widget.geometry().center() - area.center()).manhattanLength() <= 2;
        };
        QVERIFY(isCentredOn(screen));
        QWidget window;
        window.setGeometry(200, 150, 300, 200);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QVERIFY(isCentredOn(window.frameGeometry()));
        // A dialog that is larger than its window keeps its title bar on the screen.
        window.setGeometry(0, 0, 200, 100);
        placeOnWindow(&widget, true, 0, 0, 600, 500);
        QVERIFY(widget.x() >= 0 && widget.y() >= 0);
    }
    // The second screen stands to the left of the primary one, and higher.
    void secondScreen()
    {
        const QList<QRect> screens{{0, 0, 1000, 800}, {-600, -100, 600, 500}};
        const QRect rows[][2] = {
            {{-500, -50, 300, 200}, {-500, -50, 300, 200}}, {{-100, 50, 300, 200}, {0, 50, 300, 200}},
            {{-250, 50, 300, 200}, {-250, 50, 300, 200}},   {{-650, -150, 300, 200}, {-600, -100, 300, 200}},
            {{-500, 450, 300, 200}, {0, 450, 300, 200}},    {{-500, -50, 700, 600}, {-600, -100, 600, 500}},
            {{1500, 1500, 300, 200}, {0, 0, 300, 200}},     {{100, 790, 900, 900}, {100, 0, 900, 800}},
        };
        for (const auto& [wanted, expected] : rows)
            QCOMPARE(heldOnScreen(wanted, screens), expected);
    }
    void statusLine()
    {
        TWgtStatusBar line;
        line.resize(300, line.height());
        line.show();
        line.showText(QString(80, 'w') + "<b>", TWgtStatusBar::Red);
        QVERIFY(line.toolTip().contains("w&lt;b&gt;"));
        line.resize(3000, line.height());
        QCOMPARE(line.toolTip(), QString());
        const auto color = [&line] { return line.palette().color(QPalette::WindowText); };
        QCOMPARE(color(), QColor(Qt::red));
        QApplication::setPalette(QPalette(QColor(50, 50, 50), QColor(35, 35, 35)));
        line.showText("done", TWgtStatusBar::Green);
        QVERIFY2(color().lightness() > 128, qPrintable(color().name()));
        QApplication::setPalette(QPalette());
    }
    void styleAndFonts()
    {
        appData().Style = "no such style";
        applyStyleSettings();
        QVERIFY(appData().Style != "no such style");
        setStyle("Fusion");
        setStyle("no such style");
        QCOMPARE(QApplication::style()->objectName(), QString("fusion"));

        const QFont platform = QApplication::font();
        applyFontSettings();
        QCOMPARE(QApplication::font(), platform);
        QCOMPARE(appData().FontMonoName, platform.family());
        QCOMPARE(appData().FontMonoSize, QFontInfo(platform).pointSize());
        appData().FontAppName = "Some Family";
        appData().FontAppSize = 13;
        appData().FontMonoSize = 0;
        applyFontSettings();
        QCOMPARE(QApplication::font().toString().left(14), QString("Some Family,13"));
        QCOMPARE(appData().FontMonoName, platform.family());
        QCOMPARE(appData().FontMonoSize, 13);
    }
};

QTEST_MAIN(TestWindowHelpers)
#include "test_window_helpers.moc"
