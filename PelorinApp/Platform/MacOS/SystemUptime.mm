#include "Platform/MacOS/SystemUptime.h"

#import <Foundation/Foundation.h>

namespace quillon {

double systemUptime() {
    @autoreleasepool {
        return [[NSProcessInfo processInfo] systemUptime];
    }
}

} // namespace quillon
