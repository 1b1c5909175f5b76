#include "formats/IFormat.h"

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
