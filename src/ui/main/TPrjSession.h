#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QTreeWidgetItem;
class TLineGate;
class TMainPanels;
class TRunControl;
class TWgtPrj;
class TWgtPrjList;
class TWgtStatusBar;

/// What is open, the list of projects and the project of one of its nodes: opens, closes and saves it, asks
/// about changes, and has the runs stopped before anything that they use goes. Main thread; it never waits
/// for a worker while the window lives.
class TPrjSession : public QObject
{
    Q_OBJECT

public:
    using Step = std::function<void()>;
    /// What became of changes that were to be stored.
    enum class Stored {
        Yes,     ///< they are in the file, or there were none
        GivenUp, ///< the user wants what somebody else has written there meanwhile
        NotNow,  ///< the user wants neither
        Failed   ///< the file could not be written; the status line tells why
    };

    /// All of them belong to the window and outlive the session.
    TPrjSession(TMainPanels& panels, TRunControl& runs, TLineGate& gate);
    ~TPrjSession() override;

    // Runs.
    /// Goes on with then when no run is left: at once, or after the user has agreed to stop the runs and
    /// the last one has ended. Otherwise refused is done. A later call takes the place of one that waits.
    void stopRunsThen(const Step& then, const Step& refused = {});
    /// Runs have been asked to end, and something waits for that.
    bool isWaitingForRuns() const { return static_cast<bool>(m_afterRuns); }

    // The project.
    void openLastPrj();
    /// Opens the project of the node that is current; nothing when the file is not that node's any more.
    void selectPrj(const QString& project_file);
    /// Behind what is on its way: another node may have become current in the meantime.
    void selectPrjLater();
    void openCurrentNode();
    /// The node whose project is shown; null with none. To be looked up before use.
    const QTreeWidgetItem* openNode() const { return m_openNode; }
    /// A command has become current, or none.
    void showSelected();
    /// Asks for unsaved changes. False when the project stays open.
    [[nodiscard]] bool closePrj();
    void save();
    void saveAs();

    // The list.
    void openStartList();
    void openOtherList(const QString& name, const QString& file);
    /// Shows another list, or the same one anew. The project is closed, and changes of the old one are
    /// stored.
    bool loadList(const QString& name, const QString& file);
    /// The list as it is on the disk, for changes that the user has given up.
    void reloadList();
    [[nodiscard]] Stored storeList();
    /// The same, and what the user has given up is gone; true when the list is in its file.
    bool saveList();
    /// A file that somebody else has written meanwhile is not written over without a question.
    [[nodiscard]] Stored askOutdated(const QString& file);
    /// Closes the project and stores the list, asking where it takes that. False when one of them stays.
    [[nodiscard]] bool closePrjAndList();

    // The end.
    /// Asks whether to leave and what to do with changes, and tells by signalMayClose.
    void askToLeave();
    bool mayClose() const { return m_mayClose; }
    /// Waits until all runs are stopped: for a window that goes without a question.
    void stopRuns();
    /// Stores what is still to be stored, asks nothing, and leaves no project.
    void clear();

signals:
    /// A project has been loaded: ids of the one before it mean nothing any more.
    void signalOpened();
    /// Other tabs are there, or none.
    void signalShown();
    /// Nothing is left that would be lost; asked for by askToLeave().
    void signalMayClose();

private:
    void goOnAfterRuns();
    void goToNode(const QString& project_file);
    void loadPrj(const QString& file);
    void showPrj();
    void backToOpenNode();
    [[nodiscard]] bool saveBeforeClosing();
    [[nodiscard]] bool saveElsewhereBeforeClosing();
    void leaveIfWanted();
    void leave();
    void storeWithoutAsking();
    [[nodiscard]] Stored storePrj();
    /// Before the list is left: false when it stays. Otherwise its changes are stored or given up.
    [[nodiscard]] bool keepList();
    /// Why there is no list.
    QString listProblem() const;
    /// Opens the project anew, from its file.
    void reopenPrj();
    void reopenNode(QTreeWidgetItem* node);
    QString askPrjFile();
    /// Writes the open project there; the node of that file, new if need be. Null when it is not written.
    QTreeWidgetItem* copyPrjTo(const QString& file);

    TMainPanels& m_panels;
    TWgtPrj* const m_prj;
    TWgtPrjList* const m_prjList;
    TWgtStatusBar* const m_status;
    TRunControl& m_runs;
    TLineGate& m_gate;
    QTreeWidgetItem* m_openNode = nullptr;
    QString m_openPath;
    Step m_afterRuns;
    bool m_isClosing = false;
    bool m_mayClose = false;
};
