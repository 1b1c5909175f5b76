#include "core/TAppData.h"
#include "core/TCtrlProject.h"
#include "core/TPrjListFile.h"
#include "core/globals.h"
#include "core/helpers.h"
#include "ui/TDialogSelectPrjList.h"
#include "ui/TMainWindow.h"
#include "ui/TWgtPrjList.h"
#include "ui/window_helpers.h"

#include <QAction>
#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>

namespace {

const QString listSuffix = QStringLiteral("lst");
const QString listFilter = QStringLiteral("*.lst");

bool isSameFile(const QString& a, const QString& b)
{
    const QFileInfo first(a);
    const QFileInfo second(b);
    return first == second || (first.exists() && first.canonicalFilePath() == second.canonicalFilePath());
}

} // namespace

/// The name of a list to write, with its suffix; empty when the user does not want to.
QString TMainWindow::askListFile(int title, bool confirmOverwrite)
{
    QFileDialog dialog(this, langText(title), QCoreApplication::applicationDirPath(), listFilter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(listSuffix);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !confirmOverwrite);
    while (dialog.exec() == QDialog::Accepted) {
        const QString chosen = dialog.selectedFiles().value(0);
        QString file = withSuffix(chosen, listSuffix);
        // The dialog has asked about the file that was typed, not about the one with another suffix.
        if (file == chosen || !confirmOverwrite || !QFileInfo::exists(file))
            return file;
        dialog.selectFile(file);
    }
    return QString();
}

void TMainWindow::slotPrjListNew()
{
    const QString file = askListFile(90, true);
    if (file.isEmpty())
        return;
    if ((m_prjList->isLoaded() && isSameFile(file, m_prjList->listFile())) || !writeEmptyList(file)) {
        qDebug().noquote() << QStringLiteral("%1: %2").arg(langText(91), file);
        report(QStringLiteral("%1: %2").arg(langText(91), file), TWgtStatusBar::Red);
        updateState();
        return;
    }
    openOtherList(file, file);
}

void TMainWindow::slotPrjListLoad()
{
    const QString now =
        m_prjList->listFile().isEmpty() ? TPrjListFile::path(appData().PrjListFile) : m_prjList->listFile();
    const QString file = QFileDialog::getOpenFileName(this, langText(92), absDir(now), listFilter);
    if (!file.isEmpty())
        openOtherList(file, file);
    updateState();
}

void TMainWindow::openOtherList(const QString& name, const QString& file)
{
    stopRunsThen([this, name, file] {
        if (closePrj())
            loadList(name, file);
    });
}

/// Shows another list, or the same one anew. The project is closed.
bool TMainWindow::loadList(const QString& name, const QString& file)
{
    // What was moved or unfolded in the old one would be lost.
    if (m_prjList->isLoaded() && !isSameFile(TPrjListFile::path(file), m_prjList->listFile()))
        saveList();
    const bool loaded = m_prjList->load(name, file, appData().PrjListExpand);
    if (!loaded)
        msgError(langText(98).arg(QDir::toNativeSeparators(file)), this);
    updateState();
    return loaded;
}

bool TMainWindow::saveList()
{
    if (m_prjList->save(m_prjList->listFile()))
        return true;
    report(QStringLiteral("%1: %2").arg(m_prjList->listFile(), m_prjList->errorText()), TWgtStatusBar::Red);
    return false;
}

void TMainWindow::slotPrjListSelect()
{
    const QString lists = QFileInfo(appData().SelectPrjListFile).absoluteFilePath();
    TDialogSelectPrjList dialog(lists, this);
    if (!dialog.isLoaded()) {
        msgError(langText(97).arg(QDir::toNativeSeparators(lists)), this);
        return;
    }
    dialog.setPreset(m_prjList->listName(), m_prjList->listFile());
    const bool accepted = dialog.exec() == QDialog::Accepted;
    if (dialog.isChanged() && !dialog.write())
        report(lists, TWgtStatusBar::Red);
    if (accepted) {
        stopRunsThen([this, name = dialog.name(), file = dialog.file()] {
            if (!closePrj() || !loadList(name, file))
                return;
            appData().PrjListName = name;
            appData().PrjListFile = file;
            m_status->showText(QString(), TWgtStatusBar::Plain);
        });
    }
    updateState();
}

void TMainWindow::slotPrjListReload()
{
    const QString file = m_prjList->listFile();
    if (file.isEmpty() || (appData().ConfirmProjectsListReload && !msgAsk(langText(95), this)))
        return;
    openOtherList(m_prjList->listName(), file);
}

void TMainWindow::slotPrjListSaveAs()
{
    const QString file = askListFile(96, false);
    if (file.isEmpty() || !saveList())
        return;
    const QString source = m_prjList->listFile();
    if (!QFile::copy(source, file))
        msgError(langText(99).arg(QDir::toNativeSeparators(source), QDir::toNativeSeparators(file)), this);
}

void TMainWindow::slotPrjListOpenFolder()
{
    (void)openFolder(m_prjList->listFile());
}

void TMainWindow::slotPrjListDragDrop()
{
    appData().PrjListDragDrop = action(maPrjListDragDrop)->isChecked();
    m_prjList->dragMode(appData().PrjListDragDrop);
}
