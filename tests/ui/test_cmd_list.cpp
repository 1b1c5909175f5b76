#include "base/keys.h"
#include "core/model/TDataPrj.h"
#include "exec/RunBench.h"
#include "settings/TAppData.h"
#include "ui/panels/TWgtCmdList.h"

#include <QTableWidget>
#include <QtTest>

#include <optional>

class TestCmdList : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_list.reset();
        m_bench.emplace();
        m_bench->addProgrammer("bench", "none");
        m_cfg = m_bench->addCfg("Config");
        m_bench->addLink(m_cfg, "bench", "W25Q64");
        m_bench->addCmd(m_cfg, "delay value=10");
        m_bench->addCmd(m_cfg, "stop");
        m_bench->bind();
        project().clearChanged();
        m_list = std::make_unique<TWgtCmdList>();
        m_list->fill(m_cfg);
        m_list->show();
    }

    void colorsAndStyle()
    {
        const QColor base = m_list->table()->palette().color(QPalette::Base);
        appData().CmdEnableColorStop = true;
        appData().CmdEnableColorSetProg = false;
        appData().CmdColorStop = QColor(1, 2, 5);
        m_list->reloadColors();
        const QList<QColor> wanted{base, appData().CmdColorSetDevice, base, QColor(1, 2, 5)};
        for (int i = 0; i < 12; ++i)
            QCOMPARE(cell(i / 3, i % 3)->background().color(), wanted.at(i / 3));
        // Black on black cannot be read, and on the usual light colours the style's own text can.
        QCOMPARE(cell(3, 1)->foreground().color(), QColor(Qt::white));
        QCOMPARE(cell(1, 1)->foreground(), QBrush());
        const QRect rect = m_list->table()->visualItemRect(cell(1, 2));
        const QPoint inRow =
            m_list->table()->viewport()->mapTo(m_list.get(), rect.bottomRight() - QPoint(9, 3));
        for (const QString name : {"Windows", "Fusion"}) {
            appData().Style = name;
            m_list->reloadColors();
            QVERIFY(TStyleCmdList::shared()->baseStyle()->inherits(qPrintable("Q" + name + "Style")));
            QCOMPARE(QColor(m_list->grab().toImage().pixel(inRow)), appData().CmdColorSetDevice);
            QCOMPARE(m_list->table()->rowHeight(1), qMax(19, m_list->table()->fontMetrics().height() + 2));
        }
    }

    // A row of a light colour on a dark desktop: neither mark nor box is lost.
    void checkMarkOnDark()
    {
        const QPalette usual = QApplication::palette();
        QApplication::setPalette(QPalette(QColor(50, 50, 50), QColor(35, 35, 35)));
        const QImage image =
            m_list->table()->viewport()->grab(m_list->table()->visualItemRect(cell(1, 0))).toImage();
        QApplication::setPalette(usual);
        QCOMPARE(cell(1, 0)->background().color(), appData().CmdColorSetDevice);
        int dark = 255;
        int light = 0;
        const QPoint centre = image.rect().center();
        for (int i = 0; i < 49; ++i) {
            const int gray = qGray(image.pixel(centre + QPoint(i % 7 - 3, i / 7 - 3)));
            dark = qMin(dark, gray);
            light = qMax(light, gray);
        }
        QVERIFY2(dark < 80 && light > 180, qPrintable(QString("%1 to %2").arg(dark).arg(light)));
    }

    void dragsTheNames()
    {
        QTableWidget* table = m_list->table();
        m_list->resize(900, 200);
        QSignalSpy selected(m_list.get(), &TWgtCmdList::signalSelectCmd);
        const int before = table->columnWidth(1);
        const auto edge = [&] { return QPoint(table->columnViewportPosition(2), 30); };
        const auto drag = [&](int by) {
            const QPoint from = edge();
            QTest::mousePress(table->viewport(), Qt::LeftButton, {}, from);
            QMouseEvent move(QEvent::MouseMove, from + QPoint(by, 0), from + QPoint(by, 0), Qt::NoButton,
                             Qt::LeftButton, {});
            QCoreApplication::sendEvent(table->viewport(), &move);
            QTest::mouseRelease(table->viewport(), Qt::LeftButton, {}, from + QPoint(by, 0));
        };
        drag(25);
        QCOMPARE(table->columnWidth(1), before + 25);
        drag(-900);
        QCOMPARE(table->columnWidth(1), 40);
        // Another tab takes the width over as it is shown, and no row was clicked.
        QCOMPARE(appData().WindowMainCmdListColumnNameWidth, 40);
        TWgtCmdList other;
        appData().WindowMainCmdListColumnNameWidth = 77;
        other.show();
        QCOMPARE(other.table()->columnWidth(1), 77);
        QCOMPARE(selected.size(), 0);
    }

    void validity()
    {
        const int wrongParam = m_bench->addCmd(m_cfg, "jamp", {key::to_cmd, -1});
        const int wrongDevice = m_bench->addCmd(m_cfg, "fuse_write data=00");
        m_bench->bind();
        m_list->fill(m_cfg);
        const auto looks = [this](int id, int column) {
            const QTableWidgetItem* item = cell(m_list->rowOf(id), column);
            return qMakePair(item->foreground().color() == QColor(Qt::red), item->font().strikeOut());
        };
        const int prog = m_list->cmdAt(0);
        for (int column = 0; column < 3; ++column) {
            QCOMPARE(looks(prog, column), qMakePair(false, false));
            QCOMPARE(looks(wrongParam, column), qMakePair(true, false));
            QCOMPARE(looks(wrongDevice, column), qMakePair(true, true));
        }
        project().setCmdParam(prog, {{key::prog, "gone"}});
        m_list->refreshAll(nullptr, -1);
        QCOMPARE(looks(prog, 1), qMakePair(true, true));
        QCOMPARE(looks(m_list->cmdAt(2), 1), qMakePair(false, false));
        project().setCmdParam(prog, {{key::prog, "bench"}});
        m_list->refreshValidity();
        QCOMPARE(looks(prog, 1), qMakePair(false, false));
    }

    // Only what the user does is told.
    void checked()
    {
        QSignalSpy enabled(m_list.get(), &TWgtCmdList::signalEnabledCmd);
        QSignalSpy selected(m_list.get(), &TWgtCmdList::signalSelectCmd);
        QSignalSpy clicked(m_list.get(), &TWgtCmdList::signalClikedCmd);
        m_list->fill(m_cfg);
        m_list->refreshAll(nullptr, -1);
        m_list->reloadColors();
        m_list->highlight(m_list->cmdAt(2));
        m_list->hideUnchecked(true);
        m_list->setChecked(true);
        QCOMPARE(enabled.size(), 0);
        QCOMPARE(selected.size(), 1);
        QVERIFY(!project().isChanged());
        m_list->hideUnchecked(false);
        click(2, 0);
        QCOMPARE(enabled.takeLast(), QVariantList({m_list->cmdAt(2), false}));
        click(2, 1);
        click(2, 2);
        // Another cell of the same row is no other command.
        QCOMPARE(clicked.size(), 3);
        QCOMPARE(enabled.size(), 0);
        QCOMPARE(selected.size(), 2);
        // The space bar works from any cell of the row, and once on the one with the box.
        for (int row : {1, 0}) {
            QTest::keyClick(m_list->table(), Qt::Key_Up);
            QTest::keyClick(m_list->table(), Qt::Key_Space);
            QCOMPARE(m_list->currentRow(), row);
            QCOMPARE(enabled.takeLast(), QVariantList({m_list->cmdAt(row), false}));
            QTest::keyClick(m_list->table(), Qt::Key_Home);
        }
    }

    void hidden()
    {
        project().setCmdStatus(m_list->cmdAt(0), false);
        project().setCmdStatus(m_list->cmdAt(2), false);
        m_list->fill(m_cfg);
        QSignalSpy selected(m_list.get(), &TWgtCmdList::signalSelectCmd);
        m_list->hideUnchecked(true);
        const auto shown = [this] {
            QString rows;
            for (int row = 0; row < m_list->rowCount(); ++row)
                rows += m_list->table()->isRowHidden(row) ? '-' : 'x';
            return rows;
        };
        QCOMPARE(shown(), QString("-x-x"));
        QCOMPARE(m_list->currentRow(), 1);
        QCOMPARE(selected.size(), 1);
        connect(m_list.get(), &TWgtCmdList::signalEnabledCmd, &project(), &TDataPrj::setCmdStatus);
        click(1, 0);
        QCOMPARE(shown(), QString("---x"));
        QCOMPARE(m_list->currentRow(), 3);
        m_list->moveRow(3, -1);
        QCOMPARE(shown(), QString("--x-"));
        m_list->hideUnchecked(false);
        QCOMPARE(shown(), QString("xxxx"));
    }

private:
    QTableWidgetItem* cell(int row, int column) const { return m_list->table()->item(row, column); }
    void click(int row, int column) const
    {
        const QRect rect = m_list->table()->visualItemRect(cell(row, column));
        QTest::mouseClick(m_list->table()->viewport(), Qt::LeftButton, {}, rect.center());
    }
    std::optional<RunBench> m_bench;
    std::unique_ptr<TWgtCmdList> m_list;
    int m_cfg = -1;
};

QTEST_MAIN(TestCmdList)
#include "test_cmd_list.moc"
