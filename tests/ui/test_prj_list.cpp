#include "core/TAppData.h"
#include "core/TLang.h"
#include "core/globals.h"
#include "support/TestDir.h"
#include "ui/TTreeWidget.h"
#include "ui/TWgtPrjList.h"

#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QtTest>

namespace {

/// parent, expand, name, file of each node.
QByteArray listFile(const QList<QByteArray>& nodes)
{
    return "{\r    \"version\": 1,\r    \"list\":\r    [\r        {" + nodes.join("},\r        {") +
           "}\r    ]\r}\r";
}

QByteArray node(int parent, int expand, const QByteArray& name, const QByteArray& file)
{
    return "\"parent\": " + QByteArray::number(parent) + ", \"expand\": " + QByteArray::number(expand) +
           ", \"name\": \"" + name + "\", \"file\": \"" + file + "\"";
}

/// Chips(AVR(mega8, tiny), Flash[W25](big)), Other
QByteArray sampleList()
{
    return listFile({node(0, 1, "Chips", ""), node(1, 0, "AVR", ""), node(2, 0, "mega8", "avr/mega8.prj"),
                     node(2, 0, "tiny", "tiny.prj"), node(1, 1, "Flash [W25]", "flash.prj"),
                     node(5, 0, "big", "big.prj"), node(0, 0, "Other", "other.prj")});
}

/// Gives access to what only a drag of the platform calls.
struct DropTree : TTreeWidget
{
    using TTreeWidget::dropEvent;
};

} // namespace

class TestPrjList : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void loadAndSave_data();
    void loadAndSave();
    void filter_data();
    void filter();
    void filterKeepsExpanded();
    void keys();
    void focusChoosesNothing();
    void drop_data();
    void drop();
    void remove();
    void insert();
    void bigList();

private:
    QTreeWidgetItem* find(const QString& name) const;
    /// Names in order, ">" for each level, "+" in front of an expanded one.
    QStringList shape(bool onlyVisible = false) const;
    QLineEdit* filterEdit() const { return m_list->findChild<QLineEdit*>(); }

    TestDir m_dir{TestDir::Empty};
    std::unique_ptr<TWgtPrjList> m_list;
};

void TestPrjList::initTestCase()
{
    lang().load(QStringLiteral(VM_DATA_DIR "/language/eng.lng"));
}

void TestPrjList::init()
{
    appData().PathProjects = m_dir.path();
    m_dir.write(QStringLiteral("sample.lst"), sampleList());
    m_list = std::make_unique<TWgtPrjList>();
    m_list->resize(300, 400);
    m_list->show();
    QVERIFY(m_list->load(QStringLiteral("Sample"), QStringLiteral("sample.lst"), 0));
    QVERIFY(QTest::qWaitForWindowActive(m_list.get()));
}

void TestPrjList::cleanup()
{
    m_list.reset();
}

QTreeWidgetItem* TestPrjList::find(const QString& name) const
{
    return m_list->tree()->findItems(name, Qt::MatchExactly | Qt::MatchRecursive).value(0);
}

QStringList TestPrjList::shape(bool onlyVisible) const
{
    QStringList lines;
    for (const QTreeWidgetItem* item : m_list->tree()->nodes()) {
        int depth = 0;
        for (const QTreeWidgetItem* above = item->parent(); above; above = above->parent())
            ++depth;
        if (!onlyVisible || !item->isHidden())
            lines.append(QString(depth, QLatin1Char('>')) +
                         (item->isExpanded() && item->childCount() ? "+" : "") + item->text(0));
    }
    return lines;
}

void TestPrjList::loadAndSave_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("expandMode");
    QTest::addColumn<QStringList>("nodes"); // empty: not loaded
    QTest::addColumn<QString>("status");
    QTest::newRow("as stored") << sampleList() << 0
                               << QStringList{"+Chips",        ">AVR",  ">>mega8", ">>tiny",
                                              ">+Flash [W25]", ">>big", "Other"}
                               << QString();
    QTest::newRow("collapsed") << sampleList() << 1
                               << QStringList{"Chips",        ">AVR",  ">>mega8", ">>tiny",
                                              ">Flash [W25]", ">>big", "Other"}
                               << QString();
    QTest::newRow("bad parents") << listFile({node(5, 1, "a", ""), node(-1, 0, "b", ""), node(2, 1, "c", "c"),
                                              node(3, 0, "", "d"), node(5, 0, "e", "")})
                                 << 0 << QStringList{"a", "b", ">+c", ">>", "e"} << QString();
    QTest::newRow("empty") << QByteArray() << 0 << QStringList() << QStringLiteral("пустой файл");
    QTest::newRow("broken") << QByteArray("{ \"list\": [") << 0 << QStringList() << QString();
}

void TestPrjList::loadAndSave()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, expandMode);
    QFETCH(QStringList, nodes);
    QFETCH(QString, status);
    const QString file = m_dir.write(QStringLiteral("list.lst"), bytes);
    QSignalSpy selected(m_list.get(), &TWgtPrjList::signalProjectSelect);
    m_list->selectByIndex(2);
    QCOMPARE(selected.takeLast().at(0).toString(), m_dir.file(QStringLiteral("avr/mega8.prj")));
    const bool isList = !nodes.isEmpty();
    QCOMPARE(m_list->load(QStringLiteral("L"), QStringLiteral("list.lst"), expandMode), isList);
    QCOMPARE(selected.size(), 0);
    QCOMPARE(m_list->isLoaded(), isList);
    QCOMPARE(shape(), nodes);
    QCOMPARE(m_list->statusText(), status);
    QCOMPARE(m_list->errorText().isEmpty(), isList || !status.isEmpty());
    QCOMPARE(filterEdit()->isEnabled(), isList);
    QCOMPARE(m_list->findChild<QPushButton*>()->isEnabled(), isList);
    QCOMPARE(m_list->indexOfSelected(), -1);
    QVERIFY(m_list->save(file));
    if (nodes.value(0) == QLatin1String("+Chips") || !isList)
        QCOMPARE(m_dir.read(QStringLiteral("list.lst")), bytes);
}

void TestPrjList::filter_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("visible");
    QTest::newRow("child shows parents") << "MEGA" << QStringList{"+Chips", ">+AVR", ">>mega8"};
    QTest::newRow("parent alone") << "flash" << QStringList{"+Chips", ">+Flash [W25]"};
    QTest::newRow("bracket") << "[w" << QStringList{"+Chips", ">+Flash [W25]"};
    QTest::newRow("wildcards") << "t?ny*z" << QStringList();
    QTest::newRow("wildcards that match") << "m*?8" << QStringList{"+Chips", ">+AVR", ">>mega8"};
    QTest::newRow("dot is a dot") << "m.ga" << QStringList();
}

void TestPrjList::filter()
{
    QFETCH(QString, text);
    QFETCH(QStringList, visible);
    QVERIFY(filterEdit()->hasFocus());
    QTest::keyClicks(filterEdit(), text);
    QCOMPARE(shape(true), visible);
}

void TestPrjList::filterKeepsExpanded()
{
    const QStringList before = shape();
    QTest::keyClicks(filterEdit(), QStringLiteral("ig"));
    QVERIFY(find(QStringLiteral("AVR"))->isExpanded());
    // A save in between keeps the tree as the user left it.
    QVERIFY(m_list->save(m_dir.file(QStringLiteral("sample.lst"))));
    QCOMPARE(m_dir.read(QStringLiteral("sample.lst")), sampleList());
    QTest::mouseClick(m_list->findChild<QPushButton*>(), Qt::LeftButton);
    QCOMPARE(shape(true), before);

    // What is selected stays in sight, by its topmost node.
    find(QStringLiteral("Chips"))->setExpanded(false);
    QTest::keyClicks(filterEdit(), QStringLiteral("mega"));
    m_list->tree()->setCurrentItem(find(QStringLiteral("mega8")));
    m_list->setFilterVisible(false);
    QCOMPARE(shape(true).mid(0, 3), QStringList({"+Chips", ">AVR", ">>mega8"}));
}

void TestPrjList::keys()
{
    QSignalSpy selected(m_list.get(), &TWgtPrjList::signalProjectSelect);
    QTest::keyClicks(filterEdit(), QStringLiteral("oth"));
    QTest::keyClick(filterEdit(), Qt::Key_Down);
    QVERIFY(m_list->tree()->hasFocus());
    QCOMPARE(m_list->nodeName(), QStringLiteral("Other"));
    QTest::keyClick(m_list->tree(), Qt::Key_Up);
    QVERIFY(filterEdit()->hasFocus());
    QVERIFY(m_list->tree()->selectedItems().isEmpty());
    QTest::keyClick(filterEdit(), Qt::Key_Down);
    QCOMPARE(m_list->tree()->selectedItems().size(), 1);
    QCOMPARE(selected.size(), 1);
    m_list->slotFilterClear();
    QTest::keyClick(m_list->tree(), Qt::Key_Up);
    QVERIFY(m_list->tree()->hasFocus());
    QCOMPARE(selected.size(), 2);
}

void TestPrjList::focusChoosesNothing()
{
    QSignalSpy selected(m_list.get(), &TWgtPrjList::signalProjectSelect);
    const QRect rect = m_list->tree()->visualItemRect(find(QStringLiteral("Other")));
    QTest::mouseClick(m_list->tree()->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
    QCOMPARE(selected.size(), 1);
    QCOMPARE(selected.at(0).at(0).toString(), m_dir.file(QStringLiteral("other.prj")));
    m_list->restoreCurrent(find(QStringLiteral("tiny")));
    QCOMPARE(selected.size(), 1);
    QCOMPARE(m_list->nodePath(), m_dir.file(QStringLiteral("tiny.prj")));
}

void TestPrjList::drop_data()
{
    QTest::addColumn<QString>("dragged");
    QTest::addColumn<QString>("target"); // empty: below the last node
    QTest::addColumn<int>("place");      // -1 above, 0 on, 1 below
    QTest::addColumn<QStringList>("nodes");
    QTest::newRow("on") << "AVR"
                        << "Other" << 0 << QStringList{"+Chips", ">+Flash [W25]", ">>big", "+Other",
                                                       ">+AVR",  ">>mega8",       ">>tiny"};
    QTest::newRow("above") << "tiny"
                           << "Chips" << -1 << QStringList{"tiny",          "+Chips", ">+AVR", ">>mega8",
                                                           ">+Flash [W25]", ">>big",  "Other"};
    QTest::newRow("down among its own")
        << "AVR"
        << "Flash [W25]" << 1
        << QStringList{"+Chips", ">+Flash [W25]", ">>big", ">+AVR", ">>mega8", ">>tiny", "Other"};
    QTest::newRow("to the end") << "Flash [W25]"
                                << "" << 0 << QStringList{"+Chips", ">+AVR",        ">>mega8", ">>tiny",
                                                          "Other",  "+Flash [W25]", ">big"};
    QTest::newRow("below itself") << "Chips"
                                  << "big" << 0 << QStringList{"+Chips",        ">+AVR", ">>mega8", ">>tiny",
                                                               ">+Flash [W25]", ">>big", "Other"};
}

void TestPrjList::drop()
{
    QFETCH(QString, dragged);
    QFETCH(QString, target);
    QFETCH(int, place);
    TTreeWidget* tree = m_list->tree();
    m_list->dragMode(true);
    find(QStringLiteral("AVR"))->setExpanded(true);
    m_list->restoreCurrent(find(dragged));
    QSignalSpy selected(m_list.get(), &TWgtPrjList::signalProjectSelect);
    QSignalSpy dropped(tree, &TTreeWidget::signalDropped);
    const QStringList before = shape();
    const QRect rect = target.isEmpty() ? QRect(5, tree->viewport()->height() - 5, 2, 2)
                                        : tree->visualItemRect(find(target));
    const QPoint pos =
        place == 0 ? rect.center() : QPoint(rect.center().x(), place < 0 ? rect.top() : rect.bottom());
    QMimeData mime;
    QDropEvent event(pos, Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
    // The application itself delivers a drop only within a drag of the platform.
    (tree->*(&DropTree::dropEvent))(&event);
    QTEST(shape(), "nodes");
    QCOMPARE(m_list->nodeName(), dragged);
    QCOMPARE(selected.size(), 0);
    QCOMPARE(dropped.size(), shape() == before ? 0 : 1);
    QVERIFY(event.dropAction() != Qt::MoveAction);
}

void TestPrjList::remove()
{
    m_list->restoreCurrent(find(QStringLiteral("AVR")));
    QSignalSpy selected(m_list.get(), &TWgtPrjList::signalProjectSelect);
    m_list->deleteChildren();
    QCOMPARE(selected.size(), 0);
    QVERIFY(!m_list->nodeHasChildren());
    m_list->deleteNode();
    QCOMPARE(shape(), QStringList({"+Chips", ">+Flash [W25]", ">>big", "Other"}));
    QCOMPARE(selected.size(), 1);
    QCOMPARE(selected.at(0).at(0).toString(), m_list->nodePath());
    m_list->selectByIndex(0);
    m_list->deleteNode();
    m_list->deleteNode();
    QVERIFY(!m_list->hasNode());
    QCOMPARE(selected.last().at(0).toString(), QString());
    m_list->deleteNode();
}

void TestPrjList::insert()
{
    QSignalSpy selected(m_list.get(), &TWgtPrjList::signalProjectSelect);
    m_list->restoreCurrent(find(QStringLiteral("AVR")));
    QVERIFY(m_list->insertNode(QStringLiteral("new"), QStringLiteral("sub"), TWgtPrjList::Paste,
                               TWgtPrjList::Sibling, "text"));
    QCOMPARE(m_dir.read(QStringLiteral("sub.prj")), QByteArray("text"));
    QCOMPARE(m_list->nodeFile(), QStringLiteral("sub.prj"));
    QCOMPARE(selected.last().at(0).toString(), m_dir.file(QStringLiteral("sub.prj")));
    QVERIFY(!m_list->insertNode(QStringLiteral("again"), QStringLiteral("sub"), TWgtPrjList::Paste,
                                TWgtPrjList::Child, "other"));
    QVERIFY(!m_list->errorText().isEmpty());
    QCOMPARE(m_dir.read(QStringLiteral("sub.prj")), QByteArray("text"));
    QVERIFY(m_list->insertNode(QStringLiteral("group"), QString(), TWgtPrjList::Create, TWgtPrjList::Child));
    QCOMPARE(selected.size(), 2);
    QCOMPARE(selected.last().at(0).toString(), QString());
    QCOMPARE(shape(), QStringList({"+Chips", ">AVR", ">>mega8", ">>tiny", ">+new", ">>group", ">+Flash [W25]",
                                   ">>big", "Other"}));
}

void TestPrjList::bigList()
{
    QList<QByteArray> nodes;
    for (int i = 0; i < 10000; ++i)
        nodes.append(
            node(i % 10 ? i - i % 10 + 1 : 0, i % 20 == 0, "Project " + QByteArray::number(i), "f.prj"));
    m_dir.write(QStringLiteral("big.lst"), listFile(nodes));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(m_list->load(QStringLiteral("Big"), QStringLiteral("big.lst"), 0));
    QTest::keyClicks(filterEdit(), QStringLiteral("99"));
    m_list->slotFilterClear();
    QCoreApplication::processEvents();
    // A second is ten times what it takes; one pass for each node would take minutes.
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(m_list->save(m_dir.file(QStringLiteral("big.lst"))));
    QCOMPARE(m_dir.read(QStringLiteral("big.lst")), listFile(nodes));
}

QTEST_MAIN(TestPrjList)
#include "test_prj_list.moc"
