#include "forms/TComboBox.h"
#include "forms/TWgtEditDec2Def.h"
#include "forms/TWgtEditDecDef.h"
#include "forms/TWgtEditDoubleDef.h"
#include "forms/TWgtEditFileName.h"
#include "forms/TWgtEditHexDec.h"
#include "forms/TWgtEditHexDec64.h"
#include "forms/TWgtEditStrHex.h"
#include "forms/TWgtLabelBtn.h"
#include "forms/TWgtLabelComboBox.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QWheelEvent>
#include <QtTest>

#include <memory>

/// The fields of the forms, worked as a user works them.
class TestEdits : public QObject
{
    Q_OBJECT

private slots:
    void number_data();
    void number();
    void pairFollows();
    void leavesAloneWhatDoesNotFit();
    void bytes();
    void fileName();
    void comboIgnoresWheel();
};

namespace {

/// Only in an active window can a line have the focus, and lose it.
void show(QWidget& widget)
{
    widget.show();
    QVERIFY(QTest::qWaitForWindowActive(&widget));
}

/// Types text over what stands in the line, then leaves it. A '^', 'v' or '*' is the key, '>' goes to the
/// end, '!' is Return.
void enter(QLineEdit* line, const QString& text)
{
    line->setFocus();
    line->selectAll();
    for (const QChar c : text) {
        if (c == QLatin1Char('^'))
            QTest::keyClick(line, Qt::Key_Up);
        else if (c == QLatin1Char('v'))
            QTest::keyClick(line, Qt::Key_Down);
        else if (c == QLatin1Char('>'))
            QTest::keyClick(line, Qt::Key_End);
        else if (c == QLatin1Char('!'))
            QTest::keyClick(line, Qt::Key_Return);
        else
            QTest::keyClicks(line, QString(c));
    }
    line->clearFocus();
}

QLineEdit* line(QWidget& widget, int i)
{
    return widget.findChildren<QLineEdit*>().at(i);
}

} // namespace

void TestEdits::number_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QVariantList>("reported");
    QTest::addColumn<QString>("shown");

    // The range is 5 to 100, the default 7.
    const auto stored = [](const char* kind, const char* value, const char* text,
                           const QVariantList& reported, const char* shown) {
        QTest::addRow("%s '%s' %s", kind, value, text) << kind << value << text << reported << shown;
    };
    const auto row = [&stored](const char* kind, const char* text, const QVariantList& reported,
                               const char* shown) { stored(kind, "50", text, reported, shown); };
    static const struct
    {
        const char *kind, *up, *down, *usual, *most;
    } same[] = {
        {"dec", "51", "49", "7", "100"},
        {"dec2", "51", "49", "7", "100"},
        {"double", "51.0", "49.0", "7.0", "100.0"},
        {"hex", "0x33", "0x31", "0x07", "0x64"},
        {"hexdec", "51", "49", "7", "100"},
        {"hex64", "0x33", "0x31", "0x07", "0x64"},
        {"dec64", "51", "49", "7", "100"},
    };
    for (const auto& one : same) {
        row(one.kind, "^", {51}, one.up);
        row(one.kind, "v", {49}, one.down);
        row(one.kind, "12*", {7}, one.usual);
        row(one.kind, "999999", {100}, one.most);
        row(one.kind, "100^", {100}, one.most);
    }
    row("dec", "50", {}, "50");
    row("dec", "0050", {}, "50");
    row("dec", "101!", {100}, "100");
    row("dec", "99999999999999999999", {100}, "100");
    row("dec", "-99999999999999999999", {5}, "5");
    row("dec", "1a2", {12}, "12");
    row("dec", "5v", {5}, "5");
    row("hex", "0x3C", {60}, "0x3C");
    row("hex", "ff", {100}, "0x64");
    row("hex", "FFFFFFFFFFFFFFFFF", {100}, "0x64");
    row("hex64", "FFFFFFFFFFFFFFFF", {100}, "0x64");
    row("double", "3.3", {5.0}, "5.0");
    row("double", "33.35", {33.3}, "33.3");
    row("double", "33,3", {33.3}, "33.3"); // never 333
    // The sizes lie between 5 and 100, the sign is free.
    row("dec2", "-60", {-60}, "-60");
    row("dec2", "-2", {-5}, "-5");
    row("dec2", "3", {5}, "5");
    row("dec2", "0", {7}, "7");
    row("dec2", "-999999999999", {-100}, "-100");
    row("dec2", "5v", {-5}, "-5");
    row("dec2", "-5^", {5}, "5");
    // What is stored and does not fit, or is no number at all, stays until the user enters another.
    stored("dec", "007", "", {}, "7");
    stored("dec", "500", "", {}, "500");
    stored("dec", "99999999999", "", {}, "99999999999");
    stored("dec", "99999999999", "^", {100}, "100");
    stored("dec", "abc", "", {}, "abc");
    stored("dec", "abc", ">d", {}, "abc");
    stored("dec", "abc", "v", {5}, "5");
    stored("dec", "abc", "60", {60}, "60");
    stored("dec", "", "", {}, "");
    stored("dec", "", "7", {7}, "7");
    stored("hex", "0x10", "*", {7}, "0x07");
    stored("hex64", "99999999999999999999", "1F", {31}, "0x1F");
    stored("dec64", "1.5", "", {}, "1.5");
    stored("double", "1e1", "", {}, "10.0");
    stored("double", "nan", "^", {5.0}, "5.0");
}

void TestEdits::number()
{
    QFETCH(QString, kind);
    QFETCH(QString, stored);
    QFETCH(QString, text);
    QFETCH(QString, shown);
    QLocale::setDefault(QLocale::German);
    QVariantList reported;
    QString now;
    QString kept;
    const auto work = [&](auto& box, auto min, auto max, int field) {
        box.setRange(min, max);
        box.setDefaultValue(7);
        box.setStored(stored);
        show(box);
        QSignalSpy spy(&box, &std::decay_t<decltype(box)>::valueChanged);
        enter(line(box, field), text);
        for (const QList<QVariant>& one : spy)
            reported << one.first();
        now = line(box, field)->text();
        kept = box.fits() ? QString() : box.stored().toString();
    };
    TWgtEditDecDef dec(50);
    TWgtEditDec2Def dec2(50);
    TWgtEditDoubleDef real(50, 1);
    TWgtEditHexDec both(50);
    TWgtEditHexDec64 wide(50);
    if (kind == "dec")
        work(dec, 5, 100, 0);
    else if (kind == "dec2")
        work(dec2, 5, 100, 0);
    else if (kind == "double")
        work(real, 5.0, 100.0, 0);
    else if (kind == "hex" || kind == "hexdec")
        work(both, 5, 100, kind == "hex" ? 0 : 1);
    else
        work(wide, qlonglong(5), qlonglong(100), kind == "hex64" ? 0 : 1);
    QTEST(reported, "reported");
    QCOMPARE(now, shown);
    QCOMPARE(kept, now == stored && stored != "50" ? stored : QString());
}

void TestEdits::pairFollows()
{
    TWgtEditHexDec64 box(16);
    box.setRange(0, Q_INT64_C(0x7FFFFFFFFFFFFFFF));
    box.setDefaultValue(255);
    QCOMPARE(line(box, 0)->toolTip(), QString("0x00..0x7FFFFFFFFFFFFFFF"));
    QCOMPARE(line(box, 1)->toolTip(), QString("0..9223372036854775807"));
    QCOMPARE(box.button()->toolTip(), QString("Default: 0xFF [255]"));
    show(box);
    QSignalSpy spy(&box, &TWgtEditHexDec64::valueChanged);
    enter(line(box, 0), "abcd");
    QCOMPARE(line(box, 1)->text(), QString("43981"));
    enter(line(box, 1), "4294967296");
    QCOMPARE(line(box, 0)->text(), QString("0x100000000"));
    QTest::mouseClick(box.button(), Qt::LeftButton);
    QTest::mouseClick(box.button(), Qt::LeftButton);
    line(box, 1)->setFocus();
    QTest::keyClicks(line(box, 1), "9"); // not entered yet
    QTest::mouseClick(box.button(), Qt::LeftButton);
    QCOMPARE(line(box, 0)->text() + line(box, 1)->text(), QString("0xFF255"));
    line(box, 1)->clearFocus();
    QCOMPARE(spy.size(), 3);
    box.setValue(3);
    QCOMPARE(spy.size(), 3);
}

void TestEdits::leavesAloneWhatDoesNotFit()
{
    TWgtEditDecDef box(500);
    QSignalSpy spy(&box, &TWgtEditDecDef::valueChanged);
    box.setRange(10, 3); // no room: the minimum is all there is
    QCOMPARE(box.maximum(), 10);
    const QColor good = TWgtEditDecDef(0).palette().color(QPalette::Base);
    show(box);
    enter(line(box, 0), "500");
    QCOMPARE(box.value(), 500);
    QVERIFY(line(box, 0)->palette().color(QPalette::Base) != good);
    QCOMPARE(spy.size(), 0);
    enter(line(box, 0), "400");
    QCOMPARE(box.value(), 10);
    QCOMPARE(line(box, 0)->palette().color(QPalette::Base), good);
    QCOMPARE(spy.size(), 1);

    // Rounded on screen, and left as it is when somebody only looks.
    TWgtEditDoubleDef real(3.345, 1);
    QSignalSpy realSpy(&real, &TWgtEditDoubleDef::valueChanged);
    real.setRange(0, 3.3);
    QVERIFY(real.fits());
    enter(line(real, 0), "3.3");
    QCOMPARE(realSpy.size(), 0);
    QCOMPARE(real.value(), 3.345);

    // What goes away in the middle of typing reports nothing.
    auto box2 = std::make_unique<TWgtEditDecDef>(1);
    QSignalSpy spy2(box2.get(), &TWgtEditDecDef::valueChanged);
    show(*box2);
    line(*box2, 0)->setFocus();
    QTest::keyClicks(line(*box2, 0), "23");
    box2.reset();
    QCOMPARE(spy2.size(), 0);
}

void TestEdits::bytes()
{
    TWgtEditStrHex edit("AA");
    edit.setDefaultValue("00FF");
    show(edit);
    QSignalSpy spy(&edit, &TWgtEditStrHex::valueChanged);
    enter(edit.lineEdit(), "12 zx3f");
    QCOMPARE(edit.value(), QString("12 3f"));
    enter(edit.lineEdit(), "*");
    enter(edit.lineEdit(), "00FF");
    QCOMPARE(edit.value(), QString("00FF"));
    edit.lineEdit()->setFocus();
    edit.lineEdit()->selectAll();
    QTest::keyClick(edit.lineEdit(), Qt::Key_Delete);
    QTest::keyClick(edit.lineEdit(), Qt::Key_Return);
    QCOMPARE(edit.value(), QString());
    QCOMPARE(spy.size(), 3);
}

void TestEdits::fileName()
{
    TWgtEditFileName edit("a.hex");
    edit.setBaseFolder("/base/dir");
    QSignalSpy spy(&edit, &TWgtEditFileName::signalChanged);
    const QStringList chosen{"/base/dir/sub/x.bin", "/base/directory/x.bin", "/base/dir/..x", "/base"};
    const QStringList shown{"sub/x.bin", "/base/directory/x.bin", "..x", "/base"};
    for (int i = 0; i < chosen.size(); ++i) {
        edit.choose(chosen[i]);
        QCOMPARE(edit.value(), shown[i]);
        QCOMPARE(spy.size(), i + 1);
    }
    edit.setValue("b");
    QCOMPARE(spy.size(), chosen.size());
}

void TestEdits::comboIgnoresWheel()
{
    QWidget page;
    TWgtLabelComboBox row("Label", QBoxLayout::LeftToRight, &page);
    TComboBox& box = *row.box();
    TComboBox other(&page);
    QSignalSpy spy(&row, &TWgtLabelComboBox::signalChange);
    const QColor pink = box.palette().color(QPalette::Base);
    box.addItems({"a", "b", "c"});
    QVERIFY(box.palette().color(QPalette::Base) != pink);
    show(page);
    other.setFocus();
    const auto wheel = [&box] {
        QWheelEvent event(QPointF(5, 5), box.mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, -120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&box, &event);
        return box.currentIndex();
    };
    QCOMPARE(wheel(), 0);
    QTest::mouseClick(row.label(), Qt::LeftButton);
    QCOMPARE(wheel(), 1);
    QCOMPARE(spy.size(), 2); // the first entry, and this one
    box.setCurrentIndex(-1);
    QCOMPARE(box.palette().color(QPalette::Base), pink);
}

QTEST_MAIN(TestEdits)
#include "test_edits.moc"
