#pragma once

// The files beside this one are compiled with automatic reference counting on a Mac, and without
// it where they run against fakes on other systems. What differs is said here, once.

#if __has_feature(objc_arc)
#define QUILLON_WEAK __weak
#define QUILLON_STRONG __strong
#define QUILLON_BRIDGE(Type, reference) ((__bridge Type)(reference))
#define QUILLON_BRIDGE_RETAINED(Type, reference) ((__bridge_retained Type)(reference))
#define QUILLON_BRIDGE_TRANSFER(Type, reference) ((__bridge_transfer Type)(reference))
#else
#define QUILLON_WEAK
#define QUILLON_STRONG
#define QUILLON_BRIDGE(Type, reference) ((Type)(reference))
#define QUILLON_BRIDGE_RETAINED(Type, reference) ((Type)(reference))
#define QUILLON_BRIDGE_TRANSFER(Type, reference) ((Type)(reference))
#endif
