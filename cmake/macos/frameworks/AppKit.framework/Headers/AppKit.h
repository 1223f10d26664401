#pragma once
// From Apple's public documentation of the AppKit: what the assistant calls.

#import <Foundation/Foundation.h>

#ifdef __cplusplus
extern "C" {
#endif

BOOL NSApplicationLoad(void);

#ifdef __cplusplus
}
#endif
