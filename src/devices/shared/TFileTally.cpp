#include "devices/shared/TFileTally.h"

#include "base/TLang.h"
#include "misc/TNormCmdParam.h"

namespace {

constexpr int textNoFileData = 427;
constexpr int textLeftOut = 440;

} // namespace

void TFileTally::take(qint64 addr, qint64 n)
{
    if (n < 1)
        return;
    if (!hasTaken())
        m_first = addr;
    m_last = addr + n - 1;
    m_taken += n;
}

QString TFileTally::remark(const QString& file) const
{
    if (!hasTaken())
        return langText(textNoFileData).arg(file);
    if (m_left == 0)
        return {};
    return langText(textLeftOut)
        .arg(QString::number(m_taken), hex(m_first), hex(m_last), QString::number(m_left));
}
