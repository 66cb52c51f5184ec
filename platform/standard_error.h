// The C library's standard error, under the name that each target's library has for it.
#pragma once

#include <stdio.h>

#if defined(__APPLE__)
extern "C" FILE* __stderrp;
#endif

inline FILE* standardError() {
#if defined(__APPLE__)
    return __stderrp;
#else
    return stderr;
#endif
}
