#include "formats/data/TFormat.h"

#include "formats/data/TFormatBIN.h"
#include "formats/data/TFormatHEX.h"

namespace {

std::unique_ptr<IFormat> makeFormat(const QString& format, const QString& file, qint64 addrFile,
                                    qint64 addrDevice, qint64 addrEnd, qint64 chunk)
{
    if (format == QLatin1String("bin") || format == QLatin1String("bin+"))
        return std::make_unique<TFormatBIN>(format, file, addrFile, addrDevice, addrEnd, chunk);
    return std::make_unique<TFormatHEX>(file, addrFile, addrDevice, addrEnd, chunk);
}

} // namespace

TFormat::TFormat(const QString& format, const QString& file, qint64 addrFile, qint64 addrDevice,
                 qint64 addrEnd, qint64 chunk)
    : m_format(makeFormat(format, file, addrFile, addrDevice, addrEnd, chunk))
{
}

TFormat::~TFormat() = default;

bool TFormat::open(int mode)
{
    return m_format->open(mode);
}

bool TFormat::write(qint64 addr, const QByteArray& data)
{
    return m_format->write(addr, data);
}

bool TFormat::read(qint64& addr, QByteArray& data)
{
    return m_format->read(addr, data);
}

bool TFormat::close()
{
    return m_format->close();
}

QString TFormat::errorText() const
{
    return m_format->errorText();
}

qint64 TFormat::lastWanted() const
{
    return m_format->lastWanted();
}

qint64 TFormat::leftOut() const
{
    return m_format->leftOut();
}

bool TFormat::mayBeCut() const
{
    return m_format->mayBeCut();
}

void TFormat::setLinear(bool linear)
{
    m_format->setLinear(linear);
}

void TFormat::setGiveUp(const std::function<bool()>& isAsked)
{
    m_format->setGiveUp(isAsked);
}

bool TFormat::isGivenUp() const
{
    return m_format->isGivenUp();
}

bool TFormat::hasSegments() const
{
    return m_format->hasSegments();
}

bool TFormat::isReplacing() const
{
    return m_format->isReplacing();
}

QString TFormat::fileFilter()
{
    return QStringLiteral("*.bin *.hex");
}

QStringList TFormat::formatList()
{
    return {QStringLiteral("HEX"), QStringLiteral("BIN"), QStringLiteral("BIN+")};
}
