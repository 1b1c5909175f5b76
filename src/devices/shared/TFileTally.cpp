#include "devices/shared/TFileTally.h"

#include "base/TLang.h"
#include "misc/TNormCmdParam.h"

void TFileTally::take(qint64 addr, qint64 n)
{
    if (n < 1)
        return;
    if (!hasTaken())
        m_first = addr;
    m_last = addr + n - 1;
    m_taken += n;
}

QStringList TFileTally::remarks(const QString& file) const
{
    if (!hasTaken())
        return {langText(Text::FileNoData).arg(file)};
    QStringList lines;
    if (m_left > 0)
        lines.append(langText(Text::FileLeftOut)
                         .arg(QString::number(m_taken), hex(m_first), hex(m_last), QString::number(m_left)));
    if (m_wanted > m_last)
        lines.append(
            langText(Text::FileEndsEarly).arg(file, QString::number(m_wanted - m_last), hex(m_last + 1)));
    return lines;
}
