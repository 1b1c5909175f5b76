#include "formats/data/IFormat.h"

#include "base/TLang.h"
#include "base/helpers.h"
#include "base/platform.h"

namespace {

/// What is gathered for a new file before it is written: pieces of a chip are small, and each write of one
/// costs as much as its bytes.
constexpr int blockSize = 0x40000;
/// What a pipe takes at once when it takes anything.
constexpr qint64 pipeBlock = 4096;
constexpr int pipeWait = 30000; // ms
/// How long a stop may have to wait meanwhile.
constexpr int pipeLook = 100; // ms

} // namespace

IFormat::IFormat(const QString& file)
    : m_file(file)
{
}

IFormat::~IFormat() = default;

bool IFormat::fail(const QString& reason)
{
    m_errorText = reason;
    return false;
}

bool IFormat::failDevice()
{
    const QString reason = m_out->errorString();
    return fail(m_out->error() == QFileDevice::ResourceError ? langText(Text::DiskFull).arg(reason) : reason);
}

bool IFormat::openFile(QIODevice::OpenMode how, QString& reason)
{
    if (platform::isPipe(m_file.fileName())) {
        reason = langText(Text::PipeNotPlain);
        return false;
    }
    if (m_file.open(how))
        return true;
    reason = m_file.errorString();
    return false;
}

bool IFormat::openPipe(QString& reason)
{
    const int descriptor = platform::openPipe(m_file.fileName(), reason);
    m_isPipe = descriptor >= 0;
    return m_isPipe && m_file.open(descriptor, QIODevice::WriteOnly | QIODevice::Unbuffered,
                                   QFileDevice::AutoCloseHandle);
}

bool IFormat::openNew(QString& reason)
{
    const QString path = m_file.fileName();
    if (platform::isPipe(path))
        return openPipe(reason);
    if (!platform::isWrittenInPlace(path)) {
        m_newFile.setFileName(path);
        m_out = &m_newFile;
    }
    // Unbuffered: whole blocks come, and a full disk shows at the one that no longer fits.
    if (m_out->open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return true;
    reason = m_out->errorString();
    return false;
}

bool IFormat::awaitReader()
{
    for (int waited = 0; waited < pipeWait && !m_isGivenUp; waited += pipeLook) {
        if (platform::awaitPipe(m_out->handle(), pipeLook))
            return true;
        m_isGivenUp = m_giveUp && m_giveUp();
    }
    return fail(langText(Text::PipeNobodyReads));
}

bool IFormat::put(const QByteArray& bytes)
{
    if (!isReplacing())
        return writeOut(bytes);
    m_block.append(bytes);
    return m_block.size() < blockSize || putBlock();
}

bool IFormat::putBlock()
{
    const bool good = writeOut(m_block);
    // What the disk does meanwhile, the end of writing need not wait for.
    platform::startToDisk(m_out->handle());
    m_block.resize(0); // keeps its memory
    return good;
}

bool IFormat::writeOut(const QByteArray& bytes)
{
    // A disk that becomes full takes a part, and tells the reason only with the next one.
    for (qint64 done = 0; done < bytes.size();) {
        qint64 most = bytes.size() - done;
        if (m_isPipe) {
            if (!awaitReader())
                return false;
            most = qMin(most, pipeBlock);
        }
        const qint64 n = m_out->write(bytes.constData() + done, most);
        if (n <= 0)
            return failDevice();
        done += n;
    }
    return true;
}

bool IFormat::finish()
{
    if (!m_out->isOpen())
        return false;
    if (isReplacing()) {
        QString reason;
        if (!putBlock())
            return false;
        return putInPlace(m_newFile, reason) || fail(reason);
    }
    m_file.close();
    return m_file.error() == QFileDevice::NoError || failDevice();
}
