#include "ui/main/TPrjActions.h"

#include "base/TLang.h"
#include "base/helpers.h"
#include "core/files/TPrjListFile.h"
#include "core/model/TDataPrj.h"
#include "settings/TAppData.h"
#include "ui/dialogs/TDialogPrjEdit.h"
#include "ui/main/TCmdClipboard.h"
#include "ui/main/TMainPanels.h"
#include "ui/main/TPrjSession.h"
#include "ui/panels/TTreeWidget.h"
#include "ui/window_helpers.h"

TPrjActions::TPrjActions(TMainPanels& panels, TPrjSession& session, TCmdClipboard& clipboard)
    : m_panels(panels)
    , m_session(session)
    , m_clipboard(clipboard)
    , m_prjList(panels.prjList())
{
}

void TPrjActions::create()
{
    insertNode(Text::TitlePrjNew, TPrjFileMode::Create, TWgtPrjList::Sibling);
}

void TPrjActions::createSub()
{
    insertNode(Text::TitlePrjNewSub, TPrjFileMode::Create, TWgtPrjList::Child);
}

void TPrjActions::add()
{
    insertNode(Text::TitlePrjAdd, TPrjFileMode::Add, TWgtPrjList::Sibling);
}

void TPrjActions::addSub()
{
    insertNode(Text::TitlePrjAddSub, TPrjFileMode::Add, TWgtPrjList::Child);
}

void TPrjActions::paste()
{
    insertNode(Text::TitlePrjPaste, TPrjFileMode::Paste, TWgtPrjList::Sibling);
}

void TPrjActions::pasteSub()
{
    insertNode(Text::TitlePrjPasteSub, TPrjFileMode::Paste, TWgtPrjList::Child);
}

void TPrjActions::insertNode(Text title, TPrjFileMode mode, TWgtPrjList::Place place)
{
    const bool pastes = mode == TPrjFileMode::Paste;
    TDialogPrjEdit dialog(langText(title), pastes ? m_clipboard.prjName() : QString(), QString(),
                          m_prjList->listFolder(), m_panels.window(), mode == TPrjFileMode::Add);
    do {
        if (dialog.exec() != QDialog::Accepted)
            return;
        // A group would have no place for what was copied.
        if (pastes && dialog.file().isEmpty())
            m_panels.status()->showText(langText(Text::SelectPrjFile), TWgtStatusBar::Red);
    } while (pastes && dialog.file().isEmpty());

    const bool made = m_prjList->insertNode(dialog.name(), dialog.file(), mode, place,
                                            pastes ? m_clipboard.prjContent() : QByteArray());
    const QString reason = m_prjList->errorText();
    const bool saved = m_session.saveList();
    if (!made)
        m_panels.report(QStringLiteral("%1: %2").arg(dialog.file(), reason), TWgtStatusBar::Red);
    else if (pastes && saved)
        m_panels.report(langText(Text::PrjPasted).arg(m_clipboard.prjName()), TWgtStatusBar::Green);
    m_panels.updateState();
}

void TPrjActions::copy()
{
    QString error;
    if (!m_clipboard.copyPrj(m_prjList->nodeName(), m_prjList->nodePath(), error)) {
        m_panels.report(error, TWgtStatusBar::Red);
        return;
    }
    m_panels.report(langText(Text::PrjCopied).arg(m_clipboard.prjName()), TWgtStatusBar::Green);
    m_panels.updateState();
}

void TPrjActions::edit()
{
    TDialogPrjEdit dialog(langText(Text::TitlePrjEdit), m_prjList->nodeName(), m_prjList->nodeFile(),
                          m_prjList->listFolder(), m_panels.window());
    if (dialog.exec() != QDialog::Accepted)
        return;
    QString file = dialog.file();
    QString error;
    // One that was typed is stored as inserting stores it; one that was left alone stays as it stands.
    if (file != m_prjList->nodeFile() &&
        !joinPrjList(m_prjList->listFolder(), TPrjFileMode::Add, {}, file, error)) {
        m_panels.report(QStringLiteral("%1: %2").arg(file, error), TWgtStatusBar::Red);
        return;
    }
    const QString path = file.isEmpty() ? QString() : absFile(m_prjList->listFolder(), file);
    if (path == m_prjList->nodePath()) {
        changeNode(dialog.name(), file);
        return;
    }
    const QTreeWidgetItem* node = m_prjList->tree()->currentItem();
    m_session.stopRunsThen([this, node, name = dialog.name(), file] {
        if (node != m_prjList->tree()->currentItem() || !m_session.closePrj())
            return;
        changeNode(name, file);
        m_session.openCurrentNode();
    });
}

void TPrjActions::changeNode(const QString& name, const QString& file)
{
    m_prjList->setCurrentNode(name, file);
    // The menu of another node may be used before its project is opened.
    if (m_prjList->tree()->currentItem() == m_session.openNode())
        project().setName(name);
    m_session.saveList();
    m_panels.updateState();
}

void TPrjActions::remove()
{
    const QString name = m_prjList->nodeName();
    if (appData().ConfirmProjectDeleteCur &&
        !msgAsk(langText(Text::AskDeletePrj).arg(name), m_panels.window()))
        return;
    const QTreeWidgetItem* node = m_prjList->tree()->currentItem();
    m_session.stopRunsThen([this, node, name] { removeNode(node, name); });
}

void TPrjActions::removeNode(const QTreeWidgetItem* node, const QString& name)
{
    if (node != m_prjList->tree()->currentItem() || !m_session.closePrj())
        return;
    m_prjList->deleteNode();
    if (m_session.saveList())
        m_panels.report(langText(Text::PrjDeleted).arg(name), TWgtStatusBar::Green);
    m_panels.updateState();
    // Some other node is current now, or none.
    m_session.selectPrjLater();
}

void TPrjActions::removeSubAll()
{
    const QString name = m_prjList->nodeName();
    if (appData().ConfirmProjectDeleteSubAll &&
        !msgAsk(langText(Text::AskDeleteSubPrjs).arg(name), m_panels.window()))
        return;
    m_prjList->deleteChildren();
    if (m_session.saveList())
        m_panels.report(langText(Text::SubPrjsDeleted).arg(name), TWgtStatusBar::Green);
    m_panels.updateState();
}

void TPrjActions::openFolder()
{
    if (project().isOpen())
        m_panels.showFolder(project().file());
}
