#include "ui/WindowBench.h"

#include "core/IFormFactory.h"
#include "core/TAppData.h"
#include "core/TCmdCode.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/helpers.h"
#include "core/keys.h"
#include "core/startup.h"
#include "forms/TFormFactory.h"
#include "ui/TButtonAction.h"
#include "ui/TTreeWidget.h"
#include "ui/TWgtCmdList.h"
#include "ui/TWgtLogExec.h"
#include "ui/TWgtPrj.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QTextEdit>
#include <QtTest>

namespace {

QString commandLine(const QString& text)
{
    QStringList parts = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QString word = parts.takeFirst();
    const bool checked = !word.startsWith(QLatin1Char('!'));
    if (!checked)
        word.remove(0, 1);
    QString line = QStringLiteral("{\"status\": \"%1\", \"cmd\": \"%2\"").arg(checked ? 1 : 0).arg(word);
    for (const QString& part : qAsConst(parts)) {
        line += QStringLiteral(", \"%1\": \"%2\"")
                    .arg(part.section(QLatin1Char('='), 0, 0), part.section(QLatin1Char('='), 1));
    }
    return line + QLatin1Char('}');
}

QString wordOf(const QString& word, bool checked)
{
    return checked ? word : QLatin1Char('!') + word;
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void turnQuestionsOff()
{
    TAppData& app = appData();
    for (bool* question :
         {&app.ConfirmProjectsListReload, &app.ConfirmProjectsListDelete, &app.ConfirmProjectSave,
          &app.ConfirmProjectDeleteCur, &app.ConfirmProjectDeleteSubAll, &app.ConfirmConfigDeleteCur,
          &app.ConfirmCmdInsertProgDevice, &app.ConfirmCmdInsertProg, &app.ConfirmCmdInsertDevice,
          &app.ConfirmCmdPaste, &app.ConfirmCmdDeleteCur, &app.ConfirmCmdDeleteSelected,
          &app.ConfirmCmdDeleteError, &app.ConfirmCmdDeleteDev, &app.ConfirmCmdDeleteAll,
          &app.ConfirmExecConfig, &app.ConfirmExecReset, &app.ConfirmQuit})
        *question = false;
}

} // namespace

WindowBench::WindowBench()
{
    static TFormFactory forms;
    setFormFactory(&forms);
    registerMetaTypes();
    project().reset();
    appData() = TAppData();
    TAppData& app = appData();
    // The many files that nothing here writes are read where they are.
    const QDir shipped(QStringLiteral(VM_DATA_DIR));
    app.PathLanguage = shipped.filePath(QStringLiteral("language"));
    app.PathDevices = shipped.filePath(QStringLiteral("devices"));
    app.PathProgs = m_dir.file(QStringLiteral("progs"));
    app.PathProjects = m_dir.file(QStringLiteral("projects"));
    app.PrjListName = QStringLiteral("Test");
    app.PrjListFile = QStringLiteral("test.lst");
    app.SelectPrjListFile = m_dir.file(QStringLiteral("vm.lpl"));
    app.progTypes.append(QStringLiteral("Simulator"), QStringLiteral("simulator.cfg"));
    app.progNames.append(QStringLiteral("Simulator"), true, QStringLiteral("/nowhere"),
                         QStringLiteral("Simulator"));
    app.WindowMainWidth = 900;
    app.WindowMainHeight = 600;
    app.SaveSettingsApp = false;
    app.SaveSettingsWindow = false;
    turnQuestionsOff();
    loadLanguage();
    // A short patience, so that silence costs a test no seconds.
    m_dir.write(QStringLiteral("progs/simulator.cfg"),
                bytesOf(shipped.filePath(QStringLiteral("progs/simulator.cfg")))
                    .replace("TimeOut=5000", "TimeOut=400"));
    const QString hotKeys = fileInAppDir(QStringLiteral("hk"));
    if (!QFile::exists(hotKeys))
        QFile::copy(shipped.filePath(QStringLiteral("velmarkion.hk")), hotKeys);
    // Posted: a timer does not fire again while its slot shows the next box.
    QObject::connect(&m_user, &QTimer::timeout, &m_user, [this] {
        QMetaObject::invokeMethod(
            &m_user, [this] { answer(); }, Qt::QueuedConnection);
    });
    m_user.start(5);
}

WindowBench::~WindowBench()
{
    destroy();
}

void WindowBench::destroy()
{
    m_window.reset();
    settle();
}

void WindowBench::writeProject(const QString& file, const QStringList& configs)
{
    QStringList blocks;
    for (const QString& config : configs) {
        QStringList lines;
        const QStringList commands = config.section(QLatin1Char(':'), 1).split(QLatin1Char(';'));
        for (const QString& command : commands) {
            if (!command.trimmed().isEmpty())
                lines.append(commandLine(command.trimmed()));
        }
        blocks.append(QStringLiteral("{\"name\": \"%1\", \"description\": \"\", \"commands\": [%2]}")
                          .arg(config.section(QLatin1Char(':'), 0, 0), lines.join(QLatin1String(",\n"))));
    }
    const QString text = QStringLiteral("{\"version\": 1, \"name\": \"\", \"description\": \"\", "
                                        "\"configurations\": [%1]}\n");
    m_dir.write(QStringLiteral("projects/") + file, text.arg(blocks.join(QLatin1Char(','))).toUtf8());
}

void WindowBench::addNode(const QString& name, const QString& file, int parent)
{
    m_nodes.append({name, file, parent});
}

void WindowBench::addSampleNodes()
{
    writeProject(QStringLiteral("one.prj"), {QStringLiteral("A: delay value=0; pause; stop"),
                                             QStringLiteral("B: delay value=1; delay value=2")});
    writeProject(QStringLiteral("two.prj"), {QStringLiteral("C: jamp to_cmd=1; stop; !pause")});
    writeProject(QStringLiteral("sub.prj"), {QStringLiteral("D: stop")});
    addNode(QStringLiteral("One"), QStringLiteral("one.prj"));
    addNode(QStringLiteral("Two"), QStringLiteral("two.prj"));
    addNode(QStringLiteral("Sub"), QStringLiteral("sub.prj"), 2);
    addNode(QStringLiteral("Group"), QString());
}

void WindowBench::open()
{
    QStringList lines;
    for (const Node& node : qAsConst(m_nodes)) {
        lines.append(QStringLiteral("{\"parent\": %1, \"expand\": 1, \"name\": \"%2\", \"file\": \"%3\"}")
                         .arg(QString::number(node.parent), node.name, node.file));
    }
    const QString text = QStringLiteral("{\"version\": 1, \"list\": [%1]}");
    m_dir.write(QStringLiteral("projects/test.lst"), text.arg(lines.join(QLatin1Char(','))).toUtf8());
    m_window = std::make_unique<TMainWindow>();
    m_window->show();
    (void)QTest::qWaitForWindowActive(m_window.get());
    settle();
}

void WindowBench::openWith(const QStringList& configs)
{
    writeProject(QStringLiteral("main.prj"), configs);
    addNode(QStringLiteral("Main"), QStringLiteral("main.prj"));
    open();
    clickNode(QStringLiteral("Main"));
    prj().focusTable();
    settle();
}

bool WindowBench::close()
{
    m_window->close();
    for (int i = 0; i < 400 && m_window->isWaitingForRuns(); ++i)
        QTest::qWait(10);
    settle();
    return !m_window->isVisible();
}

QTreeWidgetItem* WindowBench::node(const QString& name)
{
    const auto found = m_window->prjList()->tree()->findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? nullptr : found.first();
}

void WindowBench::clickNode(const QString& name)
{
    TTreeWidget* tree = m_window->prjList()->tree();
    tree->scrollToItem(node(name));
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier,
                      tree->visualItemRect(node(name)).center());
    settle();
}

void WindowBench::clickRow(int row)
{
    QTableWidget* table = prj().current()->cmdList()->table();
    table->scrollToItem(table->item(row, 1));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                      table->visualItemRect(table->item(row, 1)).center());
    settle();
}

void WindowBench::clickCheck(int row)
{
    QTableWidget* table = prj().current()->cmdList()->table();
    table->scrollToItem(table->item(row, 0));
    const QRect cell = table->visualItemRect(table->item(row, 0));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(cell.left() + 9, cell.center().y()));
    settle();
}

bool WindowBench::trigger(TMainAction id)
{
    QAction* action = m_window->action(id);
    if (!action->isEnabled())
        return false;
    action->trigger();
    settle();
    // What a window manager does behind a dialog.
    if (m_window && m_window->isVisible() && !QApplication::activeWindow())
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

bool WindowBench::waitIdle(int timeoutMs)
{
    const bool idle = QTest::qWaitFor([this] { return m_window->runs()->isIdle(); }, timeoutMs);
    settle();
    return idle;
}

QStringList WindowBench::words(int index) const
{
    QStringList words;
    for (const TDataCmd* command : project().cmdsOfCfg(project().cfgIdAt(index)))
        words.append(wordOf(command->cmd(), command->status()));
    return words;
}

QStringList WindowBench::rows(int index)
{
    const QTableWidget* table = prj().tabAt(index)->cmdList()->table();
    QStringList words;
    for (int row = 0; row < table->rowCount(); ++row) {
        words.append(wordOf(table->item(row, 1)->data(Qt::UserRole).toString(),
                            table->item(row, 0)->checkState() == Qt::Checked));
    }
    return words;
}

QString WindowBench::difference()
{
    const QList<int> order = [] {
        QList<int> ids;
        for (const TDataCmd* command : project().cmdList())
            ids.append(command->id());
        return ids;
    }();
    if (prj().count() != project().cfgNames().size())
        return QStringLiteral("%1 tabs, %2 configurations")
            .arg(prj().count())
            .arg(project().cfgNames().size());
    QList<int> shown;
    for (int i = 0; i < prj().count(); ++i) {
        const TWgtConfig* tab = prj().tabAt(i);
        if (tab->idCfg() != project().cfgIdAt(i))
            return QStringLiteral("tab %1 shows another configuration").arg(i);
        if (rows(i) != words(i))
            return QStringLiteral("tab %1: %2 instead of %3")
                .arg(QString::number(i), rows(i).join(QLatin1Char(' ')), words(i).join(QLatin1Char(' ')));
        for (int row = 0; row < tab->cmdList()->rowCount(); ++row)
            shown.append(tab->cmdList()->cmdAt(row));
        if (tab->cmdList()->rowCount() == 0 && tab->form())
            return QStringLiteral("tab %1 has a form without a command").arg(i);
    }
    return shown == order ? QString() : QStringLiteral("the rows stand for other commands");
}

QString WindowBench::fileDifference(const QString& file)
{
    const QJsonObject root = QJsonDocument::fromJson(m_dir.read(QStringLiteral("projects/") + file)).object();
    const QJsonArray configs = root.value(QLatin1String("configurations")).toArray();
    if (configs.size() != project().cfgNames().size())
        return QStringLiteral("%1 configurations in the file").arg(configs.size());
    for (int i = 0; i < configs.size(); ++i) {
        QStringList stored;
        for (const QJsonValue& value : configs.at(i).toObject().value(QLatin1String("commands")).toArray()) {
            const QJsonObject command = value.toObject();
            stored.append(wordOf(command.value(key::cmd).toString(),
                                 command.value(key::status).toVariant().toString() == QLatin1String("1")));
        }
        if (stored != words(i))
            return QStringLiteral("file: %1 instead of %2")
                .arg(stored.join(QLatin1Char(' ')), words(i).join(QLatin1Char(' ')));
    }
    return QString();
}

QStringList WindowBench::nodeNames()
{
    QStringList names;
    for (const QTreeWidgetItem* item : m_window->prjList()->tree()->nodes()) {
        int depth = 0;
        for (const QTreeWidgetItem* up = item->parent(); up; up = up->parent())
            ++depth;
        names.append(QString(depth, QLatin1Char('.')) + item->text(0));
    }
    return names;
}

QString WindowBench::log(int index)
{
    return prj().tabAt(index)->logExec()->edit()->toPlainText();
}

void WindowBench::answer()
{
    QWidget* modal = QApplication::activeModalWidget();
    if (auto* box = qobject_cast<QMessageBox*>(modal)) {
        boxes.append(box->text());
        const QString wanted = langText(yes ? 77 : 78);
        for (QAbstractButton* button : box->buttons()) {
            if (box->buttons().size() == 1 || button->text().remove(QLatin1Char('&')) == wanted) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
    } else if (auto* files = qobject_cast<QFileDialog*>(modal)) {
        const QString file = std::exchange(typedFile, QString());
        auto* line = files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        if (file.isEmpty() || !line) {
            files->reject();
            return;
        }
        line->setText(file);
        QMetaObject::invokeMethod(files, "accept");
    } else if (auto* dialog = qobject_cast<QDialog*>(modal)) {
        const QStringList texts = std::exchange(typed, {});
        const QList<QLineEdit*> fields = dialog->findChildren<QLineEdit*>();
        for (int i = 0; i < qMin(texts.size(), fields.size()); ++i)
            fields.at(i)->setText(texts.at(i));
        texts.isEmpty() ? dialog->reject() : dialog->accept();
    }
}
