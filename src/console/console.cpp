#include "console/console.h"

#include "app/startup.h"
#include "base/helpers.h"
#include "base/identity.h"
#include "base/qt_versions.h"
#include "console/TArguments.h"
#include "console/TRunSession.h"
#include "console/check.h"
#include "console/lint.h"
#include "console/list.h"
#include "console/print.h"

#include <QCoreApplication>

#include <csignal>
#include <fcntl.h>

namespace {

constexpr int exitUsage = 2;

/// A standard stream that is closed would be opened anew as some file or port, and be written to.
void openStandardStreams()
{
    for (int descriptor = 0; descriptor <= 2; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) == -1)
            open("/dev/null", O_RDWR);
    }
}

QStringList wordsOf(int argc, char** argv)
{
    QStringList words;
    for (int i = 1; i < argc; ++i)
        words.append(QString::fromLocal8Bit(argv[i]));
    return words;
}

int work(const TArguments& arguments)
{
    startEngine();
    switch (arguments.word) {
    case TArguments::Word::Run:
        return TRunSession(arguments).run();
    case TArguments::Word::Check:
        return checkProject(arguments.project, arguments.json);
    case TArguments::Word::Lint:
        return lintFolder(arguments.folder);
    default:
        printList(arguments.what);
        return 0;
    }
}

} // namespace

int runConsole(int argc, char** argv)
{
    openStandardStreams();
    // A reader that goes away must not end a run in the middle, with the chip under power.
    signal(SIGPIPE, SIG_IGN);
    // Before the arguments are read: file names must come out as they went in, in any locale.
    makeUtf8Default();

    const TArguments arguments = TArguments::parse(wordsOf(argc, argv));
    switch (arguments.word) {
    case TArguments::Word::Wrong:
        printError(arguments.error + QStringLiteral("\nTry \"velmarkion --help\"."));
        return exitUsage;
    case TArguments::Word::Help:
        printOut(TArguments::help().toUtf8());
        return 0;
    case TArguments::Word::Version:
        printOut(QByteArray(identity::longName) + ' ' + identity::version + '\n');
        return 0;
    default:
        break;
    }
    QCoreApplication application(argc, argv);
    return work(arguments);
}
