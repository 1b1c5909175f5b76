#include "formats/TFormatBIN.h"

#include "core/globals.h"
#include "formats/chunkSize.h"

TFormatBIN::TFormatBIN(const QString& format, const QString& file, qint64 addrFile, qint64 addrDevice,
                       qint64 addrEnd, qint64 chunk)
    : IFormat(file)
    , m_format(format.toLower())
    , m_addrFile(addrFile)
    , m_addrEnd(addrEnd)
    , m_chunk(chunk)
    , m_curFile(addrFile)
    , m_curDevice(addrDevice)
{
}

bool TFormatBIN::open(int mode)
{
    QIODevice::OpenMode how = QIODevice::ReadOnly;
    if (mode == Write) {
        how = m_format == QLatin1String("bin+") ? QIODevice::ReadWrite : QIODevice::WriteOnly;
    } else {
        if (!m_file.exists())
            return fail(langText(417).arg(QString()));
        if (m_addrFile > m_file.size())
            return fail(langText(418));
    }
    QString reason;
    return openFile(how, reason) || fail(langText(419).arg(reason));
}

bool TFormatBIN::seekTo(qint64 place)
{
    // Runs are sequential: without the test every small piece would cost a system call for nothing.
    return m_file.pos() == place || m_file.seek(place);
}

bool TFormatBIN::write(qint64 addr, const QByteArray& data)
{
    if (!seekTo(addr) || m_file.write(data) != data.size())
        return failDevice();
    return true;
}

bool TFormatBIN::read(qint64& addr, QByteArray& data)
{
    data.clear();
    if (m_chunk < 1)
        return fail(langText(424));
    m_curDevice = addr;
    const qint64 n = chunkSize(m_curDevice, m_addrEnd, m_chunk);
    if (n == 0)
        return true;
    if (!seekTo(m_curFile))
        return failDevice();
    m_curDevice += n;
    m_curFile += n;
    data.resize(static_cast<int>(n));
    const qint64 got = m_file.read(data.data(), n);
    data.resize(static_cast<int>(qMax<qint64>(got, 0)));
    // A short file ends the run; a device that cannot be read must not look like one.
    return got >= 0 || failDevice();
}

bool TFormatBIN::close()
{
    if (!m_file.isOpen())
        return false;
    const bool good = m_file.flush() || failDevice();
    m_file.close();
    return good;
}
