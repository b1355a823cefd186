#pragma once

// `id`, `Class` and `SEL` are known to the compiler itself.

typedef bool BOOL;

#define YES __objc_yes
#define NO __objc_no

#ifndef nil
#define nil nullptr
#endif
#ifndef Nil
#define Nil nullptr
#endif

#ifdef __cplusplus
#define OBJC_EXPORT extern "C"
#else
#define OBJC_EXPORT extern
#endif

#if __has_feature(objc_arc)
#define OBJC_ARC_UNAVAILABLE                                                                       \
    __attribute__((unavailable("not available in automatic reference counting mode")))
#else
#define OBJC_ARC_UNAVAILABLE
#endif

// To be cast to what the method takes and answers.
typedef void (*IMP)(void);

OBJC_EXPORT const char* sel_getName(SEL sel);
OBJC_EXPORT SEL sel_registerName(const char* str);
