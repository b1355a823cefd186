#import "Platform/MacOS/NSStrings.h"

namespace quillon {

NSString* nativeString(std::string_view text) {
    return [[NSString alloc] initWithBytes:text.data()
                                    length:text.size()
                                  encoding:NSUTF8StringEncoding];
}

std::string utf8Text(NSString* string) {
    const char* text = [string UTF8String];
    return text == nullptr
               ? std::string()
               : std::string(text, [string lengthOfBytesUsingEncoding:NSUTF8StringEncoding]);
}

} // namespace quillon
