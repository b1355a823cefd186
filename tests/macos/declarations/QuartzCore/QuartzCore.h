#pragma once

#include <Foundation/Foundation.h>

#ifdef __cplusplus
#define CA_EXTERN extern "C" __attribute__((visibility("default")))
#else
#define CA_EXTERN extern __attribute__((visibility("default")))
#endif

typedef NSString* CAMediaTimingFunctionName;

CA_EXTERN CAMediaTimingFunctionName const kCAMediaTimingFunctionEaseInEaseOut;

@interface CAMediaTimingFunction : NSObject <NSSecureCoding>
+ (instancetype)functionWithName:(CAMediaTimingFunctionName)name;
@end
