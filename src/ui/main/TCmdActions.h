#pragma once

#include <QStringList>

#include <functional>

class TCmdClipboard;
class TDataCmd;
class TMainPanels;
class TPrjSession;
class TWgtPrj;

/// What the actions on the commands of the current configuration do. Main thread.
class TCmdActions
{
public:
    /// All of them belong to the window.
    TCmdActions(TMainPanels& panels, TPrjSession& session, TCmdClipboard& clipboard);

    /// Adds a command behind the current one, with the defaults of its family.
    void add(const QString& cmd_code, bool cmd_state);
    void addSetProgDevice();
    void addSetProg();
    void addSetDevice();
    void copy();
    void copySelected();
    void paste();
    void removeCurrent();
    void removeSelected();
    void removeFaulty();
    /// What hangs on the chip in force at the current command.
    void removeOfDevice();
    void removeAll();
    void setAllChecked(bool on);
    void move(int delta);
    /// From now on and after the next start.
    void hideUnchecked(bool hide);

private:
    void insertAfterQuestion(bool isAsked, const QString& question, const QStringList& words);
    void removeIf(const std::function<bool(const TDataCmd&)>& leaves);
    void rebuildTab(int row, bool isNew = false);
    void showAfterDelete();
    QString titleOf(int id_cmd) const;

    TMainPanels& m_panels;
    TPrjSession& m_session;
    TCmdClipboard& m_clipboard;
    TWgtPrj* const m_prj;
};
