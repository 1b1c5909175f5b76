#pragma once

#include "misc/TNormCmdParam.h"

/// getParam for the source file that it names, with the line of the caller, as the log wants it. Holds no
/// state but that name.
class TParamReader
{
public:
    constexpr explicit TParamReader(const char* source)
        : m_source(source)
    {
    }
    QVariant operator()(const TData& data, const QString& key, int line = __builtin_LINE()) const
    {
        return getParam(m_source, line, data, key);
    }

private:
    const char* m_source;
};
