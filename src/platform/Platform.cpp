#include "Platform.h"

Platform &Platform::current()
{
    static Platform services;
    return services;
}

void Platform::install(const Platform &services) { current() = services; }
