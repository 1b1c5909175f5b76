#include "core/model/IFormFactory.h"

namespace {
IFormFactory* registered = nullptr;
}

IFormFactory* formFactory()
{
    return registered;
}

void setFormFactory(IFormFactory* factory)
{
    registered = factory;
}
