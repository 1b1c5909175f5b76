#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <initializer_list>

class QJsonObject;

// What projects, project lists and the list of lists have in common: they are read with a JSON parser
// and written by hand, line by line. Any thread.

/// s as it stands between the quotes of a JSON string: backslash, double quote and control characters
/// escaped, everything else as it is.
QString jsonEscaped(const QString& s);
/// "key": "value", both escaped.
QString jsonPair(const QString& key, const QString& value);
/// The members of an object, each as it stands in a file: "key": value.
QStringList jsonMembers(const QJsonObject& object);
/// The members that are not among the known ones.
QJsonObject otherMembers(const QJsonObject& object, std::initializer_list<QLatin1String> known);

/// Reads a whole file. False with the reason in error; a file above 256 MiB is refused, so is a named pipe.
[[nodiscard]] bool readWholeFile(const QString& file, QByteArray& bytes, QString& error);
/// Parses a text whose top value is an object. False with the parser's text in error. Refuses what
/// would take far more memory than its own size: nesting above the parser's limit, millions of values.
[[nodiscard]] bool parseJsonObject(const QByteArray& bytes, QJsonObject& object, QString& error);
/// Writes like writeFileSafely, but leaves a file alone that holds these bytes already.
[[nodiscard]] bool writeFileIfChanged(const QString& file, const QByteArray& bytes, QString& error);
