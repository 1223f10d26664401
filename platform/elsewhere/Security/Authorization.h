#pragma once
// The part of the Mac's authorization service that the assistant uses, for other systems: the same
// names, types and codes.

#include <cstdint>
#include <cstdio>

using OSStatus = std::int32_t;
using AuthorizationFlags = std::uint32_t;
using AuthorizationRef = const struct AuthorizationOpaqueRef*;

constexpr AuthorizationFlags kAuthorizationFlagDefaults = 0;
constexpr OSStatus errAuthorizationSuccess = 0;
constexpr OSStatus errAuthorizationInvalidRef = -60002;
constexpr OSStatus errAuthorizationDenied = -60005;
constexpr OSStatus errAuthorizationCanceled = -60006;
constexpr OSStatus errAuthorizationInternal = -60008;
constexpr OSStatus errAuthorizationToolExecuteFailure = -60031;

// Stores a new reference, without any grant, which lives as long as the process. The other
// arguments are not looked at.
OSStatus AuthorizationCreate(const void* rights, const void* environment, AuthorizationFlags flags,
                             AuthorizationRef* authorization);

// Starts the tool as a direct child, once /usr/libexec/authorization_prompt has granted the
// reference. *pipe receives a stream on the tool's standard input and output, the caller's to
// close, which waits for the tool's end. One call at a time; blocks while the prompt is up.
OSStatus AuthorizationExecuteWithPrivileges(AuthorizationRef authorization, const char* tool,
                                            AuthorizationFlags options, char* const* arguments,
                                            FILE** pipe);
