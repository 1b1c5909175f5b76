#pragma once

#include "base/texts.h"
#include "ui/panels/TWgtPrjList.h"

class QTreeWidgetItem;
class TCmdClipboard;
class TMainPanels;
class TPrjSession;

/// What the actions on the projects of the list do. Main thread.
class TPrjActions
{
public:
    /// All of them belong to the window.
    TPrjActions(TMainPanels& panels, TPrjSession& session, TCmdClipboard& clipboard);

    // A new node beside the current one, or below it.
    void create();
    void createSub();
    void add();
    void addSub();
    void paste();
    void pasteSub();

    void copy();
    void edit();
    void remove();
    void removeSubAll();
    void openFolder();

private:
    void insertNode(Text title, TPrjFileMode mode, TWgtPrjList::Place place);
    void changeNode(const QString& name, const QString& file);
    void removeNode(const QTreeWidgetItem* node, const QString& name);

    TMainPanels& m_panels;
    TPrjSession& m_session;
    TCmdClipboard& m_clipboard;
    TWgtPrjList* const m_prjList;
};
