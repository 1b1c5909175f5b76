#include "core/TAppData.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "ui/TWgtCmdList.h"
#include "ui/TWgtPrj.h"
#include "ui/WindowBench.h"

#include <QLineEdit>
#include <QRandomGenerator>
#include <QTabBar>
#include <QTableWidget>
#include <QtTest>

namespace {

constexpr int actionsPerSequence = 50;

/// What the user may do blindly: everything but leaving, boxes about the program and other lists.
const QList<TMainAction> userActions{
    maPrjListReload,   maPrjNew,          maPrjNewSub,         maPrjAdd,          maPrjCopy,
    maPrjPasteNew,     maPrjPasteNewSub,  maPrjEdit,           maPrjSave,         maPrjDelete,
    maPrjDeleteSubAll, maCfgNew,          maCfgCopy,           maCfgPaste,        maCfgEdit,
    maCfgDelete,       maCmdSelector,     maCmdNewSetProg,     maCmdNewSetDevice, maCmdNewSetProgDevice,
    maCmdCopy,         maCmdCopySelected, maCmdPaste,          maCmdDeleteCur,    maCmdDeleteSelected,
    maCmdDeleteError,  maCmdDeleteDev,    maCmdDeleteAll,      maCmdCheckAll,     maCmdUncheckAll,
    maCmdMoveUp,       maCmdMoveDown,     maCmdUncheckHide,    maExecIDProg,      maExecReset,
    maExecCfg,         maExecClearState,  maExecClearAllState, maSetViewParamPrj, maSetViewParamCmd,
    maSetViewParamExec};

int sequences()
{
    const int wanted = qEnvironmentVariableIntValue("VM_RANDOM_SEQUENCES");
    return wanted > 0 ? wanted : 20;
}

/// One user with a mouse, a keyboard and no plan.
class User
{
public:
    User(WindowBench& bench, quint32 seed)
        : m_bench(bench)
        , m_random(seed)
    {
    }

    /// Does something; its name.
    QString act()
    {
        m_bench.yes = m_random.bounded(4) != 0;
        const QString name = QStringLiteral("N%1").arg(m_random.bounded(6));
        m_bench.typed =
            m_random.bounded(5) == 0 ? QStringList() : QStringList{name, name + QLatin1String(".prj")};
        m_bench.prj().focusTable();
        switch (m_random.bounded(10)) {
        case 0:
            return clickNode();
        case 1:
            return clickRow();
        case 2:
            return typeValue();
        case 3:
            return changeTab();
        case 4:
            m_bench.trigger(maExecCfg);
            return QStringLiteral("run");
        default:
            return trigger();
        }
    }

private:
    QString clickNode()
    {
        const QStringList names = m_bench.nodeNames();
        if (names.isEmpty())
            return QStringLiteral("no node");
        QString name = names.at(m_random.bounded(names.size()));
        name.remove(QLatin1Char('.'));
        m_bench.clickNode(name);
        return QStringLiteral("node ") + name;
    }

    QString clickRow()
    {
        TWgtConfig* tab = m_bench.prj().current();
        const int rows = tab ? tab->cmdList()->rowCount() : 0;
        if (rows == 0)
            return QStringLiteral("no row");
        const int row = m_random.bounded(rows);
        if (tab->cmdList()->table()->isRowHidden(row))
            return QStringLiteral("hidden row");
        m_random.bounded(2) ? m_bench.clickRow(row) : m_bench.clickCheck(row);
        return QStringLiteral("row %1").arg(row);
    }

    QString typeValue()
    {
        TWgtConfig* tab = m_bench.prj().current();
        QWidget* form = tab ? tab->form() : nullptr;
        QLineEdit* field = form ? form->findChild<QLineEdit*>() : nullptr;
        if (!field || !field->isVisible() || field->isReadOnly())
            return QStringLiteral("no field");
        field->setFocus();
        QTest::keyClicks(field, QString::number(m_random.bounded(30)));
        if (m_random.bounded(2))
            QTest::keyClick(field, Qt::Key_Return);
        m_bench.settle();
        return QStringLiteral("type");
    }

    QString changeTab()
    {
        const int count = m_bench.prj().count();
        if (count == 0)
            return QStringLiteral("no tab");
        if (m_random.bounded(3) == 0)
            m_bench.prj().findChild<QTabBar*>()->moveTab(m_random.bounded(count), m_random.bounded(count));
        else
            m_bench.prj().setCurrentIndex(m_random.bounded(count));
        m_bench.settle();
        return QStringLiteral("tab");
    }

    QString trigger()
    {
        const TMainAction id = userActions.at(m_random.bounded(userActions.size()));
        const bool done = m_bench.trigger(id);
        return QStringLiteral("%1%2").arg(m_bench.window().action(id)->text(),
                                          QLatin1String(done ? "" : " (off)"));
    }

    WindowBench& m_bench;
    QRandomGenerator m_random;
};

void prepare(WindowBench& bench)
{
    const QString flash = QStringLiteral("set_prog prog=Simulator alt_enabled=false; "
                                         "set_device device=W25Q64 file=spi-flash/W25Q64FV.dev clk=4000000; "
                                         "ident; erase_blocks begin=0 count=1 size=4096");
    bench.writeProject(
        QStringLiteral("flow.prj"),
        {QStringLiteral("A: delay value=1; execute cfg=1; counter value=0 limit=3 delta=1; jamp to_cmd=0"),
         QStringLiteral("B: pause; delay value=2; stop; jamp to_cmd=4"), QStringLiteral("C: ") + flash});
    bench.addSampleNodes();
    bench.addNode(QStringLiteral("Flow"), QStringLiteral("flow.prj"));
    bench.open();
    bench.clickNode(QStringLiteral("Flow"));
}

} // namespace

/// Random sequences of user actions: after each the model, the panels and the state of the actions agree,
/// and at the end the saved file does. VM_RANDOM_SEQUENCES sets their number, VM_RANDOM_SEED the first.
class TestRandomActions : public QObject
{
    Q_OBJECT

private slots:
    void sequence_data();
    void sequence();
};

void TestRandomActions::sequence_data()
{
    QTest::addColumn<quint32>("seed");
    const int first = qMax(1, qEnvironmentVariableIntValue("VM_RANDOM_SEED"));
    for (int i = 0; i < sequences(); ++i)
        QTest::newRow(qPrintable(QString::number(first + i))) << quint32(first + i);
}

void TestRandomActions::sequence()
{
    QFETCH(quint32, seed);
    WindowBench bench;
    prepare(bench);
    User user(bench, seed);
    QStringList done;
    for (int i = 0; i < actionsPerSequence; ++i) {
        done.append(user.act());
        const QByteArray told = done.join(QLatin1String(", ")).toUtf8();
        QVERIFY2(bench.difference().isEmpty(), (bench.difference().toUtf8() + " after " + told).constData());
        QVERIFY2(bench.isEnabled(maCfgNew) == (project().isOpen() && !bench.window().isWaitingForRuns()),
                 told.constData());
        QVERIFY2(project().isOpen() || bench.prj().count() == 0, told.constData());
    }
    bench.yes = true;
    // More than once: a run may start another one behind the stop.
    QVERIFY(QTest::qWaitFor(
        [&] {
            bench.window().runs()->stopAll();
            return bench.window().runs()->isIdle();
        },
        20000));
    QTRY_VERIFY(!bench.window().isWaitingForRuns());
    bench.settle();
    if (project().isOpen() && bench.trigger(maPrjSave)) {
        const QString file = project().file().section(QLatin1Char('/'), -1);
        QVERIFY2(bench.fileDifference(file).isEmpty(),
                 (bench.fileDifference(file) + QLatin1String(" after ") + done.join(QLatin1String(", ")))
                     .toUtf8()
                     .constData());
    }
    QVERIFY(bench.close());
}

QTEST_MAIN(TestRandomActions)
#include "test_random_actions.moc"
