#include "base/TLang.h"
#include "base/helpers.h"
#include "core/files/TCtrlProject.h"
#include "core/files/TPrjListFile.h"
#include "settings/TAppData.h"
#include "ui/dialog_parts.h"
#include "ui/dialogs/TDialogSelectPrjList.h"
#include "ui/main/TMainWindow.h"
#include "ui/panels/TTreeWidget.h"
#include "ui/panels/TWgtPrjList.h"
#include "ui/window_helpers.h"

#include <QAction>
#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>

void TMainWindow::slotPrjListNew()
{
    const QString file = askNewFile(90, QCoreApplication::applicationDirPath(), prjListSuffix, true);
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
    const QString file =
        QFileDialog::getOpenFileName(this, langText(92), absDir(now), suffixFilter(prjListSuffix));
    if (!file.isEmpty())
        openOtherList(file, file);
    updateState();
}

void TMainWindow::openOtherList(const QString& name, const QString& file)
{
    stopRunsThen([this, name, file] {
        if (closePrjAndList())
            loadList(name, file);
    });
}

/// The list as it is on the disk, for changes that the user has given up.
void TMainWindow::reloadList()
{
    stopRunsThen([this, open = m_openPath] {
        if (!closePrj() || !loadList(m_prjList->listName(), m_prjList->listFile()))
            return;
        if (QTreeWidgetItem* node = open.isEmpty() ? nullptr : m_prjList->nodeOf(open))
            m_prjList->tree()->setCurrentItem(node);
    });
}

/// Shows another list, or the same one anew. The project is closed, and changes of the old one are stored.
bool TMainWindow::loadList(const QString& name, const QString& file)
{
    const bool loaded = m_prjList->load(name, file, appData().PrjListExpand);
    if (!loaded) {
        report(listProblem(), TWgtStatusBar::Red);
        msgError(langText(98).arg(QDir::toNativeSeparators(file)), this);
    }
    updateState();
    return loaded;
}

/// Why there is no list.
QString TMainWindow::listProblem() const
{
    const QString reason =
        m_prjList->errorText().isEmpty() ? m_prjList->statusText() : m_prjList->errorText();
    return QStringLiteral("%1: %2").arg(m_prjList->listFile(), reason);
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
    bool accepted = false;
    Stored stored = Stored::Yes;
    do {
        accepted = dialog.exec() == QDialog::Accepted;
        stored = dialog.isChanged() && dialog.isOutdated() ? askOutdated(lists) : Stored::Yes;
    } while (stored == Stored::NotNow);
    if (stored == Stored::Yes && dialog.isChanged() && !dialog.write())
        report(QStringLiteral("%1: %2").arg(lists, dialog.errorText()), TWgtStatusBar::Red);
    if (accepted) {
        stopRunsThen([this, name = dialog.name(), file = dialog.file()] {
            if (!closePrjAndList() || !loadList(name, file))
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
    const QString file = askNewFile(96, QCoreApplication::applicationDirPath(), prjListSuffix, false);
    if (file.isEmpty())
        return;
    const QString source = m_prjList->listFile();
    const Stored stored = storeList();
    if (stored == Stored::NotNow)
        return;
    // A list whose own file cannot be written is saved here all the same.
    const bool copied = stored == Stored::Failed ? !QFileInfo::exists(file) && m_prjList->saveCopy(file)
                                                 : QFile::copy(source, file);
    if (!copied)
        msgError(langText(99).arg(QDir::toNativeSeparators(source), QDir::toNativeSeparators(file)), this);
    if (stored == Stored::GivenUp)
        reloadList();
}

void TMainWindow::slotPrjListOpenFolder()
{
    showFolder(m_prjList->listFile());
}

void TMainWindow::slotPrjListDragDrop()
{
    appData().PrjListDragDrop = action(maPrjListDragDrop)->isChecked();
    m_prjList->dragMode(appData().PrjListDragDrop);
}
