#include "core/TAppData.h"
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

const QString sampleShape = QStringLiteral("+Chips,>AVR,>>mega8,>>tiny,>+Flash [W25],>>big,Other");

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
    void init();
    void cleanup();
    void loadAndSave_data();
    void loadAndSave();
    void filter();
    void filterKeepsExpanded();
    void keys();
    void drop_data();
    void drop();
    void remove();

private:
    QTreeWidgetItem* find(const QString& name) const;
    /// Names in order, ">" for each level, "+" in front of an expanded one, "," between them.
    QString shape(bool onlyVisible = false) const;
    QLineEdit* filterEdit() const { return m_list->findChild<QLineEdit*>(); }

    TestDir m_dir{TestDir::Empty};
    std::unique_ptr<TWgtPrjList> m_list;
};

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

QString TestPrjList::shape(bool onlyVisible) const
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
    return lines.join(QLatin1Char(','));
}

void TestPrjList::loadAndSave_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("expandMode");
    QTest::addColumn<QString>("nodes"); // empty: not loaded
    QTest::addColumn<QString>("status");
    QTest::newRow("as stored") << sampleList() << 0 << sampleShape << "";
    QTest::newRow("collapsed") << sampleList() << 1 << QString(sampleShape).remove(QLatin1Char('+')) << "";
    const QByteArray badParents = listFile({node(5, 1, "a", ""), node(-1, 0, "b", ""), node(2, 1, "c", "c"),
                                            node(3, 0, "", "d"), node(5, 0, "e", "")});
    QTest::newRow("bad parents") << badParents << 0 << "a,b,>+c,>>,e"
                                 << "";
    QTest::newRow("empty") << QByteArray() << 0 << ""
                           << "пустой файл";
    QTest::newRow("broken") << QByteArray("{ \"list\": [") << 0 << ""
                            << "";
}

void TestPrjList::loadAndSave()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, expandMode);
    QFETCH(QString, nodes);
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
    if (nodes == sampleShape || !isList)
        QCOMPARE(m_dir.read(QStringLiteral("list.lst")), bytes);
}

void TestPrjList::filter()
{
    QVERIFY(filterEdit()->hasFocus());
    const QPair<const char*, const char*> rows[] = {
        {"MEGA", "+Chips,>+AVR,>>mega8"},
        {"flash", "+Chips,>+Flash [W25]"},
        {"[w", "+Chips,>+Flash [W25]"},
        {"m*?8", "+Chips,>+AVR,>>mega8"},
        {"t?ny*z", ""},
        {"m.ga", ""},
    };
    for (const auto& row : rows) {
        filterEdit()->selectAll();
        QTest::keyClicks(filterEdit(), QLatin1String(row.first));
        QCOMPARE(shape(true), QLatin1String(row.second));
    }
}

void TestPrjList::filterKeepsExpanded()
{
    const QString before = shape();
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
    QVERIFY(shape(true).startsWith(QLatin1String("+Chips,>AVR,>>mega8,")));
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

void TestPrjList::drop_data()
{
    QTest::addColumn<QString>("dragged");
    QTest::addColumn<QString>("target"); // empty: below the last node
    QTest::addColumn<int>("place");      // -1 above, 0 on, 1 below
    QTest::addColumn<QString>("nodes");
    const auto add = [](const char* name, const char* dragged, const char* target, int place,
                        const char* nodes) { QTest::newRow(name) << dragged << target << place << nodes; };
    add("on", "AVR", "Other", 0, "+Chips,>+Flash [W25],>>big,+Other,>+AVR,>>mega8,>>tiny");
    add("above", "tiny", "Chips", -1, "tiny,+Chips,>+AVR,>>mega8,>+Flash [W25],>>big,Other");
    add("below", "AVR", "Flash [W25]", 1, "+Chips,>+Flash [W25],>>big,>+AVR,>>mega8,>>tiny,Other");
    add("to the end", "Flash [W25]", "", 0, "+Chips,>+AVR,>>mega8,>>tiny,Other,+Flash [W25],>big");
    add("into itself", "Chips", "big", 0, "+Chips,>+AVR,>>mega8,>>tiny,>+Flash [W25],>>big,Other");
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
    const QString before = shape();
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
    QCOMPARE(shape(), QStringLiteral("+Chips,>+Flash [W25],>>big,Other"));
    QCOMPARE(selected.size(), 1);
    QCOMPARE(selected.at(0).at(0).toString(), m_list->nodePath());
    while (m_list->hasNode())
        m_list->deleteNode();
    QCOMPARE(selected.last().at(0).toString(), QString());
}

QTEST_MAIN(TestPrjList)
#include "test_prj_list.moc"
