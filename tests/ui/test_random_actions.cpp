#include "core/model/TDataPrj.h"
#include "ui/TButtonAction.h"
#include "ui/WindowBench.h"

#include <QRandomGenerator>
#include <QTabBar>

namespace {

constexpr int actionsPerSequence = 50;

/// What the user does not do blindly: leave, change settings, open folders and other lists.
const QList<int> notForHim{maPrjListNew, maPrjListLoad, maPrjListSelect, maPrjListSaveAs, maPrjListOpenFolder,
                           maQuit,       maSettings,    maSetLanguage,   maSaveSettings,  maPrjOpenFolder,
                           maHelp,       maAbout,       maAboutQt};

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
        m_bench.yes = roll(4) != 0;
        const QString name = "N" + QString::number(roll(6));
        m_bench.typed = roll(5) == 0 ? QStringList() : QStringList{name, name + ".prj"};
        if (roll(3))
            m_bench.prj().focusTable();
        static constexpr void (User::*steps[])() = {&User::clickNode, &User::clickRow, &User::edit,
                                                    &User::changeTab, &User::pressExecute};
        const int step = roll(10);
        if (step >= int(std::size(steps)))
            return choose();
        (this->*steps[step])();
        m_bench.settle();
        return "step " + QString::number(step);
    }

private:
    int roll(int sides) { return static_cast<int>(m_random.bounded(sides)); }

    void clickNode()
    {
        const QStringList names = m_bench.nodeNames().remove('.').split(' ', Qt::SkipEmptyParts);
        if (!names.isEmpty())
            m_bench.clickNode(names.at(roll(names.size())));
    }

    void clickRow()
    {
        const TWgtConfig* tab = m_bench.prj().current();
        const int row = roll(tab ? tab->cmdList()->rowCount() + 1 : 1) - 1;
        if (row >= 0 && !tab->cmdList()->table()->isRowHidden(row))
            m_bench.clickRow(row, roll(2));
    }

    /// In any field of the form, which keeps the focus; its value is stored by whatever comes next.
    void edit()
    {
        const TWgtConfig* tab = m_bench.prj().current();
        const auto fields = tab && tab->form() ? tab->form()->findChildren<QWidget*>() : QList<QWidget*>();
        QWidget* field = fields.value(roll(fields.size() + 1));
        static constexpr Qt::Key keys[] = {Qt::Key_1, Qt::Key_Delete, Qt::Key_Down, Qt::Key_Space,
                                           Qt::Key_Return};
        if (field && field->isVisible() && field->isEnabled()) {
            field->setFocus();
            QTest::keyClick(field, keys[roll(int(std::size(keys)))]);
        }
    }

    void changeTab()
    {
        const int count = m_bench.prj().count();
        if (count > 0 && roll(3) == 0)
            m_bench.prj().findChild<QTabBar*>()->moveTab(roll(count), roll(count));
        else if (count > 0)
            m_bench.prj().setCurrentIndex(roll(count));
    }

    void pressExecute()
    {
        if (m_bench.window().button(mbExecute)->isVisible())
            m_bench.click(mbExecute, roll(3) ? Qt::NoModifier : Qt::ControlModifier);
    }

    /// From a menu, or by its keys, which may find it off.
    QString choose()
    {
        const auto id = TMainAction(roll(maCount));
        if (notForHim.contains(id))
            return "nothing";
        QAction* action = m_bench.window().action(id);
        const QString told = action->text() + (action->isEnabled() ? "" : " (off)");
        QWidget* focus = QApplication::focusWidget();
        if (roll(2) || !focus)
            m_bench.trigger(action);
        else
            QTest::keySequence(focus, action->shortcut());
        m_bench.settle();
        return told;
    }

    WindowBench& m_bench;
    QRandomGenerator m_random;
};

/// What does not fit together; empty if all does.
QString fault(WindowBench& bench)
{
    const bool isOpen = project().isOpen();
    if ((bench.prj().count() > 0) != isOpen)
        return "tabs without a project, or the other way round";
    if (bench.window().action(maCfgNew)->isEnabled() != (isOpen && !bench.window().isWaitingForRuns()))
        return "an action is on without its object";
    const bool isStored = isOpen && !project().isChanged();
    return bench.difference() + bench.listDifference() + (isStored ? bench.fileDifference() : QString());
}

} // namespace

/// Random sequences of user actions: after each action the model, the panels, the state of the actions and
/// the files agree. VM_RANDOM_SEQUENCES sets their number, VM_RANDOM_SEED the first.
class TestRandomActions : public QObject
{
    Q_OBJECT

private slots:
    void sequence_data();
    void sequence();
};

void TestRandomActions::sequence_data()
{
    tableColumns<int>("seed");
    const int wanted = qEnvironmentVariableIntValue("VM_RANDOM_SEQUENCES");
    const int first = qMax(1, qEnvironmentVariableIntValue("VM_RANDOM_SEED"));
    for (int seed = first; seed < first + (wanted > 0 ? wanted : 20); ++seed)
        tableRow(qPrintable(QString::number(seed)), seed);
}

void TestRandomActions::sequence()
{
    QFETCH(int, seed);
    WindowBench bench;
    bench.addNode("Flow", "A: delay value=1, execute cfg=1, counter value=0 limit=3 delta=1, jamp to_cmd=0; "
                          "B: pause, delay value=2, stop, jamp to_cmd=4; "
                          "C: PROG, FLASH, ident, erase_blocks begin=0 count=1 size=4096");
    bench.openSamples("Flow");
    User user(bench, quint32(seed));
    QString done;
    for (int i = 0; i < actionsPerSequence; ++i) {
        done += user.act() + ", ";
        QVERIFY2(fault(bench).isEmpty(), qPrintable(done + fault(bench)));
    }
    bench.yes = true;
    // More than once: a run may start another one behind the stop.
    const auto stopped = [&] {
        bench.window().runs()->stopAll();
        return bench.window().runs()->isIdle();
    };
    QVERIFY(QTest::qWaitFor(stopped, 20000));
    // The window does not go on while a list that a key has unfolded is open.
    while (QWidget* list = QApplication::activePopupWidget())
        list->close();
    QTRY_VERIFY(!bench.window().isWaitingForRuns());
    bench.settle();
    bench.trigger(bench.window().action(maPrjSave));
    QVERIFY2(fault(bench).isEmpty(), qPrintable(done + fault(bench)));
    QVERIFY(bench.close());
}

QTEST_MAIN(TestRandomActions)
#include "test_random_actions.moc"
