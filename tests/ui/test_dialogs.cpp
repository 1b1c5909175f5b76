#include "base/TLang.h"
#include "base/TSettings.h"
#include "base/helpers.h"
#include "base/keys.h"
#include "core/model/TDataPrj.h"
#include "devices/TDeviceList.h"
#include "link/lists/TPairStringList.h"
#include "settings/TAppData.h"
#include "support/TestDir.h"
#include "support/tables.h"
#include "ui/TActionWidget.h"
#include "ui/dialogs/TDialogCfgEdit.h"
#include "ui/dialogs/TDialogCmdSelector.h"
#include "ui/dialogs/TDialogPrjEdit.h"
#include "ui/dialogs/TDialogPrjListEdit.h"
#include "ui/dialogs/TDialogSelectDevice.h"
#include "ui/dialogs/TDialogSelectPrjList.h"
#include "ui/dialogs/TDialogSetLanguage.h"
#include "ui/dialogs/TFormProgAutoDetectEdit.h"
#include "ui/setup/TDialogSetupPageProg.h"
#include "ui/setup/TDialogSetupPageProgAliasEdit.h"
#include "ui/setup/TDialogSetupPageProgTypeEdit.h"
#include "ui/setup/TDialogSetupSelect.h"
#include "ui/setup/TWgtColorEnableEdit.h"

#include <QtTest>
#include <QtWidgets>

namespace {

/// Does something with the dialog that the next event loop shows, which must be of that class.
template <class T> void expect(const std::function<void(T&)>& answer)
{
    QTimer::singleShot(0, qApp, [answer] {
        const QPointer<QWidget> any = QApplication::activeModalWidget();
        T* dialog = qobject_cast<T*>(any);
        dialog ? answer(*dialog) : QTest::qFail("no such dialog", __FILE__, __LINE__);
        if (any && any->isVisible())
            any->close();
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
    QTest::mouseClick(button(window, text), Qt::LeftButton);
}

void press(QWidget* widget, const char* keys)
{
    QTest::keySequence(widget, QKeySequence(keys));
}

/// Opens a dialog with the keys, types into its lines, from top to bottom, and accepts it.
template <class T>
void fillIn(QWidget* widget, const char* keys, const QStringList& texts,
            const std::function<void()>& last = {})
{
    expect<T>([texts, last](T& dialog) {
        const QList<QLineEdit*> lines = dialog.template findChildren<QLineEdit*>();
        for (int i = 0; i < texts.size(); ++i) {
            lines.at(i)->selectAll();
            QTest::keyClicks(lines.at(i), texts.at(i));
        }
        if (last)
            last();
        click(dialog, "OK");
    });
    press(widget, keys);
}

/// Answers the box that opens with the keys, and tells what it says.
QString answerBox(QWidget* widget, const char* keys, const char* answer)
{
    QString said;
    expect<QMessageBox>([answer, &said](QMessageBox& box) {
        said = box.text();
        click(box, answer);
    });
    press(widget, keys);
    return said;
}

/// What the settings file holds when the settings are saved now, by key.
QVariantMap settings()
{
    const bool saved = appData().saveApp() && appData().saveWindow();
    if (!saved)
        return {};
    const TSettings file(fileInAppDir("ini"));
    QVariantMap values;
    for (const QString& key : file.allKeys())
        values.insert(key, file.value(key));
    return values;
}

/// The keys with other values than before, but for the places of windows.
QStringList changes(const QVariantMap& before)
{
    QVariantMap now = settings();
    for (const QString& key : before.keys()) {
        if (now.value(key) == before[key] || key.startsWith("Window"))
            now.remove(key);
    }
    return now.keys();
}

/// Gives an editor of a setting another value, by the keyboard.
void change(QWidget* editor)
{
    if (qobject_cast<QCheckBox*>(editor)) {
        QTest::keyClick(editor, Qt::Key_Space);
    } else if (const auto* choice = qobject_cast<QComboBox*>(editor)) {
        QTest::keyClick(editor, choice->currentIndex() == 0 ? Qt::Key_Down : Qt::Key_Up);
    } else if (qobject_cast<QLineEdit*>(editor)) {
        QTest::keyClicks(editor, "1");
    } else if (qobject_cast<TWgtColorEnableEdit*>(editor)) {
        expect<QColorDialog>([](QColorDialog& colors) {
            colors.setCurrentColor(QColor(1, 2, 3));
            QTest::keyClick(&colors, Qt::Key_Return);
        });
        QTest::keyClick(editor->findChild<QLabel*>(), Qt::Key_Space);
    }
}

} // namespace

class TestDialogs : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        lang().load(m_dir.file("language/eng.lng"));
        QFile::remove(fileInAppDir("hk"));
        QFile::copy(m_dir.file("velmarkion.hk"), fileInAppDir("hk"));
        appData() = TAppData();
        appData().PathProjects = m_dir.file("projects");
        appData().PathDevices = m_dir.file("devices");
        appData().PathLanguage = m_dir.file("language");
        appData().progTypes.append("Model", "model.cfg");
        appData().progTypes.append("Other", "other.cfg");
        appData().progNames.append("A", true, "ttyS0", "Model");
        appData().progNames.append("B", false, "/dev/x (y)", "Other");
        appData().progNames.append("C", true, "ttyS2", "Model");
        appData().ProgDefault = 1;
    }

    // The main window has the same keys: in the table they are the table's, elsewhere the window's.
    void keysOfAWidget()
    {
        QMainWindow window;
        QTableWidget table(2, 1, &window);
        QLineEdit line(&window);
        QAction inWindow(&window);
        inWindow.setShortcut(QKeySequence("F4"));
        window.addAction(&inWindow);
        TActionWidget inTable("One", QKeySequence("F4"), &table);
        QString told;
        connect(&inWindow, &QAction::triggered, this, [&told] { told += "window "; });
        connect(&inTable, &QAction::triggered, this, [&told] { told += "table "; });
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        for (QWidget* focus : std::initializer_list<QWidget*>{&table, &table, &line}) {
            focus->setFocus();
            QTest::keyClick(window.windowHandle(), Qt::Key_F4);
            inTable.setEnabled(false);
        }
        QCOMPARE(told, QString("table window "));
    }

    void placeAndKeys()
    {
        appData().WindowOtherCenter = false;
        const auto row = [](const QString& group, bool isHigh, const std::function<QDialog*()>& make) {
            const auto stored = [group](const char* name) { return settings().value(group + name).toInt(); };
            delete make(); // never shown, it has no place
            compareRow(group, stored("/Left"), 100);
            const QRect place(30, 40, 780, 600);
            for (Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
                const std::unique_ptr<QDialog> dialog(make());
                dialog->show();
                QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
                const QSize size(780, isHigh ? 600 : dialog->height());
                if (key == Qt::Key_Return)
                    compareRow(group, dialog->geometry(), QRect(place.topLeft(), size));
                dialog->setGeometry(place);
                QTest::keyClick(dialog->windowHandle(), key);
                QVERIFY2(!dialog->isVisible(), qPrintable(group));
                compareRow(group, dialog->result() == QDialog::Accepted, key == Qt::Key_Return);
            }
            compareRow(group, QPoint(stored("/Left"), stored("/Top")), place.topLeft());
            compareRow(group, QSize(stored("/Width"), isHigh ? stored("/Height") : 600), place.size());
        };
        row("WindowCfgEdit", false, [] { return new TDialogCfgEdit("t", "n"); });
        row("WindowPrjEdit", false, [] { return new TDialogPrjEdit("t", "n", {}, {}); });
        row("WindowPrjListEdit", false, [] { return new TDialogPrjListEdit("t", "n", "f"); });
        row("WindowSettingsProgType", false,
            [] { return new TDialogSetupPageProgTypeEdit("t", "n", "f", {}); });
        row("WindowSettingsProgName", false,
            [] { return new TDialogSetupPageProgAliasEdit("t", "n", {}, {"Model"}, {}); });
        row("WindowRouteEdit", false, [] { return new TFormProgAutoDetectEdit("t", {"id", "1"}, {}); });
        row("WindowLanguage", true, [] { return new TDialogSetLanguage({"a"}); });
        row("WindowSettings", true, [] { return new TDialogSetupSelect; });
        row("WindowSelectPrjList", true, [this] { return new TDialogSelectPrjList(m_dir.file("vm.lpl")); });
    }

    void incomplete()
    {
        const auto isComplete = [](const QDialog& dialog) { return button(dialog, "OK")->isEnabled(); };
        QVERIFY(!isComplete(TDialogCfgEdit({}, " \t ")));
        QVERIFY(isComplete(TDialogPrjEdit({}, "group", {}, {})));
        QVERIFY(!isComplete(TDialogPrjListEdit({}, "n", " ")));
        QVERIFY(!isComplete(TDialogPrjListEdit({}, " ", "f")));
        QVERIFY(!isComplete(TDialogSetupPageProgTypeEdit({}, " A ", "f", {"A"})));
        for (const char* alias : {"A", " C ", " "})
            QVERIFY(!isComplete(TDialogSetupPageProgAliasEdit({}, alias, {}, {"Model"}, {"A", "C"})));
        // A file that is chosen gives the project its name.
        const TDialogPrjEdit edit({}, {}, {}, m_dir.file("projects"));
        expect<QFileDialog>([this](QFileDialog& files) {
            files.selectFile(m_dir.file("projects/serial-flash.prj"));
            static_cast<QDialog&>(files).accept();
        });
        click(edit, "...");
        QCOMPARE(edit.file() + ' ' + edit.name(), QString("serial-flash.prj serial-flash"));
        QMimeData files;
        files.setUrls({QUrl("http://x/y"), QUrl::fromLocalFile(m_dir.file("projects/a b.prj"))});
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, {});
        QDropEvent drop({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, {});
        for (QEvent* event : {static_cast<QEvent*>(&enter), static_cast<QEvent*>(&drop)})
            QApplication::sendEvent(edit.findChildren<QLineEdit*>().last(), event);
        QCOMPARE(edit.file(), QString("a b.prj"));
        // A chip that is not known any more stays until another is chosen.
        const int cfg = project().addCfg("c", {}, -1);
        TPairStringList chips;
        chips.append("EF4017", "Chip");
        const TFormProgAutoDetectEdit route({}, {"gone", {}}, chips);
        QTest::keyClick(route.findChildren<QComboBox*>().at(1), Qt::Key_Down);
        QCOMPARE(route.route().chip, QString("gone"));
        QTest::keyClick(route.findChildren<QComboBox*>().at(0), Qt::Key_Down);
        QCOMPARE(route.route().chip, QString("EF4017"));
        QCOMPARE(route.route().cfg.toInt(), cfg);
        project().reset();
    }

    void deviceFilter()
    {
        appData().PathDevices = m_dir.file("few");
        m_dir.write("few/devices.lst", "W25Q128FW=a\nATmega16=a\nW25Q64FW=a\nATmega328P=b\nW25Q64=a\n");
        const QString lines = QStringLiteral("Mind this. ").repeated(60).trimmed();
        m_dir.write("few/b", "warning=l|" + lines.toUtf8());
        expect<TDialogSelectDevice>([&lines](TDialogSelectDevice& dialog) {
            auto* line = dialog.findChild<QLineEdit*>();
            const auto filtered = [&](const char* text) {
                line->clear();
                QTest::keyClicks(line, text);
                return dialog.selected();
            };
            // What the filter hides is not chosen, and of several none is chosen by itself.
            QCOMPARE(dialog.selected(), QString("ATmega16"));
            QCOMPARE(filtered("["), QString());
            QCOMPARE(filtered("w25q*w"), QString());
            QTest::keyClick(line, Qt::Key_Return);
            QVERIFY(dialog.isVisible() && !button(dialog, "OK")->isEnabled());
            QTest::keyClick(line, Qt::Key_Down);
            click(dialog, "*");
            QCOMPARE(dialog.selected(), QString("W25Q64FW"));
            QCOMPARE(filtered("[a-f1]6"), QString("ATmega16"));
            // What is named in full is meant, and the only one left.
            const QLabel* warning = dialog.findChild<QLabel*>();
            QCOMPARE(filtered(" w25q64 "), QString("W25Q64"));
            QVERIFY(!warning->isVisible());
            QTest::keyClicks(line, "f");
            QCOMPARE(filtered("mega328p"), QString("ATmega328P"));
            QCOMPARE(warning->isVisible() ? warning->text() : QString(), lines);
            QTRY_VERIFY(warning->height() >= warning->heightForWidth(warning->width()));
            QCOMPARE(filtered("w25q64"), QString("W25Q64"));
            QTest::keyClick(line, Qt::Key_Return);
        });
        QCOMPARE(TDialogSelectDevice::selectChip("ATmega16"), QString("W25Q64"));
    }

    void projectLists()
    {
        const QByteArray samples = m_dir.read("projects/samples.lst");
        const QString file = m_dir.file("vm.lpl");
        TDialogSelectPrjList dialog(file);
        auto* table = dialog.findChild<QTableWidget*>();
        // An existing file is never written: not by a new list, and not by a copy of itself.
        fillIn<TDialogPrjListEdit>(table, "Ctrl+N", {"New", "samples"});
        QCOMPARE(dialog.file(), QString("samples_new.lst"));
        press(table, "Up");
        fillIn<TDialogPrjListEdit>(table, "Ctrl+C", {"Copy", "samples.lst"});
        QCOMPARE(dialog.file(), QString("samples_new_new.lst"));
        QCOMPARE(m_dir.read("projects/samples.lst"), samples);
        QCOMPARE(m_dir.read("projects/samples_new_new.lst"), samples);
        // In another folder the copy still leads to the same projects.
        fillIn<TDialogPrjListEdit>(table, "Ctrl+C", {"Far", "../far.lst"});
        QVERIFY(m_dir.read("far.lst").contains("\"projects/serial-flash.prj\""));
        // A folder that is not there.
        QString said;
        fillIn<TDialogPrjListEdit>(table, "Ctrl+N", {"x", "no/such/x"}, [&said] {
            expect<QMessageBox>([&said](QMessageBox& box) { said = box.text(); });
        });
        QVERIFY(said.contains("no/such/x.lst"));
        // The open list, once: then it is there.
        dialog.setPreset("Open", m_dir.file("projects/open.lst"));
        for (const char* keys :
             {"Ctrl+Ins", "Ctrl+Ins", "Ctrl+Up", "Ctrl+Up", "Ctrl+Up", "Ctrl+Up", "Ctrl+Up"})
            press(table, keys);
        fillIn<TDialogPrjListEdit>(table, "F2", {"First"});
        QVERIFY(answerBox(table, "Del", "No").contains("\"First\""));
        QVERIFY(dialog.isChanged() && dialog.write() && !dialog.isChanged() && !dialog.isOutdated());
        TPrjLists lists;
        QVERIFY(lists.read(file));
        QStringList names;
        for (const TPrjListEntry& entry : lists.entries())
            names.append(entry.name);
        QCOMPARE(names, QStringList({"First", "Samples", "New", "Copy", "Far"}));
        QCOMPARE(lists.entries().first().file, QString("open.lst"));
        appData().ConfirmProjectsListDelete = false;
        for (int i = 0; i < names.size(); ++i)
            press(table, "Del");
        QVERIFY(!button(dialog, "Select")->isEnabled());
        QVERIFY(!TDialogSelectPrjList(m_dir.file("gone.lpl")).isLoaded());
    }

    void selector()
    {
        project().setCatalogue(&deviceList());
        project().setFile(m_dir.file("projects/x.prj"));
        const int cfg = project().addCfg("c", {}, -1);
        TData chip{{key::id_cfg, cfg}, {key::cmd, cmd::set_device}, {key::device, "ATmega8"}};
        chip[key::file] = TDeviceList::deviceFiles().value("ATmega8");
        const int avr = project().addCmd(chip, -1);
        project().bindAll();

        const QPointer<TDialogCmdSelector> window = new TDialogCmdSelector(-1, -1);
        window->show();
        QVERIFY(QTest::qWaitForWindowActive(window));
        const auto device = [&window](const QLatin1String& word) {
            QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            return window->findChild<QPushButton*>(word);
        };
        QVERIFY(device(cmd::set_vcc) && !device(cmd::fuse_read) && !device(cmd::separator));
        window->slotSelectCmd(cfg, avr);
        QCOMPARE(device(cmd::flash_file_write)->palette().color(QPalette::Button),
                 appData().SelectorColorFile);
        const int least = device(cmd::erase)->fontMetrics().height() + 6;
        QCOMPARE(device(cmd::erase)->height(), qMax(appData().WindowCmdSelectorButtonHeight, least));
        const QSignalSpy added(window, &TDialogCmdSelector::signalAddCmd);
        QTest::mouseClick(device(cmd::fuse_read), Qt::LeftButton);
        window->findChild<QCheckBox*>()->click();
        QTest::mouseClick(device(cmd::set_vcc), Qt::LeftButton);
        QCOMPARE(added, (QList<QVariantList>{{cmd::fuse_read, true}, {cmd::set_vcc, false}}));
        project().reset();
        window->slotSelectCmd(-1, -1);
        QVERIFY(!device(cmd::fuse_read));
        window->resize(600, 500);
        QTest::keyPress(window, Qt::Key_Escape);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(appData().WindowCmdSelectorHeight, 500);
    }

    // Values that no editor can show stay as they are, and the wheel only scrolls the page.
    void setupStoresWhatWasChanged()
    {
        appData().CfgOrientation = 5;
        appData().PrjListExpand = 7;
        appData().Style = "no such style";
        appData().ProgDefault = 9;
        appData().WindowCmdSelector = -20;
        const QVariantMap before = settings();
        for (const char* answer : {"Cancel", "OK"}) {
            QCOMPARE(changes(before), QStringList());
            TDialogSetupSelect dialog;
            QWheelEvent turn({}, {}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            for (QComboBox* box : dialog.findChildren<QComboBox*>())
                QApplication::sendEvent(box, &turn);
            for (QLineEdit* line : dialog.findChildren<QLineEdit*>()) {
                if (line->text() == appData().PathProgs)
                    line->setText("other");
                else if (line->text() == appData().PathDevices)
                    line->setText("  ");
            }
            dialog.findChild<QStackedWidget*>()->widget(2)->findChildren<QCheckBox*>().last()->click();
            click(dialog, answer);
        }
        QCOMPARE(changes(before), QStringList({"Confirmation/Quit", "Main/PathProgs"}));
        TDialogSetupSelect dialog;
        change(dialog.findChild<QStackedWidget*>()->widget(0)->findChildren<QComboBox*>().at(1));
        QCOMPARE(answerBox(button(dialog, "OK"), "Space", "OK"), langText(Text::LanguageChanged));
    }

    // Each editor leads to a setting of its page and of its own: changing all of a page changes all that the
    // file keeps of its group, but where the program was left.
    void setupHasEverySetting()
    {
        const QVariantMap before = settings();
        TDialogSetupSelect dialog;
        const auto* pages = dialog.findChild<QStackedWidget*>();
        QStringList expected;
        int index = 0;
        for (const char* group : {"^Main/(?!Last|PrjList)", "^Interface/", "^Confirmation/", "^Prog/"}) {
            expected += QStringList(before.keys()).filter(QRegularExpression(group));
            expected.sort();
            auto* page = static_cast<IDialogSetupPage*>(pages->widget(index++));
            // From the end: a box that is off turns those below it off.
            QList<QWidget*> editors = page->findChildren<QWidget*>();
            while (!editors.isEmpty())
                change(editors.takeLast());
            page->store();
            QCOMPARE(changes(before), expected);
        }
    }

    void programmers()
    {
        TDialogSetupPageProg page;
        auto* aliases = page.findChild<QTableWidget*>("aliases");
        auto* types = page.findChild<QTableWidget*>("types");
        // The default, in the second row, goes along with its row.
        aliases->setCurrentCell(1, 1);
        press(aliases, "Ctrl+Up");
        fillIn<TDialogSetupPageProgAliasEdit>(aliases, "F2", {"Bench"});
        // A port that is not in the list is taken as it was typed.
        fillIn<TDialogSetupPageProgAliasEdit>(aliases, "Ins", {"New", " ./sim (2) "});
        aliases->setCurrentCell(1, 1);
        QVERIFY(answerBox(aliases, "Del", "Yes").contains("\"A\""));
        aliases->item(1, 0)->setCheckState(Qt::Unchecked);
        // Programmers follow the new name of their type.
        fillIn<TDialogSetupPageProgTypeEdit>(types, "F2", {"Renamed", "new.cfg"});
        // Those of a type that goes are named before, and keep its name.
        types->setCurrentCell(1, 0);
        const QString asked = answerBox(types, "Del", "Yes");
        QVERIFY(asked.contains("\"Other\"") && asked.endsWith(": Bench"));
        QCOMPARE(aliases->item(0, 3)->foreground().color(), QColor(Qt::red));
        QVERIFY(aliases->item(1, 3)->foreground().color() != QColor(Qt::red));
        QCOMPARE(appData().progNames.name(0), QString("A"));

        page.store();
        const QVariantMap stored = settings();
        QCOMPARE(stored["ProgNameList/Name0"], QVariant(QStringList({"0", "Bench", "/dev/x (y)", "Other"})));
        QCOMPARE(stored["ProgNameList/Name1"], QVariant(QStringList({"0", "C", "ttyS2", "Renamed"})));
        QCOMPARE(stored["ProgNameList/Name2"], QVariant(QStringList({"1", "New", "./sim (2)", "Renamed"})));
        QCOMPARE(stored["ProgTypeList/Type0"], QVariant(QStringList({"Renamed", "new.cfg"})));
        QCOMPARE(appData().ProgDefault, 0);
        // Without its programmer there is no default any more.
        TDialogSetupPageProg second;
        answerBox(second.findChild<QTableWidget*>("aliases"), "Del", "Yes");
        second.store();
        QCOMPARE(appData().ProgDefault, -1);
    }

private:
    TestDir m_dir;
};

QTEST_MAIN(TestDialogs)
#include "test_dialogs.moc"
