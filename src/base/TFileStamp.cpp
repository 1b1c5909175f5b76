#include "base/TFileStamp.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr QCryptographicHash::Algorithm algorithm = QCryptographicHash::Sha1;

} // namespace

void TFileStamp::take(const QString& file, const QByteArray& bytes)
{
    m_file = QFileInfo(file).absoluteFilePath();
    m_size = bytes.size();
    m_hash = QCryptographicHash::hash(bytes, algorithm);
}

// By the content and not by the time: a copy may bring an old time with it, and a file that was only
// touched has lost nothing.
bool TFileStamp::isOutdated() const
{
    const QFileInfo info(m_file);
    if (m_file.isEmpty() || !info.isFile())
        return false;
    if (info.size() != m_size)
        return true;
    QFile file(m_file);
    QCryptographicHash hash(algorithm);
    return !file.open(QIODevice::ReadOnly) || !hash.addData(&file) || hash.result() != m_hash;
}
