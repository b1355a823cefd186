#include "Platform/MacOS/MacFileManager.h"

#include "Platform/MacOS/NSStrings.h"

#import <Foundation/Foundation.h>

namespace quillon {

std::optional<std::filesystem::path> MacFileManager::applicationSupportDirectory() {
    @autoreleasepool {
        NSArray<NSString*>* found = NSSearchPathForDirectoriesInDomains(
            NSApplicationSupportDirectory, NSUserDomainMask, YES);
        return [found count] == 0
                   ? std::nullopt
                   : std::optional<std::filesystem::path>(utf8Text([found firstObject]));
    }
}

std::filesystem::path MacFileManager::temporaryDirectory() {
    @autoreleasepool {
        return utf8Text(NSTemporaryDirectory());
    }
}

} // namespace quillon
