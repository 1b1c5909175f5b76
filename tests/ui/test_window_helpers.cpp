#include "core/TAppData.h"
#include "core/TLang.h"
#include "core/globals.h"
#include "support/tables.h"
#include "ui/window_helpers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFontInfo>
#include <QMessageBox>
#include <QScreen>
#include <QStyle>
#include <QStyleFactory>
#include <QTableWidget>
#include <QTimer>
#include <QtTest>

namespace {

/// Does something with the message box that the next event loop shows.
void withBox(const std::function<void(QMessageBox*)>& answer)
{
    QTimer::singleShot(0, qApp, [answer] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box);
        answer(box);
        if (box->isVisible())
            box->reject();
    });
}

QStringList column(const QTableWidget& table, int column)
{
    QStringList texts;
    for (int row = 0; row < table.rowCount(); ++row)
        texts.append(table.item(row, column) ? table.item(row, column)->text() : QStringLiteral("-"));
    return texts;
}

} // namespace

class TestWindowHelpers : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void askedByButtons();
    void shownText();
    void placed_data();
    void placed();
    void placedOnWindow();
    void movedRow_data();
    void movedRow();
    void style();
    void fonts();
};

void TestWindowHelpers::initTestCase()
{
    lang().load(QStringLiteral(VM_DATA_DIR "/language/eng.lng"));
}

void TestWindowHelpers::askedByButtons()
{
    for (const QString& answer : {QStringLiteral("Yes"), QStringLiteral("No")}) {
        QStringList seen;
        withBox([&](QMessageBox* box) {
            for (QAbstractButton* button : box->buttons())
                seen.append(button->text());
            for (QAbstractButton* button : box->buttons()) {
                if (button->text() == answer)
                    QTest::mouseClick(button, Qt::LeftButton);
            }
        });
        QCOMPARE(msgAsk(QStringLiteral("?"), nullptr), answer == QLatin1String("Yes"));
        std::sort(seen.begin(), seen.end());
        QCOMPARE(seen, (QStringList{"No", "Yes"}));
    }
    withBox([](QMessageBox* box) { box->close(); });
    QVERIFY(!msgAsk(QStringLiteral("?"), nullptr));
    withBox([](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Return); });
    QVERIFY(msgAsk(QStringLiteral("?"), nullptr));
}

// Names come from files: markup in them is shown and not obeyed.
void TestWindowHelpers::shownText()
{
    const QString text = QStringLiteral("<b>project</b> & \"name\"");
    int shown = 0;
    const auto look = [&](QMessageBox::Icon icon) {
        withBox([&, icon](QMessageBox* box) {
            ++shown;
            QCOMPARE(box->icon(), icon);
            QCOMPARE(box->windowTitle(), QStringLiteral("Velmarkion"));
            QCOMPARE(box->text(), text);
            QCOMPARE(box->textFormat(), Qt::PlainText);
        });
    };
    look(QMessageBox::Information);
    msgInfo(text, nullptr);
    look(QMessageBox::Critical);
    msgError(text, nullptr);
    look(QMessageBox::Question);
    QVERIFY(!msgAsk(text, nullptr));
    QCOMPARE(shown, 3);
}

void TestWindowHelpers::placed_data()
{
    tableColumns<QRect, QRect>("wanted", "expected");
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    const int w = screen.width();
    const int h = screen.height();
    tableRow("inside", QRect(10, 20, 300, 200), QRect(10, 20, 300, 200));
    tableRow("right of it", QRect(w, 20, 300, 200), QRect(0, 20, 300, 200));
    tableRow("below it", QRect(10, h + 7, 300, 200), QRect(10, 0, 300, 200));
    tableRow("last column", QRect(w - 1, 20, 300, 200), QRect(w - 1, 20, 300, 200));
    tableRow("too high", QRect(10, 20, 300, h + 1), QRect(10, 0, 300, h));
    tableRow("garbage", QRect(QPoint(INT_MIN, INT_MIN), QSize(INT_MAX, INT_MAX)), QRect(0, 0, w, h));
}

void TestWindowHelpers::placed()
{
    QFETCH(QRect, wanted);
    QFETCH(QRect, expected);
    const QSize size = wanted.x() == INT_MIN ? QSize(INT_MAX, INT_MAX) : wanted.size();
    QWidget widget;
    placeOnScreen(&widget, false, wanted.x(), wanted.y(), size.width(), size.height());
    QCOMPARE(widget.geometry(), expected);
    placeOnWindow(&widget, false, wanted.x(), wanted.y(), size.width(), size.height());
    QCOMPARE(widget.geometry(), expected);
}

void TestWindowHelpers::placedOnWindow()
{
    QWidget widget;
    QVERIFY(!QApplication::activeWindow());
    placeOnWindow(&widget, true, 0, 0, 100, 100);
    QVERIFY((widget.geometry().center() - QGuiApplication::primaryScreen()->geometry().center())
                .manhattanLength() <= 2);

    QWidget window;
    window.setGeometry(200, 150, 300, 200);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    placeOnWindow(&widget, true, 0, 0, 100, 80);
    QCOMPARE(widget.size(), QSize(100, 80));
    QVERIFY((widget.geometry().center() - window.frameGeometry().center()).manhattanLength() <= 2);
    // A dialog that is larger than its window keeps its title bar on the screen.
    window.setGeometry(0, 0, 200, 100);
    placeOnWindow(&widget, true, 0, 0, 600, 500);
    QVERIFY(widget.x() >= 0 && widget.y() >= 0);
}

void TestWindowHelpers::movedRow_data()
{
    tableColumns<int, int, QString, int>("row", "delta", "order", "current");
    tableRow("up", 3, -1, "abdc", 2);
    tableRow("far", 0, 3, "dbca", 3);
    tableRow("below the last", 3, 1, "abcd", 3);
    tableRow("far beyond", 1, INT_MAX, "abcd", 1);
}

void TestWindowHelpers::movedRow()
{
    QFETCH(int, row);
    QFETCH(int, delta);
    QFETCH(QString, order);
    QTableWidget table(4, 2);
    for (int i = 0; i < 4; ++i) {
        table.setItem(i, 0, new QTableWidgetItem(QString(QChar('a' + i))));
        if (i % 2 == 0)
            table.setItem(i, 1, new QTableWidgetItem(QString(QChar('A' + i))));
    }
    if (row >= 0)
        table.setCurrentCell(row, 0);
    int signalCount = 0;
    connect(&table, &QTableWidget::itemChanged, this, [&] { ++signalCount; });
    connect(&table, &QTableWidget::currentItemChanged, this, [&] { ++signalCount; });
    moveTableRow(&table, delta);
    QCOMPARE(column(table, 0).join(QString()), order);
    // A cell without an item moves too.
    QCOMPARE(column(table, 1).join(QString()),
             QString(order).replace('a', 'A').replace('c', 'C').replace('b', '-').replace('d', '-'));
    QTEST(table.currentRow(), "current");
    QCOMPARE(signalCount, 0);
    QVERIFY(!table.signalsBlocked());
}

void TestWindowHelpers::style()
{
    const QStringList known = QStyleFactory::keys();
    QVERIFY(known.contains(QStringLiteral("Fusion")));
    appData().Style = QStringLiteral("no such style");
    applyStyleSettings();
    QCOMPARE(appData().Style, known.first());
    setStyle(QStringLiteral("Fusion"));
    const QString applied = QApplication::style()->objectName();
    QCOMPARE(applied, QStringLiteral("fusion"));
    setStyle(QStringLiteral("no such style"));
    QCOMPARE(QApplication::style()->objectName(), applied);
}

void TestWindowHelpers::fonts()
{
    const QFont platform = QApplication::font();
    applyFontSettings();
    QCOMPARE(QApplication::font(), platform);
    QCOMPARE(appData().FontMonoName, platform.family());
    QCOMPARE(appData().FontMonoSize, QFontInfo(platform).pointSize());
    QVERIFY(appData().FontMonoSize > 0);

    appData().FontAppName = QStringLiteral("Some Family");
    appData().FontAppSize = 13;
    appData().FontMonoName = QStringLiteral("Mono Family");
    appData().FontMonoSize = 0;
    applyFontSettings();
    QCOMPARE(QApplication::font().family(), QStringLiteral("Some Family"));
    QCOMPARE(QApplication::font().pointSize(), 13);
    QCOMPARE(appData().FontMonoName, QStringLiteral("Mono Family"));
    QCOMPARE(appData().FontMonoSize, 13);
}

QTEST_MAIN(TestWindowHelpers)
#include "test_window_helpers.moc"
