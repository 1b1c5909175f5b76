#include "ui/WindowBench.h"

#include "app/startup.h"
#include "base/TSettings.h"
#include "base/helpers.h"
#include "core/model/IDevice.h"
#include "core/model/IFormFactory.h"
#include "core/model/TDataPrj.h"
#include "forms/TFormFactory.h"
#include "settings/TAppData.h"
#include "settings/settingsRows.h"
#include "ui/TButtonAction.h"
#include "ui/main/TFormHost.h"
#include "ui/panels/TWgtLogExec.h"

#include <QFileDialog>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTabBar>
#include <QTextEdit>

namespace {

QJsonObject command(QString text)
{
    text.replace("PROG", "set_prog prog=Simulator alt_enabled=false");
    text.replace("FLASH", "set_device device=W25Q64 file=spi-flash/W25Q64FV.dev clk=4000000");
    text.replace("AVR", "set_device device=ATmega328P file=avr/ATmega328P.dev clk=100000 data=");
    QStringList parts = text.simplified().split(' ');
    const QString word = parts.takeFirst();
    const bool checked = !word.startsWith('!');
    QJsonObject object{{"status", checked ? "1" : "0"}, {"cmd", word.mid(checked ? 0 : 1)}};
    for (const QString& part : qAsConst(parts))
        object.insert(part.section('=', 0, 0), part.section('=', 1));
    return object;
}

QByteArray file(const char* key, const QJsonArray& content)
{
    return QJsonDocument(QJsonObject{{"version", 1}, {key, content}}).toJson();
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QJsonArray entries(const QString& path, const char* key)
{
    return QJsonDocument::fromJson(bytesOf(path))[key].toArray();
}

QString wordOf(const QString& word, bool checked)
{
    return checked ? word : '!' + word;
}

QString wordsOf(const QTableWidget& table)
{
    QStringList words;
    for (int row = 0; row < table.rowCount(); ++row) {
        words.append(wordOf(table.item(row, 1)->data(Qt::UserRole).toString(),
                            table.item(row, 0)->checkState() == Qt::Checked));
    }
    return words.join(' ');
}

QString modelText()
{
    QStringList configs;
    for (const TDataCfg* config : project().cfgList()) {
        QStringList words;
        for (const TDataCmd* command : project().cmdsOfCfg(config->id()))
            words.append(wordOf(command->cmd(), command->status()));
        configs.append(config->name() + ": " + words.join(' '));
    }
    return configs.join("; ");
}

QString compared(const QString& found, const QString& wanted)
{
    return found == wanted ? QString() : found + " instead of " + wanted;
}

} // namespace

WindowBench::WindowBench()
{
    static TFormFactory forms;
    setFormFactory(&forms);
    static TFormHost host;
    setFormHost(&host);
    registerMetaTypes();
    project().reset();
    appData() = TAppData();
    TAppData& app = appData();
    // The many files that nothing here writes are read where they are.
    const QDir shipped(VM_DATA_DIR);
    app.PathLanguage = shipped.filePath("language");
    app.PathDevices = shipped.filePath("devices");
    app.PathProgs = m_dir.file("progs");
    app.PathProjects = m_dir.file("projects");
    app.PrjListFile = "test.lst";
    app.SelectPrjListFile = m_dir.file("vm.lpl");
    app.progTypes.append("Simulator", "simulator.cfg");
    app.progNames.append("Simulator", true, "/nowhere", "Simulator");
    app.WindowMainWidth = 900;
    app.WindowMainHeight = 600;
    app.SaveSettingsApp = false;
    app.SaveSettingsWindow = false;
    for (const SettingsRow& row : settingsRows()) {
        if (QString(row.key).startsWith("Confirmation/"))
            question(row.key) = false;
    }
    loadLanguage();
    m_dir.write("progs/simulator.cfg", bytesOf(shipped.filePath("progs/simulator.cfg")));
    QFile::copy(shipped.filePath("velmarkion.hk"), fileInAppDir("hk"));
    // Posted: a timer does not fire again while its slot shows the next box.
    QObject::connect(&m_user, &QTimer::timeout, &m_user, [this] {
        QMetaObject::invokeMethod(
            &m_user, [this] { answer(); }, Qt::QueuedConnection);
    });
    m_user.start(5);
}

WindowBench::~WindowBench()
{
    m_window.reset();
    settle();
}

bool& WindowBench::question(const QString& key)
{
    const auto& rows = settingsRows();
    const auto row =
        std::find_if(rows.begin(), rows.end(), [&](const SettingsRow& r) { return key == r.key; });
    return appData().*std::get<bool TAppData::*>(row->field);
}

void WindowBench::addNode(const QString& name, const QString& configs, int parent)
{
    QJsonArray content;
    for (const QString& config : configs.split("; ", Qt::SkipEmptyParts)) {
        QJsonArray commands;
        for (const QString& text : config.section(": ", 1).split(',', Qt::SkipEmptyParts))
            commands.append(command(text));
        content.append(QJsonObject{{"name", config.section(':', 0, 0)}, {"commands", commands}});
    }
    const QString project = configs.isEmpty() ? QString() : name.toLower() + ".prj";
    if (!project.isEmpty())
        m_dir.write("projects/" + project, file("configurations", content));
    m_nodes.append(QJsonObject{{"parent", parent}, {"expand", 1}, {"name", name}, {"file", project}});
}

void WindowBench::open()
{
    m_window.reset();
    if (m_dir.read("projects/test.lst").isEmpty())
        m_dir.write("projects/test.lst", file("list", m_nodes));
    m_window = std::make_unique<TMainWindow>();
    m_window->show();
    (void)QTest::qWaitForWindowActive(m_window.get());
    settle();
}

void WindowBench::openSamples(const QString& name)
{
    addNode("One", "A: delay value=0, pause, stop; B: delay value=1, delay value=2");
    addNode("Two", "C: jamp to_cmd=1, stop, !pause");
    addNode("Sub", "D: stop", m_nodes.size());
    addNode("Group");
    open();
    if (!name.isEmpty())
        play('@' + name);
}

void WindowBench::openWith(const QString& configs)
{
    addNode("Main", configs);
    open();
    play("@Main");
}

bool WindowBench::close()
{
    m_window->close();
    (void)QTest::qWaitFor([this] { return !m_window->isWaitingForRuns(); });
    settle();
    return !m_window->isVisible();
}

bool WindowBench::play(const QString& steps)
{
    for (const QString& step : steps.split(", ")) {
        if (!take(step)) {
            qWarning().noquote() << "Cannot be done:" << step;
            return false;
        }
        settle();
    }
    return true;
}

bool WindowBench::take(const QString& step)
{
    const QChar kind = step.at(0);
    const QString rest = step.mid(1);
    if (kind == '@') {
        clickNode(rest);
        prj().focusTable();
    } else if (step == "#-") {
        prj().setCurrentRow(-1);
    } else if (kind == '#') {
        clickRow(rest.toInt());
    } else if (kind == '+' || kind == '-') {
        const QStringList names = rest.split(' ');
        return std::all_of(names.begin(), names.end(),
                           [&](const QString& name) { return action(name)->isEnabled() == (kind == '+'); });
    } else {
        typed = step.split(' ');
        const QString name = typed.takeFirst();
        return trigger(action(name));
    }
    return true;
}

QAction* WindowBench::action(const QString& name) const
{
    const QKeySequence keys = TSettings(fileInAppDir("hk")).readKeySequence("HotKeyMain/" + name);
    for (QAction* action : m_window->actions()) {
        if (!keys.isEmpty() && action->shortcuts().contains(keys))
            return action;
    }
    qFatal("There is no action %s", qPrintable(name));
}

void WindowBench::clickNode(const QString& name)
{
    TTreeWidget* tree = m_window->prjList()->tree();
    QTreeWidgetItem* node = tree->findItems(name, Qt::MatchExactly | Qt::MatchRecursive).value(0);
    tree->scrollToItem(node);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(node).center());
    settle();
}

void WindowBench::clickRow(int row, int column)
{
    QTableWidget* rows = table(prj().currentIndex());
    rows->scrollToItem(rows->item(row, column));
    const QRect cell = rows->visualItemRect(rows->item(row, column));
    // Left in the cell is the check box, if there is one.
    QTest::mouseClick(rows->viewport(), Qt::LeftButton, {}, {cell.left() + 9, cell.center().y()});
    settle();
}

bool WindowBench::trigger(QAction* action)
{
    if (!action->isEnabled())
        return false;
    action->trigger();
    settle();
    // What a window manager does behind a dialog.
    if (m_window->isVisible() && !QApplication::activeWindow())
        QApplication::setActiveWindow(m_window.get());
    return true;
}

void WindowBench::click(TMainButton id, Qt::KeyboardModifiers modifiers)
{
    // A pressed key is known to the application through its events only.
    if (modifiers & Qt::ControlModifier)
        QTest::keyPress(m_window.get(), Qt::Key_Control, modifiers);
    QTest::mouseClick(m_window->button(id), Qt::LeftButton, modifiers);
    if (modifiers & Qt::ControlModifier)
        QTest::keyRelease(m_window.get(), Qt::Key_Control);
    settle();
}

void WindowBench::settle()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
}

bool WindowBench::waitIdle()
{
    const bool idle = QTest::qWaitFor([this] { return m_window->runs()->isIdle(); }, 20000);
    settle();
    return idle;
}

QString WindowBench::configs()
{
    const QString other = difference();
    return other.isEmpty() ? modelText() : other;
}

QString WindowBench::difference()
{
    const bool isIdle = m_window->runs()->isIdle();
    QStringList shown;
    QList<int> ids;
    for (int i = 0; i < prj().count(); ++i) {
        const TWgtConfig* tab = prj().tabAt(i);
        const QString name = prj().findChild<QTabBar*>()->tabText(i).replace("&&", "&");
        shown.append(name + ": " + wordsOf(*table(i)));
        for (int row = 0; row < tab->cmdList()->rowCount(); ++row) {
            ids.append(tab->cmdList()->cmdAt(row));
            // The row of the open form may say more, and a run's counters go ahead of what is shown.
            const TDataCmd* command = project().cmdById(ids.last());
            const QString text = table(i)->item(row, 2)->text();
            if (row != tab->cmdList()->currentRow() && isIdle && command && command->device() &&
                text != command->device()->paramsText(command->toData(), nullptr))
                return "old text: " + text;
        }
        if (tab->cmdList()->rowCount() == 0 && tab->form())
            return name + " has a form without a command";
    }
    QList<int> order;
    for (const TDataCmd* command : project().cmdList())
        order.append(command->id());
    const QString texts = compared(shown.join("; "), modelText());
    return texts.isEmpty() && ids != order ? QString("rows stand for other commands") : texts;
}

QString WindowBench::fileDifference() const
{
    // Not by a second model: the ids of configurations and commands are counted for one.
    QStringList stored;
    for (const QJsonValue& config : entries(project().file(), "configurations")) {
        QStringList words;
        for (const QJsonValue& command : config["commands"].toArray())
            words.append(wordOf(command["cmd"].toString(), command["status"].toString() == "1"));
        stored.append(config["name"].toString() + ": " + words.join(' '));
    }
    return compared(stored.join("; "), modelText());
}

QString WindowBench::listDifference()
{
    QStringList stored;
    for (const QJsonValue& node : entries(m_dir.file("projects/test.lst"), "list"))
        stored.append(node["name"].toString());
    return compared(stored.join(' '), nodeNames().remove('.'));
}

QString WindowBench::nodeNames()
{
    QStringList names;
    for (const QTreeWidgetItem* item : m_window->prjList()->tree()->nodes()) {
        QString name = item->text(0);
        for (const QTreeWidgetItem* up = item->parent(); up; up = up->parent())
            name.prepend('.');
        names.append(name);
    }
    return names.join(' ');
}

QString WindowBench::log(int index)
{
    return prj().tabAt(index)->logExec()->edit()->toPlainText().trimmed();
}

void WindowBench::answer()
{
    QWidget* modal = QApplication::activeModalWidget();
    if (auto* box = qobject_cast<QMessageBox*>(modal)) {
        // Names come from files: markup in them is shown and not obeyed.
        const bool isOurs = box->textFormat() == Qt::PlainText && box->windowTitle() == "Velmarkion";
        boxes.append(isOurs ? box->text() : "A strange box");
        // Qt's own question about a file that is there has No for its default.
        const QString pressed = press.isEmpty() ? QString() : press.takeFirst();
        for (QAbstractButton* button : box->buttons()) {
            if (button->text() == pressed)
                return QTest::mouseClick(button, Qt::LeftButton);
        }
        const bool agrees = pressed.isEmpty() ? yes : pressed == "Enter";
        if (agrees && !isOurs && box->button(QMessageBox::Yes))
            QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
        else
            QTest::keyClick(box, agrees ? Qt::Key_Return : Qt::Key_Escape);
    } else if (auto* files = qobject_cast<QFileDialog*>(modal)) {
        const QString name = std::exchange(typed, {}).value(0);
        files->findChild<QLineEdit*>("fileNameEdit")->setText(m_dir.file("projects/" + name));
        QMetaObject::invokeMethod(files, name.isEmpty() ? "reject" : "accept");
    } else if (auto* dialog = qobject_cast<QDialog*>(modal)) {
        const QStringList texts = std::exchange(typed, {});
        const QList<QLineEdit*> fields = dialog->findChildren<QLineEdit*>();
        for (int i = 0; i < qMin(texts.size(), fields.size()); ++i)
            fields.at(i)->setText(texts.at(i));
        const auto edit = std::exchange(inDialog, nullptr);
        if (edit)
            edit(*dialog);
        texts.isEmpty() && !edit ? dialog->reject() : dialog->accept();
    }
}
