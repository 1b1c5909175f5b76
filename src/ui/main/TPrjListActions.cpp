#include "ui/main/TPrjListActions.h"

#include "base/TLang.h"
#include "base/helpers.h"
#include "core/files/TCtrlProject.h"
#include "core/files/TPrjListFile.h"
#include "settings/TAppData.h"
#include "ui/dialog_parts.h"
#include "ui/dialogs/TDialogSelectPrjList.h"
#include "ui/main/TMainPanels.h"
#include "ui/main/TPrjSession.h"
#include "ui/panels/TWgtPrjList.h"
#include "ui/window_helpers.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>

#include <algorithm>

namespace {

/// Such a name leads elsewhere from another folder.
bool hasRelativeFile(const QList<TPrjListItem>& items)
{
    return std::any_of(items.begin(), items.end(), [](const TPrjListItem& item) {
        return !item.file.isEmpty() && QFileInfo(item.file).isRelative();
    });
}

} // namespace

TPrjListActions::TPrjListActions(TMainPanels& panels, TPrjSession& session)
    : m_panels(panels)
    , m_session(session)
    , m_prjList(panels.prjList())
{
}

void TPrjListActions::create()
{
    const QString file = askNewFile(m_panels.window(), langText(Text::TitlePrjListNew),
                                    QCoreApplication::applicationDirPath(), prjListSuffix, true);
    if (file.isEmpty())
        return;
    if ((m_prjList->isLoaded() && isSameFile(file, m_prjList->listFile())) || !writeEmptyList(file)) {
        qDebug().noquote() << QStringLiteral("%1: %2").arg(langText(Text::PrjListNotCreated), file);
        m_panels.report(QStringLiteral("%1: %2").arg(langText(Text::PrjListNotCreated), file),
                        TWgtStatusBar::Red);
        m_panels.updateState();
        return;
    }
    m_session.openOtherList(file, file);
}

void TPrjListActions::load()
{
    const QString now =
        m_prjList->listFile().isEmpty() ? TPrjListFile::path(appData().PrjListFile) : m_prjList->listFile();
    const QString file = QFileDialog::getOpenFileName(m_panels.window(), langText(Text::TitlePrjListOpen),
                                                      absDir(now), suffixFilter(prjListSuffix));
    if (!file.isEmpty())
        m_session.openOtherList(file, file);
    m_panels.updateState();
}

void TPrjListActions::select()
{
    const QString lists = QFileInfo(appData().SelectPrjListFile).absoluteFilePath();
    TDialogSelectPrjList dialog(lists, m_panels.window());
    if (!dialog.isLoaded()) {
        msgError(langText(Text::ListOfPrjListsNotLoaded).arg(QDir::toNativeSeparators(lists)),
                 m_panels.window());
        return;
    }
    dialog.setPreset(m_prjList->listName(), m_prjList->listFile());
    bool accepted = false;
    TPrjSession::Stored stored = TPrjSession::Stored::Yes;
    do {
        accepted = dialog.exec() == QDialog::Accepted;
        stored = dialog.isChanged() && dialog.isOutdated() ? m_session.askOutdated(lists)
                                                           : TPrjSession::Stored::Yes;
    } while (stored == TPrjSession::Stored::NotNow);
    if (stored == TPrjSession::Stored::Yes && dialog.isChanged() && !dialog.write())
        m_panels.report(QStringLiteral("%1: %2").arg(lists, dialog.errorText()), TWgtStatusBar::Red);
    if (accepted) {
        m_session.stopRunsThen([this, name = dialog.name(), file = dialog.file()] {
            if (!m_session.closePrjAndList() || !m_session.loadList(name, file))
                return;
            appData().PrjListName = name;
            appData().PrjListFile = file;
            m_panels.status()->showText(QString(), TWgtStatusBar::Plain);
        });
    }
    m_panels.updateState();
}

void TPrjListActions::reload()
{
    const QString file = m_prjList->listFile();
    if (file.isEmpty() ||
        (appData().ConfirmProjectsListReload && !msgAsk(langText(Text::AskReloadPrjList), m_panels.window())))
        return;
    m_session.openOtherList(m_prjList->listName(), file);
}

void TPrjListActions::saveAs()
{
    const QString file = askNewFile(m_panels.window(), langText(Text::TitlePrjListSaveAs),
                                    QCoreApplication::applicationDirPath(), prjListSuffix, false);
    if (file.isEmpty())
        return;
    const QString source = m_prjList->listFile();
    const bool isFree = !QFileInfo::exists(file);
    const bool isNear = absDir(file) == absDir(source) || !hasRelativeFile(m_prjList->items());
    const int answer = isFree && !isNear ? msgChoose(langText(Text::AskListNamesInCopy),
                                                     {Text::ButtonYes, Text::ButtonNo, Text::ButtonCancel}, 0,
                                                     m_panels.window())
                                         : 1;
    if (answer == 2)
        return;
    const TPrjSession::Stored stored = m_session.storeList();
    if (stored == TPrjSession::Stored::NotNow)
        return;
    // A list whose own file cannot be written is saved here all the same.
    const bool copied = isFree && (stored == TPrjSession::Stored::Failed ? m_prjList->saveCopy(file)
                                   : answer == 0                         ? copyPrjList(source, file)
                                                                         : QFile::copy(source, file));
    if (!copied)
        msgError(langText(Text::PrjListNotCopied)
                     .arg(QDir::toNativeSeparators(source), QDir::toNativeSeparators(file)),
                 m_panels.window());
    if (stored == TPrjSession::Stored::GivenUp)
        m_session.reloadList();
    if (copied && stored != TPrjSession::Stored::Failed)
        m_panels.report(langText(Text::ListCopied).arg(QDir::toNativeSeparators(file)), TWgtStatusBar::Green);
}

void TPrjListActions::openFolder()
{
    m_panels.showFolder(m_prjList->listFile());
}

void TPrjListActions::setDragDrop(bool on)
{
    appData().PrjListDragDrop = on;
    m_prjList->dragMode(appData().PrjListDragDrop);
}
