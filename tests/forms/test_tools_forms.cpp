#include "core/TAppData.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "forms/FormBench.h"
#include "forms/TFormCommand.h"
#include "forms/TPortBox.h"
#include "forms/TWgtEditBase.h"
#include "forms/TWgtEditFileName.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QtTest>

/// The forms of the tools' commands, worked as a user works them.
class TestToolsForms : public QObject
{
    Q_OBJECT

private slots:
    void counter();
    void programmer();
    void jump();
    void checksum();
    void commandLine();
};

void TestToolsForms::counter()
{
    FormBench bench;
    bench.open(cmd::counter, {{"value", "3"}, {"limit", "10"}, {"delta", "-1"}});
    QLineEdit* limit = bench.part<TWgtEditBase>(1)->lineEdit();
    limit->setFocus();
    QTest::keyClick(limit, Qt::Key_Up);
    QCOMPARE(bench.reports(), QStringList{"delta=-1 limit=11 value=3"});
    // A run counts while the user types another limit: neither is lost.
    limit->selectAll();
    QTest::keyClicks(limit, "20");
    auto* form = qobject_cast<TFormCommand*>(bench.form());
    QVERIFY(form->updateParams({{"id_cmd", bench.idCmd}, {"value", 2}}));
    QCOMPARE(bench.part<TWgtEditBase>(0)->lineEdit()->text(), QString("2"));
    QTest::keyClick(limit, Qt::Key_Return);
    QCOMPARE(bench.reports(), QStringList{"delta=-1 limit=20 value=2"});
}

void TestToolsForms::programmer()
{
    FormBench bench;
    bench.open(cmd::set_prog, {{"prog", "gone"}, {"alt_enabled", "false"}, {"alt_port", "ttyX"}});
    QCOMPARE(bench.part<QComboBox>(0)->currentIndex(), -1);
    bench.part<QCheckBox>()->setFocus();
    QTest::keyClick(bench.part<QCheckBox>(), Qt::Key_Space);
    QCOMPARE(bench.reports(), QStringList{"alt_enabled=true alt_port=ttyX prog=gone"});
    QCOMPARE(bench.part<TPortBox>()->currentText(), QString("ttyX"));
    type(bench.part<TPortBox>()->lineEdit(), "ttyX");
    QCOMPARE(bench.reports(), QStringList());
    type(bench.part<TPortBox>()->lineEdit(), "./sim");
    choose(bench.part<QComboBox>(0), "bench");
    QCOMPARE(bench.reports(), (QStringList{"alt_enabled=true alt_port=./sim prog=gone",
                                           "alt_enabled=true alt_port=./sim prog=bench"}));
}

void TestToolsForms::jump()
{
    FormBench bench;
    const int stop = bench.add(cmd::stop);
    bench.addCfg("Second");
    const int pause = bench.add(cmd::pause);
    bench.open(cmd::jamp, {{"to_cmd", "12345"}});
    QCOMPARE(bench.part<QComboBox>(0)->currentIndex(), -1);
    QCOMPARE(bench.reports(), QStringList());
    choose(bench.part<QComboBox>(0), "First");
    choose(bench.part<QComboBox>(0), "Second");
    QCOMPARE(bench.reports(), (QStringList{QString("to_cmd=%1").arg(stop), QString("to_cmd=%1").arg(pause)}));
    // The list has changed behind the form: the next entry is not the one that stood there.
    project().removeCmd(pause);
    bench.part<QComboBox>(1)->setFocus();
    QTest::keyClick(bench.part<QComboBox>(1), Qt::Key_Down);
    QCOMPARE(bench.reports(), QStringList{QString("to_cmd=%1").arg(bench.idCmd)});
}

void TestToolsForms::checksum()
{
    FormBench bench;
    bench.open(cmd::calc_crc, {{"crc_name", "CRC32"},
                               {"format", "bin"},
                               {"file", "a.bin"},
                               {"addr", "0"},
                               {"count", "16"},
                               {"fill", "300"}});
    QCOMPARE(bench.part<QComboBox>(0)->currentIndex(), -1);
    QCOMPARE(bench.part<QComboBox>(1)->currentText(), QString("BIN"));
    type(bench.part<TWgtEditBase>(0)->lineEdit(), "1F");
    QCOMPARE(bench.reports(), QStringList{"addr=31 count=16 crc_name=CRC32 file=a.bin fill=300 format=bin"});
    choose(bench.part<QComboBox>(1), "HEX");
    QVERIFY(bench.reports().last().endsWith("fill=300 format=HEX"));
}

void TestToolsForms::commandLine()
{
    FormBench bench;
    bench.open(cmd::process, {{"file", "make all"}});
    bench.part<TWgtEditFileName>()->choose("/opt/my tools/flash");
    bench.part<QLineEdit>()->setFocus();
    bench.part<QLineEdit>()->end(false);
    QTest::keyClicks(bench.part<QLineEdit>(), " -v");
    QCOMPARE(bench.stored({"file"}), QString("file=\"/opt/my tools/flash\" -v"));
}

QTEST_MAIN(TestToolsForms)
#include "test_tools_forms.moc"
