#include "core/types.h"

void registerMetaTypes()
{
    qRegisterMetaType<TData>("TData");
    qRegisterMetaType<TCodeView>("TCodeView");
    qRegisterMetaType<TCodeExec>("TCodeExec");
    qRegisterMetaType<TSplitterPos>("TSplitterPos");
}
