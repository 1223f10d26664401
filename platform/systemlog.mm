#include "platform/systemlog.h"

#import <Foundation/Foundation.h>

void logAuthorizationFailure(int resultCode)
{
    NSLog(@"Authorization failure, Authorization Result Code: %d", resultCode);
}
