#pragma once

#include "core/TLang.h"
#include "core/globals.h"

#include <QFile>
#include <QMap>
#include <QTemporaryDir>
#include <QtTest>

// Intel HEX as the tests know it, written apart from the code under test, and files of a test.

/// Address to byte.
using Image = QMap<qint64, uchar>;

inline QByteArray hexLine(int type, int offset, const QByteArray& data)
{
    QByteArray bytes;
    bytes.append(char(data.size()))
        .append(char(offset >> 8))
        .append(char(offset))
        .append(char(type))
        .append(data);
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

/// What a reader of strict files sees; extended addresses of both types are bits 31..16. ok is false for
/// anything out of form, and for a record that leaves its bank.
inline Image parseHex(const QByteArray& text, bool& ok)
{
    Image image;
    qint64 upper = 0;
    bool ended = false;
    ok = text.endsWith("\r\n");
    for (const QByteArray& line : text.left(text.size() - 2).split('\n')) {
        const QByteArray bytes = QByteArray::fromHex(line.mid(1).trimmed());
        const int offset = bytes.size() < 5 ? 0 : uchar(bytes[1]) * 256 + uchar(bytes[2]);
        const int type = bytes.size() < 5 ? -1 : bytes[3];
        const QByteArray data = bytes.mid(4, bytes.size() - 5);
        ok = ok && !ended && line.trimmed() + "\r\n" == hexLine(type, offset, data);
        ok = ok && (type == 0 || type == 1 || type == 2 || type == 4) && offset + data.size() <= 0x10000;
        if (type == 2 || type == 4)
            upper = ok ? uchar(data[0]) * 256 + uchar(data[1]) : 0;
        ended = type == 1;
        for (int i = 0; type == 0 && i < data.size(); ++i)
            image[upper * 0x10000 + offset + i] = uchar(data[i]);
    }
    ok = ok && ended;
    return image;
}

/// A folder for one test, and a language table in which every text is its number and its argument.
class Files
{
public:
    Files()
    {
        QByteArray texts;
        for (int id = 0; id < 430; ++id)
            texts += "#" + QByteArray::number(id) + "\n" + "text " + QByteArray::number(id) + " %1\n";
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
