#pragma once
// From Apple's public documentation of Foundation: what the assistant calls.

#include <objc/NSObject.h>

@class NSString;

#ifdef __cplusplus
extern "C" {
#endif

void NSLog(NSString* format, ...) __attribute__((format(__NSString__, 1, 2)));

#ifdef __cplusplus
}
#endif

@interface NSAutoreleasePool : NSObject
@end
