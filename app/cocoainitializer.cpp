#include "app/cocoainitializer.h"

struct CocoaInitializer::Private
{
};

CocoaInitializer::CocoaInitializer() : d(new Private) {}

CocoaInitializer::~CocoaInitializer()
{
    delete d;
}
