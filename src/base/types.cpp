#include "base/types.h"

bool isFlagSet(const QVariant& value)
{
    return value.toInt() != 0 || value.toString() == QLatin1String("true");
}

void registerMetaTypes()
{
    qRegisterMetaType<TData>("TData");
    qRegisterMetaType<TCodeView>("TCodeView");
    qRegisterMetaType<TCodeExec>("TCodeExec");
    qRegisterMetaType<TSplitterPos>("TSplitterPos");
}
