#include "core/TAppData.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "forms/FormBench.h"
#include "forms/TFormProgAutoDetect.h"
#include "forms/TWgtEditBase.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

/// The forms of the programmer's commands, worked as a user works them.
class TestProgForms : public QObject
{
    Q_OBJECT

private slots:
    void numbers_data();
    void numbers();
    void protection();
    void listedFrequency();
    void pins();
    void device();
    void routes();
    void closedBehindADialog();
};

namespace {

TData texts(const QString& pairs)
{
    TData data;
    for (const QString& pair : pairs.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        data[pair.section(QLatin1Char('='), 0, 0)] = pair.section(QLatin1Char('='), 1);
    return data;
}

} // namespace

void TestProgForms::numbers_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("params");
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QStringList>("reports");
    const auto row = [](const char* word, const char* params, int field, const char* typed,
                        const QStringList& reports) {
        QTest::addRow("%s %d %s", word, field, typed) << word << params << field << QString(typed) << reports;
    };
    row("set_vcc", "vcc=3.3", 0, "3.3", {});
    row("set_vcc", "vcc=3.3", 0, "2.5", {"vcc=2.5"});
    row("set_vcc", "vcc=3.3", 0, "9", {"vcc=5"});
    row("set_vpp", "vpp=12", 0, "*", {});
    row("set_vicc", "vcc=3.3 icc=50 ocp=true", 1, "20.125", {"icc=20.125 ocp=true vcc=3.3"});
    row("set_vicc", "vcc=99 icc=50 ocp=false", 1, "20", {"icc=20 ocp=false vcc=99"});
    row("set_vipp", "vpp=12 ipp=20.5 ocp=true", 0, "10", {"ipp=20.5 ocp=true vpp=10"});
    row("reset", "duration=400", 0, "-400", {"duration=-400"});
    row("reset", "duration=400", 0, "5", {"duration=10"});
    row("reset", "duration=400", 0, "-5000", {"duration=-1000"});
    // Without a row of its own the duty cycle is that of the programmer.
    row("set_freq", "freq=1000 duty_cycle=70", 0, "2000", {"duty_cycle=50 freq=2000"});
}

void TestProgForms::numbers()
{
    QFETCH(QString, word);
    QFETCH(QString, params);
    QFETCH(int, field);
    QFETCH(QString, typed);
    FormBench bench;
    bench.addProg();
    bench.open(word, texts(params));
    type(bench.part<TWgtEditBase>(field)->lineEdit(), typed);
    QTEST(bench.reports(), "reports");
}

void TestProgForms::protection()
{
    FormBench bench;
    bench.addProg();
    bench.open(cmd::set_vipp, texts("vpp=50 ipp=20.5 ocp=false"));
    QCOMPARE(bench.part<TWgtEditBase>()->lineEdit()->text(), QString("50.0"));
    QCOMPARE(bench.part<TWgtEditBase>()->lineEdit()->toolTip(), QString("9..13 V"));
    QCOMPARE(bench.part<QPushButton>(1)->toolTip(), QString("Default: 20.5 mA"));
    bench.part<QCheckBox>()->setFocus();
    QTest::keyClick(bench.part<QCheckBox>(), Qt::Key_Space);
    QCOMPARE(bench.reports(), QStringList{"ipp=20.5 ocp=true vpp=50"});
    QTest::mouseClick(bench.part<QPushButton>(0), Qt::LeftButton);
    QCOMPARE(bench.reports(), QStringList{"ipp=20.5 ocp=true vpp=12"});
}

void TestProgForms::listedFrequency()
{
    FormBench bench;
    bench.setProg("[Frequency]\nFQ_MIN=1000\nFQ_MAX=8000000\nFQ_LIST=true\nFQLV_1000=1\nFQLV_2000000=1\n"
                  "DT_SHOW=true\nDT_LIST=true\nDTLV_25=1\nDTLV_50=1\n");
    bench.addProg();
    bench.open(cmd::set_freq, texts("freq=1500 duty_cycle=50"));
    QCOMPARE(bench.part<QComboBox>(0)->currentIndex(), -1);
    choose(bench.part<QComboBox>(1), "25 %");
    QCOMPARE(bench.reports(), QStringList{"duty_cycle=25 freq=1500"});
    bench.part<QComboBox>(0)->setCurrentIndex(0);
    choose(bench.part<QComboBox>(0), "2 MHz");
    QCOMPARE(bench.reports().last(), QString("duty_cycle=25 freq=2000000"));
}

void TestProgForms::pins()
{
    FormBench bench;
    bench.addProg();
    bench.open(cmd::set_io, texts("state=HZ"));
    QCOMPARE(bench.part<QComboBox>(0)->currentText(), QString("H (output - high)"));
    QCOMPARE(bench.part<QComboBox>(1)->currentIndex(), -1);
    choose(bench.part<QComboBox>(2), "I (input)");
    QCOMPARE(bench.reports(), QStringList{"state=HZI"});
    QPushButton* low = bench.part<QPushButton>(2);
    QCOMPARE(low->text(), QString("All 'L'"));
    low->setText("&All 'L'");
    QTest::mouseClick(low, Qt::LeftButton);
    QCOMPARE(bench.reports(), QStringList{"state=LLL"});
    QCOMPARE(bench.part<QComboBox>(1)->currentText(), QString("L (output - low)"));
}

void TestProgForms::device()
{
    FormBench bench;
    bench.setChip({{"prg_section", "CHIP"}, {"comment", QStringList{"Handle with care"}}});
    bench.dir().write("devices.lst", "One=one.dev\nTwo=sub/two.dev\n");
    bench.addProg();
    bench.open(cmd::set_device, texts("device=One file=one.dev"));
    const QString pins = "  1 >- CS\n  2 >- SO\n  3 >- GND\n  4 >- SI\n" + QString(50, '-');
    QCOMPARE(bench.part<QPlainTextEdit>(1)->toPlainText(), pins + "\nHandle with care");
    QTest::mouseClick(bench.part<QPushButton>(), Qt::LeftButton);
    QCOMPARE(bench.reports(), QStringList());
    bench.chosen = "Two";
    QTest::mouseClick(bench.part<QPushButton>(), Qt::LeftButton);
    QCOMPARE(bench.reports(), QStringList{"device=Two file=sub/two.dev"});
    QCOMPARE(bench.part<QLineEdit>()->text(), QString("Two"));
}

void TestProgForms::routes()
{
    FormBench bench;
    bench.dir().write("auto.lst", "Flash=f.dev|f.lst\nOther=o.dev|o.lst\n");
    bench.dir().write("f.lst", "A1=Alpha\nB2=Beta\n");
    const int second = bench.addCfg("Second");
    const QString cfg = QString::number(second);
    bench.addProg();
    bench.open(cmd::auto_detect, {{"name", "Flash"}, {"route", "A1=" + cfg + "|77=99"}, {"stop", "1"}});
    auto* form = qobject_cast<TFormProgAutoDetect*>(bench.form());
    auto* table = bench.part<QTableWidget>();
    QCOMPARE(table->item(0, 0)->text(), QString("Alpha"));
    QCOMPARE(table->item(0, 1)->text(), QString("Second"));
    choose(bench.part<QComboBox>(0), "Execute");
    choose(bench.part<QComboBox>(1), "Skip");
    QCOMPARE(bench.reports(), (QStringList{"execute=1", "stop=0"}));

    // What is not known stays.
    bench.route = {"B2", cfg};
    table->selectRow(0);
    form->slotAdd();
    form->slotMoveDown();
    QCOMPARE(bench.reports(), (QStringList{"route=A1=" + cfg + "|B2=" + cfg + "|77=99",
                                           "route=A1=" + cfg + "|77=99|B2=" + cfg}));
    table->selectRow(1);
    bench.route = {"A1", "99"};
    const QPoint place = table->visualItemRect(table->item(1, 0)).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, place);
    QCOMPARE(bench.offered.chip, QString("77"));
    bench.agree = false;
    form->slotDelete();
    bench.agree = true;
    form->slotDelete();
    QCOMPARE(bench.reports(),
             (QStringList{"route=A1=" + cfg + "|A1=99|B2=" + cfg, "route=A1=" + cfg + "|B2=" + cfg}));

    bench.chosen = "Flash";
    form->slotBtnSelectFamily();
    bench.chosen = "Other";
    form->slotBtnSelectFamily();
    QCOMPARE(bench.reports(), QStringList{"name=Other route="});
    QCOMPARE(table->rowCount(), 0);
    QCOMPARE(bench.stored({"execute", "stop"}), QString("execute=1 stop=0"));
}

void TestProgForms::closedBehindADialog()
{
    using Slot = void (TFormProgAutoDetect::*)();
    for (const Slot slot : {&TFormProgAutoDetect::slotAdd, &TFormProgAutoDetect::slotEdit,
                            &TFormProgAutoDetect::slotDelete, &TFormProgAutoDetect::slotBtnSelectFamily}) {
        FormBench bench;
        bench.addProg();
        bench.open(cmd::auto_detect, texts("route=A1=0"));
        bench.part<QTableWidget>()->selectRow(0);
        bench.chosen = "Flash";
        bench.closeForm = true;
        (qobject_cast<TFormProgAutoDetect*>(bench.form())->*slot)();
        QCOMPARE(bench.reports(), QStringList());
    }
}

QTEST_MAIN(TestProgForms)
#include "test_prog_forms.moc"
