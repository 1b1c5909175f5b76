#include "formats/data/TFormat.h"

#include "formats/data/TFormatBIN.h"
#include "formats/data/TFormatHEX.h"

#include <algorithm>
#include <limits>

namespace {

std::unique_ptr<IFormat> makeBin(const QString& word, const QString& file, qint64 addrFile, qint64 addrDevice,
                                 qint64 addrEnd, qint64 chunk)
{
    return std::make_unique<TFormatBIN>(word, file, addrFile, addrDevice, addrEnd, chunk);
}

std::unique_ptr<IFormat> makeHex(const QString&, const QString& file, qint64 addrFile, qint64 addrDevice,
                                 qint64 addrEnd, qint64 chunk)
{
    return std::make_unique<TFormatHEX>(file, addrFile, addrDevice, addrEnd, chunk);
}

/// What makes a file of that word.
TFormat::Kind::Factory factory(const QString& word)
{
    const std::vector<TFormat::Kind>& kinds = TFormat::kinds();
    const auto kind = std::find_if(kinds.begin(), kinds.end(),
                                   [&word](const TFormat::Kind& known) { return known.word == word; });
    return kind == kinds.end() ? makeHex : kind->make;
}

} // namespace

TFormat::TFormat(const QString& format, const QString& file, qint64 addrFile, qint64 addrDevice,
                 qint64 addrEnd, qint64 chunk)
    : m_format(factory(format)(format, file, addrFile, addrDevice, addrEnd, chunk))
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

const std::vector<TFormat::Kind>& TFormat::kinds()
{
    constexpr qint64 any = std::numeric_limits<qint64>::max();
    constexpr qint64 greatestHex = 0xFFFFFFFF; // a record tells 16 bits, an extended address 16 above them
    static const std::vector<Kind> kinds{
        {QLatin1String("hex"), QLatin1String("HEX"), QLatin1String("*.hex"), true, greatestHex, makeHex},
        {QLatin1String("bin"), QLatin1String("BIN"), QLatin1String("*.bin"), false, any, makeBin},
        {QLatin1String("bin+"), QLatin1String("BIN+"), QLatin1String("*.bin"), false, any, makeBin},
    };
    return kinds;
}

const TFormat::Kind* TFormat::find(const QString& name)
{
    const QString upper = name.toUpper();
    const auto kind = std::find_if(kinds().begin(), kinds().end(),
                                   [&upper](const Kind& known) { return known.name == upper; });
    return kind == kinds().end() ? nullptr : &*kind;
}

QString TFormat::fileFilter()
{
    QStringList filters;
    for (const Kind& kind : kinds())
        filters.append(kind.filter);
    filters.removeDuplicates();
    filters.sort();
    return filters.join(QLatin1Char(' '));
}

QStringList TFormat::formatList()
{
    QStringList names;
    for (const Kind& kind : kinds())
        names.append(kind.name);
    return names;
}
