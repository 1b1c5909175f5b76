#include "misc/dev_misc.h"

#include "base/helpers.h"
#include "base/keys.h"
#include "core/model/IDevice.h"
#include "core/model/TDataPrj.h"
#include "link/lists/TProg.h"
#include "misc/TNormCmdParam.h"
#include "misc/TParamReader.h"

namespace {

constexpr TParamReader param("misc/dev_misc");

} // namespace

void execChar(const TData& data, qint64& addr_first, qint64& addr_last, quint8& fill)
{
    qint64 count = 0;
    charParam(data, addr_first, count, fill);
    addr_last = lastAddress(addr_first, count);
}

void execData(const TData& data, qint64& addr_first, qint64& addr_last, QByteArray& bytes, QString& hexText)
{
    dataParam(data, addr_first, hexText);
    bytes = hexToBytes(hexText);
    addr_last = lastAddress(addr_first, bytes.size());
}

void execFile(const TData& data, qint64& addr_file, qint64& addr_first, qint64& addr_last, QString& path,
              QString& format)
{
    qint64 count = 0;
    fileAddrParam(data, addr_file, addr_first, count);
    addr_last = lastAddress(addr_first, count);
    path = absFile(project().workPath(), param(data, key::file).toString());
    format = param(data, key::format).toString().toLower();
}

int execClk(const TData& data)
{
    const TBinding bound = project().binding(param(data, key::id_cmd).toInt());
    return bound.family && bound.prog
               ? bound.prog->clockCode(bound.family->section(), param(data, key::clk).toInt())
               : 0;
}
