#include "base/TLang.h"
#include "base/helpers.h"
#include "core/files/TPrjListFile.h"
#include "core/model/TDataPrj.h"
#include "settings/TAppData.h"
#include "ui/dialogs/TDialogPrjEdit.h"
#include "ui/main/TMainWindow.h"
#include "ui/panels/TTreeWidget.h"
#include "ui/panels/TWgtPrjList.h"
#include "ui/window_helpers.h"

#include <QFile>

void TMainWindow::slotPrjNew()
{
    insertNode(100, TPrjFileMode::Create, TWgtPrjList::Sibling);
}

void TMainWindow::slotPrjNewSub()
{
    insertNode(101, TPrjFileMode::Create, TWgtPrjList::Child);
}

void TMainWindow::slotPrjAdd()
{
    insertNode(102, TPrjFileMode::Add, TWgtPrjList::Sibling);
}

void TMainWindow::slotPrjAddSub()
{
    insertNode(103, TPrjFileMode::Add, TWgtPrjList::Child);
}

void TMainWindow::slotPrjPasteNew()
{
    insertNode(109, TPrjFileMode::Paste, TWgtPrjList::Sibling);
}

void TMainWindow::slotPrjPasteNewSub()
{
    insertNode(110, TPrjFileMode::Paste, TWgtPrjList::Child);
}

void TMainWindow::insertNode(int title, TPrjFileMode mode, TWgtPrjList::Place place)
{
    const bool pastes = mode == TPrjFileMode::Paste;
    TDialogPrjEdit dialog(langText(title), pastes ? m_prjClip.name : QString(), QString(),
                          m_prjList->listFolder(), this, mode == TPrjFileMode::Add);
    do {
        if (dialog.exec() != QDialog::Accepted)
            return;
        // A group would have no place for what was copied.
        if (pastes && dialog.file().isEmpty())
            m_status->showText(langText(107), TWgtStatusBar::Red);
    } while (pastes && dialog.file().isEmpty());

    const bool made = m_prjList->insertNode(dialog.name(), dialog.file(), mode, place,
                                            pastes ? m_prjClip.content : QByteArray());
    const QString reason = m_prjList->errorText();
    const bool saved = saveList();
    if (!made)
        report(QStringLiteral("%1: %2").arg(dialog.file(), reason), TWgtStatusBar::Red);
    else if (pastes && saved)
        report(langText(111).arg(m_prjClip.name), TWgtStatusBar::Green);
    updateState();
}

void TMainWindow::slotPrjCopy()
{
    QFile file(m_prjList->nodePath());
    if (!file.open(QIODevice::ReadOnly)) {
        report(file.errorString(), TWgtStatusBar::Red);
        return;
    }
    m_prjClip.name = m_prjList->nodeName();
    m_prjClip.file = m_prjList->nodeFile();
    m_prjClip.content = file.readAll();
    setPasteText(maPrjPasteNew, 18, m_prjClip.name);
    setPasteText(maPrjPasteNewSub, 19, m_prjClip.name);
    report(langText(108).arg(m_prjClip.name), TWgtStatusBar::Green);
    updateState();
}

void TMainWindow::slotPrjEdit()
{
    TDialogPrjEdit dialog(langText(104), m_prjList->nodeName(), m_prjList->nodeFile(),
                          m_prjList->listFolder(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    QString file = dialog.file();
    QString error;
    // One that was typed is stored as inserting stores it; one that was left alone stays as it stands.
    if (file != m_prjList->nodeFile() &&
        !joinPrjList(m_prjList->listFolder(), TPrjFileMode::Add, {}, file, error)) {
        report(QStringLiteral("%1: %2").arg(file, error), TWgtStatusBar::Red);
        return;
    }
    const QString path = file.isEmpty() ? QString() : absFile(m_prjList->listFolder(), file);
    if (path == m_prjList->nodePath()) {
        changeNode(dialog.name(), file);
        return;
    }
    const QTreeWidgetItem* node = m_prjList->tree()->currentItem();
    stopRunsThen([this, node, name = dialog.name(), file] {
        if (node != m_prjList->tree()->currentItem() || !closePrj())
            return;
        changeNode(name, file);
        openCurrentNode();
    });
}

void TMainWindow::changeNode(const QString& name, const QString& file)
{
    m_prjList->setCurrentNode(name, file);
    // The menu of another node may be used before its project is opened.
    if (m_prjList->tree()->currentItem() == m_openNode)
        project().setName(name);
    saveList();
    updateState();
}

void TMainWindow::slotPrjDelete()
{
    const QString name = m_prjList->nodeName();
    if (appData().ConfirmProjectDeleteCur && !msgAsk(langText(113).arg(name), this))
        return;
    const QTreeWidgetItem* node = m_prjList->tree()->currentItem();
    stopRunsThen([this, node, name] { removeNode(node, name); });
}

void TMainWindow::removeNode(const QTreeWidgetItem* node, const QString& name)
{
    if (node != m_prjList->tree()->currentItem() || !closePrj())
        return;
    m_prjList->deleteNode();
    if (saveList())
        report(langText(114).arg(name), TWgtStatusBar::Green);
    updateState();
    // Some other node is current now, or none.
    selectPrjLater();
}

void TMainWindow::slotPrjDeleteSubAll()
{
    const QString name = m_prjList->nodeName();
    if (appData().ConfirmProjectDeleteSubAll && !msgAsk(langText(115).arg(name), this))
        return;
    m_prjList->deleteChildren();
    if (saveList())
        report(langText(116).arg(name), TWgtStatusBar::Green);
    updateState();
}

void TMainWindow::slotPrjOpenFolder()
{
    if (project().isOpen())
        showFolder(project().file());
}

void TMainWindow::showFolder(const QString& file)
{
    if (!openFolder(file))
        report(langText(463).arg(absDir(file)), TWgtStatusBar::Red);
}
