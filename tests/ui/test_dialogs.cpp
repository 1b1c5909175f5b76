#include "core/TAppData.h"
#include "core/TCmdCode.h"
#include "core/TDataPrj.h"
#include "core/TLang.h"
#include "core/TPrjListFile.h"
#include "core/TPrjLists.h"
#include "core/globals.h"
#include "core/helpers.h"
#include "core/keys.h"
#include "core/settingsRows.h"
#include "devices/TDeviceList.h"
#include "support/TestDir.h"
#include "ui/TActionWidget.h"
#include "ui/TDialogCfgEdit.h"
#include "ui/TDialogCmdSelector.h"
#include "ui/TDialogPrjListEdit.h"
#include "ui/TDialogSelectDevice.h"
#include "ui/TDialogSelectPrjList.h"
#include "ui/TDialogSetupPageProg.h"
#include "ui/TDialogSetupPageProgAliasEdit.h"
#include "ui/TDialogSetupPageProgTypeEdit.h"
#include "ui/TDialogSetupSelect.h"
#include "ui/TWgtColorEnableEdit.h"
#include "ui/language_files.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <QTreeWidget>
#include <QtTest>

#include <ctime>

namespace {

template <class T> T* modal()
{
    return qobject_cast<T*>(QApplication::activeModalWidget());
}

/// Does something with the dialog that the next event loop shows, which must be of that class.
template <class T> void expect(const std::function<void(T&)>& answer)
{
    QTimer::singleShot(0, qApp, [answer] {
        QDialog* any = modal<QDialog>();
        T* dialog = modal<T>();
        if (dialog)
            answer(*dialog);
        else
            QTest::qFail("no such dialog", __FILE__, __LINE__);
        if (any && any->isVisible())
            any->reject();
    });
}

QPushButton* button(const QWidget& window, const QString& text)
{
    for (QPushButton* candidate : window.findChildren<QPushButton*>()) {
        if (candidate->text() == text)
            return candidate;
    }
    qFatal("no button %s", qPrintable(text));
}

void click(const QWidget& window, const char* text)
{
    QTest::mouseClick(button(window, QLatin1String(text)), Qt::LeftButton);
}

/// Answers the next question with one of its buttons, and tells what was asked.
void answerBox(const char* text, QString& asked)
{
    expect<QMessageBox>([text, &asked](QMessageBox& box) {
        asked = box.text();
        click(box, text);
    });
}

/// Types into the lines of a dialog, from top to bottom; an empty text leaves the line. Accepts.
template <class T> void fillIn(const QStringList& texts)
{
    expect<T>([texts](T& dialog) {
        const QList<QLineEdit*> lines = dialog.template findChildren<QLineEdit*>();
        for (int i = 0; i < texts.size(); ++i) {
            if (texts.at(i).isEmpty())
                continue;
            lines.at(i)->selectAll();
            QTest::keyClicks(lines.at(i), texts.at(i));
        }
        click(dialog, "OK");
    });
}

QStringList column(const QTableWidget& table, int column)
{
    QStringList texts;
    for (int row = 0; row < table.rowCount(); ++row)
        texts.append(table.item(row, column)->text());
    return texts;
}

/// The values of all settings as text, by key.
QMap<QString, QString> settings()
{
    QMap<QString, QString> values;
    for (const SettingsRow& row : settingsRows()) {
        std::visit(
            [&](auto field) {
                QString text;
                QDebug(&text) << appData().*field;
                values.insert(QLatin1String(row.key), text);
            },
            row.field);
    }
    return values;
}

QSet<QString> changes(const QMap<QString, QString>& before)
{
    QSet<QString> keys;
    const QMap<QString, QString> now = settings();
    for (auto it = now.begin(); it != now.end(); ++it) {
        if (before.value(it.key()) != it.value() && !it.key().startsWith(QLatin1String("Window")))
            keys.insert(it.key());
    }
    return keys;
}

QCheckBox* checkBox(const QWidget& window, int text)
{
    for (QCheckBox* box : window.findChildren<QCheckBox*>()) {
        if (box->text() == langText(text))
            return box;
    }
    qFatal("no check box %d", text);
}

} // namespace

class TestDialogs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void keysOfAWidget();
    void placeIsKept();
    void deviceFilter();
    void deviceFilterIsQuick();
    void listsNewAndCopy();
    void listsRows();
    void selector();
    void setupStoresWhatWasChanged();
    void setupHasEverySetting();
    void progAliases();
    void progTypes();
    void languages();

private:
    TestDir m_dir;
};

void TestDialogs::initTestCase()
{
    lang().load(m_dir.file(QStringLiteral("language/eng.lng")));
    QFile::remove(fileInAppDir(QStringLiteral("hk")));
    QVERIFY(QFile::copy(m_dir.file(QStringLiteral("velmarkion.hk")), fileInAppDir(QStringLiteral("hk"))));
}

void TestDialogs::init()
{
    appData() = TAppData();
    appData().PathProjects = m_dir.file(QStringLiteral("projects"));
    appData().PathDevices = m_dir.file(QStringLiteral("devices"));
    appData().PathLanguage = m_dir.file(QStringLiteral("language"));
    appData().progTypes.append(QStringLiteral("Model"), QStringLiteral("model.cfg"));
    appData().progTypes.append(QStringLiteral("Other"), QStringLiteral("other.cfg"));
    appData().progNames.append(QStringLiteral("A"), true, QStringLiteral("ttyS0"), QStringLiteral("Model"));
    appData().progNames.append(QStringLiteral("B"), false, QStringLiteral("/dev/x (y)"),
                               QStringLiteral("Other"));
    appData().progNames.append(QStringLiteral("C"), true, QStringLiteral("ttyS2"), QStringLiteral("Model"));
    appData().ProgDefault = 1;
}

// The main window has the same keys: in the table they are the table's, elsewhere the window's.
void TestDialogs::keysOfAWidget()
{
    QMainWindow window;
    auto* table = new QTableWidget(2, 1, &window);
    auto* line = new QLineEdit(&window);
    window.setCentralWidget(table);
    int inWindow = 0;
    int inTable = 0;
    QAction windowAction(&window);
    windowAction.setShortcut(QKeySequence(QStringLiteral("F4")));
    window.addAction(&windowAction);
    connect(&windowAction, &QAction::triggered, this, [&] { ++inWindow; });
    TActionWidget one(QStringLiteral("One"), QKeySequence(QStringLiteral("F4")), table);
    TActionWidget two(QStringLiteral("Two"), QKeySequence(QStringLiteral("Ctrl+K, Ctrl+D")), table);
    connect(&one, &QAction::triggered, this, [&] { ++inTable; });
    connect(&two, &QAction::triggered, this, [&] { inTable += 10; });
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));

    table->setFocus();
    QTest::keyClick(window.windowHandle(), Qt::Key_F4);
    QCOMPARE(qMakePair(inWindow, inTable), qMakePair(0, 1));
    QTest::keyClick(window.windowHandle(), Qt::Key_K, Qt::ControlModifier);
    QTest::keyClick(window.windowHandle(), Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(inTable, 11);
    one.setEnabled(false);
    QTest::keyClick(window.windowHandle(), Qt::Key_F4);
    QCOMPARE(qMakePair(inWindow, inTable), qMakePair(0, 11));
    line->setFocus();
    QTest::keyClick(window.windowHandle(), Qt::Key_F4);
    QCOMPARE(qMakePair(inWindow, inTable), qMakePair(1, 11));
}

void TestDialogs::placeIsKept()
{
    appData().WindowOtherCenter = false;
    {
        TDialogCfgEdit never({}, QStringLiteral("x"));
    }
    QCOMPARE(appData().WindowCfgEditLeft, 100);
    {
        TDialogCfgEdit dialog({}, {});
        dialog.show();
        QVERIFY(!button(dialog, QStringLiteral("OK"))->isEnabled());
        QTest::keyClicks(dialog.findChild<QLineEdit*>(), QStringLiteral(" \t name "));
        QVERIFY(button(dialog, QStringLiteral("OK"))->isEnabled());
        QCOMPARE(dialog.name(), QStringLiteral("name"));
        dialog.setGeometry(30, 40, 333, dialog.height());
    }
    QCOMPARE(appData().WindowCfgEditLeft, 30);
    QCOMPARE(appData().WindowCfgEditTop, 40);
    QCOMPARE(appData().WindowCfgEditWidth, 333);
    TDialogCfgEdit again({}, {});
    again.show();
    QCOMPARE(again.geometry().topLeft(), QPoint(30, 40));
    QCOMPARE(again.width(), 333);
}

void TestDialogs::deviceFilter()
{
    m_dir.write(QStringLiteral("few/devices.lst"),
                "W25Q128FW=a.dev\nATmega16=a.dev\nW25Q64FW=a.dev\nATmega328P=a.dev\nW25Q64=a.dev\n");
    const QString shipped = appData().PathDevices;
    appData().PathDevices = m_dir.file(QStringLiteral("few"));
    expect<TDialogSelectDevice>([](TDialogSelectDevice& dialog) {
        auto* filter = dialog.findChild<QLineEdit*>();
        QCOMPARE(dialog.selected(), QStringLiteral("ATmega16"));
        // What the filter hides is not chosen, and of several none is chosen by itself.
        QTest::keyClicks(filter, QStringLiteral("w25q*w"));
        QCOMPARE(dialog.selected(), QString());
        QVERIFY(!button(dialog, QStringLiteral("OK"))->isEnabled());
        QTest::keyClick(filter, Qt::Key_Return);
        QVERIFY(dialog.isVisible());
        QTest::keyClick(filter, Qt::Key_Down);
        QCOMPARE(dialog.selected(), QStringLiteral("W25Q64FW"));
        click(dialog, "*");
        QCOMPARE(dialog.selected(), QStringLiteral("W25Q64FW"));
        QTest::keyClicks(filter, QStringLiteral("["));
        QCOMPARE(dialog.selected(), QString());
        QTest::keyClicks(filter, QStringLiteral("a-f1]6"));
        QCOMPARE(dialog.selected(), QStringLiteral("ATmega16"));
        filter->clear();
        // The only one left is meant.
        QTest::keyClicks(filter, QStringLiteral("mega328p"));
        QCOMPARE(dialog.selected(), QStringLiteral("ATmega328P"));
        QTest::keyClick(filter, Qt::Key_Return);
    });
    const QString chosen = TDialogSelectDevice::selectChip(QStringLiteral("ATmega16"));
    appData().PathDevices = shipped;
    QCOMPARE(chosen, QStringLiteral("ATmega328P"));
}

void TestDialogs::deviceFilterIsQuick()
{
    QStringList names;
    for (int i = 0; i < 700; ++i)
        names.append(QStringLiteral("CHIP%1-%2").arg(i % 26).arg(i));
    TDialogSelectDevice dialog(QString(),
                               {&appData().WindowSelectDeviceLeft, &appData().WindowSelectDeviceTop,
                                &appData().WindowSelectDeviceWidth, &appData().WindowSelectDeviceHeight},
                               names, names.at(600));
    dialog.show();
    QApplication::processEvents();
    const QString typed = QStringLiteral("chip1*-1");
    const std::clock_t start = std::clock();
    for (const QChar letter : typed) {
        QTest::keyClick(dialog.findChild<QLineEdit*>(), letter.toLatin1());
        QApplication::processEvents();
    }
    for (int i = 0; i < typed.size(); ++i)
        QTest::keyClick(dialog.findChild<QLineEdit*>(), Qt::Key_Backspace);
    const double ms = 1000.0 * double(std::clock() - start) / CLOCKS_PER_SEC / (2 * typed.size());
    QVERIFY2(ms < 10, qPrintable(QString::number(ms)));
}

void TestDialogs::listsNewAndCopy()
{
    const QByteArray samples = m_dir.read(QStringLiteral("projects/samples.lst"));
    TDialogSelectPrjList dialog(m_dir.file(QStringLiteral("vm.lpl")));
    QVERIFY(dialog.isLoaded());
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto* table = dialog.findChild<QTableWidget*>();
    table->setFocus();
    // An existing file is never written: not by a new list, and not by a copy of itself.
    fillIn<TDialogPrjListEdit>({QStringLiteral("New"), QStringLiteral("samples")});
    QTest::keyClick(table, Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(dialog.file(), QStringLiteral("samples_new.lst"));
    table->setCurrentCell(0, 0);
    fillIn<TDialogPrjListEdit>({QStringLiteral("Copy"), QStringLiteral("samples.lst")});
    QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(dialog.file(), QStringLiteral("samples_new_new.lst"));
    QCOMPARE(m_dir.read(QStringLiteral("projects/samples.lst")), samples);
    QCOMPARE(m_dir.read(QStringLiteral("projects/samples_new_new.lst")), samples);
    TPrjListFile list;
    QCOMPARE(list.read(m_dir.file(QStringLiteral("projects/samples_new.lst"))), TPrjListFile::Ok);
    QVERIFY(list.items().isEmpty());
    // In another folder the copy still leads to the same projects.
    table->setCurrentCell(0, 0);
    fillIn<TDialogPrjListEdit>({QStringLiteral("Far"), QStringLiteral("../far.lst")});
    dialog.slotCopy();
    QCOMPARE(list.read(m_dir.file(QStringLiteral("far.lst"))), TPrjListFile::Ok);
    QCOMPARE(list.items().at(1).file, QStringLiteral("projects/serial-flash.prj"));
    // A folder that is not there.
    expect<TDialogPrjListEdit>([](TDialogPrjListEdit& edit) {
        edit.findChildren<QLineEdit*>().at(0)->setText(QStringLiteral("x"));
        edit.findChildren<QLineEdit*>().at(1)->setText(QStringLiteral("no/such/x"));
        QTimer::singleShot(0, qApp, [] { modal<QMessageBox>()->accept(); });
        click(edit, "OK");
    });
    dialog.slotNew();
    QCOMPARE(column(*table, 0), QStringList({"Samples", "New", "Copy", "Far"}));
}

void TestDialogs::listsRows()
{
    const QString file = m_dir.write(
        QStringLiteral("my.lpl"),
        R"({"version": 1, "list": [{"name": "a", "file": "a.lst"}, {"name": "b", "file": "b.lst"}]})");
    TDialogSelectPrjList dialog(file);
    auto* table = dialog.findChild<QTableWidget*>();
    dialog.show();
    dialog.setPreset(QStringLiteral("Samples"), m_dir.file(QStringLiteral("projects/samples.lst")));
    QVERIFY(!dialog.isChanged());
    QTest::keyClick(table, Qt::Key_Insert, Qt::ControlModifier);
    QTest::keyClick(table, Qt::Key_Insert, Qt::ControlModifier); // it is there by now
    QCOMPARE(column(*table, 0), QStringList({"a", "b", "Samples"}));
    QTest::keyClick(table, Qt::Key_Up, Qt::ControlModifier);
    QTest::keyClick(table, Qt::Key_Up, Qt::ControlModifier);
    QTest::keyClick(table, Qt::Key_Up, Qt::ControlModifier);
    QCOMPARE(column(*table, 0), QStringList({"Samples", "a", "b"}));
    QCOMPARE(dialog.name(), QStringLiteral("Samples"));
    table->setCurrentCell(1, 0);
    QString asked;
    answerBox("No", asked);
    QTest::keyClick(table, Qt::Key_Delete);
    QVERIFY(asked.contains(QLatin1String("\"a\"")));
    QCOMPARE(table->rowCount(), 3);
    appData().ConfirmProjectsListDelete = false;
    QTest::keyClick(table, Qt::Key_Delete);
    QCOMPARE(column(*table, 0), QStringList({"Samples", "b"}));
    QVERIFY(dialog.isChanged());
    QVERIFY(dialog.write());
    QVERIFY(!dialog.isChanged());
    TPrjLists lists;
    QVERIFY(lists.read(file));
    QCOMPARE(lists.entries().size(), 2);
    QCOMPARE(lists.entries().at(1).file, QStringLiteral("b.lst"));
    QTest::keyClick(table, Qt::Key_Delete);
    QTest::keyClick(table, Qt::Key_Delete);
    QTest::keyClick(table, Qt::Key_Delete);
    QCOMPARE(table->rowCount(), 0);
    QVERIFY(!button(dialog, QStringLiteral("Select"))->isEnabled());
    QVERIFY(!TDialogSelectPrjList(m_dir.file(QStringLiteral("gone.lpl"))).isLoaded());
}

void TestDialogs::selector()
{
    project().setCatalogue(&deviceList());
    project().setFile(m_dir.file(QStringLiteral("projects/x.prj")));
    const int cfg = project().addCfg(QStringLiteral("c"), QString(), -1);
    const auto add = [cfg](const QString& chip) {
        return project().addCmd({{key::id_cfg, cfg},
                                 {key::cmd, cmd::set_device},
                                 {key::device, chip},
                                 {key::file, TDeviceList::deviceFiles().value(chip)}},
                                -1);
    };
    const int flash = add(QStringLiteral("W25Q64FV"));
    const int avr = add(QStringLiteral("ATmega8"));
    project().bindAll();

    TDialogCmdSelector window(cfg, flash);
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.show();
    const auto device = [&window](const QLatin1String& word) {
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return window.findChild<QPushButton*>(word);
    };
    QVERIFY(device(cmd::unique_id_read));
    QVERIFY(!device(cmd::fuse_read));
    window.slotSelectCmd(cfg, avr);
    QVERIFY(!device(cmd::unique_id_read));
    QVERIFY(device(cmd::fuse_read));
    QCOMPARE(device(cmd::flash_file_write)->palette().color(QPalette::Button), appData().SelectorColorFile);
    QCOMPARE(device(cmd::flash_char_write)->palette().color(QPalette::Button), appData().SelectorColorChar);
    QCOMPARE(device(cmd::erase)->height(), appData().WindowCmdSelectorButtonHeight);
    QVERIFY(!device(cmd::separator));

    QSignalSpy added(&window, &TDialogCmdSelector::signalAddCmd);
    QTest::mouseClick(device(cmd::fuse_read), Qt::LeftButton);
    checkBox(window, 244)->click();
    QTest::mouseClick(device(cmd::set_vcc), Qt::LeftButton);
    QCOMPARE(added, (QList<QVariantList>{{cmd::fuse_read, true}, {cmd::set_vcc, false}}));

    project().reset();
    window.slotSelectCmd(-1, -1);
    QVERIFY(!device(cmd::fuse_read));
    QVERIFY(device(cmd::set_vcc));
}

// Values that no editor can show stay as they are.
void TestDialogs::setupStoresWhatWasChanged()
{
    appData().CfgOrientation = 5;
    appData().PrjListExpand = 7;
    appData().Style = QStringLiteral("no such style");
    appData().ProgDefault = 9;
    const QMap<QString, QString> before = settings();
    const auto change = [](TDialogSetupSelect& dialog) {
        checkBox(dialog, 219)->click();
        checkBox(dialog, 288)->click();
        for (QLineEdit* line : dialog.findChildren<QLineEdit*>()) {
            if (line->text() == appData().PathProgs)
                line->setText(QStringLiteral("other"));
            else if (line->text() == appData().PathDevices)
                line->setText(QStringLiteral("  "));
        }
    };
    TDialogSetupSelect refused;
    change(refused);
    refused.reject();
    QVERIFY(changes(before).isEmpty());
    TDialogSetupSelect untouched;
    untouched.accept();
    QVERIFY(changes(before).isEmpty());
    TDialogSetupSelect accepted;
    change(accepted);
    accepted.accept();
    QCOMPARE(changes(before), (QSet<QString>{"Main/AutoSavePrj", "Confirmation/Quit", "Main/PathProgs"}));
}

// Each editor leads to a setting of its own: changing all of them changes all that the file keeps, but
// where the program was left, and the distance of the selector.
void TestDialogs::setupHasEverySetting()
{
    const QMap<QString, QString> before = settings();
    QSet<QString> expected;
    for (const SettingsRow& row : settingsRows()) {
        if (row.written == Written::App)
            expected.insert(QLatin1String(row.key));
    }
    for (const char* state :
         {"PrjListName", "PrjListFile", "LastPrj", "LastCfg", "LastCmd", "WindowCmdSelector"})
        expected.remove(QStringLiteral("Main/%1").arg(QLatin1String(state)));

    TDialogSetupSelect dialog;
    for (QCheckBox* box : dialog.findChildren<QCheckBox*>())
        box->setChecked(!box->isChecked());
    for (TWgtColorEnableEdit* edit : dialog.findChildren<TWgtColorEnableEdit*>())
        edit->setColor(QColor(1, 2, 3));
    for (QLineEdit* line : dialog.findChildren<QLineEdit*>())
        line->setText(line->text() + QLatin1Char('x'));
    for (QComboBox* box : dialog.findChildren<QComboBox*>()) {
        box->setCurrentIndex((box->currentIndex() + 1) % box->count());
        emit box->activated(box->currentIndex());
    }
    dialog.accept();
    QCOMPARE(changes(before), expected);
}

void TestDialogs::progAliases()
{
    TDialogSetupPageProg page;
    page.show();
    QTableWidget* table = page.findChild<QTableWidget*>(QStringLiteral("aliases"));
    // The default, in the second row, goes along with its row.
    table->setCurrentCell(1, 1);
    QTest::keyClick(table, Qt::Key_Up, Qt::ControlModifier);
    QCOMPARE(column(*table, 1), QStringList({"B", "A", "C"}));
    // An alias that another programmer has, or none, is not accepted. A port that is not in the list is
    // taken as it was typed.
    expect<TDialogSetupPageProgAliasEdit>([](TDialogSetupPageProgAliasEdit& dialog) {
        auto* alias = dialog.findChild<QLineEdit*>();
        for (const char* refused : {"A", " C ", " "}) {
            alias->setText(QLatin1String(refused));
            QVERIFY(!button(dialog, QStringLiteral("OK"))->isEnabled());
        }
        alias->setText(QStringLiteral("Bench"));
        dialog.findChild<QCheckBox*>()->click();
        click(dialog, "OK");
    });
    QTest::keyClick(table, Qt::Key_F2);
    expect<TDialogSetupPageProgAliasEdit>([](TDialogSetupPageProgAliasEdit& dialog) {
        dialog.findChild<QLineEdit*>()->setText(QStringLiteral("New"));
        dialog.findChildren<QComboBox*>().at(0)->setEditText(QStringLiteral(" ./sim (2) "));
        click(dialog, "OK");
    });
    QTest::keyClick(table, Qt::Key_Insert);
    table->setCurrentCell(1, 1);
    QString asked;
    answerBox("Yes", asked);
    QTest::keyClick(table, Qt::Key_Delete);
    QVERIFY(asked.contains(QLatin1String("\"A\"")));
    table->item(1, 0)->setCheckState(Qt::Unchecked);
    QCOMPARE(appData().progNames.count(), 3);
    QCOMPARE(appData().progNames.name(0), QStringLiteral("A"));

    page.store();
    const TProgName& names = appData().progNames;
    QStringList rows;
    for (int row = 0; row < names.count(); ++row) {
        const TProgRecord record = names.record(row);
        rows.append(QStringLiteral("%1 %2 %3 %4")
                        .arg(names.name(row), record.enabled ? "on" : "off", record.port, record.type));
    }
    QCOMPARE(rows, QStringList({"Bench on /dev/x (y) Other", "C off ttyS2 Model", "New on ./sim (2) Model"}));
    QCOMPARE(appData().ProgDefault, 0);
    // Without its programmer there is no default any more.
    TDialogSetupPageProg second;
    second.show();
    answerBox("Yes", asked);
    second.slotAliasDelete();
    second.store();
    QCOMPARE(appData().ProgDefault, -1);
}

void TestDialogs::progTypes()
{
    TDialogSetupPageProg page;
    page.show();
    QTableWidget* aliases = page.findChild<QTableWidget*>(QStringLiteral("aliases"));
    QTableWidget* types = page.findChild<QTableWidget*>(QStringLiteral("types"));
    // Programmers follow the new name of their type.
    fillIn<TDialogSetupPageProgTypeEdit>({QStringLiteral("Renamed"), QStringLiteral("new.cfg")});
    QTest::keyClick(types, Qt::Key_F2);
    QCOMPARE(column(*aliases, 3), QStringList({"Renamed", "Other", "Renamed"}));
    // Those of a type that goes are named before, and keep its name.
    types->setCurrentCell(1, 0);
    QString asked;
    answerBox("Yes", asked);
    QTest::keyClick(types, Qt::Key_Delete);
    QVERIFY(asked.contains(QLatin1String("\"Other\"")));
    QVERIFY(asked.endsWith(QLatin1String(": B")));
    QCOMPARE(aliases->item(1, 3)->foreground().color(), QColor(Qt::red));
    QVERIFY(aliases->item(0, 3)->foreground().color() != QColor(Qt::red));
    aliases->setCurrentCell(1, 1);
    fillIn<TDialogSetupPageProgAliasEdit>({QStringLiteral("Bb")});
    QTest::keyClick(aliases, Qt::Key_F2);
    fillIn<TDialogSetupPageProgTypeEdit>({QStringLiteral("Third"), QStringLiteral("third.cfg")});
    QTest::keyClick(types, Qt::Key_Insert);
    QTest::keyClick(types, Qt::Key_Up, Qt::ControlModifier);
    page.store();
    QCOMPARE(appData().progTypes.count(), 2);
    QCOMPARE(appData().progTypes.name(0), QStringLiteral("Third"));
    QCOMPARE(appData().progTypes.file(QStringLiteral("Renamed")), QStringLiteral("new.cfg"));
    QCOMPARE(appData().progNames.record(QStringLiteral("Bb")).type, QStringLiteral("Other"));
}

void TestDialogs::languages()
{
    const QMap<QString, QString> files = languageFiles(appData().PathLanguage);
    QCOMPARE(files.value(QStringLiteral("English (International)")), QStringLiteral("eng.lng"));
    QCOMPARE(files.value(QStringLiteral("Русский (Россия)")), QStringLiteral("rus.lng"));
    QCOMPARE(files.size(), 2);
}

QTEST_MAIN(TestDialogs)
#include "test_dialogs.moc"
