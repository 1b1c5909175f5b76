#pragma once

#include "base/types.h"

#include <QFrame>

/// A command without parameters: only its name. It reports nothing.
class TFormToolsNote : public QFrame
{
    Q_OBJECT

signals:
    void signalChangedCmdParam(TData param);

protected:
    explicit TFormToolsNote(const TData& params);
};

class TFormToolsPause : public TFormToolsNote
{
    Q_OBJECT

public:
    explicit TFormToolsPause(const TData& params)
        : TFormToolsNote(params)
    {
    }
};

class TFormToolsStop : public TFormToolsNote
{
    Q_OBJECT

public:
    explicit TFormToolsStop(const TData& params)
        : TFormToolsNote(params)
    {
    }
};
