#include "base/TLang.h"
#include "base/helpers.h"
#include "core/files/TCtrlProject.h"
#include "core/files/TPrjListFile.h"
#include "core/model/TDataPrj.h"
#include "settings/TAppData.h"
#include "ui/dialog_parts.h"
#include "ui/main/TMainWindow.h"
#include "ui/panels/TTreeWidget.h"
#include "ui/panels/TWgtPrj.h"
#include "ui/window_helpers.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace {

/// Numbers of the texts of a question about changes that could not be stored, and the one that keeps them.
constexpr std::array<int, 3> loseButtons{431, 77, 78};
constexpr int keepChanges = 2;

} // namespace

/// The name of a file to write, with its suffix; empty when the user does not want to.
QString TMainWindow::askNewFile(int title, const QString& start, const QString& suffix, bool confirmOverwrite)
{
    QFileDialog dialog(this, langText(title), start, suffixFilter(suffix));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !confirmOverwrite);
    while (dialog.exec() == QDialog::Accepted) {
        const QString chosen = dialog.selectedFiles().value(0);
        QString file = withSuffix(chosen, suffix);
        // The dialog has asked about the file that was typed, not about the one with another suffix.
        if (file == chosen || !confirmOverwrite || !QFileInfo::exists(file))
            return file;
        dialog.selectFile(file);
    }
    return QString();
}

TMainWindow::Stored TMainWindow::askOutdated(const QString& file)
{
    const QString shown = QDir::toNativeSeparators(file);
    switch (msgChoose(langText(433).arg(shown), {434, 435, 81}, 2, this)) {
    case 0:
        report(langText(438).arg(shown), TWgtStatusBar::Plain);
        return Stored::GivenUp;
    case 1:
        return Stored::Yes;
    default:
        report(langText(436).arg(shown), TWgtStatusBar::Red);
        return Stored::NotNow;
    }
}

TMainWindow::Stored TMainWindow::storePrj()
{
    const QString file = absFile(m_prjList->listFolder(), project().file());
    const Stored wanted = project().isFileOutdated() ? askOutdated(file) : Stored::Yes;
    if (wanted != Stored::Yes)
        return wanted;
    TCtrlProject control;
    if (!control.save(file, project())) {
        report(QStringLiteral("%1 \"%2\": %3").arg(langText(86), project().name(), control.errorText()),
               TWgtStatusBar::Red);
        return Stored::Failed;
    }
    report(langText(85).arg(project().name()), TWgtStatusBar::Green);
    return Stored::Yes;
}

TMainWindow::Stored TMainWindow::storeList()
{
    const QString file = m_prjList->listFile();
    if (!m_prjList->isChanged())
        return Stored::Yes;
    const Stored wanted = m_prjList->isOutdated() ? askOutdated(file) : Stored::Yes;
    if (wanted != Stored::Yes || m_prjList->save(file))
        return wanted;
    report(QStringLiteral("%1: %2").arg(file, m_prjList->errorText()), TWgtStatusBar::Red);
    return Stored::Failed;
}

bool TMainWindow::saveList()
{
    const Stored stored = storeList();
    if (stored == Stored::GivenUp)
        reloadList();
    return stored == Stored::Yes;
}

bool TMainWindow::keepList()
{
    Stored stored = storeList();
    while (stored == Stored::Failed) {
        const QString file = m_prjList->listFile();
        const QString question = langText(432).arg(QDir::toNativeSeparators(file), m_prjList->errorText());
        const int answer = msgChoose(question, loseButtons, keepChanges, this);
        if (answer == keepChanges)
            return false;
        if (answer == 1) {
            stored = Stored::GivenUp;
        } else {
            const QString other = askNewFile(96, file, prjListSuffix, true);
            if (!other.isEmpty() && m_prjList->saveCopy(other))
                stored = Stored::Yes;
        }
    }
    return stored != Stored::NotNow;
}

bool TMainWindow::saveBeforeClosing()
{
    if (!appData().AutoSavePrj) {
        const int answer = msgChoose(langText(84).arg(project().name()), {429, 430, 81}, 0, this);
        if (answer != 0)
            return answer == 1;
    }
    const Stored stored = storePrj();
    return stored == Stored::Failed ? saveElsewhereBeforeClosing() : stored != Stored::NotNow;
}

bool TMainWindow::saveElsewhereBeforeClosing()
{
    for (;;) {
        const int answer = msgChoose(langText(426), loseButtons, keepChanges, this);
        if (answer != 0)
            return answer == 1;
        const QString file = askPrjFile();
        if (!file.isEmpty() && copyPrjTo(file))
            return true;
    }
}

bool TMainWindow::closePrjAndList()
{
    if (!keepList())
        return false;
    const QList<TPrjListItem> decided = m_prjList->items();
    if (!closePrj())
        return false;
    // The project may have got another file, and the list a node for it.
    if (m_prjList->items() != decided && !keepList()) {
        selectPrjLater();
        return false;
    }
    m_prjList->dropChanges();
    return true;
}

/// What is still to be stored where no question is possible any more. What somebody else has written
/// stays.
void TMainWindow::storeWithoutAsking()
{
    const auto keep = [](const QString& file, bool isOutdated, const std::function<bool()>& store) {
        if (isOutdated || !store())
            logError(QStringLiteral("Error"), langText(436).arg(file));
    };
    if (m_prjList->isChanged()) {
        keep(m_prjList->listFile(), m_prjList->isOutdated(),
             [this] { return m_prjList->save(m_prjList->listFile()); });
    }
    if (appData().AutoSavePrj && project().isOpen() && project().isChanged()) {
        keep(project().file(), project().isFileOutdated(),
             [] { return TCtrlProject().save(project().file(), project()); });
    }
}

void TMainWindow::slotPrjSave()
{
    // A group has no project; nor has a node whose file could not be read.
    if (!project().isOpen())
        return;
    if (appData().ConfirmProjectSave && !msgAsk(langText(112).arg(project().name()), this))
        return;
    if (storePrj() == Stored::GivenUp)
        reopenPrj();
}

void TMainWindow::slotPrjSaveAs()
{
    const QString file = askPrjFile();
    if (file.isEmpty())
        return;
    if (isSameFile(file, project().file())) {
        if (storePrj() == Stored::GivenUp)
            reopenPrj();
        return;
    }
    QTreeWidgetItem* node = copyPrjTo(file);
    if (!node)
        return;
    stopRunsThen([this, node] { reopenNode(node); });
    updateState();
}

void TMainWindow::reopenPrj()
{
    stopRunsThen([this] { reopenNode(m_openNode); });
}

/// The project's changes are in the node's file, or the user has given them up.
void TMainWindow::reopenNode(QTreeWidgetItem* node)
{
    if (!m_prjList->tree()->nodes().contains(node))
        return;
    const int tab = m_prj->currentIndex();
    const int row = m_prj->currentRow();
    project().clearChanged();
    m_prjList->restoreCurrent(node);
    openCurrentNode();
    showPlace(tab, row);
}

QString TMainWindow::askPrjFile()
{
    return askNewFile(428, project().file(), prjSuffix, true);
}

QTreeWidgetItem* TMainWindow::copyPrjTo(const QString& file)
{
    TCtrlProject control;
    if (!control.saveCopy(file, project())) {
        report(QStringLiteral("%1 \"%2\": %3").arg(langText(86), file, control.errorText()),
               TWgtStatusBar::Red);
        return nullptr;
    }
    const bool isInTree = m_prjList->tree()->nodes().contains(m_openNode);
    QTreeWidgetItem* node = m_prjList->nodeFor(file, isInTree ? m_openNode : nullptr);
    // A list that could not be written stays changed, and is asked about when it is left.
    if (storeList() == Stored::Yes)
        report(langText(437).arg(QDir::toNativeSeparators(file)), TWgtStatusBar::Green);
    return node;
}
