#include "base/TLang.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "exec/TLineGate.h"
#include "forms/FormBench.h"
#include "settings/TAppData.h"
#include "ui/main/TFormHost.h"
#include "ui/panels/TWgtCmdList.h"
#include "ui/panels/TWgtPrj.h"

#include <QtWidgets>

namespace {

/// The commands of a bench in the panel. What a worker stores comes to the panel as from a run.
class Page : public FormBench
{
public:
    Page() { setFormHost(&m_host); }
    ~Page() override { setFormHost(nullptr); }

    /// Shows the project as it has been opened, with the form of a row of the first configuration.
    void show(int row)
    {
        project().markMadeFor();
        project().validateAll();
        project().clearChanged();
        QObject::connect(&project(), &TDataPrj::signalChangeData, &m_prj, &TWgtPrj::slotUpdateGUI,
                         Qt::QueuedConnection);
        m_prj.resize(800, 700);
        m_prj.build();
        m_prj.setPage(TWgtConfig::PageParam);
        showActive(m_prj);
        select(row);
        QVERIFY(form());
        QVERIFY(!project().isChanged());
    }
    void select(int row)
    {
        m_prj.setCurrentRow(row);
        QCoreApplication::processEvents(); // shows the form
    }
    QWidget* form() const override { return m_prj.current()->form(); }
    /// Words and parameters of the table of the first configuration.
    QStringList rows()
    {
        QCoreApplication::processEvents(); // for what is reported to the panel
        QStringList rows;
        const auto* table = m_prj.tabAt(0)->cmdList()->table();
        for (int row = 0; row < table->rowCount(); ++row)
            rows << table->item(row, 1)->data(Qt::UserRole).toString() + ' ' + table->item(row, 2)->text();
        return rows;
    }
    QString row(int i) { return rows().at(i); }

private:
    TFormHost m_host;
    TLineGate m_gate;
    TWgtPrj m_prj{m_gate};
};

/// Works the next dialog as soon as it is open.
void answer(const std::function<void(QDialog&)>& use)
{
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, use] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        delete timer;
        use(*dialog);
        if (dialog->isVisible())
            QVERIFY2((dialog->reject(), false), "The dialog stays open.");
    });
    timer->start(5);
}

/// Types a name in full over the list of names and takes it.
void chooseName(QPushButton* button, const QString& name)
{
    answer([name](QDialog& dialog) { type(line(dialog), name + "!"); });
    click(button);
}

void fillRoute(QToolButton* button, const QString& chip, const QString& cfg)
{
    answer([chip, cfg](QDialog& dialog) {
        choose(dialog.findChildren<QComboBox*>().at(0), chip);
        choose(dialog.findChildren<QComboBox*>().at(1), cfg);
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    click(button);
}

} // namespace

/// Forms in the page of the project's panel: what they change around them, and what a run changes under
/// them. The dialogs are the program's own.
class TestFormPage : public QObject
{
    Q_OBJECT

private slots:
    void chips()
    {
        Page page;
        page.addShippedChip("ATmega328P");
        page.add("fuse_write", {{"data", "112233"}});
        page.add("flash_char_write", {{"addr_device", "9"}, {"count", "1"}, {"fill_char", "0"}});
        page.add("stop");
        page.addCfg("Second");
        page.addShippedChip("ATmega328P");
        const int other = page.add("fuse_write", {{"data", "445566"}});
        page.show(1);
        QVERIFY(page.part<QPlainTextEdit>(1)->toPlainText().startsWith("  1 >- CS\n  2 >- SO\n  3 >- GND\n"));

        // Another chip has other fuses; what fits any chip stays. Refused, nothing changes.
        answer([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        click(page.part<QPushButton>());
        QVERIFY(!project().isChanged());
        chooseName(page.part<QPushButton>(), "attiny13a");
        QCOMPARE(page.rows(), (QStringList{"set_prog bench: no-such-port, Model", "set_device ATtiny13A",
                                           "fuse_write 6AFF", "flash_char_write 0x09..0x09 :0x00", "stop "}));
        QCOMPARE(page.data(other).value("data").toString(), QString("445566"));
        // One that does not know the commands, first without and then with the setting that deletes them.
        chooseName(page.part<QPushButton>(), "at24c02");
        QCOMPARE(page.rows().size(), 5);
        // One that the program cannot fully serve says so in red, and the next one does not.
        const auto warnings = [&page] {
            QStringList texts;
            for (const QLabel* label : page.form()->findChildren<QLabel*>()) {
                if (label->isVisible() && label->palette().color(QPalette::WindowText) == QColor(160, 0, 0))
                    texts << label->text();
            }
            return texts;
        };
        chooseName(page.part<QPushButton>(), "sst26?f016ba");
        QCOMPARE(warnings(), QStringList(langText(Text::LockedNeeds98)));
        chooseName(page.part<QPushButton>(), "attiny13a");
        QCOMPARE(warnings(), QStringList());
        appData().CmdDelCmdDev = true;
        chooseName(page.part<QPushButton>(), "at24c02");
        appData().CmdDelCmdDev = false;
        QCOMPARE(page.rows().mid(1), (QStringList{"set_device AT24C02", "stop "}));
        QVERIFY(project().cmdById(other));

        // The family's own part.
        const int id = project().cmdsOfCfg(project().cfgIdAt(0)).at(1)->id();
        click(page.part<QCheckBox>(0));
        enter(page.line(0), "999999!");
        click(page.part<QCheckBox>(2));
        QCOMPARE(page.data(id).value("addr").toInt(), 5);
        QCOMPARE(page.data(id).value("clk").toInt(), 400000);
        QCOMPARE(page.row(1), QString("set_device AT24C02"));
        // Tab goes from the top to the bottom.
        QStringList order;
        page.form()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(page.form()));
        page.part<QLineEdit>()->setFocus();
        for (int i = 0; i < 8; ++i) {
            order << QApplication::focusWidget()->metaObject()->className();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(order.join(' '), QString("QLineEdit QPushButton QLineEdit QCheckBox QCheckBox QCheckBox "
                                          "QPlainTextEdit QPlainTextEdit"));
    }

    void routes()
    {
        Page page;
        page.dir().write("auto.lst", "Flash=f.dev|f.lst\nOther=o.dev|o.lst\n");
        page.dir().write("f.lst", "A1=Alpha\nB2=Beta\n");
        const QString first = "A1=" + QString::number(project().cfgIdAt(0));
        page.addProg();
        const int id =
            page.add("auto_detect", {{"name", "Flash"}, {"route", first + "|77=99"}, {"stop", "1"}});
        const QString second = '=' + QString::number(page.addCfg("Second"));
        const auto route = [&] { return page.data(id).value("route").toString(); };
        page.show(1);
        auto* table = page.part<QTableWidget>();
        QCOMPARE(table->item(0, 0)->text() + table->item(0, 1)->text(), QString("AlphaFirst"));
        choose(page.part<QComboBox>(0), "Execute");
        choose(page.part<QComboBox>(1), "@RouteSkip");
        QCOMPARE(page.row(1), QString("auto_detect Flash: Execute, @RouteSkip"));

        // What is not known stays, and says what it is.
        QCOMPARE(table->item(1, 0)->text(), QString("? (77)"));
        const auto tool = [&](int i) { return page.part<QToolButton>(i); };
        table->selectRow(0);
        fillRoute(tool(0), "Beta", "Second");
        QCOMPARE(route(), first + "|B2" + second + "|77=99");
        click(tool(4)); // down, where it stays selected
        QCOMPARE(route(), first + "|77=99|B2" + second);
        QVERIFY(!tool(4)->isEnabled());
        click(tool(3));
        click(tool(3));
        QVERIFY(!tool(3)->isEnabled());
        table->selectRow(2);
        fillRoute(tool(1), "Alpha", "Second");
        QCOMPARE(route(), "B2" + second + '|' + first + "|A1" + second);
        for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
            QCOMPARE(table->rowCount(), 3);
            answer([key](QDialog& dialog) { QTest::keyClick(&dialog, key); });
            click(tool(2));
        }
        QCOMPARE(route(), "B2" + second + '|' + first);
        chooseName(page.part<QPushButton>(), "Other");
        QCOMPARE(page.row(1), QString("auto_detect Other: Execute, @RouteSkip"));
        QCOMPARE(route() + QString::number(page.part<QTableWidget>()->rowCount()), QString("0"));
    }

    // The form of another row comes in between, and its address leaves no room for the count.
    void countGrowsBack()
    {
        Page page;
        page.addShippedChip("AT24C02");
        const int id = page.add("file_write", {{"addr_device", "0"}, {"count", "200"}, {"format", "BIN"}});
        page.add("stop");
        page.show(2);
        const auto enterAddr = [&](const char* address) {
            enter(page.line(3), address);
            page.select(1);
            page.select(2);
            return page.data(id).value("count").toInt();
        };
        QCOMPARE(enterAddr("255"), 1);
        QCOMPARE(enterAddr("250"), 6);
        // Counts that somebody else has stored are his.
        project().setCmdParam(id, {{"id_cmd", id}, {"count", "3"}});
        QCOMPARE(page.rows().size(), 4);
        QCOMPARE(enterAddr("10"), 3);
        QCOMPARE(enterAddr("256"), 3);
        QVERIFY(!page.data(id).value("valid_param").toBool());
        QCOMPARE(page.line(3)->text(), QString("256"));
    }

    void closedBehindADialog()
    {
        Page page;
        page.dir().write("auto.lst", "Other=o.dev|o.lst\nFlash=f.dev|f.lst\n");
        page.dir().write("f.lst", "A1=Alpha\n");
        page.dir().write("devices.lst", "One=one.dev\n");
        page.addProg();
        page.add("auto_detect", {{"name", "Flash"}, {"route", "A1=99"}});
        page.add("set_device");
        page.show(1);
        // The buttons that open a dialog: add, edit and delete a route, choose the family, choose a chip.
        for (int i = 0; i < 5; ++i) {
            page.select(i < 4 ? 1 : 2);
            if (i < 4)
                page.part<QTableWidget>()->selectRow(0);
            answer([&page](QDialog& dialog) {
                for (QComboBox* box : dialog.findChildren<QComboBox*>())
                    box->setCurrentIndex(0);
                if (auto* names = dialog.findChild<QListWidget*>())
                    names->setCurrentRow(0);
                page.select(0);
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                QTest::keyClick(&dialog, Qt::Key_Return);
            });
            QAbstractButton* button = page.part<QToolButton>(i);
            click(i < 3 ? button : page.part<QPushButton>());
            QVERIFY(!project().isChanged());
        }
    }

    void runResults()
    {
        Page page;
        page.addShippedChip("ATmega328P");
        const int bytes = page.add("flash_data_read", {{"data", "0000"}, {"addr_device", "16"}});
        const int fuses = page.add("fuse_read", {{"data", "62D9FF"}});
        page.show(2);
        const auto store = [](int id, const char* data) {
            project().setCmdParam(id, {{"id_cmd", id}, {"data", data}});
        };
        store(bytes, "BEEF");
        QCOMPARE(page.row(2), QString("flash_data_read 0x10..0x11 :BEEF"));
        QCOMPARE(page.part<QPlainTextEdit>()->toPlainText(), QString("0x10: BE EF"));
        enter(page.line(1), "32"); // the address: the result must not be undone
        QCOMPARE(page.row(2), QString("flash_data_read 0x20..0x21 :BEEF"));

        // What is being typed survives a result, and is stored when it is done. An odd digit is stored too.
        QLineEdit* line = page.line(2);
        type(line, "12 3");
        store(bytes, "ABCD");
        QCOMPARE(page.row(2), QString("flash_data_read 0x20..0x21 :ABCD"));
        QCOMPARE(line->text(), QString("12 3"));
        QCOMPARE(page.part<QPlainTextEdit>()->toPlainText(), QString("0x20: AB CD"));
        QTest::keyClick(line, Qt::Key_Return);
        QCOMPARE(page.data(bytes).value("data").toString(), QString("123"));

        page.select(3);
        store(fuses, "E2D1FD");
        QCOMPARE(page.row(3), QString("fuse_read E2D1FD"));
        QCOMPARE(page.part<QLineEdit>()->text(), QString("E2D1FD"));
        click(page.part<QCheckBox>(2));
        QCOMPARE(page.row(3), QString("fuse_read E2D0FD"));
    }
};

QTEST_MAIN(TestFormPage)
#include "test_form_page.moc"
