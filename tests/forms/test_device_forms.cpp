#include "base/helpers.h"
#include "base/keys.h"
#include "core/model/IDevice.h"
#include "devices/TDeviceList.h"
#include "devices/shared/form_items.h"
#include "forms/FormBench.h"
#include "forms/generated/TFormDevCfg.h"
#include "settings/TAppData.h"

#include <QtWidgets>

#include <memory>

namespace {

TData last(const QSignalSpy& changes)
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
ATmega328P fuse | 62D9FF | - | 05 - 2.7 V | 62D9FD
ATmega328P fuse | 000000 | - | Factory value | 62D9FF
W25X40 status_reg | 00 | - | 111 - whole chip | 1C
W25Q64JV status_reg | FF0260 | - | 111 - whole chip | FF0260
W25Q64JV status_reg | 000260 | - | 111 - whole chip | 1C0260
W25Q64JV status_reg | 000260 | - | BUSY - erase or write in progress | 000260
)";

/// The lines of a form; the wrong one is marked with a "!". The first are none at all.
constexpr char lineRows[] = R"(
!
frm+; ckl | 01 | - | e | - | a | tip ;frm-
frm+;ckl|01|-|e|-|a;hor+;pnl+;grp+|g;lb|t;btn|01|21|t|tip;grp-;frm-;pnl-;hor-
tabs+;tab+|a;lb|t;tab-;tabs-
frm+;cbh+|01|t;cbit|01|t;ckl|01|-|e|-|a
!frm-
frm+;!Frm+
frm+;!what
frm+;!
frm+;!ckl|01|-|e|-
frm+;!edr|01|ro|-1
frm+;ckl|01|-|e|-|a;!lb
frm+;ckl|01|-|e|-|a;!grp+
frm+;!cbtr+|01
frm+;cbh+|01|t;!cbit|01
frm+;!btn|01|21|t
frm+;!btn|01|21|t|tip|more
frm+;!cbit|01|t
frm+;cbl+|01|t;cbl-;!cbit|01|t
frm+;!tab+|t
!tabs-
frm+;frm-;!lb|t
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
    appData().PathDevices = VM_DATA_DIR "/devices";
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

/// The forms of the chips' commands, drawn and fixed, on the shipped descriptions.
class TestDeviceForms : public QObject
{
    Q_OBJECT

private slots:
    // Every form of every chip that is shipped: built without a line in the log and fit for the default,
    // which is among the choices. What is switched there and back is as before.
    void shippedForms()
    {
        FormBench bench;
        bench.addProg();
        const int id = bench.addChip(); // stands for all: a form asks it for its programmer
        appData().PathDevices = VM_DATA_DIR "/devices";
        QFile::remove(fileInAppDir("log"));
        const QRegularExpression formless("^(separator|ident|erase|test_empty(_flash|_eeprom)?)$");
        const QHash<QString, QString> files = TDeviceList::deviceFiles();
        int drawnForms = 0;
        for (auto file = files.begin(); file != files.end(); ++file) {
            const std::unique_ptr<IDevice> chip(deviceList().create(file.key(), file.value()));
            QVERIFY2(chip, qPrintable(file.key()));
            const bool hasStatus = chip->deviceData().contains(key::status_reg_cfg);
            for (const QString& word : chip->commandKeys()) {
                const QString what = file.key() + ": " + word + ' ';
                TData data{{key::id_cmd, id}, {key::cmd, word}};
                chip->setDefaultParams(data);
                const std::unique_ptr<QWidget> form(chip->createForm(data));
                const bool hasForm = word.startsWith("status_reg") ? hasStatus : !word.contains(formless);
                QVERIFY2(bool(form) == hasForm, qPrintable(what));
                auto* drawn = qobject_cast<TFormDevCfg*>(form.get());
                if (!drawn)
                    continue;
                ++drawnForms;
                const QVariant stored = data.value(key::data); // a number where it selects registers
                const QString value = drawn->text();
                QVERIFY2(stored.userType() != QMetaType::QString || value == stored, qPrintable(what));
                for (const QComboBox* box : allOf<QComboBox>(*drawn))
                    QVERIFY2(box->currentIndex() >= 0, qPrintable(what + box->toolTip()));
                for (QCheckBox* box : allOf<QCheckBox>(*drawn)) {
                    box->toggle();
                    QVERIFY2(drawn->text() != value, qPrintable(what + box->text()));
                    box->toggle();
                    QVERIFY2(drawn->text() == value, qPrintable(what + box->text()));
                }
            }
        }
        QVERIFY(drawnForms > 2 * files.size());
        QVERIFY(!QFile::exists(fileInAppDir("log")));
    }
    void badLines_data()
    {
        QTest::addColumn<QString>("text");
        for (const QString& row : QString(lineRows).split('\n', Qt::SkipEmptyParts))
            QTest::newRow(qPrintable(row)) << row;
        for (const char* outside : {"hor+", "pnl+", "grp+|t", "lb|t", "edl|01|ro|1|t", "ckr|01|-|e|-|a",
                                    "cbr+|01|t", "btn|01|21|t|t", "tab-", "cbh-"})
            QTest::newRow(outside) << QString("!") + outside;
        QTest::newRow("between tabs") << "tabs+;tab+|t;tab-;!ckl|01|-|e|-|a";
    }

    void badLines()
    {
        QFETCH(QString, text);
        const int badLine = text.split(';').indexOf(QRegularExpression("^!.*"));
        const QStringList lines = text == "!" ? QStringList() : text.remove('!').split(';');
        const TFormItems form = parseFormItems(lines);
        QCOMPARE(form.isGood, badLine < 0);
        QCOMPARE(form.badLine, lines.isEmpty() ? -1 : badLine);
        QCOMPARE(form.items.size(), badLine < 0 ? lines.size() : badLine);

        QFile log(fileInAppDir("log"));
        log.remove();
        TFormDevCfg widget(1, "FF", "FF", lines, true);
        QCOMPARE(log.open(QFile::ReadOnly), badLine >= 0);
        if (badLine >= 0)
            QVERIFY(log.readAll().endsWith(" error DevCfg: " + lines.value(badLine).toUtf8() + "\n"));
        // What stands before the wrong line is there and shows nothing of the value.
        const QList<QCheckBox*> boxes = allOf<QCheckBox>(widget);
        QCOMPARE(boxes.size(), lines.mid(0, badLine).filter(QRegularExpression("^ *ck[lr]")).size());
        for (const QCheckBox* box : boxes)
            QCOMPARE(box->isChecked(), badLine < 0);
    }

    void controls_data() { textRows(controlRows, {"form", "value", "shown", "step", "stored"}); }
    void controls()
    {
        QFETCH(QString, form);
        QFETCH(QString, value);
        QFETCH(QString, step);
        QFETCH(QString, stored);
        const std::unique_ptr<TFormDevCfg> drawn(drawnForm(form, value));
        drawn->show();
        const QSignalSpy changes(drawn.get(), &TFormDevCfg::signalChangedCmdParam);
        if (form == "drawn") {
            QString shown;
            for (const QCheckBox* box : allOf<QCheckBox>(*drawn))
                shown += box->isChecked() ? '1' : '0';
            QTEST((shown + ' ' + drawn->findChild<QComboBox*>()->currentText()).trimmed(), "shown");
        }
        for (QAbstractButton* button : allOf<QAbstractButton>(*drawn)) {
            if (button->text() != step)
                continue;
            showTab(*drawn, button);
            click(button);
            QCOMPARE(changes.size(), stored == value ? 0 : 1);
        }
        for (QComboBox* box : allOf<QComboBox>(*drawn)) {
            showTab(*drawn, box);
            if (box->findText(step) >= 0)
                choose(box, step);
        }
        QCOMPARE(last(changes), stored == value ? TData() : (TData{{key::id_cmd, 7}, {key::data, stored}}));
        QCOMPARE(line(*drawn)->text(), stored);
        if (form == "drawn")
            QCOMPARE(line(*drawn, 1)->text(), stored.right(2));
    }

    void readOnly()
    {
        TFormDevCfg form(7, "D1C2B3A495867701", "0000000000000000",
                         {"frm+", "edr|FFFFFFFFFFFFFFFF|ro|-1|Unique ID:", "frm-"}, false);
        showActive(form);
        QSignalSpy changes(&form, &TFormDevCfg::signalChangedCmdParam);
        QTest::mouseClick(form.findChild<QLabel*>(), Qt::LeftButton);
        QVERIFY(line(form)->hasFocus());
        QTest::keyClicks(line(form), "12*");
        QCOMPARE(line(form)->text(), QString("D1C2B3A495867701"));
        QVERIFY(form.updateParams({{key::id_cmd, 7}, {key::data, "0102"}}));
        QCOMPARE(line(form)->text(), QString("0102000000000000"));
        QCOMPARE(changes.size(), 0);
    }

    void wholeValue()
    {
        TFormDevCfg form(7, "62D9FF", "62D9FE", {"frm+", "ckl|000001|i|e|-|A|t", "frm-"}, true);
        showActive(form);
        QSignalSpy changes(&form, &TFormDevCfg::signalChangedCmdParam);
        const QColor good = line(form)->palette().color(QPalette::Base);
        enter(line(form), "62 d9 fe");
        QCOMPARE(last(changes).value(key::data).toString(), QString("62D9FE"));
        QVERIFY(form.findChild<QCheckBox*>()->isChecked());
        enter(line(form), "*"); // the default already
        QTest::mouseClick(form.findChild<QPushButton*>(), Qt::LeftButton);
        QCOMPARE(changes.size(), 1);
        enter(line(form), "62"); // no such register, shown as a fault, but the user's own
        QCOMPARE(last(changes).value(key::data).toString(), QString("62"));
        QVERIFY(line(form)->palette().color(QPalette::Base) != good);
        const TFormDevCfg again(7, "62", "62D9FE", {"frm+"}, true); // shown filled up, and marked still
        QVERIFY(again.findChild<QLineEdit*>()->palette().color(QPalette::Base) != good);
        QTest::mouseClick(form.findChild<QPushButton*>(), Qt::LeftButton);
        QCOMPARE(last(changes).value(key::data).toString(), QString("62D9FE"));

        // What is stored is longer than the default that is shown of it. Nothing is told twice.
        for (const char* stored : {"62D9FE00", "62D9FE"})
            QVERIFY(form.updateParams({{key::id_cmd, 7}, {key::data, stored}}));
        QCOMPARE(line(form)->palette().color(QPalette::Base), good);
        for (const bool isKey : {true, false}) {
            QVERIFY(form.updateParams({{key::id_cmd, 7}, {key::data, "62D9FE00"}}));
            QCOMPARE(line(form)->text(), QString("62D9FE"));
            for (int i = 0; i < 2; ++i) {
                if (isKey)
                    enter(line(form), "*");
                else
                    QTest::mouseClick(form.findChild<QPushButton*>(), Qt::LeftButton);
            }
            QCOMPARE(last(changes).value(key::data).toString(), QString("62D9FE"));
            QCOMPARE(line(form)->palette().color(QPalette::Base), good);
        }
        QCOMPARE(changes.size(), 5);

        // A result arrives while the user types: the controls follow, the typing stays.
        type(line(form), "12");
        QVERIFY(form.updateParams({{key::id_cmd, 7}, {key::data, "000000FF"}}));
        QVERIFY(!form.updateParams({{key::id_cmd, 8}, {key::data, "FFFFFF"}}));
        QCOMPARE(form.text(), QString("000000"));
        QCOMPARE(line(form)->text(), QString("12"));
        QCOMPARE(changes.size(), 5);
    }

    void randomForms()
    {
        const int runs = qMax(300, qEnvironmentVariableIntValue("VM_FUZZ"));
        static const auto tags =
            QString("frm+ frm- tabs+ tabs- tab+ tab- hor+ pnl+ grp+ grp- lb edl edr ckl ckr "
                    "cbh+ cbtc+ cbl+ cbl- cbit btn ckl cbit ")
                .split(' ');
        static const auto fields =
            QString("|-|e|i|a|01|FF|0F0F0F0F0F|zz|-1|21|99999999999|text & more|00").split('|');
        QRandomGenerator random(20220103);
        const auto pick = [&random](const QStringList& from) { return from.at(random.bounded(from.size())); };
        int good = 0;
        for (int lines = 0; lines < runs;) {
            QStringList items{random.bounded(8) == 0 ? pick(tags) : QString("frm+")};
            for (int i = random.bounded(40); i > 0; --i) {
                QStringList parts{pick(tags)};
                const int usual = parts[0] == "btn" ? 4 : 6;
                for (int n = random.bounded(10) == 0 ? random.bounded(8) : usual; n > 0; --n)
                    parts << (random.bounded(5) == 0 ? QString::number(random.generate64(), 16)
                                                     : pick(fields));
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
            QSignalSpy changes(&form, &TFormDevCfg::signalChangedCmdParam);
            const QString value = form.text();
            QVERIFY(form.updateParams({{key::id_cmd, 1}, {key::data, value}}));
            QCOMPARE(form.text(), value);
            QCOMPARE(changes.size(), 0);
            good += parseFormItems(items).isGood ? 1 : 0;
        }
        QVERIFY(good > 0);
    }
};

QTEST_MAIN(TestDeviceForms)
#include "test_device_forms.moc"
