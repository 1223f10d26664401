#include "platform/systemlog.h"

#include <syslog.h>

void logAuthorizationFailure(int resultCode)
{
    syslog(LOG_ERR, "Authorization failure, Authorization Result Code: %d", resultCode);
}
