#include "core/IFormFactory.h"
#include "core/TAppData.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "devices/TDeviceList.h"
#include "exec/RunBench.h"
#include "forms/TFormCommand.h"
#include "forms/TFormFactory.h"
#include "support/SimProcess.h"
#include "ui/TWgtCmdList.h"
#include "ui/TWgtLogExec.h"
#include "ui/TWgtPrj.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTextEdit>
#include <QtTest>

/// The tabs with the model and the real forms behind them.
class TestPanels : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void currentTab();
    void description();
    void movedTabs();
    void pagesAndForms();
    void formDroppedInItsOwnSignal();
    void updates();
    void jumpTarget();
    void deleteUnfit_data();
    void deleteUnfit();
    void run();
    void lineWithinALine();
    void deletedWhileReporting();

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
    void build();

    std::unique_ptr<RunBench> m_bench;
    std::unique_ptr<TWgtPrj> m_prj;
    TFormFactory m_forms;
    QList<int> m_cfgs;
    QList<int> m_ids; ///< delay, counter, stop in the first configuration
};

void TestPanels::init()
{
    m_bench = std::make_unique<RunBench>();
    setFormFactory(&m_forms);
    m_cfgs.clear();
    for (const char* name : {"A & B", "C", "D"})
        m_cfgs.append(m_bench->addCfg(QString::fromLatin1(name)));
    m_ids = {m_bench->addCmd(m_cfgs[0], cmd::delay, {key::value, 1}),
             m_bench->addCmd(m_cfgs[0], cmd::counter, {key::value, 2}),
             m_bench->addCmd(m_cfgs[0], cmd::stop)};
    m_bench->addCmd(m_cfgs[1], cmd::stop);
    m_prj = std::make_unique<TWgtPrj>();
    m_prj->resize(500, 400);
    m_prj->show();
    build();
}

void TestPanels::build()
{
    m_bench->bind();
    project().clearChanged();
    connect(&project(), &TDataPrj::signalChangeData, m_prj.get(), &TWgtPrj::slotUpdateGUI,
            Qt::ConnectionType(Qt::QueuedConnection | Qt::UniqueConnection));
    m_prj->build();
    QVERIFY(QTest::qWaitForWindowActive(m_prj.get()));
}

void TestPanels::cleanup()
{
    m_prj.reset();
    m_bench.reset();
    setFormFactory(nullptr);
}

void TestPanels::currentTab()
{
    QSignalSpy selected(m_prj.get(), &TWgtPrj::signalSelectCmd);
    m_prj->build();
    QCOMPARE(selected.size(), 0);
    QCOMPARE(m_prj->findChild<QTabWidget*>()->tabText(0), QStringLiteral("A && B"));
    QCOMPARE(m_prj->currentCmd(), m_ids[0]);
    QCOMPARE(m_prj->tabOf(m_cfgs[2])->cmdList()->currentRow(), -1);
    m_prj->setCurrentIndex(1);
    QCOMPARE(selected.last().at(0).toInt(), m_cfgs[1]);
    m_prj->removeTab(m_cfgs[1]);
    QCOMPARE(selected.last().at(0).toInt(), m_prj->currentCfg());
    QCOMPARE(m_prj->count(), 2);
    m_prj->deleteAll();
    QCOMPARE(m_prj->currentCfg(), -1);
    QCOMPARE(m_prj->currentCmd(), -1);
    QVERIFY(!m_prj->findChild<QTabWidget*>()->isVisible());
    QVERIFY(!project().isChanged());
}

void TestPanels::description()
{
    project().setCfgDescription(m_cfgs[0], QStringLiteral("a|nb |wc|w"));
    build();
    auto* edit = tab()->findChild<QTabWidget*>()->findChild<QTextEdit*>();
    QCOMPARE(edit->toPlainText(), QStringLiteral("a\nb \"c\""));
    QVERIFY(!project().isChanged());
    QTest::keyClicks(edit, QStringLiteral("\"d"));
    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(project().cfgDescription(m_cfgs[0]), QStringLiteral("|wd|na|nb |wc|w"));
    QVERIFY(project().isChanged());
}

void TestPanels::movedTabs()
{
    m_prj->slotSetViewParamCmd();
    type(QStringLiteral("10"));
    auto* bar = m_prj->findChild<QTabWidget*>()->tabBar();
    const QPoint from = bar->tabRect(0).center();
    const QPoint to(bar->tabRect(2).right() - 2, from.y());
    QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, from);
    for (int i = 1; i <= 20; ++i) {
        QMouseEvent move(QEvent::MouseMove, from + (to - from) * i / 20, Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(bar, &move);
    }
    QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, to);
    QCOMPARE(project().cfgNames(), QStringList({"C", "D", "A & B"}));
    QCOMPARE(project().indexCmd(m_ids[0]), 1);
    QCOMPARE(stored(m_ids[0]), 10);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(tab(i)->idCfg(), project().cfgIdAt(i));
}

void TestPanels::pagesAndForms()
{
    m_prj->slotSetViewParamExec();
    m_prj->setCurrentIndex(1);
    QVERIFY(tab(1)->logExec()->isVisible());
    m_prj->setCurrentIndex(0);
    QVERIFY(!form()->isVisible());
    m_prj->slotSetViewParamCmd();
    QVERIFY(form()->isVisible() && !tab()->logExec()->isVisible());
    auto* splitter = tab()->findChild<QSplitter*>();
    m_prj->setOrientation(true);
    m_prj->setSplitterSizes({0, 480});
    QCOMPARE(splitter->orientation(), Qt::Horizontal);
    QVERIFY(splitter->sizes().at(0) > 0);

    QSignalSpy viewParam(m_prj.get(), &TWgtPrj::signalSetViewParamCmd);
    QSignalSpy selected(m_prj.get(), &TWgtPrj::signalSelectCmd);
    m_prj->focusTable();
    QTest::keyClick(tab()->cmdList()->table(), Qt::Key_Down);
    QCOMPARE(form()->idCmd(), m_ids[1]);
    QCOMPARE(viewParam.size(), 1);
    QCOMPARE(selected.last(), QVariantList({m_cfgs[0], m_ids[1]}));
    m_prj->setCurrentRow(-1);
    QVERIFY(!tab()->form());
    QCOMPARE(viewParam.size(), 1);
    QCOMPARE(selected.last(), QVariantList({m_cfgs[0], -1}));
    QVERIFY(!project().isChanged());
}

void TestPanels::formDroppedInItsOwnSignal()
{
    m_prj->slotSetViewParamCmd();
    const QPointer<QWidget> old = form();
    connect(&project(), &TDataPrj::signalChangeData, this, [this] {
        disconnect(&project(), &TDataPrj::signalChangeData, this, nullptr);
        m_prj->refreshForms();
        project().removeCmd(m_ids[0]);
        tab()->cmdList()->removeRow(0);
    });
    type(QStringLiteral("77"));
    QTest::keyClick(field(), Qt::Key_Return);
    QCOMPARE(form()->idCmd(), m_ids[1]);
    QCOMPARE(stored(m_ids[1]), 2);
    QTRY_VERIFY(!old);
}

void TestPanels::updates()
{
    // What a run stores is shown, be the form open or not.
    const QPointer<QWidget> open = form();
    project().setCmdParam(m_ids[0], {{key::value, QStringLiteral("6")}});
    project().setCmdParam(m_ids[1], {{key::value, QStringLiteral("8")}});
    QCoreApplication::processEvents();
    QCOMPARE(form(), open.data());
    QCOMPARE(field()->text(), QStringLiteral("6"));
    QCOMPARE(cell(0, 2)->text(), QStringLiteral("6 ms"));
    QVERIFY(cell(1, 2)->text().contains(QLatin1Char('8')));

    // What is on its way when another project opens names commands that are others now.
    const QList<TData> stale{{{key::id_cfg, m_cfgs[1]}, {key::id_cmd, m_ids[0]}, {key::value, 9}},
                             {{key::id_cfg, 99}, {key::id_cmd, m_ids[0]}},
                             {{key::id_cfg, m_cfgs[0]}, {key::id_cmd, 99}},
                             {}};
    for (const TData& data : stale)
        m_prj->slotUpdateGUI(cvCmdChanged, data);
    QCOMPARE(cell(0, 2)->text(), QStringLiteral("6 ms"));
    QCOMPARE(field()->text(), QStringLiteral("6"));
}

void TestPanels::jumpTarget()
{
    const int jump = m_bench->addCmd(m_cfgs[0], cmd::jamp, {key::cfg, m_cfgs[0], key::to_cmd, m_ids[1]});
    build();
    const auto bold = [this] {
        QString rows;
        for (int row = 0; row < tab()->cmdList()->rowCount(); ++row)
            rows += QLatin1Char(cell(row, 1)->font().bold() && cell(row, 1)->font().italic() ? 'b' : '-');
        return rows;
    };
    m_prj->focusTable();
    QTest::keyClick(tab()->cmdList()->table(), Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(bold(), QStringLiteral("-b--"));
    tell({{key::to_cmd, m_ids[2]}});
    QCOMPARE(bold(), QStringLiteral("--b-"));
    QCOMPARE(project().cmdById(jump)->param(key::to_cmd).toInt(), m_ids[2]);
    QTest::keyClick(tab()->cmdList()->table(), Qt::Key_Up);
    QCOMPARE(bold(), QStringLiteral("----"));
    appData().CmdEnableHLJamp = false;
    m_prj->setCurrentRow(3);
    QCOMPARE(bold(), QStringLiteral("----"));
}

void TestPanels::deleteUnfit_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QStringList>("left");
    const QStringList head{cmd::delay, cmd::counter, cmd::stop, cmd::set_prog, cmd::set_device};
    QTest::newRow("on") << true << head + QStringList{cmd::erase, cmd::stop, cmd::set_prog, cmd::fuse_write};
    QTest::newRow("off") << false
                         << head + QStringList{cmd::erase, cmd::status_reg_write, cmd::stop, cmd::set_prog,
                                               cmd::fuse_write};
}

void TestPanels::deleteUnfit()
{
    QFETCH(bool, enabled);
    appData().CmdDelCmdDev = enabled;
    m_bench->addProgrammer(QStringLiteral("bench"), QStringLiteral("none"));
    m_bench->addLink(m_cfgs[0], QStringLiteral("bench"), QStringLiteral("W25Q64"));
    for (const QString& word : QStringList{cmd::erase, cmd::status_reg_write, cmd::stop})
        m_bench->addCmd(m_cfgs[0], word);
    m_bench->addLink(m_cfgs[0], QStringLiteral("bench"));
    m_bench->addCmd(m_cfgs[0], cmd::fuse_write);
    build();
    m_prj->setCurrentRow(4);
    const QString chip = QStringLiteral("ATmega8");
    tell({{key::device, chip}, {key::file, TDeviceList::deviceFiles().value(chip)}});
    QStringList left;
    for (int row = 0; row < tab()->cmdList()->rowCount(); ++row)
        left.append(cell(row, 1)->data(Qt::UserRole).toString());
    QTEST(left, "left");
    QCOMPARE(project().cmdsOfCfg(m_cfgs[0]).size(), left.size());
    QCoreApplication::processEvents();
    QVERIFY(!cell(5, 1)->font().strikeOut());
    QVERIFY(cell(left.size() - 1, 1)->font().strikeOut());
}

void TestPanels::run()
{
    SimProcess sim({QStringLiteral("--chip"), QStringLiteral("W25Q64")});
    QVERIFY2(sim.isReady(), sim.output().constData());
    m_bench->addProgrammer(QStringLiteral("bench"), sim.path());
    m_bench->addLink(m_cfgs[2], QStringLiteral("bench"), QStringLiteral("W25Q64"));
    m_bench->addCmd(m_cfgs[2], cmd::ident);
    const int read =
        m_bench->addCmd(m_cfgs[2], cmd::data_read, {key::addr_device, 0, key::data, QStringLiteral("0000")});
    build();
    m_prj->setCurrentIndex(2);
    m_prj->setCurrentRow(3);
    TRunControl control([this](int id) { return m_prj->tabOf(id); });
    TWgtLogExec* log = tab(2)->logExec();
    log->addEvent(ceText, QStringLiteral("of the last run"), QString());
    control.start(m_cfgs[2]);
    control.start(m_cfgs[0]);
    QCOMPARE(log->edit()->toPlainText(), QString());
    QCOMPARE(log->edit()->textInteractionFlags(), Qt::NoTextInteraction);
    QTRY_VERIFY_WITH_TIMEOUT(control.isIdle(), 20000);
    const QString text = log->edit()->toPlainText();
    QVERIFY2(text.contains(QLatin1String("EF")) && text.endsWith(langText(391)), qPrintable(text));
    QCOMPARE(log->bar()->value(), 0);
    QVERIFY(log->edit()->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
    // The form of the reading command was open: model, form and row have what was read.
    QCoreApplication::processEvents();
    const QString bytes = project().cmdById(read)->param(key::data).toString();
    QCOMPARE(bytes, QStringLiteral("FFFF"));
    QVERIFY(tab(2)->form()->findChild<QPlainTextEdit*>()->toPlainText().endsWith(QLatin1String("FF FF")));
    QVERIFY(tab(2)->cmdList()->table()->item(3, 2)->text().endsWith(bytes));
    QVERIFY(tab(0)->logExec()->edit()->toPlainText().endsWith(langText(391)));
    appData().ExecClearWindow = false;
    tab(2)->runBegins();
    QCOMPARE(log->edit()->toPlainText(), text);
}

void TestPanels::lineWithinALine()
{
    // Else the run that came first would wait until all others have nothing to tell.
    QStringList order;
    QTimer::singleShot(0, this, [&] {
        QTimer::singleShot(0, this, [&] { order.append(QStringLiteral("event")); });
        tab(1)->slotExecEventText(ceText, QStringLiteral("text"));
        order.append(QStringLiteral("line"));
    });
    tab(0)->slotExecEventText(ceText, QStringLiteral("text"));
    QTRY_COMPARE(order, QStringList({QStringLiteral("line"), QStringLiteral("event")}));
}

void TestPanels::deletedWhileReporting()
{
    auto* config = new TWgtConfig(m_cfgs[0], QString());
    const QPointer<TWgtConfig> guard(config);
    QTimer::singleShot(0, this, [config] { delete config; });
    config->slotExecEventText(ceText, QStringLiteral("late"));
    QVERIFY(!guard);
}

QTEST_MAIN(TestPanels)
#include "test_panels.moc"
