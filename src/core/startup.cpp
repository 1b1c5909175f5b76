#include "core/startup.h"

#include "core/TAppData.h"
#include "core/TLang.h"
#include "core/globals.h"
#include "core/helpers.h"
#include "core/types.h"

#include <QCoreApplication>
#include <QDir>
#include <QTextCodec>

void startEngine()
{
    registerMetaTypes();
    QDir::setCurrent(QCoreApplication::applicationDirPath());
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    appData().load();
    loadLanguage();
}

void loadLanguage()
{
    lang().load(absFile(appData().PathLanguage, appData().Language));
}
