#pragma once
// From Apple's public documentation of the Authorization Services: what the assistant calls.

#include <MacTypes.h>
#include <os/availability.h>
#include <stdio.h>

typedef const struct AuthorizationOpaqueRef* AuthorizationRef;
typedef UInt32 AuthorizationFlags;
typedef const char* AuthorizationString;

typedef struct {
    AuthorizationString name;
    size_t valueLength;
    void* value;
    UInt32 flags;
} AuthorizationItem;

typedef struct {
    UInt32 count;
    AuthorizationItem* items;
} AuthorizationItemSet;

typedef AuthorizationItemSet AuthorizationRights;
typedef AuthorizationItemSet AuthorizationEnvironment;

enum { kAuthorizationFlagDefaults = 0 };

enum { errAuthorizationSuccess = 0, errAuthorizationCanceled = -60006 };

#ifdef __cplusplus
extern "C" {
#endif

OSStatus AuthorizationCreate(const AuthorizationRights* rights,
                             const AuthorizationEnvironment* environment, AuthorizationFlags flags,
                             AuthorizationRef* authorization) API_AVAILABLE(macos(10.0));

OSStatus AuthorizationExecuteWithPrivileges(AuthorizationRef authorization, const char* pathToTool,
                                            AuthorizationFlags options, char* const* arguments,
                                            FILE** communicationsPipe)
    API_DEPRECATED("", macos(10.1, 10.7));

#ifdef __cplusplus
}
#endif
