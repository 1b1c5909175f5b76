#include "support/TestDir.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace {

void copyTree(const QString& from, const QString& to)
{
    const QDir source(from);
    QDirIterator it(from, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString target = to + QLatin1Char('/') + source.relativeFilePath(it.next());
        QDir().mkpath(QFileInfo(target).path());
        if (QFile::copy(it.filePath(), target))
            QFile::setPermissions(target, QFile::permissions(target) | QFile::WriteOwner);
    }
}

} // namespace

TestDir::TestDir(Content content)
{
    if (content == ShippedData)
        copyTree(QStringLiteral(VM_DATA_DIR), path());
}

QString TestDir::write(const QString& name, const QByteArray& bytes) const
{
    const QString target = file(name);
    QDir().mkpath(QFileInfo(target).path());
    QFile device(target);
    if (!device.open(QIODevice::WriteOnly) || device.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(target));
    return target;
}

QByteArray TestDir::read(const QString& name) const
{
    QFile device(file(name));
    return device.open(QIODevice::ReadOnly) ? device.readAll() : QByteArray();
}

QString TestDir::addProgram(const QString& name) const
{
    const QString target = file(name);
    if (!QFile::copy(QStringLiteral(VM_BUILD_DIR "/") + name, target))
        qFatal("cannot copy %s", qPrintable(name));
    return target;
}
