#include "Foundation.h"

#include <Block.h>
#include <objc/runtime.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

// What gcc's runtime has beyond the functions that are declared for all.
extern "C" {
id class_createInstance(Class type, std::size_t extraBytes);
Class class_getSuperclass(Class type);
BOOL class_conformsToProtocol(Class type, Protocol* protocol);
IMP class_getMethodImplementation(Class type, SEL selector);
Class objc_lookUpClass(const char* name);
extern IMP (*__objc_msg_forward2)(id receiver, SEL selector);
// Room for the classes of blocks; the library of blocks leaves it empty.
extern void* _NSConcreteGlobalBlock[32];
extern void* _NSConcreteMallocBlock[32];
extern void* _NSConcreteStackBlock[32];

// Since nothing is freed, leaks are not looked for.
const char* __asan_default_options() { return "detect_leaks=0"; }

// gcc's runtime has it only inline, in its own header.
Class object_getClass(id object) { return object ? *(Class*)(void*)object : nil; }
}

using quillon::fakes::stringOf;
using quillon::fakes::utf8;

namespace {

constexpr std::size_t wordsOfAClass = 13;

id unrecognised(id receiver, SEL selector, ...) {
    std::fprintf(stderr, "%s %p does not know the selector %s\n", object_getClassName(receiver),
                 (void*)receiver, sel_getName(selector));
    std::abort();
}

IMP forward(id, SEL) { return (IMP)unrecognised; }

// A subclass's own constructor also runs its members', but not its superclass's.
void construct(id object, Class type) {
    if (!type)
        return;
    const Class parent = class_getSuperclass(type);
    construct(object, parent);
    const SEL constructor = sel_registerName(".cxx_construct");
    if (!class_respondsToSelector(type, constructor))
        return;
    const IMP method = class_getMethodImplementation(type, constructor);
    if (!parent || !class_respondsToSelector(parent, constructor) ||
        class_getMethodImplementation(parent, constructor) != method)
        ((void (*)(id, SEL))method)(object, constructor);
}

// As on the real system, a method may answer nothing, or take no object, and is called all the
// same.
__attribute__((no_sanitize("function"))) id perform(id receiver, SEL selector, id object) {
    const IMP method = class_getMethodImplementation(object_getClass(receiver), selector);
    return ((id(*)(id, SEL, id))method)(receiver, selector, object);
}

bool isOrInherits(Class type, Class wanted) {
    while (type && type != wanted)
        type = class_getSuperclass(type);
    return type != nil;
}

} // namespace

@interface NSAutoreleasePool : NSObject
- (void)drain;
@end

@implementation NSAutoreleasePool
- (void)drain {
}
@end

/// The class of every block.
@interface FakeBlock : NSObject
@end

@implementation FakeBlock
- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return (id)_Block_copy((void*)self);
}
- (instancetype)retain {
    return (id)_Block_copy((void*)self);
}
@end

@implementation NSObject

+ (void)load {
    __objc_msg_forward2 = forward;
}
+ (void)initialize {
    if (self != objc_lookUpClass("NSObject"))
        return;
    const Class block = objc_lookUpClass("FakeBlock");
    class_getSuperclass(block); // has the runtime resolve the superclass's name first
    for (void** type : {_NSConcreteGlobalBlock, _NSConcreteMallocBlock, _NSConcreteStackBlock})
        std::memcpy(type, (void*)block, wordsOfAClass * sizeof(void*));
}

+ (instancetype)alloc {
    const id object = class_createInstance(self, 0);
    construct(object, self);
    return object;
}
+ (instancetype)new {
    return [[self alloc] init];
}
- (instancetype)init {
    return self;
}
- (void)dealloc {
}
- (instancetype)retain {
    return self;
}
- (oneway void)release {
}
- (instancetype)autorelease {
    return self;
}
- (NSUInteger)retainCount {
    return 1;
}

- (id)copy {
    return [(id<NSCopying>)self copyWithZone:nullptr];
}
- (id)mutableCopy {
    return [(id<NSMutableCopying>)self mutableCopyWithZone:nullptr];
}

+ (Class)class {
    return self;
}
- (Class)class {
    return object_getClass(self);
}
+ (Class)superclass {
    return class_getSuperclass(self);
}
- (Class)superclass {
    return class_getSuperclass(object_getClass(self));
}
- (instancetype)self {
    return self;
}
- (BOOL)isProxy {
    return NO;
}
- (BOOL)isKindOfClass:(Class)aClass {
    return isOrInherits(object_getClass(self), aClass);
}
- (BOOL)isMemberOfClass:(Class)aClass {
    return object_getClass(self) == aClass;
}
+ (BOOL)conformsToProtocol:(Protocol*)protocol {
    for (Class type = self; type; type = class_getSuperclass(type))
        if (class_conformsToProtocol(type, protocol))
            return YES;
    return NO;
}
- (BOOL)conformsToProtocol:(Protocol*)protocol {
    return [object_getClass(self) conformsToProtocol:protocol];
}
+ (BOOL)instancesRespondToSelector:(SEL)selector {
    return class_respondsToSelector(self, selector);
}
- (BOOL)respondsToSelector:(SEL)selector {
    return class_respondsToSelector(object_getClass(self), selector);
}
- (void)doesNotRecognizeSelector:(SEL)selector {
    unrecognised(self, selector);
}

- (id)performSelector:(SEL)selector {
    return perform(self, selector, nil);
}
- (id)performSelector:(SEL)selector withObject:(id)object {
    return perform(self, selector, object);
}

- (BOOL)isEqual:(id)object {
    return self == object;
}
+ (NSUInteger)hash {
    return (NSUInteger)(void*)self;
}
- (NSUInteger)hash {
    return (NSUInteger)(void*)self;
}
+ (NSString*)description {
    return NSStringFromClass(self);
}
- (NSString*)description {
    char address[32];
    std::snprintf(address, sizeof address, ": %p>", (void*)self);
    return stringOf("<" + std::string(object_getClassName(self)) + address);
}

@end

NSString* NSStringFromSelector(SEL selector) {
    return selector ? stringOf(sel_getName(selector)) : nil;
}
SEL NSSelectorFromString(NSString* name) {
    return name ? sel_registerName(utf8(name).c_str()) : nullptr;
}
NSString* NSStringFromClass(Class type) { return type ? stringOf(class_getName(type)) : nil; }
Class NSClassFromString(NSString* name) {
    return name ? objc_lookUpClass(utf8(name).c_str()) : nil;
}
