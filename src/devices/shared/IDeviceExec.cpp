#include "devices/shared/IDeviceExec.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "core/model/TDataPrj.h"
#include "link/wire/TSerialPort.h"
#include "misc/TNormCmdParam.h"

#include <QCoreApplication>

#include <algorithm>
#include <limits>

namespace {

/// A stop must not wait for more slow pieces than the one that is being worked on.
constexpr qint64 longestBlind = 100; // ms

/// pos * 100 / total, without overflow also for numbers out of a damaged description.
int percentOf(qint64 pos, qint64 total)
{
    constexpr qint64 safe = std::numeric_limits<qint64>::max() / 100;
    if (total == 0)
        return 100;
    const qint64 percent = pos > safe || pos < -safe ? pos / qMax<qint64>(total / 100, 1) : pos * 100 / total;
    // A loop reports the address behind its last piece, which lies past the end of a short range.
    return int(std::clamp<qint64>(percent, 0, 100));
}

TData detached(TData data)
{
    data.detach();
    return data;
}

} // namespace

IDeviceExec::IDeviceExec(const TData& data)
    : m_cmdData(detached(data))
{
}

IDeviceExec::~IDeviceExec() = default;

bool IDeviceExec::readChipId(TSerialPort*, QString&)
{
    return true;
}

QString IDeviceExec::errorText() const
{
    return m_errorText;
}

void IDeviceExec::slotStop()
{
    m_stopRequested = true;
}

bool IDeviceExec::portGuard(const TSerialPort* port)
{
    return port->isOpen() || fail(langText(Text::PortNotOpen));
}

bool IDeviceExec::sendChecked(TSerialPort* port, quint8 opcode, QByteArray& payload)
{
    return port->exchange(opcode, payload) || fail(port->errorString());
}

bool IDeviceExec::reportProgress(TProgress& progress, qint64 pos, qint64 total)
{
    const int percent = percentOf(pos, total);
    if (percent != progress.percent) {
        progress.percent = percent;
        progress.tick = 1;
        letRequestsIn(progress);
        emit signalEventProc(percent);
    } else if ((progress.tick++ & 0x0F) == 0 || progress.sinceLook.elapsed() > longestBlind) {
        letRequestsIn(progress);
    }
    return m_stopRequested;
}

bool IDeviceExec::isStopAsked()
{
    QCoreApplication::processEvents();
    return m_stopRequested;
}

void IDeviceExec::letRequestsIn(TProgress& progress)
{
    QCoreApplication::processEvents();
    progress.sinceLook.start();
}

void IDeviceExec::storeResult(const QString& text)
{
    const int id_cmd = m_cmdData.value(key::id_cmd).toInt();
    project().setCmdParam(id_cmd, {{key::id_cmd, id_cmd}, {key::data, text}});
    emit signalEventText(ceResult, textFirstBytes(text));
}

bool IDeviceExec::fail(const QString& reason)
{
    m_errorText = reason;
    return false;
}
