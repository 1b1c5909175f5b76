#include "forms/IFormHost.h"

namespace {
IFormHost* s_host = nullptr;
}

IFormHost* formHost()
{
    return s_host;
}

void setFormHost(IFormHost* host)
{
    s_host = host;
}
