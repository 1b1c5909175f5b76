#include "base/TLang.h"
#include "base/keys.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "devices/TDeviceList.h"
#include "exec/RunBench.h"
#include "exec/TLineGate.h"
#include "forms/TFormCommand.h"
#include "forms/TFormFactory.h"
#include "settings/TAppData.h"
#include "ui/panels/TWgtCmdList.h"
#include "ui/panels/TWgtLogExec.h"
#include "ui/panels/TWgtPrj.h"

#include <QtTest>
#include <QtWidgets>

#include <optional>

/// The tabs with the model and the real forms behind them.
class TestPanels : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_prj.reset();
        m_bench.emplace();
        setFormFactory(&m_forms);
        m_cfgs = {m_bench->addCfg("A & B"), m_bench->addCfg("C"), m_bench->addCfg("D")};
        m_ids = {m_bench->addCmd(m_cfgs[0], "delay value=1"), m_bench->addCmd(m_cfgs[0], "counter value=2"),
                 m_bench->addCmd(m_cfgs[0], "stop")};
        m_bench->addCmd(m_cfgs[1], "stop");
        m_prj = std::make_unique<TWgtPrj>(m_gate);
        m_prj->resize(500, 400);
        m_prj->show();
        build();
    }

    void description()
    {
        project().setCfgDescription(m_cfgs[0], "a|nb |wc|w");
        build();
        auto* edit = tab()->findChild<QTabWidget*>()->findChild<QTextEdit*>();
        QCOMPARE(edit->toPlainText(), QString("a\nb \"c\""));
        QVERIFY(!project().isChanged());
        QTest::keyClicks(edit, "\"d");
        QTest::keyClick(edit, Qt::Key_Return);
        QCOMPARE(project().cfgDescription(m_cfgs[0]), QString("|wd|na|nb |wc|w"));
    }

    void movedTabs()
    {
        m_prj->slotSetViewParamCmd();
        type("10");
        auto* bar = m_prj->findChild<QTabWidget*>()->tabBar();
        const QPoint from = bar->tabRect(0).center();
        const QPoint to(bar->tabRect(2).right() - 2, from.y());
        QTest::mousePress(bar, Qt::LeftButton, {}, from);
        for (const QPoint& pos : {(from + to) / 2, to}) {
            QMouseEvent move(QEvent::MouseMove, pos, pos, Qt::NoButton, Qt::LeftButton, {});
            QCoreApplication::sendEvent(bar, &move);
        }
        QTest::mouseRelease(bar, Qt::LeftButton, {}, to);
        QCOMPARE(project().cfgNames(), QStringList({"C", "D", "A & B"}));
        QCOMPARE(stored(m_ids[0]), 10);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(tab(i)->idCfg(), project().cfgIdAt(i));
    }

    void pagesAndForms()
    {
        QSignalSpy selected(m_prj.get(), &TWgtPrj::signalSelectCmd);
        m_prj->build();
        QCOMPARE(selected.size(), 0);
        QCOMPARE(m_prj->findChild<QTabWidget*>()->tabText(0), QString("A && B"));
        m_prj->slotSetViewParamExec();
        m_prj->setCurrentIndex(1);
        QCOMPARE(selected.last().at(0).toInt(), m_cfgs[1]);
        QVERIFY(tab(1)->logExec()->isVisible());
        m_prj->setCurrentIndex(0);
        QVERIFY(!form()->isVisible());
        m_prj->slotSetViewParamCmd();
        QVERIFY(form()->isVisible() && !tab()->logExec()->isVisible());
        m_prj->setOrientation(true);
        m_prj->setSplitterSizes({0, 480});
        QCOMPARE(tab()->findChild<QSplitter*>()->orientation(), Qt::Horizontal);
        QVERIFY(tab()->findChild<QSplitter*>()->sizes().at(0) > 0);

        QSignalSpy viewParam(m_prj.get(), &TWgtPrj::signalSetViewParamCmd);
        m_prj->focusTable();
        QTest::keyClick(tab()->cmdList()->table(), Qt::Key_Down);
        QCOMPARE(form()->idCmd(), m_ids[1]);
        QCOMPARE(selected.last(), QVariantList({m_cfgs[0], m_ids[1]}));
        m_prj->setCurrentRow(-1);
        QVERIFY(!tab()->form());
        QCOMPARE(viewParam.size(), 1);
        QCOMPARE(selected.last(), QVariantList({m_cfgs[0], -1}));

        m_prj->removeTab(m_cfgs[0]);
        QCOMPARE(m_prj->count(), 2);
        QCOMPARE(selected.last(), QVariantList({m_prj->currentCfg(), m_prj->currentCmd()}));
        m_prj->deleteAll();
        QCOMPARE(m_prj->currentCmd(), -1);
        QVERIFY(!m_prj->findChild<QTabWidget*>()->isVisible());
        QVERIFY(!project().isChanged());
    }

    void formDroppedInItsOwnSignal()
    {
        m_prj->slotSetViewParamCmd();
        const QPointer<QWidget> old = form();
        connect(&project(), &TDataPrj::signalChangeData, this, [this] {
            disconnect(&project(), &TDataPrj::signalChangeData, this, nullptr);
            m_prj->refreshForms();
            project().removeCmd(m_ids[0]);
            tab()->cmdList()->removeRow(0);
        });
        type("77");
        QTest::keyClick(field(), Qt::Key_Return);
        QCOMPARE(form()->idCmd(), m_ids[1]);
        QCOMPARE(stored(m_ids[1]), 2);
        QTRY_VERIFY(!old);
    }

    void updates()
    {
        // What a run stores is shown, be the form open or not.
        const QPointer<QWidget> open = form();
        project().setCmdParam(m_ids[0], {{key::value, "6"}});
        project().setCmdParam(m_ids[1], {{key::value, "8"}});
        QCoreApplication::processEvents();
        QCOMPARE(form(), open.data());
        QCOMPARE(field()->text(), QString("6"));
        QCOMPARE(cell(0, 2)->text(), QString("6 ms"));
        QVERIFY(cell(1, 2)->text().contains('8'));

        // What is on its way when another project opens names commands that are others now.
        for (const auto& [cfg, id] : {qMakePair(m_cfgs[1], m_ids[0]), {99, m_ids[0]}, {m_cfgs[0], 99}})
            m_prj->slotUpdateGUI(cvCmdChanged, {{key::id_cfg, cfg}, {key::id_cmd, id}});
        m_prj->slotUpdateGUI(cvCmdChanged, {});
        QCOMPARE(cell(0, 2)->text(), QString("6 ms"));
        QCOMPARE(field()->text(), QString("6"));
    }

    void jumpTarget()
    {
        m_bench->addCmd(m_cfgs[0], cmd::jamp, {key::cfg, m_cfgs[0], key::to_cmd, m_ids[1]});
        build();
        const auto bold = [this] {
            QString rows;
            for (int row = 0; row < tab()->cmdList()->rowCount(); ++row)
                rows += QLatin1Char(cell(row, 1)->font().bold() && cell(row, 1)->font().italic() ? 'b' : '-');
            return rows;
        };
        m_prj->focusTable();
        QTest::keyClick(tab()->cmdList()->table(), Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(bold(), QString("-b--"));
        tell({{key::to_cmd, m_ids[2]}});
        QCOMPARE(bold(), QString("--b-"));
        QTest::keyClick(tab()->cmdList()->table(), Qt::Key_Up);
        QCOMPARE(bold(), QString("----"));
        appData().CmdEnableHLJamp = false;
        m_prj->setCurrentRow(3);
        QCOMPARE(bold(), QString("----"));
    }

    void deleteUnfit()
    {
        m_bench->addProgrammer("bench", "none");
        m_bench->addLink(m_cfgs[0], "bench", "W25Q64");
        for (const char* word : {"erase", "status_reg_write", "stop"})
            m_bench->addCmd(m_cfgs[0], word);
        m_bench->addLink(m_cfgs[0], "bench");
        m_bench->addCmd(m_cfgs[0], "fuse_write");
        build();
        m_prj->setCurrentRow(4);
        const auto leftWith = [this](const char* chip) {
            tell({{key::device, chip}, {key::file, TDeviceList::deviceFiles().value(chip)}});
            QCoreApplication::processEvents();
            QStringList left;
            for (int row = 3; row < tab()->cmdList()->rowCount(); ++row)
                left.append((cell(row, 1)->font().strikeOut() ? "-" : "") +
                            cell(row, 1)->data(Qt::UserRole).toString());
            return left.join(' ');
        };
        appData().CmdDelCmdDev = false;
        const QString all = "set_prog set_device erase -status_reg_write stop set_prog -fuse_write";
        QCOMPARE(leftWith("ATmega8"), all);
        appData().CmdDelCmdDev = true;
        QCOMPARE(leftWith("ATmega16"), QString(all).remove("-status_reg_write "));
        QCOMPARE(project().cmdsOfCfg(m_cfgs[0]).size(), 9);
    }

    void run()
    {
        TRunControl control([this](int id) { return m_prj->tabOf(id); });
        const QTextEdit* log = tab()->logExec()->edit();
        tab()->slotExecEventText(ceText, "of the last run");
        control.start(m_cfgs[0]);
        QCOMPARE(log->toPlainText(), QString());
        QCOMPARE(log->textInteractionFlags(), Qt::NoTextInteraction);
        QTRY_VERIFY_WITH_TIMEOUT(control.isIdle(), 20000);
        const QString text = log->toPlainText();
        QVERIFY2(text.endsWith(langText(Text::Done)), qPrintable(text));
        QVERIFY(log->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
        appData().ExecClearWindow = false;
        tab()->runBegins();
        QCOMPARE(log->toPlainText(), text);
    }

    void eventsWithinALine()
    {
        // Another run's line lets none in: the run that came first would wait until all others are silent.
        QStringList order;
        QTimer::singleShot(0, this, [&] {
            QTimer::singleShot(0, this, [&] { order.append("event"); });
            tab(1)->slotExecEventText(ceText, "text");
            order.append("line");
        });
        tab(0)->slotExecEventText(ceText, "text");
        QTRY_COMPARE(order, QStringList({"line", "event"}));
        // The panel may go meanwhile.
        const QPointer<TWgtConfig> config = new TWgtConfig(m_cfgs[0], {}, m_gate);
        QTimer::singleShot(0, this, [config] { delete config; });
        config->slotExecEventText(ceText, "late");
        QVERIFY(!config);
    }

private:
    TWgtConfig* tab(int index = 0) const { return m_prj->tabAt(index); }
    TFormCommand* form() const { return qobject_cast<TFormCommand*>(tab()->form()); }
    QLineEdit* field() const { return form()->findChild<QLineEdit*>(); }
    void type(const QString& text) const
    {
        field()->setFocus();
        field()->selectAll();
        QTest::keyClicks(field(), text);
    }
    /// As the form of the current command tells a change.
    void tell(TData change) const
    {
        change.insert(key::id_cmd, form()->idCmd());
        emit form()->signalChangedCmdParam(change);
    }
    QTableWidgetItem* cell(int row, int column) const { return tab()->cmdList()->table()->item(row, column); }
    int stored(int id) const { return project().cmdById(id)->param(key::value).toInt(); }

    void build()
    {
        m_bench->bind();
        project().clearChanged();
        connect(&project(), &TDataPrj::signalChangeData, m_prj.get(), &TWgtPrj::slotUpdateGUI,
                Qt::ConnectionType(Qt::QueuedConnection | Qt::UniqueConnection));
        m_prj->build();
        QVERIFY(QTest::qWaitForWindowActive(m_prj.get()));
    }

    TFormFactory m_forms;
    std::optional<RunBench> m_bench;
    TLineGate m_gate;
    std::unique_ptr<TWgtPrj> m_prj;
    QList<int> m_cfgs;
    QList<int> m_ids; ///< delay, counter, stop in the first configuration
};

QTEST_MAIN(TestPanels)
#include "test_panels.moc"
