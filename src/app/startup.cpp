#include "app/startup.h"

#include "base/TLang.h"
#include "base/helpers.h"
#include "base/qt_versions.h"
#include "base/types.h"
#include "settings/TAppData.h"

#include <QCoreApplication>
#include <QDir>
#include <QTranslator>

#include <algorithm>

namespace {

/// Buttons of boxes, dialogs for files and colours; what a port says when it does not open.
constexpr const char* qtParts[] = {"qtbase", "qtserialport"};

/// In the language of the table, which tells its code.
void loadQtWords()
{
    const QStringList folders{appData().PathLanguage, qtTranslationsFolder()};
    for (const char* part : qtParts) {
        const QString name = QLatin1String(part);
        // The words of the language before are those of the translator of that name.
        delete qApp->findChild<QTranslator*>(name, Qt::FindDirectChildrenOnly);
        auto* words = new QTranslator(qApp);
        words->setObjectName(name);
        const QString file = QStringLiteral("%1_%2").arg(name, langText(Text::LanguageCode));
        const bool isThere = std::any_of(folders.begin(), folders.end(),
                                         [&](const QString& folder) { return words->load(file, folder); });
        if (isThere)
            QCoreApplication::installTranslator(words);
    }
}

} // namespace

void startEngine()
{
    registerMetaTypes();
    QDir::setCurrent(QCoreApplication::applicationDirPath());
    makeUtf8Default();
    appData().load();
    loadLanguage();
}

void loadLanguage()
{
    lang().load(absFile(appData().PathLanguage, appData().Language));
    loadQtWords();
}
