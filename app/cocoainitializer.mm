#include "app/cocoainitializer.h"

#import <AppKit/AppKit.h>

struct CocoaInitializer::Private {
    NSAutoreleasePool* pool;
};

CocoaInitializer::CocoaInitializer() : d(new Private)
{
    NSApplicationLoad();
    d->pool = [[NSAutoreleasePool alloc] init];
}

CocoaInitializer::~CocoaInitializer()
{
    [d->pool release];
    delete d;
}
