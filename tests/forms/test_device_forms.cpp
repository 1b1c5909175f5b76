#include "core/TAppData.h"
#include "core/globals.h"
#include "core/keys.h"
#include "devices/TDeviceList.h"
#include "devices/form_items.h"
#include "forms/TFormDevCfg.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QtTest>

#include <memory>

/// The forms of the chips' commands, drawn and fixed, on the shipped descriptions.
class TestDeviceForms : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void badLines_data();
    void badLines();
    void shippedForms();
    void controls_data();
    void controls();
    void readOnly();
    void wholeValue();
    void randomForms();
};

namespace {

using Changes = QSignalSpy;

template <typename T> QList<T*> allOf(QWidget& form)
{
    return form.findChildren<T*>();
}

QLineEdit* line(QWidget& form, int i)
{
    return allOf<QLineEdit>(form).at(i);
}

void type(QLineEdit* edit, const QString& text)
{
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);
}

TData last(const Changes& changes)
{
    return changes.isEmpty() ? TData() : changes.last().first().value<TData>();
}

/// form | value | boxes and choice before | text of the box or button, or entry to choose | stored. The drawn
/// form has bit 0, inverse bit 7, bits 1 and 2, inverse bits 1 and 2 again, and a list over bits 0 and 1.
constexpr char controlRows[] = R"(
drawn | 8000 | 0001 none | A | 8100
drawn | 8000 | 0001 none | B | 0000
drawn | 0100 | 1101 one | B | 8100
drawn | 8200 | 0011 two | C | 8000
drawn | 8000 | 0001 none | C | 8600
drawn | 8600 | 0010 two | D | 8000
drawn | 81 | 1001 one | A | 8000
drawn | 81AA55 | 1001 one | A | 80AA
drawn | 8300 | 1011  | A | 8200
drawn | 8300 | 1011  | P | 1234
drawn | 8300 | 1011  | one | 8100
ATmega328P fuse | 62D9FF | - | CKDIV8 - clock divided by 8 at start | E2D9FF
ATmega328P fuse | 62D9FF | - | SPIEN - serial programming possible | 62F9FF
ATmega328P fuse | 62D9FF | - | 05 - 2.7 V | 62D9FD
ATmega328P fuse | 000000 | - | Factory value | 62D9FF
ATmega328P lock | FF | - | 02 - writing blocked | FE
W25Q64JV status_reg | FF0260 | - | 111 - whole chip | FF0260
W25Q64JV status_reg | 000260 | - | 111 - whole chip | 1C0260
W25Q64JV status_reg | 000260 | - | QE - quad enable | 000060
W25Q64JV status_reg | 000260 | - | BUSY - erase or write in progress | 000260
)";

/// The form of a chip's register, or the drawn one.
TFormDevCfg* drawnForm(const QString& name, const QString& value)
{
    static const QString drawn{
        "tabs+;tab+|Bits & more;grp+|Group;ckl|01|-|e|-|A|t;ckl|80|i|e|a|B|t;ckr|06|-|e|-|C|t;"
        "ckl|06|i|e|-|D|t;grp-;tab-;tab+|Choice;cbl+|03|L;cbit|00|none;cbit|01|one;"
        "cbit|02|first of two;cbit|02|two;cbl-;edr|00FF|ro|40|E;btn|1234|21|P|t;tab-;tabs-"};
    if (name == "drawn")
        return new TFormDevCfg(7, value, "FFFF", drawn.split(';'), true);
    const QString chip = name.section(' ', 0, 0);
    const QString reg = name.section(' ', 1);
    appData().PathDevices = QStringLiteral(VM_DATA_DIR "/devices");
    TData keys;
    deviceList().factory(chip, deviceList().deviceFiles().value(chip), keys);
    return new TFormDevCfg(7, value, keys.value(reg + "_def").toString(),
                           keys.value(reg + "_cfg").toStringList(), true);
}

/// Clicks the tab that the widget stands on.
void showTab(TFormDevCfg& form, const QWidget* widget)
{
    auto* tabs = form.findChild<QTabWidget*>();
    for (int i = 0; tabs && i < tabs->count(); ++i) {
        if (tabs->widget(i)->isAncestorOf(widget))
            QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {}, tabs->tabBar()->tabRect(i).center());
    }
}

} // namespace

void TestDeviceForms::initTestCase()
{
    registerMetaTypes();
}

void TestDeviceForms::badLines_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<int>("badLine"); // -1: good

    const auto row = [](const char* lines, int bad) {
        QTest::newRow(lines) << (*lines ? QString(lines).split(';') : QStringList()) << bad;
    };
    row("", 0); // an empty list
    row("frm+; ckl | 01 | - | e | - | a | tip ;frm-", -1);
    row("frm+;ckl|01|-|e|-|a;hor+;pnl+;grp+|g;lb|t;btn|01|21|t|tip;grp-;frm-;pnl-;hor-",
        -1); // any closes any
    row("tabs+;tab+|a;lb|t;tab-;tabs-", -1);
    row("frm+;cbh+|01|t;cbit|01|t;ckl|01|-|e|-|a", -1);
    row("frm-", 0);
    row("frm+;Frm+", 1);
    row("frm+;what", 1);
    row("frm+;", 1);
    row("frm+;ckl|01|-|e|-", 1);
    row("frm+;edr|01|ro|-1", 1);
    row("frm+;ckl|01|-|e|-|a;lb", 2);
    row("frm+;ckl|01|-|e|-|a;grp+", 2);
    row("frm+;cbtr+|01", 1);
    row("frm+;cbh+|01|t;cbit|01", 2);
    row("frm+;btn|01|21|t", 1);
    row("frm+;btn|01|21|t|tip|more", 1);
    row("frm+;cbit|01|t", 1);
    row("frm+;cbl+|01|t;cbl-;cbit|01|t", 3);
    row("frm+;tab+|t", 1);
    row("tabs-", 0);
    row("frm+;frm-;lb|t", 2);
    for (const char* line : {"hor+", "pnl+", "grp+|t", "lb|t", "edl|01|ro|1|t", "ckr|01|-|e|-|a", "cbr+|01|t",
                             "btn|01|21|t|t", "tab-", "cbh-", "tabs+;tab+|t;tab-;ckl|01|-|e|-|a"})
        row(line, QString(line).count(';'));
}

void TestDeviceForms::badLines()
{
    QFETCH(QStringList, lines);
    QFETCH(int, badLine);
    const TFormItems form = parseFormItems(lines);
    QCOMPARE(form.isGood, badLine < 0);
    QCOMPARE(form.badLine, lines.isEmpty() ? -1 : badLine);
    QCOMPARE(form.items.size(), badLine < 0 ? lines.size() : badLine);

    const QString log = QCoreApplication::applicationDirPath() + "/test_device_forms.log";
    QFile::remove(log);
    TFormDevCfg widget(1, "FF", "FF", lines, true);
    QFile file(log);
    QCOMPARE(file.open(QFile::ReadOnly), badLine >= 0);
    if (badLine >= 0)
        QVERIFY(file.readAll().endsWith(" error DevCfg: " + lines.value(badLine).toUtf8() + "\n"));
    // What stands before the wrong line is there and shows nothing of the value.
    const QList<QCheckBox*> boxes = allOf<QCheckBox>(widget);
    QCOMPARE(boxes.size(), lines.mid(0, badLine).filter(QRegularExpression("^ *ck[lr]")).size());
    for (const QCheckBox* box : boxes)
        QCOMPARE(box->isChecked(), badLine < 0);
}

/// Each register that ships: its lines are good, its default is among the choices, and what is switched
/// there and back is as before.
void TestDeviceForms::shippedForms()
{
    struct
    {
        QLatin1String items, value;
    } static const keys[] = {{key::fuse_cfg, key::fuse_def},
                             {key::lock_cfg, key::lock_def},
                             {key::status_reg_cfg, key::status_reg_def},
                             {key::osccal_cfg, key::osccal_def}};
    QSet<QStringList> seen;
    appData().PathDevices = QStringLiteral(VM_DATA_DIR "/devices");
    const QHash<QString, QString> chips = deviceList().deviceFiles();
    for (auto it = chips.begin(); it != chips.end(); ++it) {
        TData chip;
        QVERIFY(deviceList().factory(it.key(), it.value(), chip));
        for (const auto& one : keys) {
            const QStringList items = chip.value(one.items).toStringList();
            const QString value = chip.value(one.value).toString();
            if (items.isEmpty() || seen.contains(items + QStringList{value}))
                continue;
            seen.insert(items + QStringList{value});
            const TFormItems form = parseFormItems(items);
            QVERIFY2(form.isGood, qPrintable(it.key() + ": " + form.badText));
            TFormDevCfg widget(1, value, value, items, true);
            for (const QComboBox* box : allOf<QComboBox>(widget))
                QVERIFY2(box->currentIndex() >= 0, qPrintable(it.key() + ": " + box->toolTip()));
            for (QCheckBox* box : allOf<QCheckBox>(widget)) {
                box->toggle();
                QVERIFY2(widget.text() != value, qPrintable(it.key() + ": " + box->text()));
                box->toggle();
                QVERIFY2(widget.text() == value, qPrintable(it.key() + ": " + box->text()));
            }
        }
    }
    QVERIFY(seen.size() > 50);
}

void TestDeviceForms::controls_data()
{
    QTest::addColumn<QStringList>("row");
    const QStringList rows = QString(controlRows).split('\n', Qt::SkipEmptyParts);
    for (const QString& row : rows)
        QTest::newRow(qPrintable(row)) << row.split(" | ");
}

void TestDeviceForms::controls()
{
    QFETCH(QStringList, row);
    const QString value = row.at(1);
    const QString step = row.at(3);
    const QString stored = row.at(4);
    const std::unique_ptr<TFormDevCfg> form(drawnForm(row.at(0), value));
    form->show();
    Changes changes(form.get(), &TFormDevCfg::signalChangedCmdParam);
    if (row.at(0) == "drawn") {
        QString shown;
        for (const QCheckBox* box : allOf<QCheckBox>(*form))
            shown += box->isChecked() ? '1' : '0';
        QCOMPARE(shown + ' ' + form->findChild<QComboBox*>()->currentText(), row.at(2));
    }
    for (QAbstractButton* button : allOf<QAbstractButton>(*form)) {
        if (button->text() != step)
            continue;
        showTab(*form, button);
        const int x = button->layoutDirection() == Qt::LeftToRight ? 6 : button->width() - 6;
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(x, button->height() / 2));
        QCOMPARE(changes.size(), stored == value ? 0 : 1);
    }
    for (QComboBox* box : allOf<QComboBox>(*form)) {
        const int wanted = box->findText(step);
        showTab(*form, box);
        while (wanted >= 0 && box->currentIndex() != wanted)
            QTest::keyClick(box, box->currentIndex() < wanted ? Qt::Key_Down : Qt::Key_Up);
    }
    QCOMPARE(changes.isEmpty(), stored == value);
    QCOMPARE(last(changes), stored == value ? TData() : (TData{{key::id_cmd, 7}, {key::data, stored}}));
    QCOMPARE(line(*form, 0)->text(), stored);
    if (row.at(0) == "drawn")
        QCOMPARE(line(*form, 1)->text(), stored.right(2));
}

/// What is only read can be looked at and copied, whatever is done with it.
void TestDeviceForms::readOnly()
{
    TFormDevCfg form(7, "D1C2B3A495867701", "0000000000000000",
                     {"frm+", "edr|FFFFFFFFFFFFFFFF|ro|-1|Unique ID:", "frm-"}, false);
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    Changes changes(&form, &TFormDevCfg::signalChangedCmdParam);
    QTest::mouseClick(form.findChild<QLabel*>(), Qt::LeftButton);
    QVERIFY(line(form, 0)->hasFocus());
    QTest::keyClicks(line(form, 0), "12*");
    QCOMPARE(line(form, 0)->text(), QString("D1C2B3A495867701"));
    QVERIFY(form.updateParams({{key::id_cmd, 7}, {key::data, "0102"}}));
    QCOMPARE(line(form, 0)->text(), QString("0102000000000000"));
    QCOMPARE(changes.size(), 0);
}

void TestDeviceForms::wholeValue()
{
    TFormDevCfg form(7, "62D9FF", "62D9FE", {"frm+", "ckl|000001|i|e|-|A|t", "frm-"}, true);
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    Changes changes(&form, &TFormDevCfg::signalChangedCmdParam);
    auto* box = form.findChild<QCheckBox*>();
    const QColor good = line(form, 0)->palette().color(QPalette::Base);
    type(line(form, 0), "62 d9 fe");
    QCOMPARE(last(changes).value(key::data).toString(), QString("62D9FE"));
    QVERIFY(box->isChecked());
    QTest::keyClick(line(form, 0), Qt::Key_Asterisk); // the default already
    QTest::mouseClick(form.findChild<QPushButton*>(), Qt::LeftButton);
    QCOMPARE(changes.size(), 1);
    type(line(form, 0), "62"); // no such register, shown as a fault, but the user's own
    QCOMPARE(last(changes).value(key::data).toString(), QString("62"));
    QVERIFY(line(form, 0)->palette().color(QPalette::Base) != good);
    const TFormDevCfg again(7, "62", "62D9FE", {"frm+"}, true); // shown filled up, and marked still
    QVERIFY(again.findChild<QLineEdit*>()->palette().color(QPalette::Base) != good);
    QTest::mouseClick(form.findChild<QPushButton*>(), Qt::LeftButton);
    QCOMPARE(last(changes).value(key::data).toString(), QString("62D9FE"));

    // A result arrives while the user types: the controls follow, the typing stays.
    line(form, 0)->setFocus();
    line(form, 0)->selectAll();
    QTest::keyClicks(line(form, 0), "12");
    QVERIFY(form.updateParams({{key::id_cmd, 7}, {key::data, "000000FF"}}));
    QVERIFY(!form.updateParams({{key::id_cmd, 8}, {key::data, "FFFFFF"}}));
    QCOMPARE(form.text(), QString("000000"));
    QCOMPARE(line(form, 0)->text(), QString("12"));
    QCOMPARE(changes.size(), 3);
}

void TestDeviceForms::randomForms()
{
    const int runs =
        qEnvironmentVariableIntValue("VM_FUZZ") > 0 ? qEnvironmentVariableIntValue("VM_FUZZ") : 300;
    static const QStringList tags{"frm+",  "frm-", "tabs+", "tabs-", "tab+", "tab-", "hor+", "pnl+",
                                  "grp+",  "grp-", "lb",    "edl",   "edr",  "ckl",  "ckr",  "cbh+",
                                  "cbtc+", "cbl+", "cbl-",  "cbit",  "btn",  "ckl",  "cbit", ""};
    static const QStringList fields{"",           "-",  "e",  "i",  "a",           "01",          "FF",
                                    "0F0F0F0F0F", "zz", "-1", "21", "99999999999", "text & more", "00"};
    QRandomGenerator random(20220103);
    const auto pick = [&random](const QStringList& from) { return from.at(random.bounded(from.size())); };
    int good = 0;
    for (int lines = 0; lines < runs;) {
        QStringList items{random.bounded(8) == 0 ? pick(tags) : QString("frm+")};
        for (int i = random.bounded(40); i > 0; --i) {
            QStringList parts{pick(tags)};
            for (int n = random.bounded(10) == 0 ? random.bounded(8) : (parts[0] == "btn" ? 4 : 6); n > 0;
                 --n)
                parts << (random.bounded(5) == 0 ? QString::number(random.generate64(), 16) : pick(fields));
            // Mostly whole forms: a line that would end the form is left away.
            items << parts.join('|');
            if (random.bounded(20) != 0 && !parseFormItems(items).isGood)
                items.removeLast();
        }
        lines += items.size();
        TFormDevCfg form(1, pick(fields) + pick(fields), pick(fields), items, random.bounded(2) == 0);
        for (QCheckBox* box : allOf<QCheckBox>(form))
            box->toggle();
        for (QComboBox* box : allOf<QComboBox>(form))
            box->setCurrentIndex(random.bounded(box->count() + 1) - 1);
        form.slotEditChanged(pick(fields));
        for (QPushButton* button : allOf<QPushButton>(form))
            button->click();
        Changes changes(&form, &TFormDevCfg::signalChangedCmdParam);
        const QString value = form.text();
        QVERIFY(form.updateParams({{key::id_cmd, 1}, {key::data, value}}));
        QCOMPARE(form.text(), value);
        QCOMPARE(changes.size(), 0);
        good += parseFormItems(items).isGood ? 1 : 0;
    }
    QVERIFY(good > 0);
}

QTEST_MAIN(TestDeviceForms)
#include "test_device_forms.moc"
