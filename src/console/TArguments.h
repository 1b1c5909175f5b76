#pragma once

#include <QList>
#include <QPair>
#include <QStringList>

/// The command line of the console face, read and checked. Paths are made absolute here, because the
/// working directory changes afterwards.
struct TArguments
{
    enum class Word { Wrong, Help, Version, Run, Check, List, Lint };

    /// Reads what stands behind the program's name.
    static TArguments parse(const QStringList& words);

    Word word = Word::Wrong;
    QString error;                        ///< of a wrong line
    QString project;                      ///< run, check: absolute path
    QStringList configs;                  ///< run: names, each once, in the order given
    QList<QPair<QString, QString>> ports; ///< run: alias and port; a port with a "/" is absolute
    bool events = false;
    bool save = false;
    bool resume = false;
    bool hexLinear = false; ///< run: the setting HexLinear, for this run
    bool json = false;
    QString what;   ///< list: one of listWords()
    QString folder; ///< lint: absolute path; empty for the folder of the settings

    /// What "list" knows.
    static QStringList listWords();
    /// The text of --help.
    static QString help();
};
