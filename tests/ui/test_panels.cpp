#include "core/IFormFactory.h"
#include "core/TAppData.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "devices/TDeviceList.h"
#include "exec/RunBench.h"
#include "support/SimProcess.h"
#include "ui/TWgtCmdList.h"
#include "ui/TWgtConfig.h"
#include "ui/TWgtLabelElided.h"
#include "ui/TWgtLogExec.h"
#include "ui/TWgtPrj.h"
#include "ui/TWgtStatusBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTextEdit>
#include <QtTest>

/// Edits the parameter "value".
class ValueForm : public QWidget
{
    Q_OBJECT

public:
    explicit ValueForm(const TData& shown)
        : idCmd(shown.value(key::id_cmd).toInt())
        , edit(new QLineEdit(shown.value(key::value).toString(), this))
    {
        (new QHBoxLayout(this))->addWidget(edit);
        connect(edit, &QLineEdit::editingFinished, this, [this] { tell({{key::value, edit->text()}}); });
        ++alive;
    }
    ~ValueForm() override { --alive; }

    void tell(TData change)
    {
        change.insert(key::id_cmd, idCmd);
        emit signalChangedCmdParam(change);
    }

    const int idCmd;
    QLineEdit* edit;
    inline static int alive = 0;

signals:
    void signalChangedCmdParam(TData param);
};

/// Every command but stop has such a form.
class ValueForms : public IFormFactory
{
public:
    QWidget* createForm(const IDevice&, const TData& data) override
    {
        return data.value(key::cmd).toString() == cmd::stop ? nullptr : new ValueForm(data);
    }
    QWidget* createDeviceForm(const IDevice&, const TData&) override { return nullptr; }
    bool resultText(QWidget*, int, QString&) override { return false; }
    bool updateForm(QWidget* form, const TData& data) override
    {
        updates.append(data.value(key::value).toString());
        static_cast<ValueForm*>(form)->edit->setText(updates.last());
        return canUpdate;
    }

    QStringList updates;
    bool canUpdate = true;
};

class TestPanels : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void buildAndDelete();
    void description();
    void movedTabs();
    void tabColors();
    void pages();
    void formFollowsRow();
    void formDroppedInItsOwnSignal();
    void updates();
    void staleUpdates();
    void commit();
    void jumpTarget();
    void deleteUnfit_data();
    void deleteUnfit();
    void run();
    void deletedWhileReporting();
    void smallParts();

private:
    TWgtConfig* tab(int index = 0) const { return m_prj->tabAt(index); }
    ValueForm* form() const { return qobject_cast<ValueForm*>(tab()->form()); }
    QTableWidgetItem* cell(int row, int column) const { return tab()->cmdList()->table()->item(row, column); }
    QVariant stored(int id, const QString& key) const { return project().cmdById(id)->param(key); }
    void build();

    std::unique_ptr<RunBench> m_bench;
    std::unique_ptr<TWgtPrj> m_prj;
    ValueForms m_forms;
    QList<int> m_cfgs;
    QList<int> m_ids; ///< delay, counter, stop in the first configuration
};

void TestPanels::init()
{
    m_bench = std::make_unique<RunBench>();
    m_forms = ValueForms();
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
    QCOMPARE(ValueForm::alive, 0);
    m_bench.reset();
    setFormFactory(nullptr);
}

void TestPanels::buildAndDelete()
{
    QSignalSpy selected(m_prj.get(), &TWgtPrj::signalSelectCmd);
    QSignalSpy viewParam(m_prj.get(), &TWgtPrj::signalSetViewParamCmd);
    m_prj->build();
    QVERIFY(!project().isChanged());
    QCOMPARE(selected.size() + viewParam.size(), 0);
    QCOMPARE(m_prj->count(), 3);
    QCOMPARE(m_prj->findChild<QTabWidget*>()->tabText(0), QStringLiteral("A && B"));
    QCOMPARE(m_prj->currentCfg(), m_cfgs[0]);
    QCOMPARE(m_prj->currentCmd(), m_ids[0]);
    QCOMPARE(m_prj->tabOf(m_cfgs[2])->cmdList()->currentRow(), -1);
    m_prj->focusTable();
    QVERIFY(m_prj->tableHasFocus());

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
    form()->edit->setFocus();
    QTest::keyClicks(form()->edit, QStringLiteral("0"));
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
    QCOMPARE(stored(m_ids[0], key::value).toInt(), 10);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(tab(i)->idCfg(), project().cfgIdAt(i));
}

void TestPanels::tabColors()
{
    const auto* bar = m_prj->findChild<QTabWidget*>()->tabBar();
    const QColor none = bar->tabTextColor(0);
    const QList<QPair<int, QColor>> rows{{csRun, appData().ExecTabColorExecute},
                                         {csPause, appData().ExecTabColorPause},
                                         {csDone, appData().ExecTabColorSuccess},
                                         {csFailed, appData().ExecTabColorFailed},
                                         {csIdle, none}};
    for (const auto& row : rows) {
        project().setCfgStatus(m_cfgs[1], row.first);
        m_prj->refreshTabColors();
        QCOMPARE(bar->tabTextColor(1), row.second);
        QCOMPARE(bar->tabTextColor(0), none);
    }
}

void TestPanels::pages()
{
    m_prj->slotSetViewParamExec();
    QVERIFY(tab(0)->logExec()->isVisible());
    m_prj->setCurrentIndex(1);
    QVERIFY(tab(1)->logExec()->isVisible());
    m_prj->setCurrentIndex(0);
    QVERIFY(!form()->isVisible());
    m_prj->slotSetViewParamCmd();
    QVERIFY(form()->isVisible());
    QVERIFY(!tab()->logExec()->isVisible());
    const int added = m_bench->addCfg(QStringLiteral("E"));
    QCOMPARE(m_prj->insertTab(1, added)->page(), TWgtConfig::PageParam);
    QCOMPARE(m_prj->tabAt(1)->idCfg(), added);
    auto* splitter = tab()->findChild<QSplitter*>();
    m_prj->setOrientation(true);
    m_prj->setSplitterSizes({300, 180});
    QCOMPARE(splitter->orientation(), Qt::Horizontal);
    QVERIFY(qAbs(splitter->sizes().at(0) - 300) < 15);
    m_prj->setSplitterSizes({0, 480});
    QVERIFY(splitter->sizes().at(0) > 0);
}

void TestPanels::formFollowsRow()
{
    QSignalSpy viewParam(m_prj.get(), &TWgtPrj::signalSetViewParamCmd);
    QSignalSpy selected(m_prj.get(), &TWgtPrj::signalSelectCmd);
    m_prj->focusTable();
    QCOMPARE(form()->idCmd, m_ids[0]);
    QTest::keyClick(tab()->cmdList()->table(), Qt::Key_Down);
    QCOMPARE(form()->idCmd, m_ids[1]);
    QCOMPARE(viewParam.size(), 1);
    QCOMPARE(selected.last(), QVariantList({m_cfgs[0], m_ids[1]}));
    QTest::keyClick(tab()->cmdList()->table(), Qt::Key_Down);
    QVERIFY(!tab()->form());
    m_prj->setCurrentRow(-1);
    QCOMPARE(selected.last(), QVariantList({m_cfgs[0], -1}));
    QCOMPARE(viewParam.size(), 2);
    QVERIFY(!project().isChanged());
}

void TestPanels::formDroppedInItsOwnSignal()
{
    m_prj->slotSetViewParamCmd();
    const QPointer<ValueForm> old = form();
    connect(&project(), &TDataPrj::signalChangeData, this, [this] {
        disconnect(&project(), &TDataPrj::signalChangeData, this, nullptr);
        m_prj->refreshForms();
        project().removeCmd(m_ids[0]);
        tab()->cmdList()->removeRow(0);
    });
    old->edit->setFocus();
    old->edit->selectAll();
    QTest::keyClicks(old->edit, QStringLiteral("77"));
    QTest::keyClick(old->edit, Qt::Key_Return);
    QCOMPARE(form()->idCmd, m_ids[1]);
    QCOMPARE(stored(m_ids[1], key::value).toInt(), 2);
    QTRY_VERIFY(!old);
}

void TestPanels::updates()
{
    // What the form told is not handed back to it.
    form()->edit->setText(QStringLiteral("5"));
    emit form()->edit->editingFinished();
    QCoreApplication::processEvents();
    QCOMPARE(stored(m_ids[0], key::value).toString(), QStringLiteral("5"));
    QCOMPARE(cell(0, 2)->text(), QStringLiteral("5 ms"));
    QCOMPARE(m_forms.updates, QStringList());

    // What a run stores is, and the row follows, be the form open or not.
    const ValueForm* open = form();
    project().setCmdParam(m_ids[0], {{key::value, QStringLiteral("6")}});
    project().setCmdParam(m_ids[1], {{key::value, QStringLiteral("8")}});
    QCoreApplication::processEvents();
    QCOMPARE(m_forms.updates, QStringList("6"));
    QCOMPARE(form(), open);
    QCOMPARE(cell(0, 2)->text(), QStringLiteral("6 ms"));
    QVERIFY(cell(1, 2)->text().contains(QLatin1Char('8')));

    m_forms.canUpdate = false;
    project().setCmdParam(m_ids[0], {{key::value, QStringLiteral("7")}});
    QCoreApplication::processEvents();
    QVERIFY(form() != open);
    QCOMPARE(form()->edit->text(), QStringLiteral("7"));
}

void TestPanels::staleUpdates()
{
    const QString before = cell(0, 2)->text();
    const QList<TData> stale{{{key::id_cfg, m_cfgs[1]}, {key::id_cmd, m_ids[0]}},
                             {{key::id_cfg, 99}, {key::id_cmd, m_ids[0]}},
                             {{key::id_cfg, m_cfgs[0]}, {key::id_cmd, 99}},
                             {}};
    for (const TData& data : stale)
        m_prj->slotUpdateGUI(cvCmdChanged, data);
    m_prj->slotUpdateGUI(static_cast<TCodeView>(11), project().cmdById(m_ids[0])->toData());
    QCOMPARE(cell(0, 2)->text(), before);
    QCOMPARE(m_forms.updates, QStringList());
}

void TestPanels::commit()
{
    m_prj->slotSetViewParamCmd();
    form()->edit->setFocus();
    form()->edit->selectAll();
    QTest::keyClicks(form()->edit, QStringLiteral("42"));
    QCOMPARE(stored(m_ids[0], key::value).toInt(), 1);
    tab(1)->commitEdit();
    QCOMPARE(stored(m_ids[0], key::value).toInt(), 1);
    tab()->commitEdit();
    QCOMPARE(stored(m_ids[0], key::value).toInt(), 42);
    QVERIFY(form()->edit->hasFocus());
}

void TestPanels::jumpTarget()
{
    const int jump = m_bench->addCmd(m_cfgs[0], cmd::jamp, {key::cfg, m_cfgs[0], key::to_cmd, m_ids[1]});
    build();
    const auto isBold = [this](int row) {
        return cell(row, 1)->font().bold() && cell(row, 1)->font().italic();
    };
    QVERIFY(!isBold(1));
    m_prj->setCurrentRow(3);
    QVERIFY(isBold(1));
    form()->tell({{key::to_cmd, m_ids[2]}});
    QVERIFY(!isBold(1));
    QVERIFY(isBold(2));
    QCOMPARE(stored(jump, key::to_cmd).toInt(), m_ids[2]);
    m_prj->setCurrentRow(0);
    QVERIFY(!isBold(2));
    appData().CmdEnableHLJamp = false;
    m_prj->setCurrentRow(3);
    QVERIFY(!isBold(2));
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
    form()->tell({{key::device, chip}, {key::file, TDeviceList::deviceFiles().value(chip)}});
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
    m_bench->addLink(m_cfgs[1], QStringLiteral("bench"), QStringLiteral("W25Q64"));
    project().setCmdStatus(project().cmdsOfCfg(m_cfgs[1]).first()->id(), false);
    m_bench->addCmd(m_cfgs[1], cmd::ident);
    build();
    TRunControl control([this](int id) { return m_prj->tabOf(id); });
    connect(&control, &TRunControl::signalStatusChanged, m_prj.get(), &TWgtPrj::refreshTabColors);
    TWgtLogExec* log = tab(1)->logExec();
    log->addEvent(ceText, QStringLiteral("of the last run"), QString());
    control.start(m_cfgs[1]);
    control.start(m_cfgs[0]);
    QCOMPARE(log->edit()->toPlainText(), QString());
    QCOMPARE(log->edit()->textInteractionFlags(), Qt::NoTextInteraction);
    QTRY_VERIFY_WITH_TIMEOUT(control.isIdle(), 20000);
    const QString text = log->edit()->toPlainText();
    QVERIFY2(text.contains(QLatin1String("EF")) && text.endsWith(langText(391)), qPrintable(text));
    QVERIFY(!text.contains(langText(386)));
    QCOMPARE(log->bar()->value(), 0);
    QVERIFY(log->edit()->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
    const auto* bar = m_prj->findChild<QTabWidget*>()->tabBar();
    QCOMPARE(bar->tabTextColor(1), appData().ExecTabColorSuccess);
    // The counter of the other run was stored and shown.
    QVERIFY(tab(0)->logExec()->edit()->toPlainText().endsWith(langText(391)));
    appData().ExecClearWindow = false;
    tab(1)->runBegins();
    QCOMPARE(log->edit()->toPlainText(), text);
}

void TestPanels::deletedWhileReporting()
{
    auto* config = new TWgtConfig(m_cfgs[0], QString());
    const QPointer<TWgtConfig> guard(config);
    QTimer::singleShot(0, this, [config] { delete config; });
    config->slotExecEventText(ceText, QStringLiteral("late"));
    QVERIFY(!guard);
    config = new TWgtConfig(m_cfgs[0], QString());
    QTimer::singleShot(0, this, [config] { delete config; });
    config->slotExecEventProc(50);
}

void TestPanels::smallParts()
{
    TWgtStatusBar bar;
    const auto color = [&bar](TWgtStatusBar::Code code) {
        bar.showText(QStringLiteral("text"), code);
        return bar.palette().color(QPalette::WindowText);
    };
    const QColor plain = bar.palette().color(QPalette::WindowText);
    QCOMPARE(color(TWgtStatusBar::Red), QColor(Qt::red));
    QCOMPARE(color(TWgtStatusBar::Green), QColor(Qt::darkGreen));
    QCOMPARE(color(TWgtStatusBar::Plain), plain);

    TWgtLabelElided label;
    const QString name = QStringLiteral("The list of all projects of the workshop");
    label.resize(100, 19);
    label.setFullText(name);
    QVERIFY(label.text().size() < name.size() && label.text().endsWith(QLatin1String("shop")));
    label.resize(900, 19);
    QCoreApplication::sendPostedEvents();
    label.show();
    QCOMPARE(label.text(), name);
    QCOMPARE(label.minimumSizeHint().width(), 0);
}

QTEST_MAIN(TestPanels)
#include "test_panels.moc"
