#include "formats/IFormat.h"

#include "core/platform.h"

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
    return fail(m_file.errorString());
}

bool IFormat::openFile(QIODevice::OpenMode how, QString& reason)
{
    if (platform::isPipe(m_file.fileName())) {
        reason = QStringLiteral("Is a pipe");
        return false;
    }
    if (m_file.open(how))
        return true;
    reason = m_file.errorString();
    return false;
}
