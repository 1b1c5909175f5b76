#include "console/TArguments.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace {

using Word = TArguments::Word;

TArguments wrong(const QString& error)
{
    TArguments arguments;
    arguments.error = error;
    return arguments;
}

/// A name of a port is left alone, a path is taken from where the user is.
QString absolutePort(const QString& port)
{
    return port.contains(QLatin1Char('/')) ? QFileInfo(port).absoluteFilePath() : port;
}

bool readPorts(const QStringList& texts, TArguments& arguments)
{
    for (const QString& text : texts) {
        const int equals = text.indexOf(QLatin1Char('='));
        if (equals < 1 || equals == text.size() - 1) {
            arguments = wrong(QStringLiteral("--port takes ALIAS=PORT, not \"%1\"").arg(text));
            return false;
        }
        arguments.ports.append({text.left(equals), absolutePort(text.mid(equals + 1))});
    }
    return true;
}

void addOptions(QCommandLineParser& parser, Word word)
{
    // The descriptions stand in help(), so only names count here.
    parser.addOption({QStringList{QStringLiteral("h"), QStringLiteral("help")}, QString()});
    if (word == Word::Check)
        parser.addOption(QCommandLineOption(QStringLiteral("json")));
    if (word != Word::Run)
        return;
    const QString value = QStringLiteral("value");
    parser.addOption({QStringList{QStringLiteral("c"), QStringLiteral("config")}, {}, value});
    parser.addOption(QCommandLineOption(QStringLiteral("port"), {}, value));
    for (const char* flag : {"events", "save", "resume", "hex-linear"})
        parser.addOption(QCommandLineOption(QLatin1String(flag)));
}

/// The one argument that is no option.
QString takeArgument(const QCommandLineParser& parser, const QString& name, TArguments& arguments)
{
    const QStringList rest = parser.positionalArguments();
    if (rest.isEmpty() || rest.first().isEmpty())
        arguments = wrong(QStringLiteral("%1 is missing").arg(name));
    else if (rest.size() > 1)
        arguments = wrong(QStringLiteral("unexpected argument \"%1\"").arg(rest.at(1)));
    else
        return rest.first();
    return QString();
}

void readRun(const QCommandLineParser& parser, TArguments& arguments)
{
    arguments.configs = parser.values(QStringLiteral("config"));
    arguments.configs.removeDuplicates();
    arguments.events = parser.isSet(QStringLiteral("events"));
    arguments.save = parser.isSet(QStringLiteral("save"));
    arguments.resume = parser.isSet(QStringLiteral("resume"));
    arguments.hexLinear = parser.isSet(QStringLiteral("hex-linear"));
    if (readPorts(parser.values(QStringLiteral("port")), arguments))
        arguments.project = takeArgument(parser, QStringLiteral("PROJECT"), arguments);
}

void readCheck(const QCommandLineParser& parser, TArguments& arguments)
{
    arguments.json = parser.isSet(QStringLiteral("json"));
    arguments.project = takeArgument(parser, QStringLiteral("PROJECT"), arguments);
}

void readList(const QCommandLineParser& parser, TArguments& arguments)
{
    const QString known = TArguments::listWords().join(QStringLiteral(", "));
    arguments.what = takeArgument(parser, QStringLiteral("WHAT (%1)").arg(known), arguments);
    if (arguments.word == Word::List && !TArguments::listWords().contains(arguments.what))
        arguments = wrong(QStringLiteral("cannot list \"%1\"; known are %2").arg(arguments.what, known));
}

void readLint(const QCommandLineParser& parser, TArguments& arguments)
{
    if (parser.positionalArguments().isEmpty())
        return;
    const QString folder = takeArgument(parser, QStringLiteral("FOLDER"), arguments);
    if (!folder.isEmpty())
        arguments.folder = QFileInfo(folder).absoluteFilePath();
}

Word wordOf(const QString& text)
{
    static const QHash<QString, Word> words{
        {QStringLiteral("--help"), Word::Help},       {QStringLiteral("-h"), Word::Help},
        {QStringLiteral("--version"), Word::Version}, {QStringLiteral("-v"), Word::Version},
        {QStringLiteral("run"), Word::Run},           {QStringLiteral("check"), Word::Check},
        {QStringLiteral("list"), Word::List},         {QStringLiteral("lint"), Word::Lint}};
    return words.value(text, Word::Wrong);
}

} // namespace

TArguments TArguments::parse(const QStringList& words)
{
    TArguments arguments;
    arguments.word = words.isEmpty() ? Word::Wrong : wordOf(words.first());
    if (arguments.word == Word::Wrong)
        return wrong(QStringLiteral("unknown word \"%1\"").arg(words.value(0)));
    if (arguments.word == Word::Help || arguments.word == Word::Version)
        return words.size() == 1 ? arguments
                                 : wrong(QStringLiteral("unexpected argument \"%1\"").arg(words.at(1)));

    QCommandLineParser parser;
    addOptions(parser, arguments.word);
    // The parser takes the first word for the name of the program.
    if (!parser.parse(words))
        return wrong(parser.errorText());
    if (parser.isSet(QStringLiteral("help"))) {
        arguments.word = Word::Help;
        return arguments;
    }
    if (arguments.word == Word::Run)
        readRun(parser, arguments);
    else if (arguments.word == Word::Check)
        readCheck(parser, arguments);
    else if (arguments.word == Word::Lint)
        readLint(parser, arguments);
    else
        readList(parser, arguments);
    if (!arguments.project.isEmpty())
        arguments.project = QFileInfo(arguments.project).absoluteFilePath();
    return arguments;
}

QStringList TArguments::listWords()
{
    return {QStringLiteral("chips"), QStringLiteral("families"), QStringLiteral("programmers"),
            QStringLiteral("checksums"), QStringLiteral("ports")};
}

QString TArguments::help()
{
    return QStringLiteral("Usage: velmarkion [WORD [OPTIONS] ...]\n"
                          "\n"
                          "Without a word the window opens.\n"
                          "\n"
                          "  run [OPTIONS] PROJECT      runs configurations of a project file\n"
                          "      -c, --config NAME      the configuration; several run side by side\n"
                          "                             (without it: the first one)\n"
                          "      --port ALIAS=PORT      where the programmer ALIAS is; may be repeated\n"
                          "      --events               one JSON object a line in place of the log\n"
                          "      --save                 writes the project if the runs changed it\n"
                          "      --resume               goes on at once at every pause\n"
                          "      --hex-linear           extended addresses of written HEX files as type\n"
                          "                             04, which every tool reads\n"
                          "  check [--json] PROJECT     prints every command and whether it is valid\n"
                          "  list WHAT                  chips, families, programmers, checksums or ports\n"
                          "  lint [FOLDER]              says what is wrong or doubtful in a folder of chip\n"
                          "                             descriptions (without it: the program's own)\n"
                          "  --help, -h                 this text\n"
                          "  --version, -v              the version\n"
                          "\n"
                          "At a pause a line on standard input lets the run go on, its end stops it.\n"
                          "Exit codes: 0 all went well; 1 a run failed, a checked command is not valid, or\n"
                          "a description is doubtful; 2 wrong usage, or a file that cannot be read; 130 "
                          "stopped by a signal.\n");
}
