#pragma once

#include "core/TLang.h"
#include "core/globals.h"
#include "support/tables.h"

#include <QFile>
#include <QTemporaryDir>

// Intel HEX as the tests know it, written apart from the code under test, and files of a test.

inline QByteArray hexLine(int type, int offset, const QByteArray& data)
{
    const char head[] = {char(data.size()), char(offset >> 8), char(offset), char(type)};
    QByteArray bytes = QByteArray(head, sizeof head) + data;
    int sum = 0;
    for (const char c : bytes)
        sum += uchar(c);
    bytes.append(char(256 - sum % 256));
    return ":" + bytes.toHex().toUpper() + "\r\n";
}

inline QByteArray hexUpper(int type, int upper)
{
    return hexLine(type, 0, QByteArray().append(char(upper >> 8)).append(char(upper)));
}

inline const QByteArray hexEnd = ":00000001FF\r\n";

/// A folder for one test, and a language table in which every text is its number and its argument.
class Files
{
public:
    Files()
    {
        QByteArray texts;
        for (int id = 0; id < 430; ++id)
            texts += "text " + QByteArray::number(id) + " %1\n";
        lang().load(make("test.lng", texts));
    }

    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString make(const QString& name, const QByteArray& content) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(path(name)));
        return file.fileName();
    }
    QByteArray content(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

private:
    QTemporaryDir m_folder;
};
