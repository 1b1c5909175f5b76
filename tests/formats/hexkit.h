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

/// What a strict reader makes of a file of data and extended addresses, in which both types are bits 31..16.
/// Empty for anything out of form, and for a record that leaves its bank.
inline Image parseHex(const QByteArray& text)
{
    Image image;
    qint64 upper = 0;
    QList<QByteArray> lines = text.split('\n');
    if (!text.endsWith("\r\n" + hexEnd))
        return Image();
    for (const QByteArray& line : lines.mid(0, lines.size() - 2)) {
        const QByteArray bytes = QByteArray::fromHex(line.mid(1).trimmed());
        const int offset = uchar(bytes.at(1)) * 256 + uchar(bytes.at(2));
        const QByteArray data = bytes.mid(4, bytes.size() - 5);
        const bool isData = bytes.at(3) == 0;
        if (line + "\n" != hexLine(bytes.at(3), offset, data) || offset + data.size() > 0x10000)
            return Image();
        if (!isData)
            upper = uchar(data.at(0)) * 256 + uchar(data.at(1));
        for (int i = 0; isData && i < data.size(); ++i)
            image[upper * 0x10000 + offset + i] = uchar(data[i]);
    }
    return image;
}

/// Reports a row of a table that came out wrong, and lets the others go on.
template <class Value> void compareRow(const QString& name, const Value& is, const Value& wanted)
{
    if (is == wanted)
        return;
    QString text;
    QDebug(&text) << name << "gives" << is << "instead of" << wanted;
    QTest::qFail(qPrintable(text), __FILE__, __LINE__);
}

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
