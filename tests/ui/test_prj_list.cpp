#include "base/TLang.h"
#include "core/files/TPrjListFile.h"
#include "settings/TAppData.h"
#include "support/TestDir.h"
#include "support/tables.h"
#include "ui/panels/TTreeWidget.h"
#include "ui/panels/TWgtPrjList.h"

#include <QtTest>
#include <QtWidgets>

namespace {

/// Each with the number of its parent, counted from 1, whether it is expanded, name and file.
QByteArray sampleList()
{
    TPrjListFile list;
    list.setItems({{0, true, "Chips", ""},
                   {1, false, "AVR", ""},
                   {2, false, "mega8", "avr/mega8.prj"},
                   {2, false, "tiny", "tiny.prj"},
                   {1, true, "Flash [W25]", "flash.prj"},
                   {5, false, "big", "big.prj"},
                   {0, false, "Other", "other.prj"}});
    return list.toBytes();
}

const QString sampleShape = "+Chips,>AVR,>>mega8,>>tiny,>+Flash [W25],>>big,Other";

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
    void init()
    {
        appData().PathProjects = m_dir.path();
        m_dir.write("sample.lst", sampleList());
        m_list = std::make_unique<TWgtPrjList>();
        m_list->resize(300, 400);
        m_list->show();
        QVERIFY(m_list->load("Sample", "sample.lst", 0));
        QVERIFY(QTest::qWaitForWindowActive(m_list.get()));
    }

    void loadAndSave()
    {
        const auto row = [this](const QByteArray& bytes, int expandMode, const QString& nodes,
                                const QString& status = {}) {
            init();
            const QString file = m_dir.write("list.lst", bytes);
            QSignalSpy selected(m_list.get(), &TWgtPrjList::signalProjectSelect);
            m_list->selectByIndex(2);
            QCOMPARE(selected.takeLast().at(0).toString(), m_dir.file("avr/mega8.prj"));
            const bool isList = !nodes.isEmpty();
            QCOMPARE(m_list->load("L", "list.lst", expandMode), isList);
            QCOMPARE(selected.size(), 0);
            QCOMPARE(shape(), nodes);
            QCOMPARE(m_list->statusText(), status);
            QCOMPARE(m_list->errorText().isEmpty(), isList || !status.isEmpty());
            QCOMPARE(filterEdit()->isEnabled(), isList);
            QCOMPARE(m_list->indexOfSelected(), -1);
            QVERIFY(m_list->save(file));
            if (expandMode == 0)
                QCOMPARE(m_dir.read("list.lst"), bytes);
        };
        row(sampleList(), 0, sampleShape);
        row(sampleList(), 1, "Chips,>AVR,>>mega8,>>tiny,>Flash [W25],>>big,Other");
        row(sampleList(), 2, "+Chips,>+AVR,>>mega8,>>tiny,>+Flash [W25],>>big,Other");
        row({}, 0, {}, langText(Text::FileEmpty));
        row("{ \"list\": [", 0, {});
    }

    void filter()
    {
        QVERIFY(filterEdit()->hasFocus());
        QCOMPARE(filtered("MEGA"), QString("+Chips,>+AVR,>>mega8"));
        QCOMPARE(filtered("flash"), QString("+Chips,>+Flash [W25]"));
        QCOMPARE(filtered("[w"), QString("+Chips,>+Flash [W25]"));
        QCOMPARE(filtered("m*?8"), QString("+Chips,>+AVR,>>mega8"));
        QCOMPARE(filtered("t?ny*z"), QString());
        QCOMPARE(filtered("m.ga"), QString());
        // A save in between keeps the tree as the user left it.
        QVERIFY(m_list->save(m_dir.file("sample.lst")));
        QCOMPARE(m_dir.read("sample.lst"), sampleList());
        QTest::mouseClick(m_list->findChild<QPushButton*>(), Qt::LeftButton);
        QCOMPARE(shape(), sampleShape);

        // What is selected stays in sight, by its topmost node.
        find("Chips")->setExpanded(false);
        filtered("mega");
        m_list->tree()->setCurrentItem(find("mega8"));
        m_list->setFilterVisible(false);
        QVERIFY(shape().startsWith("+Chips,>AVR,>>mega8,"));
    }

    void keys()
    {
        QSignalSpy selected(m_list.get(), &TWgtPrjList::signalProjectSelect);
        QTest::keyClicks(filterEdit(), "oth");
        QTest::keyClick(filterEdit(), Qt::Key_Down);
        QVERIFY(m_list->tree()->hasFocus());
        QCOMPARE(m_list->nodeName(), QString("Other"));
        QTest::keyClick(m_list->tree(), Qt::Key_Up);
        QVERIFY(filterEdit()->hasFocus() && m_list->tree()->selectedItems().isEmpty());
        QTest::keyClick(filterEdit(), Qt::Key_Down);
        QCOMPARE(m_list->tree()->selectedItems().size(), 1);
        QCOMPARE(selected.size(), 1);
        m_list->slotFilterClear();
        QTest::keyClick(m_list->tree(), Qt::Key_Up);
        QVERIFY(m_list->tree()->hasFocus());
        QCOMPARE(selected.size(), 2);
    }

    void drop_data()
    {
        // Without a target it is let go below the last node.
        textRows(R"(
AVR | Other | on | +Chips,>+Flash [W25],>>big,+Other,>+AVR,>>mega8,>>tiny
tiny | Chips | above | tiny,+Chips,>+AVR,>>mega8,>+Flash [W25],>>big,Other
AVR | Flash [W25] | below | +Chips,>+Flash [W25],>>big,>+AVR,>>mega8,>>tiny,Other
Flash [W25] | | below | +Chips,>+AVR,>>mega8,>>tiny,Other,+Flash [W25],>big
Chips | big | on | +Chips,>+AVR,>>mega8,>>tiny,>+Flash [W25],>>big,Other
)",
                 {"dragged", "target", "place", "nodes"});
    }

    void drop()
    {
        QFETCH(QString, dragged);
        QFETCH(QString, target);
        QFETCH(QString, place);
        TTreeWidget* tree = m_list->tree();
        m_list->dragMode(true);
        find("AVR")->setExpanded(true);
        m_list->restoreCurrent(find(dragged));
        QSignalSpy selected(m_list.get(), &TWgtPrjList::signalProjectSelect);
        const QRect rect = target.isEmpty() ? tree->viewport()->rect() : tree->visualItemRect(find(target));
        const int y = place == "above" ? rect.top() : place == "below" ? rect.bottom() : rect.center().y();
        QMimeData mime;
        QDropEvent event(QPoint(rect.center().x(), y), Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
        // The application itself delivers a drop only within a drag of the platform.
        (tree->*(&DropTree::dropEvent))(&event);
        QTEST(shape(), "nodes");
        QCOMPARE(m_list->nodeName(), dragged);
        QCOMPARE(selected.size(), 0);
        QVERIFY(event.dropAction() != Qt::MoveAction);
    }

    void remove()
    {
        m_list->restoreCurrent(find("AVR"));
        QSignalSpy selected(m_list.get(), &TWgtPrjList::signalProjectSelect);
        m_list->deleteChildren();
        QCOMPARE(selected.size(), 0);
        QVERIFY(!m_list->nodeHasChildren());
        m_list->deleteNode();
        QCOMPARE(shape(), QString("+Chips,>+Flash [W25],>>big,Other"));
        QCOMPARE(selected.size(), 1);
        QCOMPARE(selected.at(0).at(0).toString(), m_list->nodePath());
        while (m_list->hasNode())
            m_list->deleteNode();
        QCOMPARE(selected.last().at(0).toString(), QString());
    }

private:
    QTreeWidgetItem* find(const QString& name) const
    {
        return m_list->tree()->findItems(name, Qt::MatchExactly | Qt::MatchRecursive).value(0);
    }
    /// Names in sight in order, ">" for each level, "+" in front of an expanded one, "," between them.

    QString shape() const
    {
        QStringList lines;
        for (const QTreeWidgetItem* item : m_list->tree()->nodes()) {
            int depth = 0;
            for (const QTreeWidgetItem* above = item->parent(); above; above = above->parent())
                ++depth;
            if (!item->isHidden())
                lines.append(QString(depth, '>') + (item->isExpanded() && item->childCount() ? "+" : "") +
                             item->text(0));
        }
        return lines.join(',');
    }
    QLineEdit* filterEdit() const { return m_list->findChild<QLineEdit*>(); }
    /// What a typed filter leaves.
    QString filtered(const char* text) const
    {
        filterEdit()->selectAll();
        QTest::keyClicks(filterEdit(), text);
        return shape();
    }

    TestDir m_dir{TestDir::Empty};
    std::unique_ptr<TWgtPrjList> m_list;
};

QTEST_MAIN(TestPrjList)
#include "test_prj_list.moc"
