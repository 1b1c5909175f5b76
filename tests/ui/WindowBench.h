#pragma once

#include "base/keys.h"
#include "core/model/TDataCfg.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "settings/TAppData.h"
#include "support/TestDir.h"
#include "support/tables.h"
#include "ui/main/TMainWindow.h"
#include "ui/panels/TTreeWidget.h"
#include "ui/panels/TWgtCmdList.h"
#include "ui/panels/TWgtPrj.h"

#include <QAction>
#include <QDialog>
#include <QJsonArray>
#include <QTableWidget>
#include <QTimer>

#include <functional>
#include <memory>

/// The main window on a folder of its own, with a user that answers every box and dialog. The process-wide
/// project and settings are put back by each new object. All questions are off until a test wants them.
class WindowBench
{
public:
    WindowBench();
    ~WindowBench();
    Q_DISABLE_COPY(WindowBench)

    const TestDir& dir() const { return m_dir; }
    /// The switch of a question, by its key in the settings file.
    static bool& question(const QString& key);
    /// A node of the list, below another one by its number from 1, and its project file, named as the node in
    /// lower case; a group without configurations. These are "Name: command, command; Name: command", and a
    /// command is a word and its parameters, as in "delay value=5"; "!" in front makes an unchecked one.
    /// PROG, FLASH and AVR stand for the commands that set the simulated programmer and a chip.
    void addNode(const QString& name, const QString& configs = QString(), int parent = 0);
    /// The window, shown, on the list of the nodes so far; the next time, on what the window before left.
    void open();
    /// The same on four more nodes: "One", "Two", below it "Sub", and a group "Group". Shows the one of that
    /// name.
    void openSamples(const QString& name = QString());
    /// Opens the only project of a list with these configurations, the table with the focus.
    void openWith(const QString& configs);
    /// Closes the window as its frame would; true when it went.
    bool close();

    TMainWindow& window() { return *m_window; }
    TWgtPrj& prj() { return *m_window->prj(); }
    /// Does one step after the other, with ", " between them, and stops where one cannot be done:
    /// "@Two" clicks a node and gives its table the focus, "#2" clicks a row, "#-" leaves no row current;
    /// "+PrjNew PrjAdd" and "-PrjNew" see that actions are on or off; and "PrjNew Name file" triggers an
    /// action and types in its dialog, or gives the file to its file dialog. Actions are named as in the
    /// file of hot keys. A dialog for which nothing is typed is cancelled.
    bool play(const QString& steps);
    /// The configurations after such steps; "off" if they could not be done.
    QString after(const QString& steps) { return play(steps) ? configs() : "off"; }
    /// Clicks a node of the tree, and lets its project open.
    void clickNode(const QString& name);
    /// Column 0 turns the check mark.
    void clickRow(int row, int column = 1);
    /// Triggers an action as its menu does; false when it is disabled.
    bool trigger(QAction* action);
    void click(TMainButton id, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    static void settle();
    /// Until no run is left; false when that takes too long.
    bool waitIdle();

    /// The configurations, like "A: stop; B: pause !stop". What the panels show instead, if they differ.
    QString configs();
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

    /// How questions are answered: by Enter or by Escape.
    bool yes = true;
    /// How the next ones are answered before that counts: by texts of buttons, "Enter" or "Escape".
    QStringList press;
    /// Texts of the boxes so far.
    QStringList boxes;
    /// What is typed in the fields of the next dialog, from the top; an empty list cancels it. A file dialog
    /// takes the name of a file in the list's folder.
    QStringList typed;
    /// Done in the next dialog that is no box, which is accepted then.
    std::function<void(QDialog&)> inDialog;

private:
    bool take(const QString& step);
    QAction* action(const QString& name) const;
    void answer();

    TestDir m_dir{TestDir::Empty};
    QTimer m_user;
    QJsonArray m_nodes;
    std::unique_ptr<TMainWindow> m_window;
};
