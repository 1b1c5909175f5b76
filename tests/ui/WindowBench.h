#pragma once

#include "support/TestDir.h"
#include "ui/TMainWindow.h"

#include <QAction>
#include <QStringList>
#include <QTimer>

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
    /// A project file in the list's folder. Each configuration is "Name: command; command".
    void writeProject(const QString& file, const QStringList& configs);
    /// A node of the list, parent counted from 1.
    void addNode(const QString& name, const QString& file, int parent = 0);
    /// Three nodes with a project each: "One", "Two", and below "Two" the node "Sub"; and a group "Group".
    void addSampleNodes();
    /// The window, shown, on the list of the nodes so far.
    void open();
    /// Opens the only project of a list with these configurations, the table with the focus.
    void openWith(const QStringList& configs);
    /// Closes the window as its frame would; true when it went.
    bool close();
    void destroy();

    TMainWindow& window() { return *m_window; }
    TWgtPrj& prj() { return *m_window->prj(); }
    QTreeWidgetItem* node(const QString& name);
    /// Clicks a node of the tree, and lets its project open.
    void clickNode(const QString& name);
    void clickRow(int row);
    void clickCheck(int row);
    /// Triggers an action as its menu does; false when it is disabled.
    bool trigger(TMainAction id);
    void click(TMainButton id, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    bool isEnabled(TMainAction id) { return m_window->action(id)->isEnabled(); }
    static void settle();
    bool waitIdle(int timeoutMs = 20000);

    /// Words of the commands of a configuration, as the model has them, and as the table shows them.
    QStringList words(int index) const;
    QStringList rows(int index);
    /// What differs between the model and the panels; empty when they agree.
    QString difference();
    /// What differs between the model and a project file of the list's folder.
    QString fileDifference(const QString& file);
    QStringList nodeNames();
    QString status() const { return m_window->statusLine()->text(); }
    QString log(int index);
    QByteArray listBytes() const { return m_dir.read(QStringLiteral("projects/test.lst")); }

    /// How questions are answered.
    bool yes = true;
    /// Texts of the boxes so far.
    QStringList boxes;
    /// What is typed in the fields of the next dialog, from the top; an empty list cancels it.
    QStringList typed;
    /// Set to a file to be given to the next file dialog.
    QString typedFile;

private:
    void answer();

    TestDir m_dir{TestDir::Empty};
    QTimer m_user;
    struct Node
    {
        QString name;
        QString file;
        int parent;
    };
    QList<Node> m_nodes;
    std::unique_ptr<TMainWindow> m_window;
};
