#pragma once

#include <climits>

typedef long NSInteger;
typedef unsigned long NSUInteger;

#define NSIntegerMax LONG_MAX
#define NSIntegerMin LONG_MIN
#define NSUIntegerMax ULONG_MAX
