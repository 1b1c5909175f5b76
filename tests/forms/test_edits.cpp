#include "forms/FormBench.h"
#include "forms/edits/TComboBox.h"
#include "forms/edits/TWgtEditDec2Def.h"
#include "forms/edits/TWgtEditDecDef.h"
#include "forms/edits/TWgtEditDoubleDef.h"
#include "forms/edits/TWgtEditFileName.h"
#include "forms/edits/TWgtEditHexDec.h"
#include "forms/edits/TWgtEditHexDec64.h"
#include "forms/edits/TWgtEditStrHex.h"
#include "forms/edits/TWgtLabelBtn.h"
#include "forms/edits/TWgtLabelComboBox.h"

#include <QtWidgets>

#include <memory>

/// kind of field, of 5 to 100 and 7 by default | what is stored | what is typed, one after the other | what
/// is reported | what is shown at first and after each step, with a "?" if marked. What is stored and does
/// not fit, or is no number at all, stays until the user enters another; of "keeps" what is typed stays too.
constexpr char numberRows[] = R"(
dec | 50 | ^; v; 12*; 999999; 100^ | 51 50 7 100 | 50 51 50 7 100 100
dec2 | 50 | ^; v; 12*; 999999; 100^ | 51 50 7 100 | 50 51 50 7 100 100
double | 50 | ^; v; 12*; 999999; 100^ | 51 50 7 100 | 50.0 51.0 50.0 7.0 100.0 100.0
hex | 50 | ^; v; 12*; 999999; 100^ | 51 50 7 100 | 0x32 0x33 0x32 0x07 0x64 0x64
hexdec | 50 | ^; v; 12*; 999999; 100^ | 51 50 7 100 | 50 51 50 7 100 100
hex64 | 50 | ^; v; 12*; 999999; 100^ | 51 50 7 100 | 0x32 0x33 0x32 0x07 0x64 0x64
dec64 | 50 | ^; v; 12*; 999999; 100^ | 51 50 7 100 | 50 51 50 7 100 100
dec | 50 | 0050; 101!; -99999999999999999999; 5v; 1a2; 99999999999999999999 | 100 5 12 100 | 50 50 100 5 5 12 100
hex | 50 | 0x3C; ff; 1; FFFFFFFFFFFFFFFFF | 60 100 5 100 | 0x32 0x3C 0x64 0x05 0x64
hex64 | 50 | FFFFFFFFFFFFFFFF | 100 | 0x32 0x64
double | 50 | 3.3; 33.35; 44,4 | 5 33.3 44.4 | 50.0 5.0 33.3 44.4
dec2 | 50 | -60; -2; 3; 0; -999999999999; 5v; -5^ | -60 -5 5 7 -100 -5 5 | 50 -60 -5 5 7 -100 -5 5
dec | 007 | 8 | 8 | 7 8
dec | 500 | 500; 400 | 100 | 500? 500? 100
dec | 99999999999 | ^ | 100 | 99999999999? 100
dec | abc | >d; v | 5 | abc? abc? 5
dec | abc | 60 | 60 | abc? 60
dec | | 7 | 7 | ? 7
hex | 0x10 | * | 7 | 0x10? 0x07
hex64 | 99999999999999999999 | 1F | 31 | 99999999999999999999? 0x1F
dec64 | 1.5 | | | 1.5? 1.5?
double | 1e1 | | | 10.0 10.0
double | nan | ^ | 5 | nan? 5.0
keeps | 50 | 200; v; -3; FFFFFFFFFFFFFFFFFF; *; 1F | 512 100 -3 9223372036854775807 7 31 | 0x32 0x200? 0x64 -0x03? 0x7FFFFFFFFFFFFFFF? 0x07 0x1F
)";

/// The fields of the forms, worked as a user works them.
class TestEdits : public QObject
{
    Q_OBJECT

private slots:
    void number_data() { textRows(numberRows, {"kind", "stored", "steps", "reported", "shown"}); }
    void number()
    {
        QFETCH(QString, kind);
        QFETCH(QString, stored);
        QFETCH(QString, steps);
        QLocale::setDefault(QLocale::German);
        QStringList reported;
        QStringList shown;
        const auto work = [&](auto&& box, int field) {
            box.setRange(5, 100);
            box.setDefaultValue(7);
            box.setStored(stored);
            if (kind == "keeps")
                box.keepTyped();
            showActive(box);
            const QSignalSpy spy(&box, &std::decay_t<decltype(box)>::valueChanged);
            QLineEdit* edit = line(box, field);
            for (const QString& step : ("; " + steps).split("; ")) {
                enter(edit, step);
                shown << edit->text() + (box.fits() ? "" : "?");
                if (!box.fits() && kind != "keeps")
                    QCOMPARE(box.stored().toString(), edit->text());
                QCOMPARE(edit->palette().color(QPalette::Base) == QLineEdit().palette().color(QPalette::Base),
                         box.fits());
            }
            for (const QList<QVariant>& one : spy)
                reported << one.first().toString();
        };
        if (kind == "dec")
            work(TWgtEditDecDef(50), 0);
        else if (kind == "dec2")
            work(TWgtEditDec2Def(50), 0);
        else if (kind == "double")
            work(TWgtEditDoubleDef(50, 1), 0);
        else if (kind == "hex" || kind == "hexdec")
            work(TWgtEditHexDec(50), kind == "hex" ? 0 : 1);
        else
            work(TWgtEditHexDec64(50), kind == "dec64" ? 1 : 0);
        QTEST(reported.join(' '), "reported");
        QTEST(shown.join(' '), "shown");
    }

    void pairFollows()
    {
        TWgtEditHexDec64 box(16);
        box.setRange(0, Q_INT64_C(0x7FFFFFFFFFFFFFFF));
        box.setDefaultValue(255);
        QCOMPARE(line(box)->toolTip(), QString("0x00..0x7FFFFFFFFFFFFFFF"));
        QCOMPARE(line(box, 1)->toolTip(), QString("0..9223372036854775807"));
        QCOMPARE(box.button()->toolTip(), QString("Default: 0xFF [255]"));
        showActive(box);
        QSignalSpy spy(&box, &TWgtEditHexDec64::valueChanged);
        enter(line(box), "abcd");
        QCOMPARE(line(box, 1)->text(), QString("43981"));
        enter(line(box, 1), "4294967296");
        QCOMPARE(line(box)->text(), QString("0x100000000"));
        QTest::mouseClick(box.button(), Qt::LeftButton);
        QTest::mouseClick(box.button(), Qt::LeftButton);
        type(line(box, 1), "9"); // not entered yet
        QTest::mouseClick(box.button(), Qt::LeftButton);
        QCOMPARE(line(box)->text() + line(box, 1)->text(), QString("0xFF255"));
        line(box, 1)->clearFocus();
        box.setValue(3);
        QCOMPARE(spy.size(), 3);
    }

    void leavesAloneWhatDoesNotFit()
    {
        TWgtEditDecDef box(1);
        box.setRange(10, 3); // no room: the minimum is all there is
        QCOMPARE(box.maximum(), 10);

        // Rounded on screen, and left as it is when somebody only looks.
        TWgtEditDoubleDef real(3.345, 1);
        QSignalSpy realSpy(&real, &TWgtEditDoubleDef::valueChanged);
        real.setRange(0, 3.3);
        QVERIFY(real.fits());
        enter(line(real), "3.3");
        QCOMPARE(realSpy.size(), 0);
        QCOMPARE(real.value(), 3.345);

        // What goes away in the middle of typing reports nothing.
        auto dying = std::make_unique<TWgtEditDecDef>(1);
        const QSignalSpy spy(dying.get(), &TWgtEditDecDef::valueChanged);
        showActive(*dying);
        type(line(*dying), "23");
        dying.reset();
        QCOMPARE(spy.size(), 0);
    }

    void bytes()
    {
        TWgtEditStrHex edit("AA");
        edit.setDefaultValue("00FF");
        showActive(edit);
        QSignalSpy spy(&edit, &TWgtEditStrHex::valueChanged);
        enter(edit.lineEdit(), "12 zx3f");
        QCOMPARE(edit.value(), QString("12 3f"));
        enter(edit.lineEdit(), "*");
        enter(edit.lineEdit(), "00FF");
        QCOMPARE(edit.value(), QString("00FF"));
        type(edit.lineEdit(), "");
        QTest::keyClick(edit.lineEdit(), Qt::Key_Delete);
        edit.lineEdit()->clearFocus();
        QCOMPARE(edit.value(), QString());
        QCOMPARE(spy.size(), 3);
    }

    void fileName()
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
        // Dropped it is the same file, and stays where it lies; a text is inserted as in any line.
        showActive(edit);
        const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
        const auto drop = [&](const QMimeData& data) {
            for (const QEvent::Type type : {QEvent::DragEnter, QEvent::DragMove, QEvent::Drop}) {
                const std::unique_ptr<QDropEvent> event(
                    type == QEvent::Drop
                        ? new QDropEvent({1, 5}, actions, &data, Qt::LeftButton, {})
                        : new QDragMoveEvent({1, 5}, actions, &data, Qt::LeftButton, {}, type));
                QCoreApplication::sendEvent(edit.lineEdit(), event.get());
                QVERIFY(event->isAccepted());
                QVERIFY(!data.hasUrls() || event->dropAction() == Qt::CopyAction);
            }
        };
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile("/base/dir/a b.bin"), QUrl::fromLocalFile("/x")});
        drop(data);
        QCOMPARE(edit.value(), QString("a b.bin"));
        QMimeData text;
        text.setText("sub/");
        drop(text);
        QCOMPARE(edit.value(), QString("sub/a b.bin"));
    }

    void comboIgnoresWheel()
    {
        QWidget page;
        TWgtLabelComboBox row("Label", QBoxLayout::LeftToRight, &page);
        TComboBox& box = *row.box();
        QSignalSpy spy(&row, &TWgtLabelComboBox::signalChange);
        const QColor pink = box.palette().color(QPalette::Base);
        box.addItems({"a", "b", "c"});
        QVERIFY(box.palette().color(QPalette::Base) != pink);
        showActive(page);
        page.setFocus();
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
};

QTEST_MAIN(TestEdits)
#include "test_edits.moc"
