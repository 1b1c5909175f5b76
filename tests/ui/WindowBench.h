#pragma once

#include "core/TAppData.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "support/TestDir.h"
#include "support/tables.h"
#include "ui/TMainWindow.h"
#include "ui/TTreeWidget.h"
#include "ui/TWgtCmdList.h"
#include "ui/TWgtPrj.h"

#include <QAction>
#include <QDialog>
#include <QJsonArray>
#include <QTableWidget>
#include <QTimer>

#include <functional>
#include <memory>

/// The main window on a folder of its own, with a user that answers every box and dialog. The process-wide
/// project and settings are put back by each new object. All questions are off until a test wants them.
///
/// Commands are written as in "set_prog prog=Simulator alt_enabled=false": word, then parameters; "!" in
/// front of the word is an unchecked command.
class WindowBench
{
public:
    WindowBench();
    ~WindowBench();
    WindowBench(const WindowBench&) = delete;
    WindowBench& operator=(const WindowBench&) = delete;

    const TestDir& dir() const { return m_dir; }
    /// The switch of a question, by its key in the settings file.
    static bool& question(const QString& key);
    /// A project file in the list's folder. Configurations are "Name: command, command; Name: command".
    void writeProject(const QString& file, const QString& configs) const;
    /// A node of the list, parent counted from 1.
    void addNode(const QString& name, const QString& file, int parent = 0);
    /// The window, shown, on the list of the nodes so far; the next time, on what the window before left.
    void open();
    /// The same on three more nodes with a project each: "One", "Two", and below "Two" the node "Sub"; and on
    /// a group "Group". Shows the one of that name.
    void openSamples(const QString& name = QString());
    /// Opens the only project of a list with these configurations, the table with the focus.
    void openWith(const QString& configs);
    /// Closes the window as its frame would; true when it went.
    bool close();

    TMainWindow& window() { return *m_window; }
    TWgtPrj& prj() { return *m_window->prj(); }
    /// Clicks a node and gives its table the focus; nothing without a name.
    void show(const QString& name);
    /// Clicks a node of the tree, and lets its project open.
    void clickNode(const QString& name);
    /// Column 0 turns the check mark.
    void clickRow(int row, int column = 1);
    /// Triggers an action as its menu does; false when it is disabled.
    bool trigger(TMainAction id);
    void click(TMainButton id, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    bool isEnabled(TMainAction id) { return m_window->action(id)->isEnabled(); }
    static void settle();
    bool waitIdle(int timeoutMs = 20000);

    /// The configurations, like "A: stop; B: pause !stop". What the panels show instead, if they differ.
    QString configs();
    /// The same after an action, with what is typed in its dialog; "off" if it is disabled.
    QString after(TMainAction id, const QStringList& texts = {});
    /// What differs between the model and the panels; empty when they agree.
    QString difference();
    /// What differs between the model and its file.
    QString fileDifference() const;
    /// What differs between the tree and the list's file.
    QString listDifference();
    /// From the top, a dot a level in front of each.
    QString nodeNames();
    QTableWidget* table(int index) { return prj().tabAt(index)->cmdList()->table(); }
    QString status() const { return m_window->statusLine()->text(); }
    QString log(int index);
    QByteArray listBytes() const { return m_dir.read("projects/test.lst"); }

    /// How questions are answered.
    bool yes = true;
    /// Texts of the boxes so far.
    QStringList boxes;
    /// What is typed in the fields of the next dialog, from the top; an empty list cancels it.
    QStringList typed;
    /// Done in the next dialog that is no box, which is accepted then.
    std::function<void(QDialog&)> inDialog;
    /// Set to a file to be given to the next file dialog.
    QString typedFile;

private:
    void answer();

    TestDir m_dir{TestDir::Empty};
    QTimer m_user;
    QJsonArray m_nodes;
    std::unique_ptr<TMainWindow> m_window;
};
