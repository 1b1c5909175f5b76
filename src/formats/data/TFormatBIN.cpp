#include "formats/data/TFormatBIN.h"

#include "base/TLang.h"
#include "base/chunkSize.h"

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
    QString reason;
    bool good = false;
    if (mode == Write) {
        good = m_format == QLatin1String("bin+")
                   ? openFile(QIODevice::ReadWrite | QIODevice::Unbuffered, reason)
                   : openNew(reason);
    } else {
        if (!m_file.exists())
            return fail(langText(Text::FileNotFound).arg(QString()));
        if (m_addrFile > m_file.size())
            return fail(langText(Text::FileAddrBeyondEnd));
        good = openFile(QIODevice::ReadOnly, reason);
    }
    return good || fail(langText(Text::FileNotOpened).arg(reason));
}

bool TFormatBIN::seekTo(qint64 place)
{
    // Runs are sequential: without the test every small piece would cost a system call for nothing.
    if (m_place == place)
        return true;
    if (m_out->isSequential())
        return fail(langText(Text::FileOnlyInOrder));
    if (isReplacing() && !putBlock())
        return false;
    if (!m_out->seek(place))
        return failDevice();
    m_place = place;
    return true;
}

bool TFormatBIN::write(qint64 addr, const QByteArray& data)
{
    if (!seekTo(addr) || !put(data))
        return false;
    m_place += data.size();
    return true;
}

bool TFormatBIN::read(qint64& addr, QByteArray& data)
{
    data.clear();
    if (m_chunk < 1)
        return fail(langText(Text::SizeMissing));
    m_curDevice = addr;
    const qint64 n = chunkSize(m_curDevice, m_addrEnd, m_chunk);
    if (n == 0)
        return true;
    if (!seekTo(m_curFile))
        return false;
    m_curDevice += n;
    m_curFile += n;
    data.resize(static_cast<int>(n));
    const qint64 got = m_file.read(data.data(), n);
    data.resize(static_cast<int>(qMax<qint64>(got, 0)));
    m_place += data.size();
    m_taken += data.size();
    // A short file ends the run; a device that cannot be read must not look like one.
    return got >= 0 || failDevice();
}

qint64 TFormatBIN::leftOut() const
{
    // A device has no size.
    return qMax<qint64>(m_file.size() - m_taken, 0);
}

bool TFormatBIN::close()
{
    return finish();
}
