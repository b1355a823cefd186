// The ground that the other tests of macOS stand on.

#include "fakes/Foundation.h"

#include <gtest/gtest.h>
#include <objc/runtime.h>

using quillon::fakes::arrayOf;
using quillon::fakes::elementsOf;
using quillon::fakes::stringOf;
using quillon::fakes::utf8;

@interface FoundationTestCounter : NSObject {
    int _count;
    std::string _text;
    void (^_action)(int);
}
@property(nonatomic, copy) void (^action)(int);
- (void)count:(id)sender;
- (int)count;
- (std::string&)text;
@end

@implementation FoundationTestCounter
@synthesize action = _action;
- (void)count:(id)sender {
    _count += sender ? 1 : 10;
}
- (int)count {
    return _count;
}
- (std::string&)text {
    return _text;
}
@end

@interface FoundationTestLongCounter : FoundationTestCounter {
    std::vector<int> _steps;
}
- (std::vector<int>&)steps;
@end

@implementation FoundationTestLongCounter
- (std::vector<int>&)steps {
    return _steps;
}
@end

namespace {

TEST(Foundation, ConstantStringsAreStrings) {
    NSString* text = @"Größe 🎵";
    EXPECT_EQ(utf8(text), "Größe 🎵");
    EXPECT_EQ([text length], 8u);
    EXPECT_EQ([text characterAtIndex:2], u'ö');
    EXPECT_TRUE([text isKindOfClass:[NSString class]]);
    EXPECT_TRUE([text isEqual:stringOf("Größe 🎵")]);
    EXPECT_EQ([text hash], [stringOf("Größe 🎵") hash]);
    EXPECT_FALSE([text isEqualToString:@"Größe"]);
    EXPECT_FALSE([text isEqualToString:nil]);
    EXPECT_EQ(utf8(nil), "");
}

TEST(Foundation, StringsAreCutAndJoined) {
    EXPECT_EQ(utf8([@"Größe" substringFromIndex:2]), "öße");
    EXPECT_EQ(utf8([@"Größe" substringWithRange:NSMakeRange(2, 2)]), "öß");
    EXPECT_EQ([@"Größe" rangeOfString:@"e"].location, 4u);
    EXPECT_EQ([@"Größe" rangeOfString:@"x"].location, NSUInteger(NSNotFound));
    NSArray* parts = [@"a, b, " componentsSeparatedByString:@", "];
    EXPECT_EQ([parts count], 3u);
    EXPECT_EQ(utf8([parts componentsJoinedByString:@"+"]), "a+b+");
    EXPECT_EQ(utf8([@"Ab" stringByAppendingString:[@"Cd" uppercaseString]]), "AbCD");
    NSMutableString* changing = [NSMutableString stringWithString:@"abc"];
    NSString* before = [changing copy];
    [changing replaceCharactersInRange:NSMakeRange(1, 1) withString:@"--"];
    [changing appendString:@"!"];
    EXPECT_EQ(utf8(changing), "a--c!");
    EXPECT_EQ(utf8(before), "abc");
}

TEST(Foundation, BytesThatAreNoTextMakeNoString) {
    EXPECT_EQ(stringOf("\xff"), nil);
    EXPECT_EQ([NSString stringWithUTF8String:"\xc3"], nil);
    EXPECT_EQ(utf8([[NSString alloc] initWithBytes:"\xe9"
                                            length:1
                                          encoding:NSISOLatin1StringEncoding]),
              "é");
    EXPECT_EQ(utf8(stringOf({"a\0b", 3})), std::string("a\0b", 3));
}

TEST(Foundation, StringsAreFormatted) {
    EXPECT_EQ(utf8([NSString stringWithFormat:@"%@ %d %ld%% %.1f %s", @"é", -1, 5L, 2.25, "x"]),
              "é -1 5% 2.2 x");
    EXPECT_EQ(utf8([NSString stringWithFormat:@"%@", (id)nil]), "(null)");
}

TEST(Foundation, ArraysAreEnumerated) {
    NSMutableArray* array = [NSMutableArray arrayWithObjects:@"a", @"b", nil];
    [array addObject:@"c"];
    std::string seen;
    for (NSString* text in array)
        seen += utf8(text);
    EXPECT_EQ(seen, "abc");
    NSArray* before = [array copy];
    [array removeObject:@"b"];
    EXPECT_EQ([array indexOfObject:stringOf("c")], 1u);
    EXPECT_EQ([array indexOfObject:@"b"], NSUInteger(NSNotFound));
    EXPECT_EQ([before count], 3u);
    EXPECT_TRUE([before isEqual:arrayOf({@"a", @"b", @"c"})]);
    EXPECT_EQ([[NSArray array] firstObject], nil);
}

TEST(Foundation, DictionariesFindByValue) {
    NSMutableDictionary* dictionary = [NSMutableDictionary
        dictionaryWithObjectsAndKeys:@"one", @"1", [NSNumber numberWithInt:2], @"2", nil];
    EXPECT_EQ(utf8([dictionary objectForKey:stringOf("1")]), "one");
    [dictionary setObject:@"ONE" forKey:@"1"];
    EXPECT_EQ([dictionary count], 2u);
    EXPECT_EQ(utf8([dictionary objectForKey:@"1"]), "ONE");
    [dictionary removeObjectForKey:@"1"];
    EXPECT_EQ([dictionary objectForKey:@"1"], nil);
    std::string keys;
    for (NSString* key in dictionary)
        keys += utf8(key);
    EXPECT_EQ(keys, "2");
    EXPECT_TRUE([dictionary isEqual:[NSDictionary dictionaryWithObject:[NSNumber numberWithInt:2]
                                                                forKey:@"2"]]);
}

TEST(Foundation, NumbersKeepTheirTypes) {
    EXPECT_STREQ([[NSNumber numberWithBool:YES] objCType], "c");
    EXPECT_STREQ([[NSNumber numberWithDouble:1] objCType], "d");
    EXPECT_STREQ([[NSNumber numberWithInteger:1] objCType], "q");
    EXPECT_EQ([NSNumber numberWithBool:YES], [NSNumber numberWithBool:YES]);
    EXPECT_EQ([[NSNumber numberWithDouble:2.5] integerValue], 2);
    EXPECT_TRUE([[NSNumber numberWithInt:1] isEqual:[NSNumber numberWithDouble:1]]);
    EXPECT_FALSE([[NSNumber numberWithInt:1] isEqual:@"1"]);
    EXPECT_EQ(utf8([[NSNumber numberWithLongLong:-7] stringValue]), "-7");
}

TEST(Foundation, DataComesInRanges) {
    NSData* data = [NSData dataWithBytes:"abc" length:3];
    __block std::string bytes;
    __block int ranges = 0;
    [data enumerateByteRangesUsingBlock:^(const void* part, NSRange range, BOOL*) {
      EXPECT_EQ(range.location, bytes.size());
      bytes.append((const char*)part, range.length);
      ++ranges;
    }];
    EXPECT_EQ(bytes, "abc");
    EXPECT_EQ(ranges, 2);
    EXPECT_TRUE([data isEqual:[@"abc" dataUsingEncoding:NSUTF8StringEncoding]]);
    EXPECT_EQ([[NSData data] bytes], nullptr);
}

TEST(Foundation, AddressesHaveParts) {
    NSURL* url = [NSURL URLWithString:@"https://user@host.example:81/a%20b/?q=1#f"];
    EXPECT_EQ(utf8([url scheme]), "https");
    EXPECT_EQ(utf8([url host]), "host.example");
    EXPECT_EQ(utf8([url path]), "/a b");
    EXPECT_EQ([NSURL URLWithString:@"no address"], nil);
    NSURL* file = [NSURL fileURLWithPath:@"/tmp/é b" isDirectory:YES];
    EXPECT_EQ(utf8([file absoluteString]), "file:///tmp/%C3%A9%20b/");
    EXPECT_STREQ([file fileSystemRepresentation], "/tmp/é b");
    EXPECT_TRUE([file isFileURL]);
    EXPECT_EQ([file host], nil);
    EXPECT_EQ(utf8([[NSURL URLWithString:@"x-some.scheme:a?b"] scheme]), "x-some.scheme");
}

TEST(Foundation, ErrorsTellThemselves) {
    NSError* error =
        [NSError errorWithDomain:NSCocoaErrorDomain
                            code:4
                        userInfo:[NSDictionary dictionaryWithObject:@"Gone"
                                                             forKey:NSLocalizedDescriptionKey]];
    EXPECT_EQ(utf8([error localizedDescription]), "Gone");
    EXPECT_EQ(utf8([[NSError errorWithDomain:@"D" code:4 userInfo:nil] localizedDescription]),
              "The operation couldn’t be completed. (D error 4.)");
}

TEST(Foundation, SelectorsArePerformed) {
    FoundationTestCounter* counter = [FoundationTestCounter new];
    EXPECT_TRUE([counter respondsToSelector:@selector(count:)]);
    EXPECT_FALSE([counter respondsToSelector:@selector(setAction)]);
    [counter performSelector:@selector(count:) withObject:counter];
    [counter performSelector:NSSelectorFromString(@"count:") withObject:nil];
    EXPECT_EQ([counter count], 11);
    EXPECT_TRUE(sel_isEqual(NSSelectorFromString(@"count:"), @selector(count:)));
    EXPECT_FALSE([counter isKindOfClass:[NSString class]]);
    EXPECT_EQ(utf8(NSStringFromClass([counter class])), "FoundationTestCounter");
}

TEST(FoundationDeathTest, AnUnknownSelectorIsNamed) {
    EXPECT_DEATH([(id)[NSObject new] length], "NSObject .*does not know the selector length");
}

TEST(Foundation, InstanceVariablesOfCxxTypesAreConstructed) {
    FoundationTestLongCounter* counter = [FoundationTestLongCounter new];
    [counter text] = "a text that is too long to stand inside the string object itself";
    [counter steps].push_back(3);
    EXPECT_EQ([counter text].back(), 'f');
    EXPECT_EQ([counter steps].front(), 3);
}

TEST(Foundation, BlocksAreCopiedAndKept) {
    FoundationTestCounter* counter = [FoundationTestCounter new];
    auto sum = std::make_shared<int>(0);
    NSMutableArray* blocks = [NSMutableArray array];
    for (int factor = 1; factor <= 2; ++factor) {
        [counter setAction:^(int value) {
          *sum += factor * value;
        }];
        [blocks addObject:[counter action]];
    }
    for (id block in blocks)
        ((void (^)(int))block)(5);
    EXPECT_EQ(*sum, 15);
}

TEST(Foundation, NotificationsReachWhomTheyConcern) {
    NSNotificationCenter* center = [[NSNotificationCenter alloc] init];
    FoundationTestCounter* counter = [FoundationTestCounter new];
    [center addObserver:counter selector:@selector(count:) name:@"A" object:nil];
    __block int blocks = 0;
    const id token = [center addObserverForName:nil
                                         object:counter
                                          queue:nil
                                     usingBlock:^(NSNotification*) {
                                       ++blocks;
                                     }];
    [center postNotificationName:@"A" object:nil];
    [center postNotificationName:@"B" object:counter];
    EXPECT_EQ([counter count], 1);
    EXPECT_EQ(blocks, 1);
    [center removeObserver:token];
    [center removeObserver:counter];
    [center postNotificationName:@"A" object:counter];
    EXPECT_EQ([counter count], 1);
    EXPECT_EQ(blocks, 1);
}

TEST(Foundation, APointAtTheTopEdgeIsInside) {
    const auto rect = NSMakeRect(0, 0, 10, 10);
    EXPECT_TRUE(NSMouseInRect(NSMakePoint(0, 10), rect, NO));
    EXPECT_FALSE(NSMouseInRect(NSMakePoint(0, 0), rect, NO));
    EXPECT_TRUE(NSMouseInRect(NSMakePoint(0, 0), rect, YES));
    EXPECT_FALSE(NSMouseInRect(NSMakePoint(10, 5), rect, NO));
}

} // namespace
